#include "playback/PictureReader.h"

#include "platform/files/Files.h"
#include "platform/video/BackgroundEnd.h"

#include <QImageReader>

#include <mutex>
#include <optional>
#include <utility>

namespace cardreel {

/// What the reading thread and the reader's own thread share.
struct PictureReader::Shared
{
    std::mutex mutex;
    PictureReader* reader = nullptr; ///< null once it is gone
    std::optional<QString> wanted;   ///< not yet begun
    std::optional<QImage> answer;    ///< of the newest wanted
    bool isRunning = false;
    bool isDropped = false; ///< nobody waits for what is being read
};

namespace {

QImage readPicture(const QString& path)
{
    const std::unique_ptr<QFile> file = files::openForReading(path);
    if (!file)
        return {};
    QImageReader reader(file.get(), "jpeg");
    reader.setAutoTransform(true);
    // The JPEG reader is much faster at a smaller size.
    const QSize most = PictureReader::mostPictureSize;
    if (const QSize natural = reader.size(); natural.boundedTo(most) != natural)
        reader.setScaledSize(natural.scaled(most, Qt::KeepAspectRatio));
    return reader.read().convertToFormat(QImage::Format_RGB32);
}

} // namespace

PictureReader::PictureReader(QObject* parent)
    : QObject(parent)
    , m_shared(std::make_shared<Shared>())
{
    m_shared->reader = this;
}

PictureReader::~PictureReader()
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->reader = nullptr;
    m_shared->wanted.reset();
}

void PictureReader::read(const QString& path, Read read)
{
    m_read = std::move(read);
    {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->wanted = path;
        m_shared->answer.reset();
        m_shared->isDropped = true;
        if (std::exchange(m_shared->isRunning, true))
            return;
    }
    BackgroundEnd::run([shared = m_shared] {
        for (;;) {
            QString next;
            {
                const std::lock_guard lock(shared->mutex);
                if (!shared->wanted) {
                    shared->isRunning = false;
                    return;
                }
                next = *std::exchange(shared->wanted, std::nullopt);
                shared->isDropped = false;
            }
            QImage picture = readPicture(next);
            const std::lock_guard lock(shared->mutex);
            if (shared->isDropped || !shared->reader)
                continue;
            shared->answer = std::move(picture);
            QMetaObject::invokeMethod(shared->reader, &PictureReader::takeAnswer, Qt::QueuedConnection);
        }
    });
}

void PictureReader::cancel()
{
    m_read = {};
    const std::lock_guard lock(m_shared->mutex);
    m_shared->wanted.reset();
    m_shared->answer.reset();
    m_shared->isDropped = true;
}

void PictureReader::takeAnswer()
{
    std::optional<QImage> answer;
    {
        const std::lock_guard lock(m_shared->mutex);
        answer = std::exchange(m_shared->answer, std::nullopt);
    }
    if (const auto read = answer ? std::exchange(m_read, {}) : Read())
        read(*answer);
}

} // namespace cardreel
