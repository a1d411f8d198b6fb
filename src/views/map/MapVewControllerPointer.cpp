// What the user does with the map's markers and routes.

#include "media/DCFInfo.h"
#include "playback/MediaController.h"
#include "telemetry/NMEAData.h"
#include "views/PaneTip.h"
#include "views/map/CustomMapCalloutView.h"
#include "views/map/MapVewController.h"
#include "views/map/PlaceText.h"
#include "views/map/RouteJump.h"
#include "views/map/RouteMoment.h"

#include <QPushButton>

#include <algorithm>

namespace cardreel {

namespace {

/// The recording that the route belongs to; the end of the list when it is gone.
MediaLibrary::DCFList::const_iterator recordingOf(const MapView::Route& route, const MediaLibrary::DCFList& dcfs)
{
    return std::find_if(dcfs.begin(), dcfs.end(), [&route](const std::shared_ptr<DCFInfo>& dcf) {
        return std::find(dcf->routeLine.begin(), dcf->routeLine.end(), route) != dcf->routeLine.end();
    });
}

std::optional<RouteMoment> momentAt(const MapView::Route& route, size_t after, double fraction,
                                    MediaLibrary::DCFList::const_iterator recording, const MediaLibrary::DCFList& dcfs)
{
    const std::shared_ptr<const Telemetry> own = (*recording)->nmea->snapshot();
    std::shared_ptr<const Telemetry> following;
    if (const auto next = recording + 1; next != dcfs.end())
        following = (*next)->nmea->snapshot();
    const bool leadsOn = following && !following->varidLocations().empty();
    return momentOnRoute(*route, own->varidLocations(), leadsOn ? &following->varidLocations().front() : nullptr, after,
                         fraction);
}

} // namespace

void MapVewController::connectMap()
{
    connect(m_map, &MapView::markerDidActivate, this, &MapVewController::showCallout);
    connect(m_map, &MapView::routeClicked, this, &MapVewController::routeClicked);
    connect(m_map, &MapView::routeHovered, this, &MapVewController::routeHovered);
    connect(m_map, &MapView::userDidMove, m_tip, &QWidget::hide);
}

void MapVewController::showCallout(const MapView::Marker& marker)
{
    if (marker == m_userLocation) {
        m_map->selectMarker(marker, makePositionCallout(*marker));
        return;
    }
    const std::shared_ptr<DCFInfo> dcf = marker->info.lock();
    if (!dcf)
        return;
    auto callout = std::make_unique<CustomMapCalloutView>(*dcf);
    // Later, because the button goes with its callout.
    connect(callout->calloutActionButton(), &QPushButton::clicked, this, &MapVewController::annotationSelected,
            Qt::QueuedConnection);
    m_map->selectMarker(marker, std::move(callout));
}

void MapVewController::annotationSelected()
{
    const std::vector<MapView::Marker> selected = m_map->selectedMarkers();
    if (selected.empty())
        return;
    const MapView::Marker marker = selected.front();
    const std::shared_ptr<DCFInfo> dcf = marker->info.lock();
    const QPointer<MapVewController> self(this);
    if (dcf && m_controller)
        m_controller->updateCurrentDCF(dcf, false, nullptr);
    if (!self)
        return;
    m_map->deselectMarker(MapView::Animation::Animated);
    m_map->setCenter(marker->coordinate, MapView::Animation::Animated);
}

void MapVewController::routeClicked(const MapView::Route& route, size_t after, double fraction)
{
    const auto recording = recordingOf(route, m_DCFInfosData);
    if (recording == m_DCFInfosData.end())
        return;
    if (const auto moment = momentAt(route, after, fraction, recording, m_DCFInfosData))
        m_jump->jumpTo(*recording, moment->time);
}

void MapVewController::routeHovered(const MapView::Route& route, size_t after, double fraction, const QPoint& position)
{
    const auto recording = route ? recordingOf(route, m_DCFInfosData) : m_DCFInfosData.end();
    const auto moment =
        recording == m_DCFInfosData.end() ? std::nullopt : momentAt(route, after, fraction, recording, m_DCFInfosData);
    if (moment)
        m_tip->showText(routeMomentText(*moment), m_map->mapTo(this, position));
    else
        m_tip->hide();
}

} // namespace cardreel
