#include "platform/image/JpegData.h"

#include <QBuffer>

#include <exiv2/exiv2.hpp>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

Exiv2::URational rational(double value, uint32_t denominator)
{
    return {static_cast<uint32_t>(std::llround(value * denominator)), denominator};
}

/// Degrees, minutes and seconds. Reckoned from the whole in millionths of a second, so that no part comes out as 60.
Exiv2::URationalValue degreesValue(double degrees)
{
    constexpr long long million = 1'000'000;
    const long long total = std::llround(degrees * 3600 * million);
    Exiv2::URationalValue value;
    value.value_ = {{static_cast<uint32_t>(total / (3600 * million)), 1},
                    {static_cast<uint32_t>(total / (60 * million) % 60), 1},
                    {static_cast<uint32_t>(total % (60 * million)), static_cast<uint32_t>(million)}};
    return value;
}

Exiv2::URationalValue metresValue(double metres)
{
    constexpr double largest = 4'000'000; // in millimetres it has to fit 32 bits
    Exiv2::URationalValue value;
    value.value_ = {rational(std::min(metres, largest), 1000)};
    return value;
}

void addTag(Exiv2::ExifData& exif, const QString& name, const QVariant& content)
{
    const Exiv2::ExifKey key("Exif.GPSInfo.GPS" + name.toStdString());
    if (name == u"Latitude" || name == u"Longitude") {
        const Exiv2::URationalValue value = degreesValue(content.toDouble());
        exif.add(key, &value);
    } else if (name == u"Altitude") {
        const Exiv2::URationalValue value = metresValue(content.toDouble());
        exif.add(key, &value);
    } else if (name == u"AltitudeRef") {
        const auto value = Exiv2::Value::create(Exiv2::unsignedByte);
        value->read(content.toString().toStdString());
        exif.add(key, value.get());
    } else {
        const Exiv2::AsciiValue value(content.toString().toStdString());
        exif.add(key, &value);
    }
}

QByteArray withExif(const QByteArray& jpeg, const Exiv2::ExifData& exif)
{
    const auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(jpeg.constData()),
                                                 static_cast<long>(jpeg.size()));
    image->readMetadata();
    image->setExifData(exif);
    image->writeMetadata();
    Exiv2::BasicIo& io = image->io();
    if (io.open() != 0)
        return {};
    QByteArray result(static_cast<qsizetype>(io.size()), Qt::Uninitialized);
    const long count = io.read(reinterpret_cast<Exiv2::byte*>(result.data()), static_cast<long>(result.size()));
    return count == result.size() ? result : QByteArray();
}

} // namespace

QByteArray jpegData(const QImage& image, const QVariantMap& properties)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (image.isNull() || !image.save(&buffer, "JPEG"))
        return {};
    const QVariantMap gps = properties.value(u"{GPS}"_s).toMap();
    if (gps.isEmpty())
        return buffer.data();
    try {
        Exiv2::ExifData exif;
        for (auto tag = gps.cbegin(); tag != gps.cend(); ++tag)
            addTag(exif, tag.key(), tag.value());
        return withExif(buffer.data(), exif);
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace cardreel
