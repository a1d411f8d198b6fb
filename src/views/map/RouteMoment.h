#pragma once

#include "platform/Instant.h"
#include "telemetry/IndexedList.h"

#include <cstddef>
#include <optional>

namespace cardreel {

class CustomMapPolyline;
struct CustomLocation;

/// When the vehicle was at a place of its route, and how fast. A value.
struct RouteMoment
{
    struct Silence
    {
        Instant from;
        Instant to;
    };

    double time = 0;                ///< seconds since 1970, between those of the two fixes
    double metersPerSecond = 0;     ///< of the nearer fix; the corrected speed where it has none
    std::optional<Silence> silence; ///< set within a gap, where time and speed are guesses
};

/// The moment at a place of a recording's route: `fraction` (0 to 1) of the way from the coordinate `after` to the
/// next. The route's coordinates are those of `fixes` that have a position, and perhaps `next`, the following
/// recording's first fix, which may be missing. Nothing when the fixes aren't those of the route any more, or when one
/// of the two has no date. Any thread that holds the fixes.
std::optional<RouteMoment> momentOnRoute(const CustomMapPolyline& route, const IndexedList<CustomLocation>& fixes,
                                         const CustomLocation* next, std::size_t after, double fraction);

} // namespace cardreel
