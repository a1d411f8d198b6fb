#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QSizeF>

#include <optional>

namespace cardreel {

/// The numbers of a view whose content can be magnified and scrolled. Content coordinates have their origin at the
/// lower left, y upward, in the view's own units: at magnification 1 the content fills the view, and magnified the
/// visible rectangle is that many times smaller. View coordinates are a widget's, y downward. A value.
struct ZoomGeometry
{
    static constexpr double smallestMagnification = 1;
    static constexpr double largestMagnification = 16;
    /// Below this a view counts as not magnified.
    static constexpr double snapMagnification = 1.05;
    /// What the segments other than the first magnify by.
    static constexpr double segmentMagnification = 2;
    static constexpr int firstSegment = 1;
    static constexpr int lastSegment = 6;
    /// Height of the band along the top edge in which clicks are not the video's.
    static constexpr double controlBarHeight = 24;

    QSizeF viewSize;
    double magnification = 1;
    QPointF origin; ///< lower left corner of the visible rectangle

    QSizeF visibleSize() const { return viewSize / magnification; }
    /// Its top() is the lower edge.
    QRectF visibleRect() const { return {origin, visibleSize()}; }
    bool isInitialPosition() const { return magnification < snapMagnification; }

    QPointF toContent(QPointF viewPoint) const;
    QPointF toView(QPointF contentPoint) const;
    /// The whole content in view coordinates.
    QRectF contentInView() const;

    /// Brought to where the visible rectangle lies within the content.
    QPointF clamped(QPointF wantedOrigin) const;
    void scrollTo(QPointF wantedOrigin) { origin = clamped(wantedOrigin); }
    /// Leaves what is under the point where it is, as far as the content reaches.
    void magnify(double wanted, QPointF viewPoint);
    /// Below snapMagnification: whole again. Whether it was.
    bool snap();
    /// Keeps the same part of the content visible.
    void resize(QSizeF size);
    /// Makes the visible part the one that `unitRect` says, in fractions of the content.
    void setUnitRect(const QRectF& unitRect);
    QRectF unitRect() const;

    /// What one of the segments 1 to 6 shows, seen from this.
    ZoomGeometry segment(int segment) const;
    /// Part of the way to another one; 1 is there.
    ZoomGeometry towards(const ZoomGeometry& target, double fraction) const;

    /// Whether a point is in the band along the top edge.
    static bool isInControlBar(QPointF viewPoint) { return viewPoint.y() >= 0 && viewPoint.y() < controlBarHeight; }
    /// What a pan that asks for this origin, before clamping, wants of the window's bottom bar: shown, hidden, or
    /// nothing.
    static std::optional<bool> bottomBarWish(QPointF wantedOrigin);
    /// How much a wheel or touchpad step magnifies: `notches` are wheel clicks, away from the user positive, and parts
    /// of them.
    static double wheelFactor(double notches);

    /// The size in device pixels in which to draw the content: no larger than the video's own pixels fill once
    /// magnified. `natural` is the video's size; empty when unknown.
    QSize renderSize(double devicePixelRatio, QSize natural) const;
};

} // namespace cardreel
