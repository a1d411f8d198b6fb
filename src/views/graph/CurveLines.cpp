#include "views/graph/CurveLines.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cardreel {

namespace {

// Far beyond any screen, and near enough for the rasteriser's whole numbers.
constexpr double farAway = 1e6;

} // namespace

CurveLines::CurveLines(double pixel)
    : m_pixel(pixel)
{
}

void CurveLines::add(double x, double y)
{
    if (!std::isfinite(x) || !std::isfinite(y)) {
        leaveColumn();
        m_end.reset();
        return;
    }
    const QPointF point(std::clamp(x, -farAway, farAway), std::clamp(y, -farAway, farAway));
    const double number = std::floor(point.x() / m_pixel);
    if (!m_column || m_column->number != number) {
        leaveColumn();
        m_column = Column{number, point, point, point, point};
        return;
    }
    if (point.y() < m_column->lowest.y())
        m_column->lowest = point;
    if (point.y() > m_column->highest.y())
        m_column->highest = point;
    m_column->last = point;
}

std::vector<QLineF> CurveLines::finish()
{
    leaveColumn();
    m_end.reset();
    return std::exchange(m_lines, {});
}

void CurveLines::take(const QPointF& point)
{
    if (m_end && *m_end != point)
        m_lines.emplace_back(*m_end, point);
    m_end = point;
}

void CurveLines::leaveColumn()
{
    if (!m_column)
        return;
    const bool isLowestFirst = m_column->lowest.x() <= m_column->highest.x();
    take(m_column->first);
    take(isLowestFirst ? m_column->lowest : m_column->highest);
    take(isLowestFirst ? m_column->highest : m_column->lowest);
    take(m_column->last);
    m_column.reset();
}

} // namespace cardreel
