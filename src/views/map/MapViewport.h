#pragma once

#include "platform/map/MapGeometry.h"

#include <QPointF>
#include <QSizeF>

namespace cardreel {

/// Which part of the map a view shows, and how places become points of the view and back. A plain value; any thread.
struct MapViewport
{
    static constexpr double minZoom = 0;
    static constexpr double maxZoom = 20;
    /// A fit goes no deeper: a parked car is shown with the streets around it.
    static constexpr double maxFitZoom = 17;

    MapPoint center{0.5, 0.5};
    double zoom = 0; ///< log2 of how many points the world is wide, less 8
    QSizeF size;     ///< of the view, in points

    bool operator==(const MapViewport& other) const = default;

    double worldSize() const; ///< points
    /// The view's upper left corner, in points from the world's. Whole, so that nothing is blurred by half a point.
    QPointF origin() const;
    QPointF toView(const MapPoint& point) const;
    MapPoint fromView(const QPointF& position) const;
    MapRect rect() const;

    /// With x of the centre from 0 to 1, the zoom within its limits, and no more beyond the world's upper and lower
    /// edge than can't be helped: a world less high than the view is centred.
    MapViewport bounded() const;
    MapViewport centered(const MapPoint& point) const;
    /// As a drag by so many points does it.
    MapViewport dragged(const QPointF& points) const;
    /// What is at the position stays there, as far as the bounds let it.
    MapViewport zoomedAbout(const QPointF& position, double newZoom) const;
    /// The rectangle in the middle, as large as the view less `edgePadding` points on each side lets it be.
    MapViewport fitting(const MapRect& rectangle, double edgePadding) const;

    /// A part of the way to another viewport, 0 to 1, as the camera goes: around the point that both show in the same
    /// place, and the shorter way round the world.
    MapViewport toward(const MapViewport& target, double part) const;
};

} // namespace cardreel
