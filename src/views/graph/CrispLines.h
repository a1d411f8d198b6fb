#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace cardreel {

/// Draws upright and level lines one point wide that fill whole pixels at every scale factor. Coordinates are the
/// painter's, which must not be transformed but by the scale factor. A value, as long as the painter.
class CrispLines
{
public:
    explicit CrispLines(QPainter& painter);

    void vertical(double x, double from, double to, const QColor& color);
    void horizontal(double y, double from, double to, const QColor& color);
    /// From the end `to` up to `from`, dashes first.
    void dashed(double x, double from, double to, double dash, double gap, const QColor& color);
    /// Which points a vertical line at x covers.
    static QRectF columnAt(double x, double height, double devicePixelRatio);

private:
    double rounded(double coordinate) const;

    QPainter& m_painter;
    double m_scale;
    double m_width;
};

} // namespace cardreel
