#pragma once

#include <QLineF>

#include <optional>
#include <vector>

namespace cardreel {

/// Makes the lines of a curve that runs from left to right. Where more points stand above one pixel column than can be
/// told apart, only its first, lowest, highest and last are kept: the lines cover the same pixels, so that hours of
/// samples cost no more than the pixels they fall on. A value.
class CurveLines
{
public:
    /// What is kept of a column; `pixel` is the width of one in the coordinates of the points.
    explicit CurveLines(double pixel);

    /// The next point; x doesn't fall. One that isn't finite interrupts the curve.
    void add(double x, double y);
    /// Ends the curve.
    std::vector<QLineF> finish();

private:
    struct Column
    {
        double number;
        QPointF first;
        QPointF lowest;
        QPointF highest;
        QPointF last;
    };

    void take(const QPointF& point);
    void leaveColumn();

    double m_pixel;
    std::optional<Column> m_column;
    std::optional<QPointF> m_end; ///< of the last line
    std::vector<QLineF> m_lines;
};

} // namespace cardreel
