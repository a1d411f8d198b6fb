#pragma once

#include "platform/map/MapGeometry.h"

#include <QPolygonF>
#include <QRectF>

#include <vector>

namespace cardreel {

class CustomMapPolyline;

/// How places become points of a picture.
struct PictureScale
{
    double worldSize = 1; ///< in the picture's points
    QPointF origin;       ///< the picture's upper left corner, from the world's

    QPointF at(const MapPoint& point, double copy) const
    {
        return {(point.x + copy) * worldSize - origin.x(), point.y * worldSize - origin.y()};
    }
};

/// A part of a route as it is drawn. One point is a dot.
struct RouteStroke
{
    QPolygonF points;
    bool isGap = false;
    double start = 0; ///< in a gap, how far the stroke begins from the gap's beginning, so that its dashes stay in step
};

/// Appends what is to be drawn of a route on a copy of the world: cut off at `clip`, so that however far a line leads,
/// its strokes stay short, and without points so near to one another that nobody sees them. Any thread.
void appendRouteStrokes(std::vector<RouteStroke>& strokes, const CustomMapPolyline& route, const PictureScale& scale,
                        double copy, const QRectF& clip);

} // namespace cardreel
