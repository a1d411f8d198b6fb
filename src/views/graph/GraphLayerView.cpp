#include "views/graph/GraphLayerView.h"

#include "views/graph/CrispLines.h"
#include "views/graph/GraphColors.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <cmath>

namespace cardreel {

namespace {

constexpr int strip = 7; ///< what the line's head takes to both sides
constexpr double headWidth = 9;
constexpr double headHeight = 8;
constexpr int pointerAlpha = 110;

} // namespace

GraphLayerView::GraphLayerView(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
}

void GraphLayerView::redraw()
{
    m_isStale = true;
    update();
}

void GraphLayerView::setLabels(const QStringList& speed, const QStringList& motion)
{
    m_speedLabels = speed;
    m_motionLabels = motion;
    redraw();
}

void GraphLayerView::setMessage(const QString& message)
{
    m_message = message;
    redraw();
}

void GraphLayerView::setPosition(std::optional<double> fraction)
{
    moveLine(m_position, fraction);
}

void GraphLayerView::setPointer(std::optional<double> fraction)
{
    moveLine(m_pointer, fraction);
}

/// A tick comes a hundred times a second, and most move the line by less than a pixel.
void GraphLayerView::moveLine(std::optional<double>& line, std::optional<double> fraction)
{
    const bool stays = line && fraction && lineAt(*line) == lineAt(*fraction);
    if (!stays && (line || fraction)) {
        update(stripAt(line));
        update(stripAt(fraction));
    }
    line = fraction;
}

QRect GraphLayerView::layerRect() const
{
    return rect().adjusted(0, headerHeight(), 0, 0);
}

double GraphLayerView::xOf(double fraction) const
{
    return m_drawer.geometry(layerRect().size()).positionX(fraction);
}

double GraphLayerView::fractionAt(const QPointF& place) const
{
    return m_drawer.geometry(layerRect().size()).fractionAt(place.x());
}

QRectF GraphLayerView::lineAt(double fraction) const
{
    return CrispLines::columnAt(xOf(fraction), height(), devicePixelRatioF());
}

QRect GraphLayerView::stripAt(std::optional<double> fraction) const
{
    if (!fraction)
        return {};
    return {static_cast<int>(std::floor(xOf(*fraction))) - strip, layerRect().top(), 2 * strip + 1,
            layerRect().height()};
}

bool GraphLayerView::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::UngrabMouse:
    case QEvent::WindowDeactivate:
    case QEvent::Hide:
        endSeek();
        break;
    case QEvent::Leave:
        setPointer({});
        Q_EMIT unpointed();
        break;
    case QEvent::FontChange:
    case QEvent::LanguageChange:
        redraw();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void GraphLayerView::paintEvent(QPaintEvent* event)
{
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (m_isStale || m_picture.size() != pixels)
        m_picture = drawnPicture();
    m_isStale = false;
    QPainter painter(this);
    // One rectangle at a time: of a region of strips all between them would be gone through.
    for (const QRect& part : event->region()) {
        painter.setClipRect(part);
        painter.drawImage(0, 0, m_picture);
        const double top = layerRect().top() + m_drawer.offsetY;
        const double bottom = layerRect().bottom() + 1 - m_drawer.offsetY;
        QColor faint = graphPositionColor;
        faint.setAlpha(pointerAlpha);
        if (m_pointer)
            CrispLines(painter).vertical(xOf(*m_pointer), top, bottom, faint);
        if (!m_position)
            continue;
        CrispLines(painter).vertical(xOf(*m_position), top, bottom, graphPositionColor);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(graphPositionColor);
        const QPointF tip(lineAt(*m_position).center().x(), top);
        const QPointF head[] = {tip, tip - QPointF(headWidth / 2, headHeight),
                                tip + QPointF(headWidth / 2, -headHeight)};
        painter.drawConvexPolygon(head, 3);
    }
}

void GraphLayerView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_isPressed = true;
    Q_EMIT seekBegan(fractionAt(event->position()));
    mouseMoveEvent(event);
}

void GraphLayerView::mouseMoveEvent(QMouseEvent* event)
{
    const double fraction = fractionAt(event->position());
    if (m_isPressed && !(event->buttons() & Qt::LeftButton))
        endSeek(); // it came up where nobody told
    if (m_isPressed && event->type() == QEvent::MouseMove)
        Q_EMIT seekMoved(fraction);
    setPointer(fraction);
    Q_EMIT pointed(fraction, event->position().toPoint());
}

void GraphLayerView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        endSeek();
}

void GraphLayerView::endSeek()
{
    if (!m_isPressed)
        return;
    m_isPressed = false;
    Q_EMIT seekEnded();
}

} // namespace cardreel
