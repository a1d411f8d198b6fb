#include "platform/map/MapGeometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cardreel {

MapPoint mapPoint(double latitude, double longitude)
{
    constexpr double maxLatitude = 85.05112877980659; // where the projection's square ends
    const double phi = std::clamp(latitude, -maxLatitude, maxLatitude) * std::numbers::pi / 180.0;
    return {(longitude + 180.0) / 360.0, (1.0 - std::asinh(std::tan(phi)) / std::numbers::pi) / 2.0};
}

MapRect MapRect::united(const MapRect& other) const
{
    if (isNull())
        return other;
    if (other.isNull())
        return *this;
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
}

MapRect MapRect::united(const MapPoint& point) const
{
    return united(MapRect{point.x, point.y, point.x, point.y});
}

} // namespace cardreel
