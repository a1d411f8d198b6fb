#include "platform/map/MapGeometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cardreel {

namespace {

constexpr double maxLatitude = 85.05112877980659; // where the projection's square ends

} // namespace

bool isPlace(const Coordinate& coordinate)
{
    return std::abs(coordinate.latitude) <= 90 && std::abs(coordinate.longitude) <= 180;
}

MapPoint mapPoint(double latitude, double longitude)
{
    const double phi = std::clamp(latitude, -maxLatitude, maxLatitude) * std::numbers::pi / 180.0;
    return {(longitude + 180.0) / 360.0, (1.0 - std::asinh(std::tan(phi)) / std::numbers::pi) / 2.0};
}

MapPoint mapPoint(const Coordinate& coordinate)
{
    return mapPoint(coordinate.latitude, coordinate.longitude);
}

Coordinate coordinateAt(const MapPoint& point)
{
    const double latitude = std::atan(std::sinh(std::numbers::pi * (1.0 - 2.0 * point.y))) * 180.0 / std::numbers::pi;
    return {latitude, (point.x - std::floor(point.x)) * 360.0 - 180.0};
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

bool MapRect::contains(const MapRect& other) const
{
    return !isNull() && !other.isNull() && left <= other.left && other.right <= right && top <= other.top &&
           other.bottom <= bottom;
}

bool MapRect::contains(const MapPoint& point) const
{
    return contains(MapRect{point.x, point.y, point.x, point.y});
}

bool MapRect::intersects(const MapRect& other) const
{
    return !isNull() && !other.isNull() && left <= other.right && other.left <= right && top <= other.bottom &&
           other.top <= bottom;
}

} // namespace cardreel
