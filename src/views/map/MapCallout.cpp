#include "views/map/MapCallout.h"

#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QPainter>
#include <QPainterPath>
#include <QPropertyAnimation>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr int tipHeight = 7;
constexpr int tipHalfWidth = 8;
constexpr int radius = 6;
constexpr int inset = 8;
constexpr int distance = 4; ///< from the view's edges
constexpr int fadingMs = 150;

} // namespace

CalloutPlacement CalloutPlacement::of(const QSize& callout, const QRectF& target, const QSizeF& view)
{
    CalloutPlacement placement;
    const int tip = static_cast<int>(std::lround(target.center().x()));
    const int above = static_cast<int>(std::floor(target.top())) - callout.height();
    const int below = static_cast<int>(std::ceil(target.bottom()));
    placement.isBelow = above < distance && below + callout.height() <= view.height() - distance;
    const int left = tip - callout.width() / 2;
    const int rightmost = static_cast<int>(view.width()) - callout.width() - distance;
    const int wished = rightmost < distance ? left : std::clamp(left, distance, rightmost);
    constexpr int corner = radius + tipHalfWidth;
    const int x = std::clamp(wished, tip - callout.width() + corner, tip - corner);
    placement.corner = {x, placement.isBelow ? below : above};
    placement.pointerX = tip - x;
    return placement;
}

MapCallout::MapCallout(std::unique_ptr<QWidget> content, QWidget* viewport)
    : QWidget(viewport)
{
    setAttribute(Qt::WA_NoMousePropagation);
    setCursor(Qt::ArrowCursor);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(inset, inset, inset, inset + tipHeight);
    layout->addWidget(content.release());
    adjustSize();
}

void MapCallout::pointAt(const QRectF& target)
{
    m_target = target;
    setPlacement(CalloutPlacement::of(size(), target, QSizeF(parentWidget()->size())));
}

void MapCallout::setPlacement(const CalloutPlacement& placement)
{
    if (placement.isBelow != m_placement.isBelow) {
        layout()->setContentsMargins(inset, placement.isBelow ? inset + tipHeight : inset, inset,
                                     placement.isBelow ? inset : inset + tipHeight);
    }
    if (placement.isBelow != m_placement.isBelow || placement.pointerX != m_placement.pointerX)
        update();
    m_placement = placement;
    move(placement.corner);
}

bool MapCallout::event(QEvent* event)
{
    // What it holds may come to another size later, as when a picture has been read.
    if (event->type() == QEvent::LayoutRequest) {
        adjustSize();
        pointAt(m_target);
    }
    return QWidget::event(event);
}

void MapCallout::fade()
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* effect = new QGraphicsOpacityEffect(this);
    setGraphicsEffect(effect);
    auto* animation = new QPropertyAnimation(effect, "opacity", this);
    animation->setDuration(fadingMs);
    animation->setStartValue(1.0);
    animation->setEndValue(0.0);
    connect(animation, &QPropertyAnimation::finished, this, &QObject::deleteLater);
    animation->start();
}

QPainterPath MapCallout::outline() const
{
    const bool isBelow = m_placement.isBelow;
    QPainterPath box;
    box.addRoundedRect(
        QRectF(rect()).adjusted(0.5, isBelow ? tipHeight + 0.5 : 0.5, -0.5, isBelow ? -0.5 : -tipHeight - 0.5), radius,
        radius);
    const double base = isBelow ? tipHeight + 1 : height() - tipHeight - 1;
    QPainterPath tip;
    tip.moveTo(m_placement.pointerX - tipHalfWidth, base);
    tip.lineTo(m_placement.pointerX, isBelow ? 0.5 : height() - 0.5);
    tip.lineTo(m_placement.pointerX + tipHalfWidth, base);
    tip.closeSubpath();
    return box.united(tip);
}

void MapCallout::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawPath(outline());
}

} // namespace cardreel
