#pragma once

#include "platform/map/MapGeometry.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace cardreel {

class CustomMapPolyline;

/// Where on a route a point is nearest.
struct RouteHit
{
    std::size_t after = 0; ///< between this coordinate and the next
    double fraction = 0;   ///< how far, 0 to 1
    double distance = 0;   ///< in the map's own unit
};

/// The boxes of a route's stretches, so that a pointer is told from thousands of routes without a look at their points.
/// Made once for a route; any thread.
class RouteBoxes
{
public:
    explicit RouteBoxes(const CustomMapPolyline& route);

    /// Nothing when the point is farther than `reach` from the line. A route shows on every copy of the world, so x of
    /// the point may be any.
    std::optional<RouteHit> nearest(const CustomMapPolyline& route, const MapPoint& point, double reach) const;

private:
    void search(const CustomMapPolyline& route, const MapPoint& point, std::optional<RouteHit>& best,
                double& reach) const;

    std::vector<MapRect> m_boxes;
};

bool isFinite(const MapPoint& point);

} // namespace cardreel
