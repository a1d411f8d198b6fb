#include "playback/PlayerScrollView.h"

#include <QApplication>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QStyle>
#include <QStyleHints>
#include <QVariantAnimation>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace cardreel {

namespace {

constexpr int doubleClickDelayMs = 250;
constexpr double anglePerNotch = 120;
constexpr double pixelsPerNotch = 50;

} // namespace

PlayerScrollView::PlayerScrollView(QWidget* parent)
    : QWidget(parent)
    , m_animation(new QVariantAnimation(this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    grabGesture(Qt::PinchGesture);
    m_geometry.viewSize = m_shown.viewSize = size();
    m_pendingDoubleClick.setSingleShot(true);
    m_pendingDoubleClick.setInterval(doubleClickDelayMs);
    connect(&m_pendingDoubleClick, &QTimer::timeout, this, [this] {
        if (m_doubleClickBlock)
            m_doubleClickBlock(*this);
    });
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);
    m_animation->setStartValue(0.0);
    m_animation->setEndValue(1.0);
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        if (m_animation->state() != QAbstractAnimation::Running)
            return;
        m_shown = m_animationStart.towards(m_geometry, value.toDouble());
        update();
    });
    connect(m_animation, &QVariantAnimation::finished, this, &PlayerScrollView::animationFinished);
    updateCursor({0, ZoomGeometry::controlBarHeight});
}

void PlayerScrollView::setScrollingEnabled(bool enabled)
{
    m_scrollingEnabled = enabled;
    if (enabled)
        return;
    endPan();
    m_isPressed = false;
    m_clickCount = 0;
    m_pendingDoubleClick.stop();
}

void PlayerScrollView::setMouseIsDown(bool isDown)
{
    m_mouseIsDown = isDown;
    updateCursor(mapFromGlobal(QCursor::pos()));
}

void PlayerScrollView::scrollToPoint(QPointF origin)
{
    stopMoving();
    ZoomGeometry wanted = m_geometry;
    wanted.scrollTo(origin);
    setGeometryNow(wanted);
}

void PlayerScrollView::setMagnification(double magnification, QPointF viewPoint)
{
    stopMoving();
    ZoomGeometry wanted = m_geometry;
    wanted.magnify(magnification, viewPoint);
    wanted.snap();
    setGeometryNow(wanted);
}

void PlayerScrollView::magnifyBy(double factor, QPointF viewPoint)
{
    stopMoving();
    // A touchpad magnifies by a hundredth at a time: below the snap each of them alone would lead nowhere.
    const double snapped = m_unsnapped < ZoomGeometry::snapMagnification ? 1 : m_unsnapped;
    if (snapped != m_geometry.magnification)
        m_unsnapped = m_geometry.magnification;
    m_unsnapped =
        std::clamp(m_unsnapped * factor, ZoomGeometry::smallestMagnification, ZoomGeometry::largestMagnification);
    setMagnification(m_unsnapped, viewPoint);
}

void PlayerScrollView::moveTo(const ZoomGeometry& target, Transition transition, std::function<void()> finished)
{
    stopMoving();
    m_animationFinished = std::move(finished);
    const ZoomGeometry start = m_shown;
    const int durationMs = transition == Transition::Animated && isVisible()
                               ? style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this)
                               : 0;
    setGeometryNow(target);
    if (durationMs <= 0) {
        animationFinished();
        return;
    }
    m_shown = m_animationStart = start;
    m_animation->setDuration(durationMs);
    m_animation->start();
}

void PlayerScrollView::stopMoving()
{
    if (m_animation->state() != QAbstractAnimation::Running)
        return;
    m_animation->stop();
    m_geometry = m_shown;
    animationFinished();
}

void PlayerScrollView::animationFinished()
{
    m_shown = m_geometry;
    update();
    if (const auto finished = std::exchange(m_animationFinished, {}))
        finished();
}

void PlayerScrollView::setGeometryNow(const ZoomGeometry& geometry)
{
    m_geometry = m_shown = geometry;
    updateCursor(mapFromGlobal(QCursor::pos()));
    update();
    Q_EMIT boundsDidChange();
}

QPointF PlayerScrollView::zoomPoint() const
{
    return underMouse() ? mapFromGlobal(QPointF(QCursor::pos())) : QRectF(rect()).center();
}

void PlayerScrollView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_animation->state() == QAbstractAnimation::Running) {
        m_animation->stop();
        animationFinished();
    }
    m_geometry.resize(size());
    m_shown = m_geometry;
    Q_EMIT didResize();
}

void PlayerScrollView::updateCursor(QPointF viewPoint)
{
    if (m_geometry.magnification > 1)
        setCursor(m_mouseIsDown ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
    else
        setCursor(ZoomGeometry::isInControlBar(viewPoint) ? Qt::ArrowCursor : Qt::CrossCursor);
}

bool PlayerScrollView::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::NativeGesture:
        if (nativeGesture(static_cast<QNativeGestureEvent*>(event)))
            return true;
        break;
    case QEvent::Gesture: {
        auto* gestures = static_cast<QGestureEvent*>(event);
        auto* gesture = static_cast<QPinchGesture*>(gestures->gesture(Qt::PinchGesture));
        if (gesture && pinch(gesture)) {
            gestures->accept(gesture);
            return true;
        }
        break;
    }
    case QEvent::Hide:
        endPan();
        m_isPressed = false;
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void PlayerScrollView::wheelEvent(QWheelEvent* event)
{
    if (!m_scrollingEnabled) {
        event->ignore();
        return;
    }
    event->accept();
    // What a touchpad sends after the fingers have left it: meant for lists.
    if (event->phase() == Qt::ScrollMomentum)
        return;
    const double notches = event->angleDelta().isNull() ? event->pixelDelta().y() / pixelsPerNotch
                                                        : event->angleDelta().y() / anglePerNotch;
    if (notches != 0)
        magnifyBy(ZoomGeometry::wheelFactor(notches), event->position());
}

bool PlayerScrollView::nativeGesture(QNativeGestureEvent* event)
{
    if (event->gestureType() != Qt::ZoomNativeGesture || !m_scrollingEnabled)
        return false;
    magnifyBy(1 + event->value(), event->position());
    event->accept();
    return true;
}

bool PlayerScrollView::pinch(QPinchGesture* gesture)
{
    if (!m_scrollingEnabled)
        return false;
    // The first finger of a pinch came as a press of the mouse.
    endPan();
    m_isPressed = false;
    if (gesture->changeFlags() & QPinchGesture::ScaleFactorChanged)
        magnifyBy(gesture->scaleFactor(), mapFromGlobal(gesture->centerPoint()));
    return true;
}

void PlayerScrollView::mousePressEvent(QMouseEvent* event)
{
    press(event);
}

void PlayerScrollView::mouseDoubleClickEvent(QMouseEvent* event)
{
    press(event);
}

void PlayerScrollView::press(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton) {
        m_shouldMute = !m_shouldMute;
        if (m_toggleMuteBlock)
            m_toggleMuteBlock(*this);
        return;
    }
    if (event->button() != Qt::LeftButton || !m_scrollingEnabled) {
        event->ignore();
        return;
    }
    const bool isDoubleClick = event->type() == QEvent::MouseButtonDblClick;
    const bool isSoon = event->timestamp() - m_pressTime <= quint64(QApplication::doubleClickInterval());
    const bool isNear = (event->position() - m_pressPoint).manhattanLength() <=
                        QGuiApplication::styleHints()->mouseDoubleClickDistance();
    const bool isNext = isDoubleClick ? !m_isPressed : m_clickCount > 0 && isSoon && isNear;
    if (isDoubleClick) // some platforms tell of the press before, some don't
        m_clickCount = std::max(m_clickCount + int(isNext), 2);
    else
        m_clickCount = isNext ? m_clickCount + 1 : 1;
    if (m_clickCount > 2)
        m_pendingDoubleClick.stop();
    m_isPressed = true;
    m_pressPoint = event->position();
    m_pressTime = event->timestamp();
}

void PlayerScrollView::mouseMoveEvent(QMouseEvent* event)
{
    Q_EMIT pointerMoved();
    updateCursor(event->position());
    if (!m_isPressed || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPointF way = event->position() - m_pressPoint;
    if (!m_isPanning) {
        if (way.manhattanLength() < QApplication::startDragDistance())
            return;
        m_isPanning = true;
        m_clickCount = 0;
        Q_EMIT panned(PanPhase::Began, {});
    }
    Q_EMIT panned(PanPhase::Changed, QPointF(way.x(), -way.y()) / m_geometry.magnification);
}

void PlayerScrollView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !std::exchange(m_isPressed, false))
        return;
    if (m_isPanning)
        endPan();
    else if (ZoomGeometry::isInControlBar(m_pressPoint))
        m_clickCount = 0;
    else
        click(m_clickCount);
}

void PlayerScrollView::endPan()
{
    if (std::exchange(m_isPanning, false))
        Q_EMIT panned(PanPhase::Ended, {});
}

void PlayerScrollView::click(int count)
{
    if (count == 1 && m_singleClickBlock)
        m_singleClickBlock(*this);
    else if (count == 2)
        m_pendingDoubleClick.start();
    else if (count == 3)
        Q_EMIT tripleTapDetected();
}

void PlayerScrollView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT tripleTapDetected();
    else
        QWidget::keyPressEvent(event);
}

void PlayerScrollView::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    m_showsFocus = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    update();
}

void PlayerScrollView::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    m_showsFocus = false;
    update();
}

} // namespace cardreel
