#include "app/BarSlider.h"

#include "app/Theme.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr double handleRadius = 6;
constexpr double barHeight = 4;

} // namespace

BarSlider::BarSlider(Look look, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
{
    setFocusPolicy(Qt::TabFocus);
    connect(&Theme::current(), &Theme::changed, this, qOverload<>(&QWidget::update));
}

void BarSlider::setFraction(double fraction)
{
    if (m_isDragged || std::isnan(fraction))
        return;
    const double former = xOf(m_fraction);
    m_fraction = std::clamp(fraction, 0.0, 1.0);
    // A tick comes a hundred times a second, and most move the handle by less than anybody can see.
    if (std::lround(former * devicePixelRatio()) != std::lround(xOf(m_fraction) * devicePixelRatio()))
        update();
}

void BarSlider::setActive(bool active)
{
    if (!active)
        m_isDragged = false; // what was dragged is gone
    if (active == m_isActive)
        return;
    m_isActive = active;
    update();
}

double BarSlider::fractionAt(double x) const
{
    const double span = width() - 2 * handleRadius;
    return span <= 0 ? 0 : std::clamp((x - handleRadius) / span, 0.0, 1.0);
}

double BarSlider::xOf(double fraction) const
{
    return handleRadius + (width() - 2 * handleRadius) * fraction;
}

void BarSlider::moveTo(double fraction)
{
    m_fraction = std::clamp(fraction, 0.0, 1.0);
    update();
    Q_EMIT moved(m_fraction);
}

void BarSlider::paintEvent(QPaintEvent* /*event*/)
{
    const ThemeColors& colors = Theme::current().colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QRectF bar(handleRadius, (height() - barHeight) / 2.0, width() - 2 * handleRadius, barHeight);
    painter.setBrush(colors.line);
    painter.drawRoundedRect(bar, barHeight / 2, barHeight / 2);
    if (!m_isActive)
        return;
    const double x = xOf(m_fraction);
    bar.setRight(x);
    painter.setBrush(m_look == Look::Accented ? colors.accent : colors.muted);
    painter.drawRoundedRect(bar, barHeight / 2, barHeight / 2);
    painter.setBrush(colors.text);
    painter.drawEllipse(QPointF(x, height() / 2.0), handleRadius, handleRadius);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(colors.accent, 2));
        painter.drawEllipse(QPointF(x, height() / 2.0), handleRadius + 2, handleRadius + 2);
    }
}

void BarSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_isActive)
        return;
    m_isDragged = true;
    moveTo(fractionAt(event->position().x()));
}

void BarSlider::mouseMoveEvent(QMouseEvent* event)
{
    if (m_isDragged)
        moveTo(fractionAt(event->position().x()));
}

void BarSlider::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_isDragged = false;
}

} // namespace cardreel
