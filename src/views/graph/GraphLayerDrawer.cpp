#include "views/graph/GraphLayerDrawer.h"

#include "views/graph/CrispLines.h"
#include "views/graph/CurveLines.h"
#include "views/graph/GraphColors.h"
#include "views/graph/TelemetryMoment.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace cardreel {

namespace {

constexpr double dashLength = 4;
constexpr double dashGap = 3;
constexpr int gridAlpha = 40;

/// Draws a curve whose y axis points upwards. Lines of their own are what the rasteriser draws fastest: a whole stroke
/// wider than a pixel takes a hundred times as long.
void drawCurve(QPainter& painter, CurveLines curve, double height, const QColor& color)
{
    std::vector<QLineF> lines = curve.finish();
    for (QLineF& line : lines)
        line.setLine(line.x1(), height - line.y1(), line.x2(), height - line.y2());
    painter.setPen(QPen(color, 1));
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

double pixelOf(const QPainter& painter)
{
    return 1 / painter.device()->devicePixelRatioF();
}

void drawAxis(CrispLines& lines, const GraphGeometry& geometry, double x, double tickEnd)
{
    const double height = geometry.bounds.height();
    lines.vertical(x, geometry.offsetY, height - geometry.offsetY, graphAxisColor);
    for (int tick = GraphGeometry::tickCount - 1; tick >= 0; --tick)
        lines.horizontal(height - geometry.tickY(tick), std::min(x, tickEnd), std::max(x, tickEnd), graphAxisColor);
}

void drawAxes(QPainter& painter, const GraphGeometry& geometry)
{
    const double left = geometry.offsetX;
    const double right = geometry.bounds.width() - geometry.offsetX;
    CrispLines lines(painter);
    QColor grid = graphAxisColor;
    grid.setAlpha(gridAlpha);
    for (int tick = 0; tick < GraphGeometry::tickCount; ++tick)
        lines.horizontal(geometry.bounds.height() - geometry.tickY(tick), left, right, grid);
    lines.horizontal(geometry.bounds.height() - geometry.zeroY(), left, right, graphAxisColor);
    drawAxis(lines, geometry, left, left - GraphGeometry::tickLength);
    drawAxis(lines, geometry, right, right + GraphGeometry::tickLength);
}

} // namespace

void GraphLayerDrawer::setCurrentGOPs(std::shared_ptr<const Telemetry> telemetry, double maxSpeed, double maxMotionABS)
{
    m_telemetry = std::move(telemetry);
    m_maxSpeedValue = maxSpeed == 0 ? 1 : maxSpeed;
    m_maxMotionABSValue = maxMotionABS == 0 ? 1 : maxMotionABS;
    m_speeds.clear();
    m_markers.clear();
    if (!m_telemetry)
        return;
    // Taken out here, for asking for the locale and reading the records takes longer than drawing them.
    m_speeds.reserve(m_telemetry->GOPs().size());
    const auto convert = CustomLocation::shouldUseMilePerHour()
                             ? qOverload<double>(&CustomLocation::speedAtMilePerHour)
                             : qOverload<double>(&CustomLocation::speedAtKirometerPerHour);
    for (const GOPData& group : m_telemetry->GOPs()) {
        const CustomLocation& fix = group.location();
        for (const DriveSupportData& support : group.driveSupportInfos()) {
            for (const ADASLineData& line : support.appearanceLineInfos())
                m_markers.push_back({m_speeds.size(), line.position, line.color});
        }
        m_speeds.push_back(convert(fix.shownSpeed()));
    }
}

std::optional<GOPList> GraphLayerDrawer::currentGOPs() const
{
    return m_telemetry ? std::optional(m_telemetry->GOPs()) : std::nullopt;
}

void GraphLayerDrawer::draw(QPainter& painter, const QSizeF& bounds)
{
    ++m_drawings;
    const GraphGeometry lines = geometry(bounds);
    if (lines.plotWidth() <= 0 || lines.plotHeight() <= 0)
        return;
    drawAxes(painter, lines);
    if (m_speeds.size() < 2)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    drawSpeed(painter, lines);
    drawMarkers(painter, lines);
    drawMotion(painter, lines, &MotionData::gx, graphGXColor);
    drawMotion(painter, lines, &MotionData::gy, graphGYColor);
    drawMotion(painter, lines, &MotionData::gz, graphGZColor);
}

void GraphLayerDrawer::drawSpeed(QPainter& painter, const GraphGeometry& geometry) const
{
    CurveLines curve(pixelOf(painter));
    for (std::size_t i = 0; i < m_speeds.size(); ++i)
        curve.add(geometry.groupX(i, m_speeds.size()),
                  geometry.speedY(static_cast<double>(m_speeds[i]), m_maxSpeedValue));
    drawCurve(painter, std::move(curve), geometry.bounds.height(), graphSpeedColor);
}

void GraphLayerDrawer::drawMarkers(QPainter& painter, const GraphGeometry& geometry) const
{
    // Of markers in the same pixel column the last one shows, so no more are drawn than there are columns.
    const double pixel = pixelOf(painter);
    std::vector<QColor> columns(static_cast<std::size_t>(geometry.bounds.width() / pixel) + 1);
    for (const Marker& marker : m_markers) {
        const double column = geometry.markerX(marker.group, m_speeds.size(), marker.position) / pixel;
        if (column >= 0 && column < static_cast<double>(columns.size()))
            columns[static_cast<std::size_t>(column)] = marker.color;
    }
    CrispLines lines(painter);
    for (std::size_t column = 0; column < columns.size(); ++column) {
        // In the middle of the column, for its edge may come out a hair too far to the left.
        if (columns[column].isValid())
            lines.dashed((static_cast<double>(column) + 0.5) * pixel, geometry.offsetY,
                         geometry.bounds.height() - geometry.offsetY, dashLength, dashGap, columns[column]);
    }
}

void GraphLayerDrawer::drawMotion(QPainter& painter, const GraphGeometry& geometry, double MotionData::*axis,
                                  const QColor& color) const
{
    const std::span<const MotionData> motions = m_telemetry->motions();
    CurveLines curve(pixelOf(painter));
    for (std::size_t k = 0; k < motions.size(); ++k)
        curve.add(geometry.motionX(k, motions.size()), geometry.motionY(motions[k].*axis, m_maxMotionABSValue));
    drawCurve(painter, std::move(curve), geometry.bounds.height(), color);
}

} // namespace cardreel
