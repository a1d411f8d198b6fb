#include "sample-card/StillPicture.h"

#include <QBuffer>
#include <QImage>

#include <exiv2/exiv2.hpp>

#include <cmath>
#include <exception>
#include <string>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

constexpr int JPEG_QUALITY = 88;

// Degrees, minutes and seconds as EXIF's three fractions.
std::string exifAngle(double degrees)
{
    const auto thousandths = static_cast<qint64>(std::llround(std::abs(degrees) * 3'600'000));
    return std::to_string(thousandths / 3'600'000) + "/1 " + std::to_string(thousandths / 60'000 % 60) + "/1 " +
           std::to_string(thousandths % 60'000) + "/1000";
}

} // namespace

Problem writeStillPicture(const QString& path, const QImage& picture, const DriveState& state, const QDateTime& moment)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "JPG", JPEG_QUALITY))
        return u"can't encode the picture %1"_s.arg(path);
    try {
        // In memory first: the file is then written by the same hand, with the same messages, as all others.
        auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(bytes.constData()),
                                               static_cast<long>(bytes.size()));
        Exiv2::ExifData exif;
        const std::string time = moment.toString(u"yyyy:MM:dd HH:mm:ss"_s).toStdString();
        exif["Exif.Image.Make"] = "Cardreel";
        exif["Exif.Image.Model"] = "Sample recorder";
        exif["Exif.Image.DateTime"] = time;
        exif["Exif.Photo.DateTimeOriginal"] = time;
        if (!state.inTunnel) {
            exif["Exif.GPSInfo.GPSVersionID"] = "2 3 0 0";
            exif["Exif.GPSInfo.GPSLatitudeRef"] = state.latitude < 0 ? "S" : "N";
            exif["Exif.GPSInfo.GPSLatitude"] = exifAngle(state.latitude);
            exif["Exif.GPSInfo.GPSLongitudeRef"] = state.longitude < 0 ? "W" : "E";
            exif["Exif.GPSInfo.GPSLongitude"] = exifAngle(state.longitude);
            exif["Exif.GPSInfo.GPSMapDatum"] = "WGS-84";
        }
        image->setExifData(exif);
        image->writeMetadata();
        Exiv2::BasicIo& io = image->io();
        io.open();
        QByteArray withExif(static_cast<qsizetype>(io.size()), '\0');
        io.read(reinterpret_cast<Exiv2::byte*>(withExif.data()), static_cast<long>(withExif.size()));
        return writeFile(path, withExif);
    } catch (const std::exception& error) {
        return u"can't describe the picture %1: %2"_s.arg(path, QString::fromLocal8Bit(error.what()));
    }
}

} // namespace cardreel
