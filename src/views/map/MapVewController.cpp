#include "views/map/MapVewController.h"

#include "media/DCFInfo.h"
#include "names/ConstClass.h"
#include "playback/MediaController.h"
#include "telemetry/FixLookup.h"
#include "telemetry/NMEAData.h"
#include "views/PaneTip.h"
#include "views/map/MapActions.h"
#include "views/map/MapControls.h"
#include "views/map/RouteFitting.h"
#include "views/map/RouteJump.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <cmath>
#include <utility>

namespace cardreel {

namespace {

/// More than a pin is high, and more than the column of buttons is wide.
constexpr double edgePadding = 44;

/// More would keep the user waiting.
constexpr size_t routesAtATime = 500;

} // namespace

MapVewController::MapVewController(MediaController& controller, QWidget* parent, Throttle::Now now)
    : QWidget(parent)
    , m_controller(&controller)
    , m_map(new MapView(this))
    , m_actions(new MapActions(this))
    , m_customMapMenu(new QMenu(tr("Map"), this))
    , m_controls(nullptr)
    , m_tip(new PaneTip(this))
    , m_jump(new RouteJump(controller, this))
    , m_throttle(std::move(now))
{
    setAccessibleName(tr("Map"));
    m_customMapMenu->addActions(m_actions->paneMenu());
    m_controls = new MapControls(*m_actions, *m_customMapMenu, this);
    m_map->setRoutesShown(routeVisibility());
    m_map->setCenter({ConstClass::MAP_INIT_Y, ConstClass::MAP_INIT_X}, MapView::Animation::None);
    m_map->setZoom(ConstClass::MAP_INIT_ZOOM, MapView::Animation::None);
    m_makeUp.setSingleShot(true);
    m_makeUp.setInterval(Throttle::pause);
    m_redraw.setSingleShot(true);
    m_redraw.setInterval(0);
    connect(&m_redraw, &QTimer::timeout, this, &MapVewController::redrawRecoloured);
    connect(&m_makeUp, &QTimer::timeout, this, &MapVewController::makeUpForMissedTick);
    connectLibrary();
    connectActions();
    connectMap();
    reloadDCFInfo(controller.mediaTree());
}

MapVewController::~MapVewController() = default;

void MapVewController::connectLibrary()
{
    MediaController& controller = *m_controller;
    connect(&controller, &MediaLibrary::mediaTreeDidSync, this, [this] { reloadDCFInfo(m_controller->mediaTree()); });
    connect(&controller, &MediaLibrary::recordingDidParse, this, &MapVewController::recordingDidParse);
    connect(&controller, &MediaLibrary::parseDidFinish, this, &MapVewController::parseDidFinish);
    connect(&controller, &MediaController::currentDidChange, this, [this] { m_missedTick = {}; });
}

void MapVewController::connectActions()
{
    const auto whenToggled = [this](QAction* action, void (MapVewController::*slot)()) {
        connect(action, &QAction::toggled, this, slot);
    };
    whenToggled(m_actions->routes(), &MapVewController::routeVisibilityIsChanged);
    whenToggled(m_actions->recordings(), &MapVewController::fileVisibilityIsChanged);
    whenToggled(m_actions->events(), &MapVewController::eventVisibilityIsChanged);
    whenToggled(m_actions->position(), &MapVewController::userLocationVisibilityIsChanged);
    whenToggled(m_actions->tracing(), &MapVewController::traceUserIsChanged);
    connect(m_actions->background(), &QAction::triggered, this, &MapVewController::mapBackgroundRequested);
    connect(m_actions->zoomIn(), &QAction::triggered, m_map,
            [this] { m_map->zoomBy(1, MapView::Animation::Animated); });
    connect(m_actions->zoomOut(), &QAction::triggered, m_map,
            [this] { m_map->zoomBy(-1, MapView::Animation::Animated); });
    connect(m_actions->fit(), &QAction::triggered, this,
            [this] { focusMapRect(totalMapRect(m_routeOverlays), MapView::Animation::Animated); });
}

QToolButton* MapVewController::mapMenuButton() const
{
    return m_controls->menuButton();
}

QList<QAction*> MapVewController::menuActions() const
{
    return m_actions->windowMenu();
}

void MapVewController::reloadDCFInfo(DCFList dcfs)
{
    clearMapView();
    m_DCFInfosData = std::move(dcfs);
    m_actions->position()->setChecked(true);
}

void MapVewController::clearMapView()
{
    m_jump->cancel();
    m_tip->hide();
    m_missedTick = {};
    m_recoloured.clear();
    m_map->clear();
    m_routeOverlays.clear();
    m_fileAnnotations.clear();
    m_knownMarkers.clear();
    m_userLocation.reset();
    m_didFocus = false;
}

void MapVewController::recordingDidParse(const std::shared_ptr<DCFInfo>& dcf)
{
    const Routes routes(dcf->routeLine.begin(), dcf->routeLine.end());
    if (!dcf->nmea->isParsing() && !dcf->nmea->snapshot()->varidLocations().empty())
        focusMapOverlays(routes, MapView::Animation::None);
    addAnnotations(Markers(dcf->annotation.begin(), dcf->annotation.end()));
    addRouteOverlayLines(routes);
    if (m_missedTick.dcf.lock() == dcf)
        makeUpForMissedTick();
}

void MapVewController::parseDidFinish()
{
    m_recoloured.clear();
    m_recoloured.reserve(m_DCFInfosData.size());
    for (const std::shared_ptr<DCFInfo>& dcf : m_DCFInfosData)
        m_recoloured.insert(m_recoloured.end(), dcf->routeLine.begin(), dcf->routeLine.end());
    redrawRecoloured();
}

void MapVewController::redrawRecoloured()
{
    const auto count = static_cast<std::ptrdiff_t>(std::min(m_recoloured.size(), routesAtATime));
    upDateOverlayLines(Routes(m_recoloured.begin(), m_recoloured.begin() + count));
    m_recoloured.erase(m_recoloured.begin(), m_recoloured.begin() + count);
    if (!m_recoloured.empty())
        m_redraw.start();
}

void MapVewController::addAnnotations(const Markers& markers)
{
    for (const MapView::Marker& marker : markers) {
        if (!m_knownMarkers.insert(marker).second)
            continue;
        m_fileAnnotations.push_back(marker);
        if (isShown(*marker))
            m_map->addMarker(marker);
    }
}

void MapVewController::addRouteOverlayLines(const Routes& routes)
{
    for (const MapView::Route& route : routes) {
        if (m_map->hasRoute(route))
            continue;
        m_map->addRoute(route);
        m_routeOverlays.push_back(route);
    }
}

void MapVewController::upDateOverlayLines(const Routes& routes)
{
    const std::unordered_set<MapView::Route> removed(routes.begin(), routes.end());
    for (const MapView::Route& route : removed)
        m_map->removeRoute(route);
    std::erase_if(m_routeOverlays, [&removed](const MapView::Route& route) { return removed.contains(route); });
    addRouteOverlayLines(routes);
}

void MapVewController::focusMapOverlays(const Routes& routes, MapView::Animation animated)
{
    if (routes.empty() || m_didFocus || routes.front()->boundingMapRect().isNull())
        return;
    m_didFocus = true;
    focusMapRect(routes.front()->boundingMapRect(), animated);
}

void MapVewController::focusMapRect(const MapRect& rect, MapView::Animation animated)
{
    m_map->setVisibleMapRect(rect, edgePadding, animated);
}

void MapVewController::updateDCF(const std::shared_ptr<DCFInfo>& dcf, double currentDCFTime, double totalDCFTime)
{
    m_missedTick = {dcf, currentDCFTime, totalDCFTime};
    if (!dcf || dcf->nmea->isParsing())
        return;
    const std::shared_ptr<const Telemetry> telemetry = dcf->nmea->snapshot();
    if (telemetry->varidLocations().empty())
        return;
    if (!m_throttle.pass()) {
        if (!m_makeUp.isActive())
            m_makeUp.start();
        return;
    }
    m_missedTick = {};
    const double time = timeOfDay(*dcf, currentDCFTime, totalDCFTime);
    const CustomLocation* fix = nearestFix(telemetry->varidLocations(), time);
    updateUserLocation(fix, fix && std::abs(secondsSince1970(fix->timestamp) - time) < availableWithinSeconds);
}

/// No further tick may follow: where the video was set to while it stands still has to show all the same.
void MapVewController::makeUpForMissedTick()
{
    const MissedTick missed = m_missedTick;
    if (const std::shared_ptr<DCFInfo> dcf = missed.dcf.lock())
        updateDCF(dcf, missed.currentDCFTime, missed.totalDCFTime);
}

void MapVewController::upDateWithCenterLocation(const CustomLocation& location)
{
    m_missedTick = {};
    if (location.isValid())
        m_map->setCenter({location.latitude, location.longitude}, MapView::Animation::None);
}

void MapVewController::updateUserLocation(const CustomLocation* fix, bool GPSEnable)
{
    const std::optional<CustomPointAnnotation> moved = movedMarker(fix, GPSEnable, m_userLocation.get());
    if (!moved)
        return;
    if (traseUserLocation() && !annotationIsSelected())
        m_map->setCenter(moved->coordinate, MapView::Animation::None);
    const std::vector<MapView::Marker> selected = m_map->selectedMarkers();
    const bool wasSelected = m_userLocation && !selected.empty() && selected.front() == m_userLocation;
    if (m_userLocation)
        m_map->removeMarker(m_userLocation);
    m_userLocation = std::make_shared<const CustomPointAnnotation>(*moved);
    if (!userLocationVisibility())
        return;
    m_map->addMarker(m_userLocation);
    if (wasSelected)
        showCallout(m_userLocation);
}

bool MapVewController::routeVisibility() const
{
    return m_actions->routes()->isChecked();
}

bool MapVewController::fileVisibility() const
{
    return m_actions->recordings()->isChecked();
}

bool MapVewController::eventVisibility() const
{
    return m_actions->events()->isChecked();
}

bool MapVewController::userLocationVisibility() const
{
    return m_actions->position()->isChecked();
}

bool MapVewController::traseUserLocation() const
{
    return m_actions->tracing()->isChecked() && !mouseIsOver();
}

void MapVewController::routeVisibilityIsChanged()
{
    m_map->setRoutesShown(routeVisibility());
}

void MapVewController::fileVisibilityIsChanged()
{
    showMarkers(MarkerKind::Ordinary, fileVisibility());
}

void MapVewController::eventVisibilityIsChanged()
{
    showMarkers(MarkerKind::Kept, eventVisibility());
}

void MapVewController::userLocationVisibilityIsChanged()
{
    if (!m_userLocation)
        return;
    if (userLocationVisibility())
        m_map->addMarker(m_userLocation);
    else
        m_map->removeMarker(m_userLocation);
}

void MapVewController::traceUserIsChanged()
{
    const MapRect routes = totalMapRect(m_routeOverlays);
    switch (tracingStart(m_map->visibleMapRect(), routes)) {
    case TracingStart::CenterOnPosition:
        if (m_userLocation)
            m_map->setCenter(m_userLocation->coordinate, MapView::Animation::Animated);
        break;
    case TracingStart::FitRoutes:
        focusMapRect(routes, MapView::Animation::Animated);
        break;
    case TracingStart::Nothing:
        break;
    }
}

/// None for a recording that is gone.
MapVewController::MarkerKind MapVewController::kindOf(const CustomPointAnnotation& marker)
{
    const std::shared_ptr<DCFInfo> dcf = marker.info.lock();
    if (!dcf)
        return MarkerKind::None;
    return dcf->isEventDCF() ? MarkerKind::Kept : MarkerKind::Ordinary;
}

bool MapVewController::isShown(const CustomPointAnnotation& marker) const
{
    const MarkerKind kind = kindOf(marker);
    return kind == MarkerKind::Ordinary ? fileVisibility() : kind == MarkerKind::Kept && eventVisibility();
}

void MapVewController::showMarkers(MarkerKind kind, bool shown)
{
    for (const MapView::Marker& marker : m_fileAnnotations) {
        if (kindOf(*marker) != kind)
            continue;
        if (shown)
            m_map->addMarker(marker);
        else
            m_map->removeMarker(marker);
    }
}

void MapVewController::resizeEvent(QResizeEvent* /*event*/)
{
    m_map->setGeometry(rect());
    m_controls->place();
    m_tip->hide();
}

} // namespace cardreel
