#pragma once

#include "media/CustomMapPolyline.h"
#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "views/map/MapView.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <memory>
#include <vector>

namespace cardreel::test {

using Animation = MapView::Animation;

inline const Coordinate city = {35.68, 139.75};
inline const QPoint middle(200, 190); ///< of the view

/// A place so many points east and south of the city's, at a zoom.
inline Coordinate beside(double east, double south, double zoom = 12)
{
    const double world = 256 * std::exp2(zoom);
    const MapPoint point = mapPoint(city);
    return coordinateAt({point.x + east / world, point.y + south / world});
}

inline std::shared_ptr<CustomMapPolyline> makeRoute(const std::vector<Coordinate>& line, QColor color = Qt::blue)
{
    auto route = std::make_shared<CustomMapPolyline>(line);
    route->lineColor = color;
    return route;
}

/// A map of 400x380 points that shows the city at zoom 12.
struct ShownMap
{
    MapView view;
    std::shared_ptr<DCFInfo> recording =
        std::make_shared<DCFInfo>(QStringLiteral("/card"), QStringLiteral("EVENT/250614080310.MP4"));

    ShownMap()
    {
        view.resize(2 * middle.x(), 2 * middle.y());
        view.setCenter(city, Animation::None);
        view.setZoom(12, Animation::None);
    }

    void show()
    {
        view.show();
        QApplication::setActiveWindow(&view);
        QVERIFY(QTest::qWaitForWindowExposed(&view));
    }

    MapView::Marker addMarker(Coordinate at, bool isUserLocation = false)
    {
        auto marker = std::make_shared<CustomPointAnnotation>();
        marker->coordinate = at;
        marker->isUserLocation = isUserLocation;
        marker->GPSEnable = true;
        marker->direction = 90;
        marker->info = recording;
        view.addMarker(marker);
        return marker;
    }

    MapView::Route addRoute(const std::vector<Coordinate>& line, QColor color = Qt::blue)
    {
        const MapView::Route route = makeRoute(line, color);
        view.addRoute(route);
        return route;
    }

    QColor colorAt(QPoint position) { return view.viewport()->grab().toImage().pixelColor(position); }

    void wheel(QPointF position, int turn)
    {
        QWheelEvent event(position, view.viewport()->mapToGlobal(position), {}, {0, turn}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.viewport(), &event);
    }

    /// Not by QTest, which moves the screen's own pointer, and that may be over another window.
    void hover(QPointF position, Qt::MouseButtons buttons = Qt::NoButton)
    {
        QMouseEvent event(QEvent::MouseMove, position, view.viewport()->mapToGlobal(position), Qt::NoButton, buttons,
                          Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    }

    void click(QPoint position) { QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, position); }
};

inline double distance(const Coordinate& a, const Coordinate& b)
{
    return std::hypot(a.latitude - b.latitude, std::remainder(a.longitude - b.longitude, 360));
}

} // namespace cardreel::test
