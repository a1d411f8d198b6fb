#include "views/map/PlaceText.h"

#include "media/CustomPointAnnotation.h"
#include "platform/text/RecorderTime.h"
#include "telemetry/CustomLocation.h"
#include "views/map/RouteMoment.h"

#include <QCoreApplication>
#include <QLocale>

#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int wholeCircle = 360;

struct MapTexts
{
    Q_DECLARE_TR_FUNCTIONS(cardreel::MapTexts)
};

} // namespace

QString speedText(double metersPerSecond)
{
    if (!(metersPerSecond >= 0))
        return u"–"_s;
    const float speed = CustomLocation::speedForCurrentLocale(metersPerSecond);
    return MapTexts::tr("%1 %2", "speed and its unit")
        .arg(QLocale::system().toString(std::lround(speed)), CustomLocation::unitForCurrentLocale());
}

QString headingText(double degrees)
{
    if (!(degrees >= 0) || std::isinf(degrees))
        return {};
    const long whole = std::lround(std::fmod(degrees, wholeCircle)) % wholeCircle;
    return MapTexts::tr("heading %1°").arg(whole, 3, 10, QLatin1Char('0'));
}

QString coordinateText(double latitude, double longitude)
{
    return u"%1, %2"_s.arg(latitude, 0, 'f', 6).arg(longitude, 0, 'f', 6);
}

QString routeMomentText(const RouteMoment& moment)
{
    if (moment.silence)
        return MapTexts::tr("No signal between %1 and %2")
            .arg(recorderTimeText(moment.silence->from), recorderTimeText(moment.silence->to));
    const Instant time(std::chrono::milliseconds(std::llround(moment.time * 1000)));
    return MapTexts::tr("%1  ·  %2", "time and speed")
        .arg(recorderDateTimeText(time), speedText(moment.metersPerSecond));
}

QString positionMarkerText(const CustomPointAnnotation& marker)
{
    QStringList lines;
    if (!marker.GPSEnable)
        lines.push_back(MapTexts::tr("No GPS position at this moment."));
    if (marker.speed >= 0)
        lines.push_back(speedText(static_cast<double>(marker.speed)));
    lines.push_back(headingText(marker.direction));
    lines.push_back(coordinateText(marker.coordinate.latitude, marker.coordinate.longitude));
    lines.removeAll(QString());
    return lines.join(u'\n');
}

} // namespace cardreel
