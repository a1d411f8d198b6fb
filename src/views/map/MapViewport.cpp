#include "views/map/MapViewport.h"

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr double tileSize = 256; ///< points; the world's at zoom 0

} // namespace

double MapViewport::worldSize() const
{
    return tileSize * std::exp2(zoom);
}

QPointF MapViewport::origin() const
{
    const double world = worldSize();
    return {std::round(center.x * world - size.width() / 2), std::round(center.y * world - size.height() / 2)};
}

QPointF MapViewport::toView(const MapPoint& point) const
{
    return QPointF(point.x, point.y) * worldSize() - origin();
}

MapPoint MapViewport::fromView(const QPointF& position) const
{
    const QPointF point = (position + origin()) / worldSize();
    return {point.x(), point.y()};
}

MapRect MapViewport::rect() const
{
    const double halfWidth = size.width() / worldSize() / 2;
    const double halfHeight = size.height() / worldSize() / 2;
    return {center.x - halfWidth, center.y - halfHeight, center.x + halfWidth, center.y + halfHeight};
}

MapViewport MapViewport::bounded() const
{
    MapViewport result = *this;
    result.zoom = std::clamp(zoom, minZoom, maxZoom);
    result.center.x -= std::floor(center.x);
    const double halfHeight = size.height() / result.worldSize() / 2;
    result.center.y = halfHeight >= 0.5 ? 0.5 : std::clamp(center.y, halfHeight, 1 - halfHeight);
    return result;
}

MapViewport MapViewport::centered(const MapPoint& point) const
{
    MapViewport result = *this;
    result.center = point;
    return result.bounded();
}

MapViewport MapViewport::dragged(const QPointF& points) const
{
    const double world = worldSize();
    return centered({center.x - points.x() / world, center.y - points.y() / world});
}

MapViewport MapViewport::zoomedAbout(const QPointF& position, double newZoom) const
{
    MapViewport result = *this;
    result.zoom = std::clamp(newZoom, minZoom, maxZoom);
    // From the centre itself, not from the whole points of origin(): many small steps would add the rounding up.
    const QPointF offset = position - QPointF(size.width() / 2, size.height() / 2);
    const QPointF shift = offset / worldSize() - offset / result.worldSize();
    return result.centered({center.x + shift.x(), center.y + shift.y()});
}

MapViewport MapViewport::fitting(const MapRect& rectangle, double edgePadding) const
{
    const double width = std::max(1.0, size.width() - 2 * edgePadding);
    const double height = std::max(1.0, size.height() - 2 * edgePadding);
    // A rectangle without width or height gives an infinity here, which the limit takes care of.
    const double world = std::min(width / rectangle.width(), height / rectangle.height());
    MapViewport result = *this;
    result.zoom = std::min(std::log2(world / tileSize), maxFitZoom);
    return result.centered(rectangle.center());
}

MapViewport MapViewport::toward(const MapViewport& target, double part) const
{
    if (part >= 1)
        return target;
    MapViewport result = target;
    result.zoom = std::lerp(zoom, target.zoom, part);
    const double start = std::exp2(-zoom);
    const double end = std::exp2(-target.zoom);
    const double way = start == end ? part : (start - std::exp2(-result.zoom)) / (start - end);
    const double targetX = target.center.x + std::round(center.x - target.center.x);
    return result.centered({std::lerp(center.x, targetX, way), std::lerp(center.y, target.center.y, way)});
}

} // namespace cardreel
