#include "views/graph/GraphPaneLayout.h"

#include "views/graph/WarningChip.h"

#include <algorithm>

namespace cardreel {

namespace {

constexpr int highPane = 260;
constexpr int widePane = 680;
constexpr int spaciousPane = 520;
constexpr int edge = 12;
constexpr int spaciousEdge = 24;
constexpr int gap = 12;
constexpr int spaciousGap = 40;
constexpr int smallGap = 8;
constexpr int lowestMeter = 112;
constexpr int highestMeter = 160;
constexpr int meterPercent = 38;
constexpr int largestDialBeside = 140;
constexpr int dialMargin = 6;
constexpr int readoutCount = 4;

} // namespace

GraphPaneLayout GraphPaneLayout::fitted(const QSize& pane, const QSize& cell)
{
    if (pane.height() >= highPane)
        return below(pane, cell);
    return pane.width() >= widePane ? beside(pane, cell) : compact(pane, cell);
}

GraphPaneLayout GraphPaneLayout::below(const QSize& pane, const QSize& cell)
{
    const bool isSpacious = pane.width() >= spaciousPane;
    const int margin = isSpacious ? spaciousEdge : edge;
    const int between = isSpacious ? spaciousGap : gap;
    const int meter = std::clamp(pane.height() * meterPercent / 100, lowestMeter, highestMeter);
    const int top = pane.height() - meter;
    const int beside = between + cell.width() + gap + WarningChip::chipHeight;
    const int side = std::min(meter - 2 * dialMargin, pane.width() - 2 * margin - beside);
    const int figures = readoutCount * cell.height();
    GraphPaneLayout layout;
    layout.plot = {0, 0, pane.width(), top - 1};
    layout.hairline = {0, top - 1, pane.width(), 1};
    layout.dial = {margin, top + (meter - side) / 2, side, side};
    layout.readouts = {margin + side + between, top + (meter - figures) / 2, cell.width(), figures};
    const int left = layout.readouts.right() + 1 + gap;
    layout.warning = {left, top, pane.width() - margin - left, meter};
    return layout;
}

GraphPaneLayout GraphPaneLayout::beside(const QSize& pane, const QSize& cell)
{
    const int chip = WarningChip::chipHeight;
    const int figures = readoutCount * cell.height();
    const int side = std::min(pane.height() - 2 * edge - smallGap - chip, largestDialBeside);
    const int meter = side + gap + cell.width();
    const int left = pane.width() - edge - meter;
    const int top = (pane.height() - side - smallGap - chip) / 2;
    GraphPaneLayout layout;
    layout.plot = {0, 0, left - edge - 1, pane.height()};
    layout.hairline = {left - edge - 1, 0, 1, pane.height()};
    layout.dial = {left, top, side, side};
    layout.readouts = {left + side + gap, top + (side - figures) / 2, cell.width(), figures};
    layout.warning = {left, top + side + smallGap, meter, chip};
    return layout;
}

GraphPaneLayout GraphPaneLayout::compact(const QSize& pane, const QSize& cell)
{
    const int chip = WarningChip::chipHeight;
    GraphPaneLayout layout;
    layout.readoutColumns = pane.width() >= 2 * edge + readoutCount * cell.width() + gap + chip ? readoutCount : 2;
    const QSize figures(layout.readoutColumns * cell.width(), readoutCount / layout.readoutColumns * cell.height());
    const int meter = std::max(figures.height(), chip) + smallGap;
    const int top = pane.height() - meter;
    layout.plot = {0, 0, pane.width(), top - 1};
    layout.hairline = {0, top - 1, pane.width(), 1};
    layout.readouts = {QPoint(edge, top + (meter - figures.height()) / 2), figures};
    const int left = layout.readouts.right() + 1 + gap;
    layout.warning = {left, top, pane.width() - edge - left, meter};
    return layout;
}

} // namespace cardreel
