#include "views/map/MapHitTest.h"

#include "media/CustomMapPolyline.h"

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr std::size_t stretch = 16; ///< segments that share a box

MapRect widened(const MapRect& rect, double by)
{
    return {rect.left - by, rect.top - by, rect.right + by, rect.bottom + by};
}

RouteHit nearestOnSegment(const MapPoint& a, const MapPoint& b, const MapPoint& point)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double lengthSquared = dx * dx + dy * dy;
    const double along = lengthSquared > 0 ? ((point.x - a.x) * dx + (point.y - a.y) * dy) / lengthSquared : 0;
    RouteHit hit;
    hit.fraction = std::clamp(along, 0.0, 1.0);
    hit.distance = std::hypot(a.x + hit.fraction * dx - point.x, a.y + hit.fraction * dy - point.y);
    return hit;
}

} // namespace

bool isFinite(const MapPoint& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

RouteBoxes::RouteBoxes(const CustomMapPolyline& route)
{
    const std::vector<MapPoint>& points = route.mapPoints();
    std::optional<MapPoint> last;
    for (std::size_t start = 0; start < points.size(); start += stretch) {
        // The segment that leads into a stretch is its own, from wherever the last usable point was.
        MapRect box = last ? MapRect{}.united(*last) : MapRect{};
        for (std::size_t i = start; i < std::min(start + stretch, points.size()); ++i) {
            if (!isFinite(points[i]))
                continue;
            last = points[i];
            box = box.united(points[i]);
        }
        m_boxes.push_back(box);
    }
}

std::optional<RouteHit> RouteBoxes::nearest(const CustomMapPolyline& route, const MapPoint& point, double reach) const
{
    const MapRect bounds = widened(route.boundingMapRect(), reach);
    std::optional<RouteHit> best;
    if (bounds.isNull() || !isFinite(point) || point.y < bounds.top || point.y > bounds.bottom)
        return best;
    for (double copy = std::ceil(bounds.left - point.x); point.x + copy <= bounds.right; ++copy)
        search(route, {point.x + copy, point.y}, best, reach);
    return best;
}

void RouteBoxes::search(const CustomMapPolyline& route, const MapPoint& point, std::optional<RouteHit>& best,
                        double& reach) const
{
    const std::vector<MapPoint>& points = route.mapPoints();
    for (std::size_t box = 0; box < m_boxes.size(); ++box) {
        if (m_boxes[box].isNull() || !widened(m_boxes[box], reach).contains(point))
            continue;
        const std::size_t start = box * stretch;
        std::size_t before = start;
        while (before > 0 && !isFinite(points[--before])) {
        }
        for (std::size_t i = start; i < std::min(start + stretch, points.size()); ++i) {
            if (!isFinite(points[i]))
                continue;
            const std::size_t from = isFinite(points[before]) ? before : i;
            RouteHit hit = nearestOnSegment(points[from], points[i], point);
            before = i;
            if (hit.distance > reach || (best && hit.distance >= best->distance))
                continue;
            hit.after = from;
            reach = hit.distance;
            best = hit;
        }
    }
}

} // namespace cardreel
