#pragma once

#include <QRect>
#include <QSize>

namespace cardreel {

/// How the graph pane divides its room: the meter with all its parts stands below the graph where the pane is high,
/// beside it where it is wide; else the figures have a narrow row and the dial isn't shown. Nothing overlaps. A value.
struct GraphPaneLayout
{
    QRect plot;
    QRect hairline; ///< between the graph and the meter
    QRect dial;     ///< empty for none
    QRect readouts;
    int readoutColumns = 1;
    QRect warning; ///< room for the warning chip

    /// `cell` is the size of one of the four readouts. From 300x180 pixels on everything fits.
    static GraphPaneLayout fitted(const QSize& pane, const QSize& cell);

private:
    static GraphPaneLayout below(const QSize& pane, const QSize& cell);
    static GraphPaneLayout beside(const QSize& pane, const QSize& cell);
    static GraphPaneLayout compact(const QSize& pane, const QSize& cell);
};

} // namespace cardreel
