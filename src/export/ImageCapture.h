#pragma once

#include "platform/files/FileCopy.h"
#include "telemetry/CustomLocation.h"

#include <QByteArray>
#include <QImage>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace cardreel {

class FileSteps;
class VideoPlayer;
struct CustomPointAnnotation;

enum class Flip { None, Horizontal };

/// The picture that a player shows, taken exactly and written as a file that says where it was taken. Has no state; any
/// thread but for screenshotFromPlayer(). What a zoomed view shows is grabbed by the view itself.
class ImageCapture
{
public:
    /// The extensions that can be written.
    static QStringList fileTypes();

    /// Interface thread. The frame at a time in seconds of the player's item, or without one at the player's time. No
    /// picture without a player or item, when the item failed, or when there is no such frame. For `maximumSize` and
    /// `trimArea` see screenshotFromFile().
    static QImage screenshotFromPlayer(const VideoPlayer* player, const QSize& maximumSize,
                                       const std::optional<QRect>& trimArea, std::optional<double> requestTime,
                                       Flip horozontalFlipped);
    /// The frame on screen at a time in seconds of the file, shrunk to fit `maximumSize` unless that is empty, then cut
    /// to what `trimArea` has of it, in pixels. No picture when that is nothing.
    static QImage screenshotFromFile(const QString& path, double seconds, const QSize& maximumSize,
                                     const std::optional<QRect>& trimArea, Flip horozontalFlipped);

    static QImage flipImageHorizontally(const QImage& image);
    /// The pixels as they are written: without transparency.
    static QImage bitmapImageRepresentation(const QImage& image);

    /// Where the vehicle was, by the marker of its place on the map, which need not be shown, and when. Nothing without
    /// a marker, or when its position isn't one.
    static std::optional<CustomLocation> locationOf(const CustomPointAnnotation* marker, Instant date);

    /// Writes what the path's extension asks for, in place of what is there. When that fails, or for no picture or
    /// another extension, what is there stays. `steps`: nothing for the system's own.
    static std::optional<FileError> writeFileWithCaptureImage(const QImage& image,
                                                              const std::optional<CustomLocation>& location,
                                                              const QString& path, FileSteps* steps = nullptr);
    static std::optional<FileError> writeJPEGFileWithCaptureImage(const QImage& image,
                                                                  const std::optional<CustomLocation>& location,
                                                                  const QString& path, FileSteps* steps = nullptr);
    static std::optional<FileError> writePNGFileWithCaptureImage(const QImage& image, const QString& path,
                                                                 FileSteps* steps = nullptr);

    /// "{GPS}" with the dictionary below; empty without a location, or when its position isn't one.
    static QVariantMap metaDataIncludeExifFromLocation(const std::optional<CustomLocation>& location);
    /// Keyed as imageProperties() has it. Date and time are one text, in the local zone.
    static QVariantMap GPSDictionaryForLocation(const CustomLocation& location);
    /// Empty when the bitmap can't be encoded.
    static QByteArray createJpegImageDataFromImage(const QImage& bitmap, const QVariantMap& metaData);
};

} // namespace cardreel
