#include "views/map/PositionMarker.h"

#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "playback/MediaController.h"
#include "telemetry/CustomLocation.h"

#include <utility>

namespace cardreel {

double timeOfDay(const DCFInfo& dcf, double currentTime, double totalTime)
{
    const std::optional<double> start = MediaController::startOf(dcf, totalTime);
    return start ? *start + currentTime : 0;
}

std::optional<CustomPointAnnotation> movedMarker(const CustomLocation* fix, bool GPSEnable,
                                                 const CustomPointAnnotation* previous)
{
    if (!fix || !fix->isValid())
        return {};
    CustomPointAnnotation marker;
    marker.coordinate = {fix->latitude, fix->longitude};
    if (previous && previous->coordinate == marker.coordinate && previous->GPSEnable == GPSEnable)
        return {};
    marker.isUserLocation = true;
    marker.GPSEnable = GPSEnable;
    if (previous) {
        marker.speed = previous->speed;
        marker.direction = previous->direction;
    }
    if (fix->speed >= 0)
        marker.speed = static_cast<float>(fix->speed);
    if (fix->course >= 0)
        marker.direction = fix->course;
    return marker;
}

Throttle::Throttle(Now now)
    : m_now(std::move(now))
{
}

bool Throttle::pass()
{
    const Clock::time_point now = m_now();
    if (m_lastUpdate && now - *m_lastUpdate < pause)
        return false;
    m_lastUpdate = now;
    return true;
}

} // namespace cardreel
