#include "MapPane.h"
#include "names/ConstClass.h"
#include "platform/settings/UserDefaults.h"
#include "support/TestHome.h"
#include "support/Waiting.h"
#include "views/map/MapActions.h"

#include <QAction>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Animation = MapView::Animation;

class MapVewControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void beginsAtTheFirstPlace();
    void followsTheClock_data();
    void followsTheClock();
    void waitsForTelemetry();
    void makesUpForTheLastTick();
    void centersOnThePosition_data();
    void centersOnThePosition();
    void centersOnPictures();
    void fitsOnce();
    void fillsFromTheLibrary();
    void switchesMarkers_data();
    void switchesMarkers();
    void switchesPosition();
    void switchesRoutesAndTracing();
    void startsAfreshWithAnotherCard();

private:
    TestHome m_home;
};

/// What another test switched off isn't remembered here.
void MapVewControllerTest::init()
{
    for (const QString& key : {mapKeys::routes, mapKeys::recordings, mapKeys::events, mapKeys::tracing})
        UserDefaults::shared().setValue(key, true);
}

void MapVewControllerTest::beginsAtTheFirstPlace()
{
    const Pane pane;
    QVERIFY(isCenteredOn(*pane.map, ConstClass::MAP_INIT_Y));
    QVERIFY(std::abs(pane.map->mapView()->center().longitude - ConstClass::MAP_INIT_X) < 1e-6);
    QCOMPARE(pane.map->mapView()->zoom(), static_cast<double>(ConstClass::MAP_INIT_ZOOM));
    QCOMPARE(pane.place(), -1);
}

void MapVewControllerTest::followsTheClock_data()
{
    QTest::addColumn<QList<int>>("times"); // of the ticks, milliseconds
    QTest::addColumn<QList<double>>("seconds");
    QTest::addColumn<QList<int>>("places");
    QTest::addColumn<bool>("available"); // at the end
    const auto row = [](const char* what, const QList<int>& times, const QList<double>& seconds,
                        const QList<int>& places,
                        bool available = true) { QTest::newRow(what) << times << seconds << places << available; };
    row("too early", {0, 300, 499}, {1, 5, 6}, {1, 1, 1});
    row("in time", {0, 300, 500}, {1, 5, 6}, {1, 1, 6});
    row("counted from the last move", {0, 600, 1000, 1100}, {1, 5, 6, 7}, {1, 5, 5, 7});
    row("the first of equals", {0}, {4.5}, {4});
    row("the nearest", {0}, {4.51}, {5});
    row("long before and after", {0, 500}, {-60, 60}, {0, 9}, false);
    row("almost three seconds after the last", {0}, {11.999}, {9});
    row("three seconds after the last", {0}, {12}, {9}, false);
}

void MapVewControllerTest::followsTheClock()
{
    QFETCH(QList<int>, times);
    QFETCH(QList<double>, seconds);
    Pane pane;
    pane.parse();
    QList<int> places;
    for (int i = 0; i < times.size(); ++i) {
        pane.tickAt(times[i], seconds[i]);
        places.push_back(static_cast<int>(pane.place()));
    }
    QTEST(places, "places");
    QTEST(pane.map->userLocation()->GPSEnable, "available");
    QCOMPARE(pane.map->userLocation()->speed, 5.144F); // 10 knots
}

void MapVewControllerTest::waitsForTelemetry()
{
    Pane pane;
    pane.tickAt(0, 5); // not read yet; it doesn't count as a move
    QCOMPARE(pane.place(), -1);
    pane.parse();
    QCOMPARE(pane.place(), 5);
    pane.now += 1s;
    pane.map->updateDCF(pane.window.recording(5), 8, 60); // has no fixes
    QCOMPARE(pane.place(), 5);
}

void MapVewControllerTest::makesUpForTheLastTick()
{
    Pane pane;
    pane.parse();
    pane.tickAt(0, 1);
    pane.tickAt(100, 5);
    pane.tickAt(200, 7);
    QCOMPARE(pane.place(), 1);
    pane.now += 400ms;
    WAIT_FOR(pane.place() == 7);
}

void MapVewControllerTest::centersOnThePosition_data()
{
    QTest::addColumn<bool>("tracing");
    QTest::addColumn<bool>("pointerIsOver");
    QTest::addColumn<bool>("markerIsSelected");
    QTest::addColumn<bool>("goesAlong");
    QTest::newRow("follows") << true << false << false << true;
    QTest::newRow("switched off") << false << false << false << false;
    QTest::newRow("pointer over the map") << true << true << false << false;
    QTest::newRow("marker selected") << true << false << true << false;
}

void MapVewControllerTest::centersOnThePosition()
{
    QFETCH(bool, tracing);
    QFETCH(bool, pointerIsOver);
    QFETCH(bool, markerIsSelected);
    Pane pane;
    pane.parse();
    pane.map->actions().tracing()->setChecked(tracing);
    pane.map->mapView()->setCenter({10, 20}, Animation::None);
    if (pointerIsOver) {
        QEnterEvent enter({5, 5}, {5, 5}, {5, 5});
        QCoreApplication::sendEvent(pane.map.get(), &enter);
    }
    if (markerIsSelected)
        Q_EMIT pane.map->mapView()->markerDidActivate(pane.marker(2));
    QCOMPARE(pane.map->annotationIsSelected(), markerIsSelected);
    pane.tickAt(0, 5);
    QCOMPARE(pane.place(), 5);
    QTEST(isCenteredOn(*pane.map, 35 + 5 * 0.005 / 60), "goesAlong");
    QCOMPARE(isCenteredOn(*pane.map, 10), !isCenteredOn(*pane.map, 35 + 5 * 0.005 / 60));
}

void MapVewControllerTest::centersOnPictures()
{
    Pane pane;
    pane.map->upDateWithCenterLocation(CustomLocation(-33.5, 18));
    QVERIFY(isCenteredOn(*pane.map, -33.5));
    pane.map->upDateWithCenterLocation(CustomLocation::placeholder());
    QVERIFY(isCenteredOn(*pane.map, -33.5));
}

void MapVewControllerTest::fitsOnce()
{
    const Pane pane;
    MapVewController& map = *pane.map;
    const auto route = [](double latitude) {
        return std::make_shared<CustomMapPolyline>(std::vector<Coordinate>{{latitude, 10}, {latitude + 1, 11}});
    };
    map.focusMapOverlays({}, Animation::None);
    map.focusMapOverlays({std::make_shared<CustomMapPolyline>(std::vector<Coordinate>{}), route(20)}, Animation::None);
    QVERIFY(!map.didFocus());
    map.focusMapOverlays({route(-20), route(40)}, Animation::None);
    QVERIFY(map.didFocus());
    QVERIFY(map.mapView()->visibleMapRect().contains(route(-20)->boundingMapRect()));
    QVERIFY(!map.mapView()->visibleMapRect().contains(route(40)->boundingMapRect()));
    map.focusMapOverlays({route(40)}, Animation::None);
    QVERIFY(!map.mapView()->visibleMapRect().contains(route(40)->boundingMapRect()));
    map.clearMapView();
    map.focusMapOverlays({route(40)}, Animation::None);
    QVERIFY(map.mapView()->visibleMapRect().contains(route(40)->boundingMapRect()));
}

void MapVewControllerTest::fillsFromTheLibrary()
{
    Pane pane;
    QCOMPARE(pane.map->DCFInfosData().size(), 6U);
    pane.parse();
    QVERIFY(pane.map->didFocus());
    QVERIFY(pane.map->mapView()->visibleMapRect().contains(pane.route(0)->boundingMapRect()));
    Q_EMIT pane.window.controller->recordingDidParse(pane.window.recording(0)); // again, as after a new selection
    Q_EMIT pane.window.controller->parseDidFinish();
    QCOMPARE(pane.map->routeOverlays().size(), 5U);
    QCOMPARE(pane.map->fileAnnotations().size(), 5U);
    for (size_t i = 0; i < 5; ++i) {
        QVERIFY(pane.map->mapView()->hasRoute(pane.route(i)));
        QVERIFY(pane.map->mapView()->hasMarker(pane.marker(i)));
    }
}

void MapVewControllerTest::switchesMarkers_data()
{
    QTest::addColumn<bool>("files");
    QTest::addColumn<bool>("events");
    QTest::addColumn<QList<bool>>("shown");
    QTest::newRow("all") << true << true << QList<bool>{true, true, true, true, true};
    QTest::newRow("files") << true << false << QList<bool>{true, true, false, false, false};
    QTest::newRow("events") << false << true << QList<bool>{false, false, true, true, true};
    QTest::newRow("none") << false << false << QList<bool>{false, false, false, false, false};
}

void MapVewControllerTest::switchesMarkers()
{
    QFETCH(bool, files);
    QFETCH(bool, events);
    QFETCH(QList<bool>, shown);
    Pane pane;
    const auto found = [](const Pane& looked) {
        QList<bool> result;
        for (size_t i = 0; i < 5; ++i)
            result.push_back(looked.map->mapView()->hasMarker(looked.marker(i)));
        return result;
    };
    pane.parse(3);
    pane.map->actions().recordings()->setChecked(files);
    pane.map->actions().events()->setChecked(events);
    pane.parse(); // markers that come later, too
    QCOMPARE(found(pane), shown);
    QCOMPARE(pane.map->fileAnnotations().size(), 8U); // the first three were made twice
    Pane another;
    another.parse();
    QCOMPARE(found(another), shown); // remembered
    pane.map->actions().recordings()->setChecked(true);
    pane.map->actions().events()->setChecked(true);
    QVERIFY(!found(pane).contains(false));
}

void MapVewControllerTest::switchesPosition()
{
    Pane pane;
    pane.parse();
    QAction* position = pane.map->actions().position();
    const auto isShown = [&pane] {
        return pane.map->mapView()->hasMarker({std::shared_ptr<void>(), pane.map->userLocation()});
    };
    position->setChecked(false);
    pane.tickAt(0, 3);
    QCOMPARE(pane.place(), 3); // still the clock's
    QVERIFY(!isShown());
    position->setChecked(true);
    QVERIFY(isShown());
    position->setChecked(false);
    QVERIFY(!isShown());
    pane.window.open(pane.card.root());
    QVERIFY(position->isChecked());
}

void MapVewControllerTest::switchesRoutesAndTracing()
{
    Pane pane;
    pane.parse();
    MapView& view = *pane.map->mapView();
    pane.map->actions().routes()->setChecked(false);
    QVERIFY(!pane.map->routeVisibility() && view.hasRoute(pane.route(0)));
    // Switched either way, tracing brings routes into view of which nothing was seen.
    for (const bool tracing : {false, true}) {
        view.setCenter({-33, -70}, Animation::None);
        pane.map->actions().tracing()->setChecked(tracing);
        WAIT_FOR(view.visibleMapRect().contains(pane.route(0)->boundingMapRect()));
        pane.map->actions().routes()->setChecked(tracing);
        const Pane another;
        QCOMPARE(another.map->actions().tracing()->isChecked(), tracing);
        QCOMPARE(another.map->routeVisibility(), tracing);
    }
}

void MapVewControllerTest::startsAfreshWithAnotherCard()
{
    Pane pane;
    pane.parse();
    pane.tickAt(0, 1);
    Q_EMIT pane.map->mapView()->markerDidActivate(pane.marker(2));
    QVERIFY(pane.map->annotationIsSelected());
    const MapView::Route formerRoute = pane.route(0);
    const MapView::Marker formerMarker = pane.marker(2);
    pane.window.open(pane.card.root());
    QVERIFY(!pane.map->mapView()->hasRoute(formerRoute));
    QVERIFY(!pane.map->mapView()->hasMarker(formerMarker));
    QVERIFY(pane.map->routeOverlays().empty() && pane.map->fileAnnotations().empty());
    QVERIFY(!pane.map->didFocus() && !pane.map->annotationIsSelected());
    QCOMPARE(pane.place(), -1);
    pane.map->annotationSelected(); // its button was pressed in the last moment
    QVERIFY(!pane.window.controller->currentDCF());
}

QTEST_MAIN(MapVewControllerTest)
#include "MapVewControllerTest.moc"
