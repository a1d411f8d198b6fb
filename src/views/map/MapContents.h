#pragma once

#include "views/map/MapHitTest.h"
#include "views/map/MapView.h"
#include "views/map/MapViewport.h"
#include "views/map/OverlayPicture.h"

#include <QHash>
#include <QImage>
#include <QRectF>

#include <list>
#include <memory>
#include <optional>
#include <unordered_map>

namespace cardreel {

/// The routes and markers that lie on a map, in the order in which they came, and which of them is at a point. Belongs
/// to a MapView; interface thread.
class MapContents
{
public:
    using Route = MapView::Route;
    using Marker = MapView::Marker;

    struct FoundRoute
    {
        Route route;
        RouteHit hit;

        bool operator==(const FoundRoute& other) const;
    };

    // Each says whether anything changed.
    bool addRoute(const Route& route);
    bool removeRoute(const Route& route);
    bool hasRoute(const Route& route) const { return m_routePlaces.contains(route.get()); }
    bool setRoutesShown(bool shown);
    /// A marker without a place or without a drawing is kept and never seen.
    bool addMarker(const Marker& marker);
    bool removeMarker(const Marker& marker);
    bool hasMarker(const Marker& marker) const { return m_markerPlaces.contains(marker.get()); }
    void clear();
    /// Whether there is nothing for the background to paint.
    bool isEmpty() const { return m_routes.empty() && m_markers.size() == m_positionMarkers; }

    /// Rises whenever something that the background paints changes.
    unsigned version() const { return m_version; }
    /// What the background paints. Kept until something changes.
    std::shared_ptr<const OverlaySnapshot> snapshot(double devicePixelRatio);

    /// The line under a position of the view; of those that the position touches the topmost. Nothing for routes that
    /// aren't shown.
    std::optional<FoundRoute> routeAt(const MapViewport& viewport, const QPointF& position) const;
    Marker markerAt(const MapViewport& viewport, const QPointF& position) const;
    /// Where the marker's drawing lies in the view, on the copy of the world nearest to the view's middle.
    QRectF markerRect(const MapViewport& viewport, const Marker& marker) const;
    /// The markers of which the point is to be seen, the nearest to the view's middle first.
    std::vector<Marker> markersInView(const MapViewport& viewport) const;
    /// The markers of the present position, which the background leaves out because they move.
    std::vector<Marker> positionMarkers() const;
    /// A marker's drawing, unturned.
    QImage drawing(const Marker& marker, double devicePixelRatio) const;

private:
    struct RouteEntry
    {
        Route route;
        RouteBoxes boxes;
    };
    struct MarkerEntry
    {
        Marker marker;
        MapPoint point;
        QString drawing; ///< its name
        QSizeF size;     ///< of the drawing, in points
    };
    using Routes = std::list<RouteEntry>;
    using Markers = std::list<MarkerEntry>;

    QImage image(const QString& name, double devicePixelRatio) const;
    static QRectF rectOf(const MarkerEntry& entry, const QPointF& position);

    Routes m_routes;
    std::unordered_map<const void*, Routes::iterator> m_routePlaces;
    bool m_routesAreShown = true;
    Markers m_markers;
    std::unordered_map<const void*, Markers::iterator> m_markerPlaces;
    std::size_t m_positionMarkers = 0; ///< how many of them are of the present position
    unsigned m_version = 0;
    std::shared_ptr<const OverlaySnapshot> m_snapshot;
    double m_snapshotRatio = 0;
    mutable QHash<QString, QImage> m_images;
    mutable double m_imagesRatio = 0;
};

} // namespace cardreel
