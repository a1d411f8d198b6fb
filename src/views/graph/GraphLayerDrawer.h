#pragma once

#include "telemetry/Telemetry.h"
#include "views/graph/GraphGeometry.h"

#include <QColor>

#include <memory>
#include <optional>
#include <vector>

class QPainter;

namespace cardreel {

/// Draws the axes, curves and markers of one recording. Owned by the view that keeps the picture; interface thread.
class GraphLayerDrawer
{
public:
    double offsetX = 40; ///< the plot's margins in points
    double offsetY = 12;

    /// What is drawn from now on, null for axes alone; the tops of the axes are in the locale's unit and in G.
    void setCurrentGOPs(std::shared_ptr<const Telemetry> telemetry, double maxSpeed, double maxMotionABS);
    /// The groups drawn; none without a recording.
    std::optional<GOPList> currentGOPs() const;
    double maxSpeedValue() const { return m_maxSpeedValue; }
    double maxMotionABSValue() const { return m_maxMotionABSValue; }

    GraphGeometry geometry(const QSizeF& bounds) const { return {bounds, offsetX, offsetY}; }
    /// Draws into the rectangle from (0, 0) to `bounds`.
    void draw(QPainter& painter, const QSizeF& bounds);
    /// How often it drew.
    int drawings() const { return m_drawings; }

private:
    struct Marker
    {
        std::size_t group;
        double position;
        QColor color;
    };

    void drawSpeed(QPainter& painter, const GraphGeometry& geometry) const;
    void drawMarkers(QPainter& painter, const GraphGeometry& geometry) const;
    void drawMotion(QPainter& painter, const GraphGeometry& geometry, double MotionData::*axis,
                    const QColor& color) const;

    std::shared_ptr<const Telemetry> m_telemetry;
    std::vector<float> m_speeds; ///< of the groups, in the unit of the axis; NaN for none
    std::vector<Marker> m_markers;
    double m_maxSpeedValue = 1;
    double m_maxMotionABSValue = 1;
    int m_drawings = 0;
};

} // namespace cardreel
