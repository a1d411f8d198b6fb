#include "playback/StillPicture.h"

#include "platform/files/Files.h"

#include <QImageReader>

#include <memory>

namespace cardreel {

QImage readStillPicture(const QString& path)
{
    const std::unique_ptr<QFile> file = files::openForReading(path);
    if (!file)
        return {};
    QImageReader reader(file.get(), "jpeg");
    reader.setAutoTransform(true);
    // The JPEG reader is much faster at a smaller size.
    if (const QSize natural = reader.size(); natural.boundedTo(mostStillPictureSize) != natural)
        reader.setScaledSize(natural.scaled(mostStillPictureSize, Qt::KeepAspectRatio));
    return reader.read().convertToFormat(QImage::Format_RGB32);
}

} // namespace cardreel
