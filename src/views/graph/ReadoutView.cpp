#include "views/graph/ReadoutView.h"

#include "views/graph/GraphColors.h"

#include <QPaintEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int textPixels = 12;
constexpr int cellHeight = 20;
constexpr int cellGap = 12;

QFont readoutFont(QFont font)
{
    font.setPixelSize(textPixels);
    return font;
}

} // namespace

ReadoutView::ReadoutView(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ReadoutView::setTexts(const QStringList& texts)
{
    for (int i = 0; i < texts.size(); ++i) {
        if (i >= m_texts.size() || texts[i] != m_texts[i])
            update(cell(i));
    }
    m_texts = texts;
}

void ReadoutView::setColumns(int columns)
{
    m_columns = columns;
    update();
}

QSize ReadoutView::cellSize(const QFont& widgetFont)
{
    return {QFontMetrics(readoutFont(widgetFont)).horizontalAdvance(u"GZ:-0.000000"_s) + cellGap, cellHeight};
}

QRect ReadoutView::cell(int index) const
{
    const QSize size = cellSize(font());
    return {{index % m_columns * size.width(), index / m_columns * size.height()}, size};
}

void ReadoutView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), graphBackGroundColor);
    painter.setFont(readoutFont(font()));
    painter.setPen(graphReadoutColor);
    for (int i = 0; i < m_texts.size(); ++i) {
        if (event->rect().intersects(cell(i)))
            painter.drawText(cell(i).adjusted(0, 0, -cellGap / 2, 0), Qt::AlignLeft | Qt::AlignVCenter, m_texts[i]);
    }
}

} // namespace cardreel
