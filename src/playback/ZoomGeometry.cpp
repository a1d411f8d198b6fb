#include "playback/ZoomGeometry.h"

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

// A pan has to ask for so much beyond the lower edge, and hardly sideways, to be about the bottom bar.
constexpr double bottomBarSlack = 10;
constexpr double factorOfNotch = 1.2;

double between(double a, double b, double fraction)
{
    return a + (b - a) * fraction;
}

} // namespace

QPointF ZoomGeometry::toContent(QPointF viewPoint) const
{
    return origin + QPointF(viewPoint.x(), viewSize.height() - viewPoint.y()) / magnification;
}

QPointF ZoomGeometry::toView(QPointF contentPoint) const
{
    const QPointF fromOrigin = (contentPoint - origin) * magnification;
    return {fromOrigin.x(), viewSize.height() - fromOrigin.y()};
}

QRectF ZoomGeometry::contentInView() const
{
    return {toView({0, viewSize.height()}), viewSize * magnification};
}

QPointF ZoomGeometry::clamped(QPointF wantedOrigin) const
{
    const QSizeF room = viewSize - visibleSize();
    return {std::clamp(wantedOrigin.x(), 0.0, std::max(room.width(), 0.0)),
            std::clamp(wantedOrigin.y(), 0.0, std::max(room.height(), 0.0))};
}

void ZoomGeometry::magnify(double wanted, QPointF viewPoint)
{
    const QPointF kept = toContent(viewPoint);
    magnification = std::clamp(wanted, smallestMagnification, largestMagnification);
    origin = clamped(origin + kept - toContent(viewPoint));
}

bool ZoomGeometry::snap()
{
    if (!isInitialPosition())
        return false;
    magnification = 1;
    origin = {};
    return true;
}

void ZoomGeometry::resize(QSizeF size)
{
    const QRectF part = unitRect();
    viewSize = size;
    setUnitRect(part);
}

void ZoomGeometry::setUnitRect(const QRectF& unitRect)
{
    magnification =
        std::clamp(unitRect.width() > 0 ? 1 / unitRect.width() : 1, smallestMagnification, largestMagnification);
    origin = clamped({unitRect.x() * viewSize.width(), unitRect.y() * viewSize.height()});
}

QRectF ZoomGeometry::unitRect() const
{
    if (viewSize.isEmpty())
        return {0, 0, 1 / magnification, 1 / magnification};
    return {origin.x() / viewSize.width(), origin.y() / viewSize.height(), 1 / magnification, 1 / magnification};
}

ZoomGeometry ZoomGeometry::segment(int segment) const
{
    ZoomGeometry target{viewSize, segmentMagnification, {}};
    const double width = viewSize.width();
    const double height = viewSize.height();
    switch (segment) {
    case 2:
        target.scrollTo(QPointF(width, height) / segmentMagnification * 0.5);
        break;
    case 3:
        target.scrollTo({0, height});
        break;
    case 4:
        target.scrollTo({width, height});
        break;
    case 5:
        break;
    case 6:
        target.scrollTo({width, 0});
        break;
    default:
        target.magnification = 1;
        break;
    }
    return target;
}

ZoomGeometry ZoomGeometry::towards(const ZoomGeometry& target, double fraction) const
{
    ZoomGeometry part = target;
    part.magnification = 1 / between(1 / magnification, 1 / target.magnification, fraction);
    part.origin = part.clamped(
        {between(origin.x(), target.origin.x(), fraction), between(origin.y(), target.origin.y(), fraction)});
    return part;
}

std::optional<bool> ZoomGeometry::bottomBarWish(QPointF wantedOrigin)
{
    if (std::abs(wantedOrigin.x()) > bottomBarSlack || std::abs(wantedOrigin.y()) <= bottomBarSlack)
        return std::nullopt;
    return wantedOrigin.y() < 0;
}

double ZoomGeometry::wheelFactor(double notches)
{
    return std::pow(factorOfNotch, notches);
}

QSize ZoomGeometry::renderSize(double devicePixelRatio, QSize natural) const
{
    const QSizeF unmagnified = viewSize * devicePixelRatio;
    if (natural.isEmpty() || isInitialPosition() || unmagnified.isEmpty())
        return unmagnified.toSize();
    const QSizeF shown = QSizeF(natural).scaled(unmagnified, Qt::KeepAspectRatio);
    const double useful = std::min(magnification, natural.width() / shown.width());
    return (unmagnified * std::max(useful, 1.0)).toSize();
}

} // namespace cardreel
