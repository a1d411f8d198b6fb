#include "support/CardBuilder.h"

#include "platform/files/Files.h"

#include <QBuffer>
#include <QDateTime>
#include <QImage>

#include <exiv2/exiv2.hpp>
#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cmath>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace cardreel::test {

namespace {

void require(bool condition, const QString& what)
{
    if (!condition)
        qFatal("a test's input can't be made: %s", qPrintable(files::displayPath(what)));
}

std::filesystem::path native(const QString& path)
{
    return files::nativePath(path).toStdString();
}

void makeFolder(const QString& path)
{
    std::error_code error;
    std::filesystem::create_directories(native(path), error);
    require(files::isFolder(path), path);
}

std::unique_ptr<Exiv2::Value> degreesValue(double degrees)
{
    auto value = std::make_unique<Exiv2::URationalValue>();
    const double minutes = (degrees - std::floor(degrees)) * 60;
    const double seconds = (minutes - std::floor(minutes)) * 60;
    value->value_ = {{static_cast<uint32_t>(degrees), 1U},
                     {static_cast<uint32_t>(minutes), 1U},
                     {static_cast<uint32_t>(std::lround(seconds * 10000)), 10000U}};
    return value;
}

/// Asks for the calling thread's capabilities or sets them.
void capabilities(int call, __user_cap_data_struct (&data)[2])
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    require(syscall(call, &header, data) == 0, QStringLiteral("permissions"));
}

} // namespace

Instant utc(int year, unsigned month, unsigned day, int hour, int minute, int second, int ms)
{
    using namespace std::chrono;
    return Instant(sys_days(year_month_day(std::chrono::year(year), std::chrono::month(month), std::chrono::day(day))) +
                   hours(hour) + minutes(minute) + seconds(second) + milliseconds(ms));
}

CardBuilder::CardBuilder(const QString& name)
    : m_root(m_folder.path() + QLatin1Char('/') + name)
{
    makeFolder(m_root);
}

CardBuilder::~CardBuilder()
{
    // QTemporaryDir can't remove names that aren't UTF-8.
    std::error_code ignored;
    std::filesystem::remove_all(native(m_root), ignored);
}

QString CardBuilder::folder(const QString& delta)
{
    makeFolder(path(delta));
    return path(delta);
}

QString CardBuilder::file(const QString& delta, const QByteArray& bytes, std::optional<Instant> modified)
{
    const QString full = path(delta);
    makeFolder(files::folderOf(full));
    std::ofstream out(native(full), std::ios::binary);
    out.write(bytes.constData(), bytes.size());
    out.close();
    require(!out.fail(), full);
    if (modified)
        setModified(full, *modified);
    return full;
}

QString CardBuilder::link(const QString& delta, const QByteArray& target)
{
    const QString full = path(delta);
    makeFolder(files::folderOf(full));
    require(symlink(target.constData(), files::nativePath(full).constData()) == 0, full);
    return full;
}

QString CardBuilder::picture(const QString& delta, std::optional<Instant> modified)
{
    QImage image(32, 18, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QBuffer bytes;
    require(image.save(&bytes, "JPG"), delta);
    return file(delta, bytes.data(), modified);
}

QString CardBuilder::pictureAt(const QString& delta, std::optional<double> latitude, const char* latitudeRef,
                               double longitude, const char* longitudeRef)
{
    const QString full = picture(delta);
    const auto image = Exiv2::ImageFactory::open(native(full).string());
    Exiv2::ExifData& exif = image->exifData();
    if (latitude)
        exif.add(Exiv2::ExifKey("Exif.GPSInfo.GPSLatitude"), degreesValue(*latitude).get());
    exif.add(Exiv2::ExifKey("Exif.GPSInfo.GPSLongitude"), degreesValue(longitude).get());
    if (latitudeRef)
        exif["Exif.GPSInfo.GPSLatitudeRef"] = latitudeRef;
    if (longitudeRef)
        exif["Exif.GPSInfo.GPSLongitudeRef"] = longitudeRef;
    image->writeMetadata();
    return full;
}

void CardBuilder::mountAgainAs(const QString& name)
{
    const QString renamed = m_folder.path() + QLatin1Char('/') + name;
    require(rename(files::nativePath(m_root).constData(), files::nativePath(renamed).constData()) == 0, renamed);
    m_root = renamed;
}

QByteArray fixSentence(const Fix& fix)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(fix.time.time_since_epoch().count(), Qt::UTC);
    return "$GPRMC," + time.toString(u"HHmmss.zzz").toLatin1() + ',' + fix.status + ',' + fix.latitude +
           ",N,13900.0000,E," + fix.speed + ',' + fix.course + ',' + time.toString(u"ddMMyy").toLatin1() +
           ",,,A*00\r\n";
}

QByteArray sideFile(Instant start, int fixes)
{
    QByteArray text = "$GTRIP,TRIP0001,1.0\r\n";
    for (int i = 0; i < fixes; ++i) {
        text += fixSentence({.time = start + std::chrono::seconds(i),
                             .latitude = "35" + QByteArray::number(i * 0.005, 'f', 4).rightJustified(7, '0')});
        text += "$GSENS,0.1,0.2,1.0\r\n";
    }
    return text;
}

void setModified(const QString& path, Instant modified)
{
    const auto ms = modified.time_since_epoch().count();
    const timespec time{ms / 1000, (ms % 1000) * 1000000};
    const timespec times[] = {time, time};
    require(utimensat(AT_FDCWD, files::nativePath(path).constData(), times, 0) == 0, path);
}

OrdinaryPermissions::OrdinaryPermissions()
{
    __user_cap_data_struct data[2] = {};
    capabilities(SYS_capget, data);
    m_former[0] = data[0].effective;
    m_former[1] = data[1].effective;
    data[0].effective &= ~((1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH));
    capabilities(SYS_capset, data);
}

OrdinaryPermissions::~OrdinaryPermissions()
{
    __user_cap_data_struct data[2] = {};
    capabilities(SYS_capget, data);
    data[0].effective = m_former[0];
    data[1].effective = m_former[1];
    capabilities(SYS_capset, data);
}

} // namespace cardreel::test
