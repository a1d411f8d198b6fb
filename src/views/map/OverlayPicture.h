#pragma once

#include "platform/map/MapGeometry.h"

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QSize>

#include <atomic>
#include <memory>
#include <vector>

namespace cardreel {

class CustomMapPolyline;

/// Routes and markers as they were at a moment, the topmost last. Never changed once made; any thread.
struct OverlaySnapshot
{
    struct Line
    {
        std::shared_ptr<const CustomMapPolyline> route;
        QColor color; ///< read on the interface thread, where it may change
    };
    struct Pin
    {
        MapPoint point; ///< on which the middle of its lower edge stands
        QImage image;
    };

    std::vector<Line> lines;
    std::vector<Pin> pins;
    unsigned version = 0;
};

/// Which part of the map a picture of routes and markers shows, at which scale.
struct OverlayFrame
{
    double zoom = 0;
    QPointF origin; ///< the upper left corner, in points from the world's
    QSize size;     ///< points
    double devicePixelRatio = 1;
};

/// Paints what lies in the frame, on every copy of the world. A null picture when told to stop. Any thread.
QImage overlayPicture(const OverlaySnapshot& snapshot, const OverlayFrame& frame, const std::atomic<bool>& stop);

} // namespace cardreel
