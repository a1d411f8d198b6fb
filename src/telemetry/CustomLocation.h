#pragma once

#include "platform/Instant.h"

#include <QString>

class QDataStream;

namespace cardreel {

/// One location fix: where, how fast and which way, and when. A plain value, copied by whoever needs it; any thread.
/// Side files hold many, so it is kept to ten plain fields of eight bytes.
struct CustomLocation
{
    /// Degrees in WGS 84, north and east positive.
    struct Coordinate
    {
        double latitude = 0;
        double longitude = 0;
    };

    static constexpr double NO_COORDINATE = -999.0; ///< latitude or longitude that isn't known
    static constexpr double NO_SPEED = -1.0;
    static constexpr double NO_COURSE = -1.0;
    static constexpr double NO_ACCURACY = -1.0;
    static constexpr double FIX_ACCURACY = 10.0; ///< metres; what every fix of a side file is taken for

    double latitude = NO_COORDINATE;         ///< degrees; NO_COORDINATE when not known; not checked for its range
    double longitude = NO_COORDINATE;        ///< degrees; NO_COORDINATE when not known; not checked for its range
    double altitude = 0;                     ///< metres
    double horizontalAccuracy = NO_ACCURACY; ///< metres; negative when not known
    double verticalAccuracy = NO_ACCURACY;   ///< metres; negative when not known
    double course = NO_COURSE;               ///< degrees clockwise from north; NO_COURSE when not known
    double speed = NO_SPEED;                 ///< metres per second; NO_SPEED when not known
    Instant timestamp{};                     ///< 1970 when not known
    double correctedSpeed = 0;               ///< metres per second, to be shown when `speed` isn't known
    double correctedDirection = 0;           ///< degrees, to be shown when `course` isn't known

    /// A fix of which nothing is known.
    CustomLocation() = default;
    /// A bare position, of the present moment.
    CustomLocation(double latitudeDegrees, double longitudeDegrees);
    CustomLocation(Coordinate coordinate, double altitudeMetres, double horizontal, double vertical, Instant time);
    CustomLocation(Coordinate coordinate, double altitudeMetres, double horizontal, double vertical,
                   double courseDegrees, double metersPerSecond, Instant time);
    /// The accuracies of course and speed are taken for the caller's convenience; they aren't kept.
    CustomLocation(Coordinate coordinate, double altitudeMetres, double horizontal, double vertical,
                   double courseDegrees, double courseAccuracy, double metersPerSecond, double speedAccuracy,
                   Instant time);

    /// What stands for a fix where a file has none: nothing known, with the accuracies of a fix.
    static const CustomLocation& placeholder();

    /// Whether there is a position to draw: both coordinates known and within -90..90 and -180..180 degrees.
    bool isValid() const;
    bool hasSpeed() const { return speed != NO_SPEED; }
    bool hasCourse() const { return course != NO_COURSE; }
    /// To be shown: metres per second.
    double shownSpeed() const { return hasSpeed() ? speed : correctedSpeed; }
    /// To be shown: degrees.
    double shownCourse() const { return hasCourse() ? course : correctedDirection; }

    // Speeds are stored in metres per second and shown in the unit of the user's locale. NO_SPEED is converted like any
    // other number: choose `correctedSpeed` first.
    static float speedAtKirometerPerHour(double metersPerSecond);
    static float speedAtMilePerHour(double metersPerSecond);
    static float speedForCurrentLocale(double metersPerSecond);
    static QString unitForCurrentLocale(); ///< "mph" or "km/h"
    static bool shouldUseMilePerHour();

    float speedAtKirometerPerHour() const { return speedAtKirometerPerHour(speed); }
    float speedAtMilePerHour() const { return speedAtMilePerHour(speed); }
    float speedForCurrentLocale() const { return speedForCurrentLocale(speed); }

    bool operator==(const CustomLocation& other) const = default;
};

static_assert(sizeof(CustomLocation) == 80);

/// The archive of a fix leaves the corrected fields out: they come back as 0. A stream that ends early or holds
/// something else gives a fix of which nothing is known, and says so in its status.
QDataStream& operator<<(QDataStream& stream, const CustomLocation& location);
QDataStream& operator>>(QDataStream& stream, CustomLocation& location);

} // namespace cardreel
