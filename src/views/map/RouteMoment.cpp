#include "views/map/RouteMoment.h"

#include "media/CustomMapPolyline.h"
#include "telemetry/CustomLocation.h"

#include <algorithm>

namespace cardreel {

namespace {

/// The fix that a coordinate of the route was made of; null when there is none.
const CustomLocation* fixOfCoordinate(const IndexedList<CustomLocation>& fixes, const CustomLocation* next,
                                      std::size_t coordinate)
{
    std::size_t drawn = 0;
    for (const CustomLocation& fix : fixes) {
        if (fix.isValid() && drawn++ == coordinate)
            return &fix;
    }
    return drawn == coordinate && next && next->isValid() ? next : nullptr;
}

bool isAt(const CustomLocation* fix, const Coordinate& coordinate)
{
    return fix && fix->latitude == coordinate.latitude && fix->longitude == coordinate.longitude;
}

bool isDated(const CustomLocation& fix)
{
    return fix.timestamp != Instant{};
}

} // namespace

std::optional<RouteMoment> momentOnRoute(const CustomMapPolyline& route, const IndexedList<CustomLocation>& fixes,
                                         const CustomLocation* next, std::size_t after, double fraction)
{
    const std::vector<Coordinate>& line = route.coordinates();
    if (after >= line.size())
        return {};
    const std::size_t end = std::min(after + 1, line.size() - 1);
    const CustomLocation* first = fixOfCoordinate(fixes, next, after);
    const CustomLocation* second = fixOfCoordinate(fixes, next, end);
    if (!isAt(first, line[after]) || !isAt(second, line[end]) || !isDated(*first) || !isDated(*second))
        return {};
    const double way = fraction > 0 ? std::min(fraction, 1.0) : 0;
    const double from = secondsSince1970(first->timestamp);
    const CustomLocation& nearer = way < 0.5 ? *first : *second;
    RouteMoment moment;
    moment.time = from + way * (secondsSince1970(second->timestamp) - from);
    moment.metersPerSecond = nearer.shownSpeed();
    if (route.isGap(after))
        moment.silence = RouteMoment::Silence{first->timestamp, second->timestamp};
    return moment;
}

} // namespace cardreel
