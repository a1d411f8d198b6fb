#include "views/map/MapView.h"

#include "media/CustomPointAnnotation.h"
#include "telemetry/CustomLocation.h"
#include "views/map/Graticule.h"
#include "views/map/MapChip.h"
#include "views/map/MapViewPrivate.h"
#include "views/map/ScaleBar.h"

#include <QPainter>
#include <QResizeEvent>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace cardreel {

namespace {

using namespace std::chrono_literals;

constexpr auto frame = 16ms;
constexpr double furthestFlight = 4; ///< views; what is farther away is jumped to

bool isUsable(const MapRect& rect)
{
    return !rect.isNull() && std::isfinite(rect.left) && std::isfinite(rect.right) && std::isfinite(rect.top) &&
           std::isfinite(rect.bottom) && rect.top <= rect.bottom;
}

bool isFar(const MapViewport& from, const MapViewport& to)
{
    const double world = std::min(from.worldSize(), to.worldSize());
    const double x = std::remainder(to.center.x - from.center.x, 1) * world;
    const double y = (to.center.y - from.center.y) * world;
    return std::hypot(x, y) > furthestFlight * std::max(from.size.width(), from.size.height());
}

} // namespace

MapView::Private::Private(MapView& mapView)
    : view(mapView)
    , scene(0, 0, unitsPerWorld, unitsPerWorld)
    , tiles([this] { view.viewport()->update(); })
    , overlay([this] { view.viewport()->update(); })
    , positions(scene, unitsPerWorld)
    , animation([this](const MapViewport& next) { show(next); })
{
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    pointing.setSingleShot(true);
    pointing.setInterval(frame);
    QObject::connect(&pointing, &QTimer::timeout, &pointing, [this] { updatePointing(); });
}

void MapView::Private::go(const MapViewport& target, Animation how)
{
    wished = target;
    const MapViewport end = wished.bounded();
    if (how == Animation::Animated && view.isVisible() && !shown.size.isEmpty() && !isFar(shown, end)) {
        animation.start(shown, end);
        return;
    }
    animation.stop();
    show(end);
}

void MapView::Private::show(const MapViewport& next)
{
    if (std::exchange(shown, next) != next)
        updateScene();
}

/// The scene's rectangle is what is seen and no more, so that nothing but the map itself scrolls it.
void MapView::Private::updateScene()
{
    const double scale = shown.worldSize() / unitsPerWorld;
    // The view cuts fractions off, towards zero: what division makes of a whole number must not fall short of it.
    constexpr double safety = 0.001;
    const QPointF origin = shown.origin();
    const QPointF corner(origin.x() + std::copysign(safety, origin.x()),
                         origin.y() + std::copysign(safety, origin.y()));
    if (view.transform().m11() != scale)
        view.setTransform(QTransform::fromScale(scale, scale));
    view.setSceneRect(QRectF(corner / scale, shown.size / scale));
    positions.show(overlay.contents, shown, view.devicePixelRatioF());
    placeCallout();
    schedulePointing();
    view.viewport()->update();
}

MapView::MapView(QWidget* parent)
    : QGraphicsView(parent)
    , d(std::make_unique<Private>(*this))
{
    setScene(&d->scene);
    setInteractive(false);
    setFrameShape(NoFrame);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setLayoutDirection(Qt::LeftToRight); // east is to the right everywhere
    setTransformationAnchor(NoAnchor);
    setResizeAnchor(NoAnchor);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Map"));
    viewport()->setMouseTracking(true);
    viewport()->grabGesture(Qt::PinchGesture);
    d->wished.size = d->shown.size = viewport()->size();
}

MapView::~MapView()
{
    d->animation.stop();
    setScene(nullptr);
}

void MapView::setTileSettings(const TileSettings& settings)
{
    d->tiles.setSettings(settings);
}

void MapView::addRoute(const Route& route)
{
    if (d->overlay.contents.addRoute(route))
        d->overlay.contentsDidChange();
}

void MapView::removeRoute(const Route& route)
{
    if (!d->overlay.contents.removeRoute(route))
        return;
    d->overlay.contentsDidChange();
    d->schedulePointing();
}

bool MapView::hasRoute(const Route& route) const
{
    return d->overlay.contents.hasRoute(route);
}

void MapView::setRoutesShown(bool shown)
{
    if (!d->overlay.contents.setRoutesShown(shown))
        return;
    d->overlay.contentsDidChange();
    d->schedulePointing();
}

void MapView::addMarker(const Marker& marker)
{
    if (!d->overlay.contents.addMarker(marker))
        return;
    if (marker->isUserLocation)
        d->positions.show(d->overlay.contents, d->shown, devicePixelRatioF());
    else
        d->overlay.contentsDidChange();
}

void MapView::removeMarker(const Marker& marker)
{
    const Marker kept = marker; // the caller's may be the map's own
    if (!kept || !d->overlay.contents.hasMarker(kept))
        return;
    if (kept == d->selected)
        deselectMarker(Animation::None);
    d->overlay.contents.removeMarker(kept);
    if (kept->isUserLocation)
        d->positions.show(d->overlay.contents, d->shown, devicePixelRatioF());
    else
        d->overlay.contentsDidChange();
}

bool MapView::hasMarker(const Marker& marker) const
{
    return d->overlay.contents.hasMarker(marker);
}

void MapView::clear()
{
    deselectMarker(Animation::None);
    d->overlay.contents.clear();
    d->overlay.contentsWereCleared();
    d->positions.show(d->overlay.contents, d->shown, devicePixelRatioF());
    d->updatePointing();
}

MapRect MapView::visibleMapRect() const
{
    return d->shown.rect();
}

void MapView::setVisibleMapRect(const MapRect& rect, double edgePadding, Animation animation)
{
    if (!isUsable(rect) || !std::isfinite(edgePadding))
        return;
    d->go(d->wished.fitting(rect, edgePadding), animation);
    if (!d->animation.isRunning())
        d->fit = {rect, edgePadding};
}

void MapView::setCenter(const Coordinate& coordinate, Animation animation)
{
    if (!isPlace(coordinate))
        return;
    MapViewport target = d->wished;
    target.center = mapPoint(coordinate);
    if (d->fit) {
        const MapRect& rect = d->fit->rect;
        const double halfWidth = rect.width() / 2;
        const double halfHeight = rect.height() / 2;
        d->fit->rect = {target.center.x - halfWidth, target.center.y - halfHeight, target.center.x + halfWidth,
                        target.center.y + halfHeight};
    }
    d->go(target, animation);
}

Coordinate MapView::center() const
{
    return coordinateAt(d->shown.center);
}

double MapView::zoom() const
{
    return d->shown.zoom;
}

void MapView::setZoom(double zoom, Animation animation)
{
    if (!std::isfinite(zoom))
        return;
    d->fit.reset();
    MapViewport target = d->wished;
    target.zoom = std::clamp(zoom, MapViewport::minZoom, MapViewport::maxZoom);
    d->go(target, animation);
}

void MapView::zoomBy(double levels, Animation animation)
{
    setZoom(d->wished.zoom + levels, animation);
}

std::vector<MapView::Marker> MapView::selectedMarkers() const
{
    return d->selected ? std::vector<Marker>{d->selected} : std::vector<Marker>();
}

void MapView::selectMarker(const Marker& marker, std::unique_ptr<QWidget> callout)
{
    deselectMarker(Animation::None);
    if (!marker || !hasMarker(marker))
        return;
    d->selected = marker;
    if (!callout)
        return;
    d->callout = new MapCallout(std::move(callout), viewport());
    d->placeCallout();
    d->callout->show();
    const QList<QWidget*> inside = d->callout->findChildren<QWidget*>();
    for (QWidget* widget : inside) {
        if (widget->focusPolicy() & Qt::TabFocus) {
            setTabOrder(this, widget);
            break;
        }
    }
}

void MapView::deselectMarker(Animation animation)
{
    d->selected = nullptr;
    MapCallout* const callout = std::exchange(d->callout, nullptr);
    if (!callout)
        return;
    if (callout->isAncestorOf(focusWidget()))
        setFocus();
    if (animation == Animation::Animated && isVisible())
        callout->fade();
    else
        callout->deleteLater();
    if (animation == Animation::None)
        callout->hide();
}

bool MapView::isOverlayCurrent() const
{
    return !d->animation.isRunning() && d->overlay.isCurrent(d->shown, devicePixelRatioF());
}

void MapView::Private::placeCallout()
{
    if (callout && selected)
        callout->pointAt(overlay.contents.markerRect(shown, selected));
}

void MapView::resizeEvent(QResizeEvent* event)
{
    QGraphicsView::resizeEvent(event);
    d->wished.size = event->size();
    if (d->fit)
        d->wished = d->wished.fitting(d->fit->rect, d->fit->edgePadding);
    d->go(d->wished, Animation::None);
}

void MapView::drawBackground(QPainter* painter, const QRectF& /*rect*/)
{
    d->fit.reset();
    painter->save();
    painter->setWorldTransform({});
    painter->setFont(font());
    painter->fillRect(viewport()->rect(), palette().color(QPalette::Window));
    if (d->tiles.hasHoles(d->shown))
        drawGraticule(*painter, d->shown, palette());
    d->tiles.draw(*painter, d->shown, devicePixelRatioF());
    d->overlay.draw(*painter, d->shown, devicePixelRatioF());
    painter->restore();
}

void MapView::drawForeground(QPainter* painter, const QRectF& /*rect*/)
{
    constexpr double edge = 8;
    painter->save();
    painter->setWorldTransform({});
    painter->setFont(font());
    const QRectF room = QRectF(viewport()->rect()).adjusted(edge, edge, -edge, -edge);
    const double half = room.width() / 2;
    const auto system = CustomLocation::shouldUseMilePerHour() ? ScaleBar::System::Imperial : ScaleBar::System::Metric;
    drawScaleBar(*painter, ScaleBar::fitting(d->shown, system, std::clamp(half - 60, 40.0, 100.0)), room.bottomLeft(),
                 palette());
    QRectF above = room.adjusted(0, 0, 0, -36);
    if (const QString attribution = d->tiles.attribution(); !attribution.isEmpty()) {
        const QRectF chip =
            drawMapChip(*painter, room.adjusted(half - 40, 0, 0, 0), Qt::AlignRight, attribution, palette());
        above.setBottom(std::min(above.bottom(), chip.top() - edge));
    }
    if (d->tiles.isUnreachable() && d->tiles.isIncomplete()) {
        const QString reason = d->tiles.isRemote()
                                   ? tr("The map server can't be reached. Routes are shown without a map.")
                                   : tr("The map's tiles can't be read. Routes are shown without a map.");
        drawMapChip(*painter, above, Qt::AlignHCenter, reason, palette());
    }
    if (d->showsFocus) {
        painter->setPen(QPen(palette().color(QPalette::Link), 2));
        painter->drawRect(QRectF(viewport()->rect()).adjusted(1, 1, -1, -1));
    }
    painter->restore();
}

} // namespace cardreel
