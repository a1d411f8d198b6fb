#include "app/lists/ThumbnailLoader.h"

#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/files/Files.h"

#include <QImageReader>

namespace cardreel {

namespace {

constexpr int keptThumbnails = 400;

/// The file's picture, cut at the sides to fill `pixels`; null when it can't be read.
QImage readImage(const QString& path, QSize pixels)
{
    const std::unique_ptr<QFile> file = files::openForReading(path);
    if (!file)
        return {};
    QImageReader reader(file.get(), "jpeg"); // both thumbnails and a card's pictures
    reader.setAutoTransform(true);
    const QSize natural = reader.size();
    // Asked for a smaller picture, the JPEG reader decodes only what that takes.
    if (natural.isValid())
        reader.setScaledSize(natural.scaled(pixels, Qt::KeepAspectRatioByExpanding));
    const QImage image = reader.read();
    return image.copy(QRect((image.width() - pixels.width()) / 2, (image.height() - pixels.height()) / 2,
                            pixels.width(), pixels.height()));
}

} // namespace

ThumbnailLoader::ThumbnailLoader(QObject* parent)
    : QObject(parent)
    , m_pixmaps(keptThumbnails)
{
}

ThumbnailLoader::~ThumbnailLoader()
{
    *m_cancelled = true;
}

QPixmap ThumbnailLoader::thumbnail(const QString& path, QSize pixels)
{
    if (path.isEmpty())
        return {};
    if (const QPixmap* kept = m_pixmaps.object(path))
        return *kept;
    if (m_underWay.contains(path))
        return {};
    m_underWay.insert(path);
    BackgroundQueue::start(
        [this, path, pixels, cancelled = m_cancelled] {
            if (*cancelled)
                return;
            const QImage image = readImage(path, pixels);
            InterfaceThread::callAndWait([&] {
                if (!*cancelled)
                    take(path, image);
            });
        },
        BackgroundQueue::Priority::Soon);
    return {};
}

void ThumbnailLoader::clear()
{
    m_pixmaps.clear();
}

void ThumbnailLoader::take(const QString& path, const QImage& image)
{
    m_underWay.remove(path);
    m_pixmaps.insert(path, new QPixmap(QPixmap::fromImage(image)));
    if (!image.isNull())
        Q_EMIT loaded(path);
}

} // namespace cardreel
