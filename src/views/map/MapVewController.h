#pragma once

#include "media/MediaLibrary.h"
#include "playback/Panes.h"
#include "views/map/MapView.h"
#include "views/map/PositionMarker.h"

#include <QList>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <unordered_set>
#include <vector>

class QAction;
class QMenu;
class QToolButton;

namespace cardreel {

class MapActions;
class MapControls;
class MediaController;
class RouteJump;
class PaneTip;

/// The map pane of a card's window: the routes, a marker at the start of each recording, and the present position. It
/// fills itself from the controller's library and follows its clock as its map. Owned by the window; interface thread.
class MapVewController : public QWidget, public MapPane
{
    Q_OBJECT

public:
    using DCFList = MediaLibrary::DCFList;
    using Markers = std::vector<MapView::Marker>;
    using Routes = std::vector<MapView::Route>;

    /// `controller` may go before the pane. `now` is for tests.
    explicit MapVewController(MediaController& controller, QWidget* parent = nullptr,
                              Throttle::Now now = &Throttle::Clock::now);
    ~MapVewController() override;

    /// Starts afresh with the recordings of a card.
    void reloadDCFInfo(DCFList dcfs);
    /// Takes everything off the map; the next routes are fitted into view again.
    void clearMapView();
    /// Markers that are there already are passed over; those of a kind that is switched off wait for its switch.
    void addAnnotations(const Markers& markers);
    /// Routes that are there already are passed over.
    void addRouteOverlayLines(const Routes& routes);
    /// Draws routes anew that have another colour now.
    void upDateOverlayLines(const Routes& routes);
    /// Fits the first of the routes into view, once for each card.
    void focusMapOverlays(const Routes& routes, MapView::Animation animated);
    /// Fits a rectangle into view so that pins and buttons stay clear of it.
    void focusMapRect(const MapRect& rect, MapView::Animation animated);

    // The clock's map.
    void updateDCF(const std::shared_ptr<DCFInfo>& dcf, double currentDCFTime, double totalDCFTime) override;
    void upDateWithCenterLocation(const CustomLocation& location) override;
    const CustomPointAnnotation* userLocation() const override { return m_userLocation.get(); }
    /// Moves the present position to a fix, which may be missing; see movedMarker().
    void updateUserLocation(const CustomLocation* fix, bool GPSEnable);

    /// Shows the recording of the marker that the user chose.
    void annotationSelected();

    // The user flipped a switch of actions(): the map follows.
    void routeVisibilityIsChanged();
    void fileVisibilityIsChanged();
    void eventVisibilityIsChanged();
    void userLocationVisibilityIsChanged();
    void traceUserIsChanged();

    bool routeVisibility() const;
    bool fileVisibility() const;
    bool eventVisibility() const;
    bool userLocationVisibility() const;
    /// Whether the map goes along with the position: not while the pointer is over the pane, where it would run away.
    bool traseUserLocation() const;
    bool mouseIsOver() const { return underMouse(); }
    bool annotationIsSelected() const { return !m_map->selectedMarkers().empty(); }
    bool didFocus() const { return m_didFocus; }
    const DCFList& DCFInfosData() const { return m_DCFInfosData; }
    const Markers& fileAnnotations() const { return m_fileAnnotations; }
    const Routes& routeOverlays() const { return m_routeOverlays; }

    MapView* mapView() const { return m_map; }
    MapActions& actions() const { return *m_actions; }
    /// What a menu of the window shows.
    QList<QAction*> menuActions() const;
    QMenu* customMapMenu() const { return m_customMapMenu; }
    QToolButton* mapMenuButton() const;

    QSize sizeHint() const override { return {420, 400}; }
    QSize minimumSizeHint() const override { return {180, 150}; }

Q_SIGNALS:
    /// The user wants to choose where the map's pictures come from.
    void mapBackgroundRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class MarkerKind { None, Ordinary, Kept /**< for a reason: an event, by hand, while parked */ };

    /// A tick that came too early to move the position.
    struct MissedTick
    {
        std::weak_ptr<DCFInfo> dcf;
        double currentDCFTime = 0;
        double totalDCFTime = 0;
    };

    void connectLibrary();
    void connectActions();
    void connectMap();
    void recordingDidParse(const std::shared_ptr<DCFInfo>& dcf);
    void parseDidFinish();
    void redrawRecoloured();
    void makeUpForMissedTick();
    static MarkerKind kindOf(const CustomPointAnnotation& marker);
    bool isShown(const CustomPointAnnotation& marker) const;
    void showMarkers(MarkerKind kind, bool shown);
    void showCallout(const MapView::Marker& marker);
    void routeClicked(const MapView::Route& route, size_t after, double fraction);
    void routeHovered(const MapView::Route& route, size_t after, double fraction, const QPoint& position);

    QPointer<MediaController> m_controller;
    MapView* m_map;
    MapActions* m_actions;
    QMenu* m_customMapMenu;
    MapControls* m_controls;
    PaneTip* m_tip;
    RouteJump* m_jump;
    DCFList m_DCFInfosData;
    Markers m_fileAnnotations;
    std::unordered_set<MapView::Marker> m_knownMarkers; ///< m_fileAnnotations, to be found fast
    Routes m_routeOverlays;
    Routes m_recoloured; ///< not yet drawn anew
    QTimer m_redraw;
    MapView::Marker m_userLocation;
    bool m_didFocus = false;
    Throttle m_throttle;
    QTimer m_makeUp;
    MissedTick m_missedTick;
};

} // namespace cardreel
