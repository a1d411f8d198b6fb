#include "app/PositionSlider.h"

#include "app/Theme.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace cardreel {

namespace {

constexpr double handleRadius = 6;
constexpr double barHeight = 4;

} // namespace

PositionSlider::PositionSlider(QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Position"));
    setToolTip(tr("Position (Left and Right: one second)"));
    connect(&Theme::current(), &Theme::changed, this, qOverload<>(&QWidget::update));
}

void PositionSlider::setPosition(double seconds)
{
    if (m_isDragged || seconds == m_position)
        return;
    m_position = seconds;
    update();
}

void PositionSlider::setDuration(double seconds)
{
    m_duration = std::max(seconds, 0.0);
    if (m_duration == 0)
        m_isDragged = false; // what was dragged is gone
    update();
}

double PositionSlider::secondsAt(double x) const
{
    const double span = width() - 2 * handleRadius;
    return span <= 0 ? 0 : std::clamp((x - handleRadius) / span, 0.0, 1.0) * m_duration;
}

void PositionSlider::moveTo(double seconds)
{
    m_position = std::clamp(seconds, 0.0, m_duration);
    update();
    Q_EMIT moved(m_position);
}

void PositionSlider::paintEvent(QPaintEvent* /*event*/)
{
    const ThemeColors& colors = Theme::current().colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QRectF bar(handleRadius, (height() - barHeight) / 2.0, width() - 2 * handleRadius, barHeight);
    painter.setBrush(colors.line);
    painter.drawRoundedRect(bar, barHeight / 2, barHeight / 2);
    if (m_duration <= 0)
        return;
    const double x = handleRadius + bar.width() * std::clamp(m_position / m_duration, 0.0, 1.0);
    bar.setRight(x);
    painter.setBrush(colors.accent);
    painter.drawRoundedRect(bar, barHeight / 2, barHeight / 2);
    painter.setBrush(colors.text);
    painter.drawEllipse(QPointF(x, height() / 2.0), handleRadius, handleRadius);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(colors.accent, 2));
        painter.drawEllipse(QPointF(x, height() / 2.0), handleRadius + 2, handleRadius + 2);
    }
}

void PositionSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || m_duration <= 0)
        return;
    m_isDragged = true;
    moveTo(secondsAt(event->position().x()));
}

void PositionSlider::mouseMoveEvent(QMouseEvent* event)
{
    if (m_isDragged)
        moveTo(secondsAt(event->position().x()));
}

void PositionSlider::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_isDragged = false;
}

void PositionSlider::keyPressEvent(QKeyEvent* event)
{
    if (m_duration <= 0)
        return QWidget::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Left:
        return moveTo(m_position - 1);
    case Qt::Key_Right:
        return moveTo(m_position + 1);
    case Qt::Key_Home:
        return moveTo(0);
    case Qt::Key_End:
        return moveTo(m_duration);
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace cardreel
