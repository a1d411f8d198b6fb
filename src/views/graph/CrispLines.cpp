#include "views/graph/CrispLines.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

double lineWidth(double scale)
{
    return std::max(1.0, std::round(scale)) / scale;
}

} // namespace

CrispLines::CrispLines(QPainter& painter)
    : m_painter(painter)
    , m_scale(painter.device()->devicePixelRatioF())
    , m_width(lineWidth(m_scale))
{
}

double CrispLines::rounded(double coordinate) const
{
    return std::floor(coordinate * m_scale) / m_scale;
}

void CrispLines::vertical(double x, double from, double to, const QColor& color)
{
    const double top = rounded(from);
    m_painter.fillRect(QRectF(rounded(x), top, m_width, rounded(to) - top + m_width), color);
}

void CrispLines::horizontal(double y, double from, double to, const QColor& color)
{
    const double left = rounded(from);
    m_painter.fillRect(QRectF(left, rounded(y), rounded(to) - left + m_width, m_width), color);
}

void CrispLines::dashed(double x, double from, double to, double dash, double gap, const QColor& color)
{
    const int dashes = static_cast<int>(std::ceil((to - from) / (dash + gap)));
    for (int i = 0; i < dashes; ++i) {
        const double bottom = to - i * (dash + gap);
        const double top = rounded(std::max(from, bottom - dash));
        m_painter.fillRect(QRectF(rounded(x), top, m_width, rounded(bottom) - top), color);
    }
}

QRectF CrispLines::columnAt(double x, double height, double devicePixelRatio)
{
    return {std::floor(x * devicePixelRatio) / devicePixelRatio, 0, lineWidth(devicePixelRatio), height};
}

} // namespace cardreel
