#include "export/ImageCapture.h"

#include "media/CustomPointAnnotation.h"
#include "platform/files/FileSteps.h"
#include "platform/files/Files.h"
#include "platform/image/JpegData.h"
#include "platform/text/DateText.h"
#include "platform/video/FrameGenerator.h"
#include "platform/video/VideoAsset.h"
#include "platform/video/VideoItem.h"
#include "platform/video/VideoPlayer.h"

#include <QBuffer>

#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

std::optional<FileError> write(const QByteArray& bytes, const QString& path, FileSteps* given)
{
    if (bytes.isEmpty())
        return FileError{FileError::Code::CannotWrite, path, FileError::tr("There is no picture to write")};
    FileSteps system;
    FileError error{FileError::Code::CannotWrite, path, {}};
    if (!replaceFile(files::nativePath(files::absolutePath(path)), bytes, given ? *given : system, error.reason))
        return error;
    return {};
}

} // namespace

QStringList ImageCapture::fileTypes()
{
    return {u"jpg"_s, u"jpeg"_s, u"png"_s};
}

QImage ImageCapture::screenshotFromPlayer(const VideoPlayer* player, const QSize& maximumSize,
                                          const std::optional<QRect>& trimArea, std::optional<double> requestTime,
                                          Flip horozontalFlipped)
{
    if (!player || !player->currentItem() || player->currentItem()->status() == VideoItem::Status::Failed)
        return {};
    const VideoItem& item = *player->currentItem();
    // A squeezed item's time goes by faster than the file's.
    const double fileSeconds = requestTime.value_or(player->currentTime()) * item.speed();
    return screenshotFromFile(item.asset()->path(), fileSeconds, maximumSize, trimArea, horozontalFlipped);
}

QImage ImageCapture::screenshotFromFile(const QString& path, double seconds, const QSize& maximumSize,
                                        const std::optional<QRect>& trimArea, Flip horozontalFlipped)
{
    QImage image = FrameGenerator::frame(path, seconds, maximumSize).image;
    if (trimArea) {
        const QRect cut = image.rect() & *trimArea;
        image = cut.isEmpty() ? QImage() : image.copy(cut);
    }
    return horozontalFlipped == Flip::Horizontal ? flipImageHorizontally(image) : image;
}

QImage ImageCapture::flipImageHorizontally(const QImage& image)
{
    return image.mirrored(true, false);
}

QImage ImageCapture::bitmapImageRepresentation(const QImage& image)
{
    return image.convertToFormat(QImage::Format_RGB32);
}

std::optional<CustomLocation> ImageCapture::locationOf(const CustomPointAnnotation* marker, Instant date)
{
    if (!marker)
        return {};
    const CustomLocation location({marker->coordinate.latitude, marker->coordinate.longitude}, 0, 1.0, 0,
                                  marker->direction, static_cast<double>(marker->speed), date);
    return location.isValid() ? std::optional(location) : std::nullopt;
}

std::optional<FileError> ImageCapture::writeFileWithCaptureImage(const QImage& image,
                                                                 const std::optional<CustomLocation>& location,
                                                                 const QString& path, FileSteps* steps)
{
    const QString extension = files::extensionOf(path);
    if (extension == u"jpg" || extension == u"jpeg")
        return writeJPEGFileWithCaptureImage(image, location, path, steps);
    if (extension == u"png")
        return writePNGFileWithCaptureImage(image, path, steps);
    return FileError{FileError::Code::CannotWrite, path, FileError::tr("Pictures are written as jpg, jpeg or png")};
}

std::optional<FileError> ImageCapture::writeJPEGFileWithCaptureImage(const QImage& image,
                                                                     const std::optional<CustomLocation>& location,
                                                                     const QString& path, FileSteps* steps)
{
    const QVariantMap metaData = metaDataIncludeExifFromLocation(location);
    return write(createJpegImageDataFromImage(bitmapImageRepresentation(image), metaData), path, steps);
}

std::optional<FileError> ImageCapture::writePNGFileWithCaptureImage(const QImage& image, const QString& path,
                                                                    FileSteps* steps)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const bool isEncoded = !image.isNull() && bitmapImageRepresentation(image).save(&buffer, "PNG");
    return write(isEncoded ? buffer.data() : QByteArray(), path, steps);
}

QVariantMap ImageCapture::metaDataIncludeExifFromLocation(const std::optional<CustomLocation>& location)
{
    if (!location || !location->isValid())
        return {};
    return {{u"{GPS}"_s, GPSDictionaryForLocation(*location)}};
}

QVariantMap ImageCapture::GPSDictionaryForLocation(const CustomLocation& location)
{
    const DateText clock = DateText::patterned(u"yyyy:MM:dd HH:mm:ss"_s, u"en_US_POSIX"_s, TimeZone::Local);
    const QString stamp = clock.text(location.timestamp);
    QVariantMap result{{u"DateStamp"_s, stamp},
                       {u"TimeStamp"_s, stamp},
                       {u"LatitudeRef"_s, location.latitude < 0 ? u"S"_s : u"N"_s},
                       {u"Latitude"_s, std::abs(location.latitude)},
                       {u"LongitudeRef"_s, location.longitude < 0 ? u"W"_s : u"E"_s},
                       {u"Longitude"_s, std::abs(location.longitude)}};
    if (!std::isnan(location.altitude)) {
        result.insert(u"AltitudeRef"_s, location.altitude < 0 ? 1 : 0);
        result.insert(u"Altitude"_s, std::abs(location.altitude));
    }
    return result;
}

QByteArray ImageCapture::createJpegImageDataFromImage(const QImage& bitmap, const QVariantMap& metaData)
{
    return jpegData(bitmap, metaData);
}

} // namespace cardreel
