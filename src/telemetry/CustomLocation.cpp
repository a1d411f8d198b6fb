#include "telemetry/CustomLocation.h"

#include "platform/text/DateText.h"

#include <QDataStream>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr double KILOMETRES_PER_MILE = 1.60934;
constexpr quint32 ARCHIVE_VERSION = 1;

} // namespace

CustomLocation::CustomLocation(double latitudeDegrees, double longitudeDegrees)
    : latitude(latitudeDegrees)
    , longitude(longitudeDegrees)
    , horizontalAccuracy(0)
    , timestamp(now())
{
}

CustomLocation::CustomLocation(Coordinate coordinate, double altitudeMetres, double horizontal, double vertical,
                               Instant time)
    : CustomLocation(coordinate, altitudeMetres, horizontal, vertical, NO_COURSE, NO_SPEED, time)
{
}

CustomLocation::CustomLocation(Coordinate coordinate, double altitudeMetres, double horizontal, double vertical,
                               double courseDegrees, double metersPerSecond, Instant time)
    : latitude(coordinate.latitude)
    , longitude(coordinate.longitude)
    , altitude(altitudeMetres)
    , horizontalAccuracy(horizontal)
    , verticalAccuracy(vertical)
    , course(courseDegrees)
    , speed(metersPerSecond)
    , timestamp(time)
{
}

CustomLocation::CustomLocation(Coordinate coordinate, double altitudeMetres, double horizontal, double vertical,
                               double courseDegrees, double /*courseAccuracy*/, double metersPerSecond,
                               double /*speedAccuracy*/, Instant time)
    : CustomLocation(coordinate, altitudeMetres, horizontal, vertical, courseDegrees, metersPerSecond, time)
{
}

const CustomLocation& CustomLocation::placeholder()
{
    static const CustomLocation fix(Coordinate{NO_COORDINATE, NO_COORDINATE}, 0, FIX_ACCURACY, FIX_ACCURACY, NO_COURSE,
                                    NO_SPEED, Instant{});
    return fix;
}

bool CustomLocation::isValid() const
{
    return latitude >= -90 && latitude <= 90 && longitude >= -180 && longitude <= 180;
}

float CustomLocation::speedAtKirometerPerHour(double metersPerSecond)
{
    return static_cast<float>(metersPerSecond * 60 * 60 / 1000);
}

float CustomLocation::speedAtMilePerHour(double metersPerSecond)
{
    // From the rounded kilometres, so that both units of one speed agree to the last digit shown.
    return static_cast<float>(static_cast<double>(speedAtKirometerPerHour(metersPerSecond)) / KILOMETRES_PER_MILE);
}

float CustomLocation::speedForCurrentLocale(double metersPerSecond)
{
    return shouldUseMilePerHour() ? speedAtMilePerHour(metersPerSecond) : speedAtKirometerPerHour(metersPerSecond);
}

QString CustomLocation::unitForCurrentLocale()
{
    return shouldUseMilePerHour() ? u"mph"_s : u"km/h"_s;
}

bool CustomLocation::shouldUseMilePerHour()
{
    return localeUsesMiles();
}

QDataStream& operator<<(QDataStream& stream, const CustomLocation& location)
{
    const auto precision = stream.floatingPointPrecision();
    stream.setFloatingPointPrecision(QDataStream::DoublePrecision);
    stream << ARCHIVE_VERSION << location.latitude << location.longitude << location.altitude
           << location.horizontalAccuracy << location.verticalAccuracy << location.course << location.speed
           << static_cast<qint64>(location.timestamp.time_since_epoch().count());
    stream.setFloatingPointPrecision(precision);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, CustomLocation& location)
{
    location = CustomLocation();
    CustomLocation read;
    quint32 version = 0;
    qint64 milliseconds = 0;
    const auto precision = stream.floatingPointPrecision();
    stream.setFloatingPointPrecision(QDataStream::DoublePrecision);
    stream >> version >> read.latitude >> read.longitude >> read.altitude >> read.horizontalAccuracy >>
        read.verticalAccuracy >> read.course >> read.speed >> milliseconds;
    stream.setFloatingPointPrecision(precision);
    read.timestamp = Instant(std::chrono::milliseconds(milliseconds));
    if (stream.status() == QDataStream::Ok && version != ARCHIVE_VERSION)
        stream.setStatus(QDataStream::ReadCorruptData);
    if (stream.status() == QDataStream::Ok)
        location = read;
    return stream;
}

} // namespace cardreel
