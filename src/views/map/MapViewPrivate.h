#pragma once

#include "views/map/MapAnimation.h"
#include "views/map/MapCallout.h"
#include "views/map/MapView.h"
#include "views/map/MapViewport.h"
#include "views/map/OverlayLayer.h"
#include "views/map/PositionLayer.h"
#include "views/map/TileLayer.h"

#include <QGraphicsScene>
#include <QPointer>
#include <QTimer>

#include <optional>

namespace cardreel {

/// What a MapView is made of; its own files alone see it. Interface thread.
struct MapView::Private
{
    /// The scene's units are the view's points at the deepest zoom, so that the view never magnifies it.
    static constexpr double unitsPerWorld = 256.0 * (1 << 20);

    struct Fit
    {
        MapRect rect;
        double edgePadding;
    };
    struct Press
    {
        QPointF start;
        QPointF last;
        bool isDrag = false;
    };

    explicit Private(MapView& view);

    /// Shows this, as far as the bounds let it.
    void go(const MapViewport& target, Animation animation);
    void show(const MapViewport& next);
    void updateScene();
    void userGoes(const MapViewport& target, Animation animation);
    void userZooms(const QPointF& about, double levels, Animation animation);

    void userDeselects();
    void placeCallout();
    void click(const QPointF& position);
    void activateMarkerByKey();
    void schedulePointing();
    /// What the pointer is over, and which shape it takes there.
    void updatePointing();
    bool pinch(QEvent* event);
    bool handlesKey(const QKeyEvent& event) const;

    MapView& view;
    QGraphicsScene scene;
    /// What was asked for: the bounds may not let it be seen while the view is too large, or it is on its way.
    MapViewport wished;
    MapViewport shown;
    std::optional<Fit> fit; ///< not painted yet, so that the view may still come to its size
    TileLayer tiles;
    OverlayLayer overlay;
    PositionLayer positions;
    MapAnimation animation;

    Marker selected;
    QPointer<MapCallout> callout;

    std::optional<Press> press;
    std::optional<QPointF> pointer; ///< none outside the view
    QTimer pointing;
    std::optional<MapContents::FoundRoute> hovered;
    bool showsFocus = false; ///< for whom the keyboard brought here
};

} // namespace cardreel
