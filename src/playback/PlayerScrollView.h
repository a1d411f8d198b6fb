#pragma once

#include "playback/ZoomGeometry.h"

#include <QImage>
#include <QPoint>
#include <QTimer>
#include <QWidget>

#include <functional>

class QNativeGestureEvent;
class QPinchGesture;
class QVariantAnimation;

namespace cardreel {

/// The magnifiable view of a pane: paints the video and a still picture over it, zooms by wheel and pinch, and tells
/// clicks from pans. What to do about them is its pane's, which owns it. Interface thread.
class PlayerScrollView : public QWidget
{
    Q_OBJECT

public:
    using Block = std::function<void(PlayerScrollView& view)>;
    using FrameSource = std::function<QImage()>;
    enum class PanPhase { Began, Changed, Ended };
    enum class Transition { Animated, AtOnce };

    explicit PlayerScrollView(QWidget* parent = nullptr);

    /// When false, wheel, pinch, pan and clicks are ignored.
    bool scrollingEnabled() const { return m_scrollingEnabled; }
    void setScrollingEnabled(bool enabled);
    /// A pan is under way.
    bool mouseIsDown() const { return m_mouseIsDown; }
    void setMouseIsDown(bool isDown);
    /// What the next run of the mute block is to do; the middle button flips it before.
    bool shouldMute() const { return m_shouldMute; }
    void setShouldMute(bool mute) { m_shouldMute = mute; }
    void setSingleClickBlock(Block block) { m_singleClickBlock = std::move(block); }
    /// Runs 0.25 s after the double click, unless a third click follows.
    void setDoubleClickBlock(Block block) { m_doubleClickBlock = std::move(block); }
    void setToggleMuteBlock(Block block) { m_toggleMuteBlock = std::move(block); }

    /// Where it is or, while an animation runs, where that leads.
    const ZoomGeometry& geometryNow() const { return m_geometry; }
    double magnification() const { return m_geometry.magnification; }
    /// Content coordinates; see ZoomGeometry. Clamped.
    void scrollToPoint(QPointF origin);
    /// From 1 to 16, about a point of this view.
    void setMagnification(double magnification, QPointF viewPoint);
    /// Goes on multiplying a magnification that a snap has hidden, so that small steps add up.
    void magnifyBy(double factor, QPointF viewPoint);
    /// `finished` runs when it is there: later when animated, and also when something else moves the view before.
    void moveTo(const ZoomGeometry& target, Transition transition, std::function<void()> finished = {});
    /// Leaves an animation where it has come to.
    void stopMoving();
    /// The pointer's place when it is over the view, else the middle.
    QPointF zoomPoint() const;

    /// Asked for the newest video picture on each paint. None: no video.
    void setFrameSource(FrameSource source);
    void setVideoShown(bool shown);
    /// The still picture; shown, a null one is black.
    void setPicture(const QImage& picture);
    void setPictureShown(bool shown);
    /// Left for right, the video and the picture.
    void setMirrored(bool mirrored);
    /// 1 is not dimmed.
    void setContentOpacity(double opacity);
    /// Written in the middle where there is nothing to show, and over dimmed content.
    void setMessage(const QString& message);

    /// What is seen of the video or the still picture, in device pixels, without focus and message; null while there is
    /// nothing to show.
    QImage visibleImage() const;

    QSize sizeHint() const override { return {480, 270}; }

Q_SIGNALS:
    /// The visible part changed: zoomed or scrolled. Once for an animation, when it begins.
    void boundsDidChange();
    void didResize();
    void panned(cardreel::PlayerScrollView::PanPhase phase, QPointF translation); ///< content units, y upward
    /// A third click, or Escape.
    void tripleTapDetected();
    void pointerMoved();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void press(QMouseEvent* event);
    void click(int count);
    void endPan();
    bool nativeGesture(QNativeGestureEvent* event);
    bool pinch(QPinchGesture* gesture);
    void setGeometryNow(const ZoomGeometry& geometry);
    void animationFinished();
    void updateCursor(QPointF viewPoint);
    QImage shownImage() const;
    void paintContent(QPainter& painter, const QImage& image, bool isStill) const;

    ZoomGeometry m_geometry;
    ZoomGeometry m_shown; ///< differs from m_geometry while an animation runs
    ZoomGeometry m_animationStart;
    double m_unsnapped = 1; ///< what magnifyBy() has come to, snapped or not
    bool m_scrollingEnabled = true;
    bool m_mouseIsDown = false;
    bool m_shouldMute = false;
    Block m_singleClickBlock;
    Block m_doubleClickBlock;
    Block m_toggleMuteBlock;
    QTimer m_pendingDoubleClick;
    QVariantAnimation* m_animation;
    std::function<void()> m_animationFinished;

    bool m_isPressed = false;
    bool m_isPanning = false;
    int m_clickCount = 0;
    QPointF m_pressPoint;
    quint64 m_pressTime = 0;

    FrameSource m_frameSource;
    QImage m_picture;
    QString m_message;
    double m_contentOpacity = 1;
    bool m_videoShown = true;
    bool m_pictureShown = false;
    bool m_mirrored = false;
    bool m_showsFocus = false;
};

} // namespace cardreel
