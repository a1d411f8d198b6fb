// What the plot's picture holds beside the curves: titles, legend, labels and the sentence that stands for them.

#include "telemetry/CustomLocation.h"
#include "views/graph/GraphColors.h"
#include "views/graph/GraphLayerView.h"

#include <QPainter>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int headerRow = 20;
constexpr int headerTop = 4;
constexpr int edge = 12;
constexpr int gap = 14;
constexpr int labelGap = 4;
constexpr int labelHeight = 16;
constexpr int smallText = 11;
constexpr int messageText = 13;
constexpr QColor messageGround(51, 51, 51, 220);

QFont fontOf(const QWidget& widget, int pixels)
{
    QFont font = widget.font();
    font.setPixelSize(pixels);
    return font;
}

struct LegendEntry
{
    QString text;
    QColor color;
};

std::array<LegendEntry, 4> legend()
{
    return {LegendEntry{GraphLayerView::tr("speed"), graphSpeedColor.lighter(125)},
            {u"GX"_s, graphGXColor},
            {u"GY"_s, graphGYColor},
            {u"GZ"_s, graphGZColor}};
}

int legendWidth(const QFontMetrics& metrics)
{
    int width = -gap;
    for (const LegendEntry& entry : legend())
        width += metrics.horizontalAdvance(entry.text) + gap;
    return width;
}

QString speedTitle()
{
    return CustomLocation::shouldUseMilePerHour() ? GraphLayerView::tr("SPEED(mph)")
                                                  : GraphLayerView::tr("SPEED(km/h)");
}

QString motionTitle()
{
    return GraphLayerView::tr("ACCELERATION(G)");
}

} // namespace

/// The legend has the titles' row where it finds room between them, else a row below.
int GraphLayerView::headerHeight() const
{
    const QFontMetrics metrics(fontOf(*this, smallText));
    const int title = std::max(metrics.horizontalAdvance(speedTitle()), metrics.horizontalAdvance(motionTitle()));
    const bool fits = 2 * (edge + title + gap) + legendWidth(metrics) <= width();
    return headerTop + (fits ? headerRow : 2 * headerRow);
}

QImage GraphLayerView::drawnPicture()
{
    QImage picture((QSizeF(size()) * devicePixelRatioF()).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(graphBackGroundColor);
    const QRect layer = layerRect();
    drawPlot(picture, layer);
    QPainter painter(&picture);
    painter.setFont(fontOf(*this, smallText));
    drawHeader(painter);
    drawLabels(painter, m_drawer.geometry(layer.size()));
    drawMessage(painter);
    return picture;
}

/// Through a window on the picture, so that curves that leave the plot don't run over the titles.
void GraphLayerView::drawPlot(QImage& picture, const QRect& layer)
{
    const int top = qRound(layer.top() * picture.devicePixelRatio());
    if (top >= picture.height())
        return;
    QImage plot(picture.scanLine(top), picture.width(), picture.height() - top, picture.bytesPerLine(),
                picture.format());
    plot.setDevicePixelRatio(picture.devicePixelRatio());
    QPainter painter(&plot);
    m_drawer.draw(painter, layer.size());
}

void GraphLayerView::drawHeader(QPainter& painter) const
{
    const QFontMetrics metrics = painter.fontMetrics();
    const QRect row(edge, headerTop, width() - 2 * edge, headerRow);
    const int half = (row.width() - gap) / 2;
    painter.setPen(graphTextColor);
    painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, metrics.elidedText(speedTitle(), Qt::ElideRight, half));
    painter.drawText(row, Qt::AlignRight | Qt::AlignVCenter, metrics.elidedText(motionTitle(), Qt::ElideRight, half));
    QRect place((width() - legendWidth(metrics)) / 2, headerHeight() - headerRow, width(), headerRow);
    for (const LegendEntry& entry : legend()) {
        painter.setPen(entry.color);
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, entry.text);
        place.translate(metrics.horizontalAdvance(entry.text) + gap, 0);
    }
}

void GraphLayerView::drawLabels(QPainter& painter, const GraphGeometry& geometry) const
{
    const QRectF layer = layerRect();
    const double room = geometry.offsetX - GraphGeometry::tickLength - labelGap;
    const auto label = [&](double left, double y, Qt::Alignment side, const QString& text) {
        const QRectF place(left, layer.bottom() - y - labelHeight / 2.0, room, labelHeight);
        painter.drawText(place, static_cast<int>(side | Qt::AlignVCenter), text);
    };
    painter.setPen(graphTextColor);
    const int last = GraphGeometry::tickCount - 1;
    for (int tick = 0; tick <= last; ++tick) {
        label(0, geometry.tickY(tick), Qt::AlignRight, m_speedLabels.value(tick));
        label(width() - room, geometry.tickY(tick), Qt::AlignLeft, m_motionLabels.value(last - tick));
    }
}

void GraphLayerView::drawMessage(QPainter& painter) const
{
    if (m_message.isEmpty())
        return;
    painter.setFont(fontOf(*this, messageText));
    const int room = static_cast<int>(width() - 2 * m_drawer.offsetX) - 2 * gap;
    const QSize size = painter.fontMetrics().boundingRect(0, 0, room, height(), Qt::TextWordWrap, m_message).size();
    QRect place({}, size);
    place.moveCenter(layerRect().center());
    painter.fillRect(place.adjusted(-gap, -gap / 2, gap, gap / 2), messageGround);
    painter.setPen(graphReadoutColor);
    painter.drawText(place.adjusted(-1, 0, 1, 0), Qt::AlignCenter | Qt::TextWordWrap, m_message);
}

} // namespace cardreel
