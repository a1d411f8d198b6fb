#include "views/map/MapViewport.h"

#include "views/map/Graticule.h"
#include "views/map/MapCallout.h"
#include "views/map/ScaleBar.h"

#include <QLocale>
#include <QTest>

#include <cmath>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

MapViewport viewportOf(MapPoint center, double zoom, QSizeF size = {1000, 700})
{
    return {center, zoom, size};
}

double apart(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

} // namespace

/// Where things are on the map and in the view.
class MapViewportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void staysWithinTheWorld_data()
    {
        QTest::addColumn<MapPoint>("center");
        QTest::addColumn<double>("zoom");
        QTest::addColumn<MapPoint>("bounded");
        QTest::addColumn<double>("boundedZoom");
        // At zoom 3 the world is 2048 points, so the view's half height is 350 / 2048 of it.
        QTest::newRow("north of the edge") << MapPoint{0.5, -1} << 3.0 << MapPoint{0.5, 350.0 / 2048} << 3.0;
        QTest::newRow("south of the edge") << MapPoint{0.5, 1} << 3.0 << MapPoint{0.5, 1 - 350.0 / 2048} << 3.0;
        QTest::newRow("a world less high than the view") << MapPoint{0.25, 0.1} << 1.0 << MapPoint{0.25, 0.5} << 1.0;
        QTest::newRow("round the world to the east") << MapPoint{2.25, 0.5} << 5.0 << MapPoint{0.25, 0.5} << 5.0;
        QTest::newRow("round the world to the west") << MapPoint{-0.25, 0.5} << 5.0 << MapPoint{0.75, 0.5} << 5.0;
        QTest::newRow("too deep") << MapPoint{0.5, 0.5} << 1e300 << MapPoint{0.5, 0.5} << 20.0;
        QTest::newRow("too high") << MapPoint{0.5, 0.5} << -3.0 << MapPoint{0.5, 0.5} << 0.0;
    }
    void staysWithinTheWorld()
    {
        QFETCH(const MapPoint, center);
        QFETCH(const double, zoom);
        QFETCH(const MapPoint, bounded);
        const MapViewport result = viewportOf(center, zoom).bounded();
        QCOMPARE(result.center.x, bounded.x);
        QCOMPARE(result.center.y, bounded.y);
        QTEST(result.zoom, "boundedZoom");
    }

    void keepsThePointUnderThePointer_data()
    {
        QTest::addColumn<MapViewport>("start");
        QTest::addColumn<QPointF>("pointer");
        QTest::newRow("city") << viewportOf({0.888, 0.394}, 12.3) << QPointF(123, 456);
        QTest::newRow("deepest") << viewportOf({0.888, 0.394}, 18) << QPointF(900, 10);
        QTest::newRow("across the antimeridian") << viewportOf({0.9999, 0.4}, 8) << QPointF(990, 350);
        QTest::newRow("whole continents") << viewportOf({0.3, 0.45}, 4) << QPointF(500, 350);
    }
    void keepsThePointUnderThePointer()
    {
        QFETCH(const MapViewport, start);
        QFETCH(const QPointF, pointer);
        const MapPoint place = start.fromView(pointer);
        MapViewport now = start;
        // As a touchpad does it: rounding must not add up.
        for (int i = 0; i < 200; ++i)
            now = now.zoomedAbout(pointer, start.zoom + 1.9 * (i % 100) / 100);
        const double copy = std::round(now.center.x - place.x);
        QVERIFY(apart(now.toView({place.x + copy, place.y}), pointer) < 3);
        QVERIFY(apart(now.toView(now.fromView(pointer)), pointer) < 1e-3);
    }

    void fitsRectangles_data()
    {
        QTest::addColumn<MapRect>("rect");
        QTest::addColumn<double>("padding");
        QTest::addColumn<double>("zoom");
        // 900 points for a hundredth of the world: 90,000 points wide. 600 for a tenth: 6,000.
        QTest::newRow("wide") << MapRect{0.5, 0.5, 0.51, 0.501} << 50.0 << std::log2(90'000 / 256.0);
        QTest::newRow("high") << MapRect{0.5, 0.4, 0.51, 0.5} << 50.0 << std::log2(6'000 / 256.0);
        QTest::newRow("across the antimeridian")
            << MapRect{0.995, 0.5, 1.005, 0.501} << 50.0 << std::log2(90'000 / 256.0);
        QTest::newRow("a point") << MapRect{0.5, 0.5, 0.5, 0.5} << 50.0 << MapViewport::maxFitZoom;
        QTest::newRow("nearly a point") << MapRect{0.5, 0.5, 0.500'000'01, 0.5} << 50.0 << MapViewport::maxFitZoom;
        QTest::newRow("no room within the padding")
            << MapRect{0.5, 0.5, 0.501, 0.501} << 500.0 << std::log2(1000 / 256.0);
        QTest::newRow("more than the world") << MapRect{-3, 0, 3, 1} << 10.0 << 0.0;
    }
    void fitsRectangles()
    {
        QFETCH(const MapRect, rect);
        QFETCH(const double, padding);
        const MapViewport fitted = viewportOf({0.1, 0.2}, 7).fitting(rect, padding);
        QTEST(fitted.zoom, "zoom");
        QCOMPARE(std::remainder(fitted.center.x - rect.center().x, 1), 0.0);
    }

    void goesTheShorterWay()
    {
        const MapViewport from = viewportOf({0.98, 0.4}, 6);
        const MapViewport east = viewportOf({0.02, 0.4}, 6);
        QCOMPARE(from.toward(east, 0.5).center.x, 0.0);
        QCOMPARE(from.toward(east, 1), east);
        // Around the point that stays: it is in the same place half-way.
        const QPointF pointer(200, 600);
        const MapViewport deeper = from.zoomedAbout(pointer, 9);
        QVERIFY(apart(from.toward(deeper, 0.4).toView(from.fromView(pointer)), pointer) < 1.5);
    }

    void drawsTheGraticule_data()
    {
        QTest::addColumn<MapViewport>("viewport");
        QTest::addColumn<double>("step");
        QTest::addColumn<QStringList>("meridianLabels");
        QTest::addColumn<QString>("northernmost");
        QTest::newRow("the world and more")
            << viewportOf({0.5, 0.5}, 1, {700, 700}) << 90.0 << QStringList() << u"0°"_s;
        QTest::newRow("city") << viewportOf(mapPoint(35.68, 139.75), 11, {404, 380}) << 0.1
                              << QStringList{u"139.7° E"_s, u"139.8° E"_s} << u"35.7° N"_s;
        QTest::newRow("null island") << viewportOf({0.5, 0.5}, 10, {404, 380}) << 0.2
                                     << QStringList{u"0.2° W"_s, u"0.0°"_s, u"0.2° E"_s} << u"0.2° N"_s;
        QTest::newRow("date line") << viewportOf({0, 0.6}, 8, {404, 380}) << 1.0
                                   << QStringList{u"179° E"_s, u"180° E"_s, u"179° W"_s} << u"33° S"_s;
    }
    void drawsTheGraticule()
    {
        QFETCH(const MapViewport, viewport);
        QFETCH(const QStringList, meridianLabels);
        QLocale::setDefault(QLocale::c());
        QTEST(graticuleStep(viewport), "step");
        const std::vector<GraticuleLine> lines = meridians(viewport);
        QVERIFY(lines.size() >= 2 && lines.size() < 20);
        QStringList labels;
        for (const GraticuleLine& line : lines)
            labels.append(line.label);
        if (!meridianLabels.isEmpty())
            QCOMPARE(labels, meridianLabels);
        QVERIFY(lines[1].position - lines[0].position >= 58);
        QTEST(parallels(viewport).back().label, "northernmost");
        for (const GraticuleLine& line : parallels(viewport))
            QVERIFY(line.position >= -1 && line.position <= viewport.size.height() + 1);
    }

    void measuresDistances_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("zoom");
        QTest::addColumn<ScaleBar::System>("system");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("width");
        using enum ScaleBar::System;
        // On the equator a point of zoom 0 is 156,543 m, and half as much at 60 degrees.
        QTest::newRow("the world") << 0.0 << 0.0 << Metric << u"10,000 km"_s << 63.88;
        QTest::newRow("streets") << 0.0 << 16.0 << Metric << u"200 m"_s << 83.73;
        QTest::newRow("streets in the north") << 60.0 << 16.0 << Metric << u"100 m"_s << 83.73;
        QTest::newRow("just a kilometre") << 0.0 << 13.9 << Metric << u"1 km"_s << 97.64;
        QTest::newRow("feet") << 0.0 << 16.0 << Imperial << u"500 ft"_s << 63.80;
        QTest::newRow("miles") << 0.0 << 10.0 << Imperial << u"5 mi"_s << 52.63;
    }
    void measuresDistances()
    {
        QFETCH(const double, latitude);
        QFETCH(const double, zoom);
        QFETCH(const ScaleBar::System, system);
        QFETCH(const double, width);
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        const ScaleBar bar = ScaleBar::fitting(viewportOf(mapPoint(latitude, 10), zoom), system, 100);
        QTEST(bar.text(), "text");
        QVERIFY2(std::abs(bar.width - width) < 0.05, qPrintable(QString::number(bar.width)));
    }

    void placesCallouts_data()
    {
        QTest::addColumn<QRectF>("target");
        QTest::addColumn<CalloutPlacement>("placement");
        // Of 200x100 points in a view of 404x380.
        QTest::newRow("above") << QRectF(190, 200, 20, 30) << CalloutPlacement{{100, 100}, 100, false};
        QTest::newRow("below, where only there is room")
            << QRectF(190, 50, 20, 30) << CalloutPlacement{{100, 80}, 100, true};
        QTest::newRow("at the left edge") << QRectF(20, 200, 20, 30) << CalloutPlacement{{4, 100}, 26, false};
        QTest::newRow("at the right edge") << QRectF(360, 200, 20, 30) << CalloutPlacement{{200, 100}, 170, false};
        QTest::newRow("in the corner the tip stays on the frame")
            << QRectF(390, 200, 20, 30) << CalloutPlacement{{214, 100}, 186, false};
        QTest::newRow("left with its marker") << QRectF(-510, 200, 20, 30) << CalloutPlacement{{-514, 100}, 14, false};
    }
    void placesCallouts()
    {
        QFETCH(const QRectF, target);
        QFETCH(const CalloutPlacement, placement);
        const CalloutPlacement found = CalloutPlacement::of({200, 100}, target, {404, 380});
        QCOMPARE(found.corner, placement.corner);
        QCOMPARE(found.pointerX, placement.pointerX);
        QCOMPARE(found.isBelow, placement.isBelow);
    }
};

QTEST_GUILESS_MAIN(MapViewportTest)
#include "MapViewportTest.moc"
