#include "views/map/MapContents.h"

#include "media/CustomMapPolyline.h"
#include "media/CustomPointAnnotation.h"
#include "views/map/MarkerImages.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace cardreel {

namespace {

constexpr double routeReach = 6;      ///< points from the middle of a line
constexpr double smallestTarget = 24; ///< points that a marker answers to in each direction

double distanceFromMiddle(const MapViewport& viewport, const QPointF& position)
{
    return std::hypot(position.x() - viewport.size.width() / 2, position.y() - viewport.size.height() / 2);
}

/// The point on the copy of the world nearest to the middle of the view.
MapPoint nearestCopy(const MapViewport& viewport, const MapPoint& point)
{
    return {point.x + std::round(viewport.center.x - point.x), point.y};
}

} // namespace

bool MapContents::FoundRoute::operator==(const FoundRoute& other) const
{
    return route == other.route && hit.after == other.hit.after && hit.fraction == other.hit.fraction;
}

bool MapContents::addRoute(const Route& route)
{
    if (!route || hasRoute(route))
        return false;
    m_routes.push_back({route, RouteBoxes(*route)});
    m_routePlaces.emplace(route.get(), std::prev(m_routes.end()));
    ++m_version;
    return true;
}

bool MapContents::removeRoute(const Route& route)
{
    const auto place = m_routePlaces.find(route.get());
    if (place == m_routePlaces.end())
        return false;
    m_routes.erase(place->second);
    m_routePlaces.erase(place);
    ++m_version;
    return true;
}

bool MapContents::setRoutesShown(bool shown)
{
    if (std::exchange(m_routesAreShown, shown) == shown)
        return false;
    ++m_version;
    return true;
}

bool MapContents::addMarker(const Marker& marker)
{
    if (!marker || hasMarker(marker))
        return false;
    MarkerEntry entry = {marker, mapPoint(marker->coordinate), {}, {}};
    if (isPlace(marker->coordinate))
        entry.drawing = annotationImageName(*marker);
    entry.size = image(entry.drawing, m_imagesRatio > 0 ? m_imagesRatio : 1).deviceIndependentSize();
    m_markers.push_back(std::move(entry));
    m_markerPlaces.emplace(marker.get(), std::prev(m_markers.end()));
    if (marker->isUserLocation)
        ++m_positionMarkers;
    else
        ++m_version;
    return true;
}

bool MapContents::removeMarker(const Marker& marker)
{
    const auto place = m_markerPlaces.find(marker.get());
    if (place == m_markerPlaces.end())
        return false;
    m_markers.erase(place->second);
    m_markerPlaces.erase(place);
    if (marker->isUserLocation)
        --m_positionMarkers;
    else
        ++m_version;
    return true;
}

void MapContents::clear()
{
    m_routes.clear();
    m_routePlaces.clear();
    m_markers.clear();
    m_markerPlaces.clear();
    m_positionMarkers = 0;
    ++m_version;
}

std::shared_ptr<const OverlaySnapshot> MapContents::snapshot(double devicePixelRatio)
{
    if (m_snapshot && m_snapshot->version == m_version && m_snapshotRatio == devicePixelRatio)
        return m_snapshot;
    auto snapshot = std::make_shared<OverlaySnapshot>();
    snapshot->version = m_version;
    if (m_routesAreShown) {
        snapshot->lines.reserve(m_routes.size());
        for (const RouteEntry& entry : m_routes)
            snapshot->lines.push_back({entry.route, entry.route->lineColor});
    }
    snapshot->pins.reserve(m_markers.size());
    for (const MarkerEntry& entry : m_markers) {
        if (!entry.marker->isUserLocation && !entry.size.isEmpty())
            snapshot->pins.push_back({entry.point, image(entry.drawing, devicePixelRatio)});
    }
    m_snapshotRatio = devicePixelRatio;
    m_snapshot = snapshot;
    return snapshot;
}

std::optional<MapContents::FoundRoute> MapContents::routeAt(const MapViewport& viewport, const QPointF& position) const
{
    std::optional<FoundRoute> found;
    if (!m_routesAreShown)
        return found;
    const MapPoint point = viewport.fromView(position);
    const double touches = MapView::lineWidth / 2 / viewport.worldSize();
    double reach = routeReach / viewport.worldSize();
    for (const RouteEntry& entry : m_routes) {
        const std::optional<RouteHit> hit = entry.boxes.nearest(*entry.route, point, reach);
        if (!hit)
            continue;
        found = {entry.route, *hit};
        // A line that is touched gives way only to one that lies on it, and is touched, too.
        reach = std::max(hit->distance, touches);
    }
    return found;
}

QRectF MapContents::rectOf(const MarkerEntry& entry, const QPointF& position)
{
    QRectF rect(QPointF(), entry.size);
    rect.moveCenter(position);
    if (!entry.marker->isUserLocation)
        rect.moveBottom(position.y());
    return rect;
}

MapContents::Marker MapContents::markerAt(const MapViewport& viewport, const QPointF& position) const
{
    const MapPoint point = viewport.fromView(position);
    const double world = viewport.worldSize();
    Marker found;
    for (auto entry = m_markers.rbegin(); entry != m_markers.rend(); ++entry) {
        // Of those that don't move the first one found is the topmost; the present position lies above them all.
        if (entry->size.isEmpty() || (found && !entry->marker->isUserLocation))
            continue;
        // On whichever copy of the world is nearest to the position.
        const QPointF off(std::remainder(entry->point.x - point.x, 1) * world, (entry->point.y - point.y) * world);
        QRectF rect = rectOf(*entry, position + off);
        const QPointF grow(std::max(0.0, smallestTarget - rect.width()) / 2,
                           std::max(0.0, smallestTarget - rect.height()) / 2);
        rect.adjust(-grow.x(), -grow.y(), grow.x(), grow.y());
        if (!rect.contains(position))
            continue;
        found = entry->marker;
        if (found->isUserLocation)
            break;
    }
    return found;
}

QRectF MapContents::markerRect(const MapViewport& viewport, const Marker& marker) const
{
    const auto place = m_markerPlaces.find(marker.get());
    if (place == m_markerPlaces.end())
        return {};
    const MarkerEntry& entry = *place->second;
    return rectOf(entry, viewport.toView(nearestCopy(viewport, entry.point)));
}

std::vector<MapContents::Marker> MapContents::markersInView(const MapViewport& viewport) const
{
    std::vector<std::pair<double, Marker>> found;
    for (const MarkerEntry& entry : m_markers) {
        const QPointF position = viewport.toView(nearestCopy(viewport, entry.point));
        if (!entry.size.isEmpty() && QRectF(QPointF(), viewport.size).contains(position))
            found.emplace_back(distanceFromMiddle(viewport, position), entry.marker);
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<Marker> markers;
    markers.reserve(found.size());
    for (auto& [distance, marker] : found)
        markers.push_back(std::move(marker));
    return markers;
}

std::vector<MapContents::Marker> MapContents::positionMarkers() const
{
    std::vector<Marker> markers;
    // There is one at most, and it came last.
    std::size_t left = m_positionMarkers;
    for (auto entry = m_markers.rbegin(); left > 0 && entry != m_markers.rend(); ++entry) {
        if (!entry->marker->isUserLocation)
            continue;
        --left;
        if (!entry->size.isEmpty())
            markers.push_back(entry->marker);
    }
    return markers;
}

QImage MapContents::drawing(const Marker& marker, double devicePixelRatio) const
{
    const auto place = m_markerPlaces.find(marker.get());
    return place == m_markerPlaces.end() ? QImage() : image(place->second->drawing, devicePixelRatio);
}

QImage MapContents::image(const QString& name, double devicePixelRatio) const
{
    if (name.isEmpty())
        return {};
    if (std::exchange(m_imagesRatio, devicePixelRatio) != devicePixelRatio)
        m_images.clear();
    const auto known = m_images.constFind(name);
    return known != m_images.cend() ? *known : *m_images.insert(name, annotationImage(name, devicePixelRatio));
}

} // namespace cardreel
