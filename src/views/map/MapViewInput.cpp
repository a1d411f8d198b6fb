// What a map does with pointer, wheel, fingers and keys.

#include "views/map/MapViewPrivate.h"

#include <QApplication>
#include <QGestureEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr double notch = 120; ///< the turn of a mouse wheel's notch
constexpr double levelsPerNotch = 0.5;
constexpr double keyStep = 100; ///< points

/// Where an arrow key leads; nothing for other keys.
QPointF arrow(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

/// How many levels a key zooms.
double zoomStep(int key)
{
    switch (key) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the plus key without Shift
        return 1;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
        return -1;
    default:
        return 0;
    }
}

} // namespace

void MapView::Private::userGoes(const MapViewport& target, Animation how)
{
    fit.reset();
    go(target, how);
    Q_EMIT view.userDidMove();
}

void MapView::Private::userZooms(const QPointF& about, double levels, Animation how)
{
    if (std::isfinite(levels) && levels != 0)
        userGoes(shown.zoomedAbout(about, wished.zoom + levels), how);
}

void MapView::Private::userDeselects()
{
    view.deselectMarker(Animation::Animated);
    Q_EMIT view.markerDidDeselect();
}

void MapView::Private::click(const QPointF& position)
{
    const Marker marker = overlay.contents.markerAt(shown, position);
    const std::optional<MapContents::FoundRoute> route = overlay.contents.routeAt(shown, position);
    if (selected && selected != marker)
        userDeselects();
    if (marker)
        Q_EMIT view.markerDidActivate(marker);
    else if (route)
        Q_EMIT view.routeClicked(route->route, route->hit.after, route->hit.fraction);
}

/// The marker nearest to the middle, and with each further stroke the next one.
void MapView::Private::activateMarkerByKey()
{
    const std::vector<Marker> markers = overlay.contents.markersInView(shown);
    if (markers.empty())
        return;
    const auto present = std::find(markers.begin(), markers.end(), selected);
    const bool isLast = present == markers.end() || std::next(present) == markers.end();
    const Marker next = isLast ? markers.front() : *std::next(present);
    Q_EMIT view.markerDidActivate(next);
}

void MapView::Private::schedulePointing()
{
    if ((pointer || hovered) && !pointing.isActive())
        pointing.start();
}

void MapView::Private::updatePointing()
{
    const bool isDragged = press && press->isDrag;
    std::optional<MapContents::FoundRoute> found;
    Marker marker;
    if (pointer && !isDragged) {
        marker = overlay.contents.markerAt(shown, *pointer);
        if (!marker)
            found = overlay.contents.routeAt(shown, *pointer);
    }
    view.viewport()->setCursor(isDragged         ? Qt::ClosedHandCursor
                               : marker || found ? Qt::PointingHandCursor
                                                 : Qt::ArrowCursor);
    if (found == hovered)
        return;
    hovered = found;
    const QPoint position = pointer.value_or(QPointF()).toPoint();
    if (found)
        Q_EMIT view.routeHovered(found->route, found->hit.after, found->hit.fraction, position);
    else
        Q_EMIT view.routeHovered(nullptr, 0, 0, position);
}

void MapView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() != Qt::LeftButton)
        return;
    // The map stops where it is grasped.
    if (d->animation.isRunning())
        d->go(d->shown, Animation::None);
    d->press = {event->position(), event->position(), false};
}

void MapView::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
    d->pointer = event->position();
    if (!d->press) {
        d->schedulePointing();
        return;
    }
    if (!d->press->isDrag) {
        const QPointF way = event->position() - d->press->start;
        if (way.manhattanLength() < QApplication::startDragDistance())
            return;
        d->press->isDrag = true;
        d->updatePointing();
    }
    const QPointF moved = event->position() - d->press->last;
    d->press->last = event->position();
    d->userGoes(d->shown.dragged(moved), Animation::None);
}

void MapView::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() != Qt::LeftButton || !d->press)
        return;
    const bool isClick = !d->press->isDrag;
    d->press.reset();
    d->schedulePointing();
    if (isClick)
        d->click(event->position());
}

void MapView::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
    const bool isOut = event->button() == Qt::RightButton || event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton)
        return;
    if (!d->overlay.contents.markerAt(d->shown, event->position()))
        d->userZooms(event->position(), isOut ? -1 : 1, Animation::Animated);
}

void MapView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const double turn = event->angleDelta().y();
    // Whole notches come at intervals; what comes in finer steps is smooth by itself.
    const bool isNotched = event->pixelDelta().isNull() && std::fmod(turn, notch) == 0;
    d->userZooms(event->position(), turn / notch * levelsPerNotch, isNotched ? Animation::Animated : Animation::None);
}

bool MapView::Private::pinch(QEvent* event)
{
    auto* gestures = static_cast<QGestureEvent*>(event);
    auto* pinch = static_cast<QPinchGesture*>(gestures->gesture(Qt::PinchGesture));
    if (!pinch)
        return false;
    gestures->accept(pinch);
    // The first finger's drag, if any, ends where the second joins it.
    press.reset();
    const QPointF about = view.viewport()->mapFromGlobal(pinch->centerPoint());
    const QPointF moved = pinch->centerPoint() - pinch->lastCenterPoint();
    const double levels = std::log2(pinch->scaleFactor());
    if (std::isfinite(levels) && pinch->state() == Qt::GestureUpdated)
        userGoes(shown.dragged(moved).zoomedAbout(about, shown.zoom + levels), Animation::None);
    return true;
}

bool MapView::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Leave:
        d->pointer.reset();
        d->schedulePointing();
        break;
    case QEvent::Gesture:
        if (d->pinch(event))
            return true;
        break;
    case QEvent::NativeGesture: {
        auto* gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() != Qt::ZoomNativeGesture)
            break;
        d->userZooms(gesture->position(), std::log2(1 + gesture->value()), Animation::None);
        return true;
    }
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        // Two fingers are a gesture; one is told as a mouse when nobody takes it.
        event->ignore();
        return false;
    default:
        break;
    }
    return QGraphicsView::viewportEvent(event);
}

bool MapView::Private::handlesKey(const QKeyEvent& event) const
{
    if (event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier))
        return false;
    if (event.key() == Qt::Key_Escape)
        return selected != nullptr;
    return !arrow(event.key()).isNull() || zoomStep(event.key()) != 0 || event.key() == Qt::Key_Return ||
           event.key() == Qt::Key_Enter;
}

bool MapView::event(QEvent* event)
{
    // While the map has the keyboard its keys are its own, also where a menu has them as shortcuts.
    if (event->type() == QEvent::ShortcutOverride && d->handlesKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QGraphicsView::event(event);
}

void MapView::keyPressEvent(QKeyEvent* event)
{
    if (!d->handlesKey(*event)) {
        event->ignore();
        return;
    }
    const int key = event->key();
    if (key == Qt::Key_Escape)
        d->userDeselects();
    else if (key == Qt::Key_Return || key == Qt::Key_Enter)
        d->activateMarkerByKey();
    else if (const double levels = zoomStep(key); levels != 0)
        d->userZooms(QRectF(QPointF(), d->shown.size).center(), levels, Animation::Animated);
    else
        d->userGoes(d->wished.bounded().dragged(-arrow(key) * keyStep), Animation::Animated);
}

void MapView::focusInEvent(QFocusEvent* event)
{
    QGraphicsView::focusInEvent(event);
    d->showsFocus = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    viewport()->update();
}

void MapView::focusOutEvent(QFocusEvent* event)
{
    QGraphicsView::focusOutEvent(event);
    d->showsFocus = false;
    viewport()->update();
}

} // namespace cardreel
