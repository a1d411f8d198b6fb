#include "platform/image/ImageProperties.h"

#include "platform/files/Files.h"

#include <exiv2/exiv2.hpp>

#include <mutex>

namespace cardreel {

namespace {

/// How much of a picture is looked at. What tells of it stands in blocks of 64 KB at the beginning.
constexpr qint64 headBytes = 1'048'576;

/// Degrees, minutes and seconds as one number; nothing when the tag holds anything else.
std::optional<double> degrees(const Exiv2::Value& value)
{
    if (value.count() < 1 || value.count() > 3)
        return std::nullopt;
    double result = 0;
    double unit = 1;
    for (size_t i = 0; i < static_cast<size_t>(value.count()); ++i, unit /= 60) {
        const Exiv2::Rational part = value.toRational(static_cast<long>(i));
        if (part.second == 0)
            return std::nullopt;
        result += unit * part.first / part.second;
    }
    return result;
}

QVariant plainValue(const Exiv2::Exifdatum& datum)
{
    const Exiv2::Value& value = datum.value();
    switch (value.typeId()) {
    case Exiv2::unsignedByte:
    case Exiv2::unsignedShort:
    case Exiv2::unsignedLong:
    case Exiv2::signedShort:
    case Exiv2::signedLong:
        if (value.count() == 1)
            return QVariant::fromValue(static_cast<qint64>(value.toLong()));
        break;
    case Exiv2::unsignedRational:
    case Exiv2::signedRational:
        if (value.count() == 1 && value.toRational().second != 0)
            return double(value.toRational().first) / double(value.toRational().second);
        break;
    default:
        break;
    }
    return QString::fromStdString(value.toString()).trimmed();
}

void insertExif(const Exiv2::ExifData& exif, QVariantMap& result)
{
    QVariantMap tiff;
    QVariantMap photo;
    QVariantMap gps;
    for (const Exiv2::Exifdatum& datum : exif) {
        // Maker notes and embedded thumbnails run to megabytes and nobody reads them here.
        if (datum.size() > 4096)
            continue;
        const std::string group = datum.groupName();
        QString name = QString::fromStdString(datum.tagName());
        if (group == "Image") {
            tiff.insert(name, plainValue(datum));
        } else if (group == "Photo") {
            photo.insert(name, plainValue(datum));
        } else if (group == "GPSInfo") {
            name.remove(QLatin1StringView("GPS"));
            const bool isCoordinate = name == QLatin1StringView("Latitude") || name == QLatin1StringView("Longitude");
            if (!isCoordinate) {
                gps.insert(name, plainValue(datum));
            } else if (const std::optional<double> value = degrees(datum.value())) {
                gps.insert(name, *value);
            }
        }
    }
    const auto insert = [&result](const char* key, const QVariantMap& dictionary) {
        if (!dictionary.isEmpty())
            result.insert(QLatin1StringView(key), dictionary);
    };
    insert("{TIFF}", tiff);
    insert("{Exif}", photo);
    insert("{GPS}", gps);
}

void readUntilDamage(Exiv2::Image& image)
{
    try {
        image.readMetadata();
    } catch (const std::exception&) {
        // Cut, by a fault or where the head ends: the blocks before it are read.
    }
}

void silenceExiv2()
{
    static std::once_flag once;
    std::call_once(once, [] { Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute); });
}

} // namespace

std::optional<QVariantMap> imageProperties(const QString& path)
{
    silenceExiv2();
    const std::unique_ptr<QFile> file = files::openForReading(path);
    if (!file)
        return std::nullopt;
    const QByteArray head = file->read(headBytes);
    QVariantMap result;
    // Only JPEG: what other formats' readers do with a hostile file isn't wanted here.
    if (!head.startsWith("\xFF\xD8"))
        return result;
    try {
        const auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(head.constData()),
                                                     static_cast<long>(head.size()));
        readUntilDamage(*image);
        if (image->pixelWidth() > 0 && image->pixelHeight() > 0) {
            result.insert(QLatin1StringView("PixelWidth"), static_cast<qint64>(image->pixelWidth()));
            result.insert(QLatin1StringView("PixelHeight"), static_cast<qint64>(image->pixelHeight()));
        }
        insertExif(image->exifData(), result);
    } catch (const std::exception&) {
        // No JPEG after all, or a tag whose value doesn't fit its type: what was read so far stands.
    }
    return result;
}

} // namespace cardreel
