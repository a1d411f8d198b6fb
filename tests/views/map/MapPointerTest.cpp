#include "MapPane.h"
#include "support/TestHome.h"
#include "support/Waiting.h"
#include "views/PaneTip.h"
#include "views/map/CustomMapCalloutView.h"

#include <QLabel>
#include <QPushButton>

#include <algorithm>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

/// The newest; one that was closed may not be gone yet.
CustomMapCalloutView* calloutOf(const Pane& pane)
{
    const QList<CustomMapCalloutView*> all = pane.map->findChildren<CustomMapCalloutView*>();
    return all.isEmpty() ? nullptr : all.back();
}

const PaneTip& tipOf(const Pane& pane)
{
    return *pane.map->findChild<PaneTip*>();
}

} // namespace

/// What the user does with markers and routes.
class MapPointerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensTheMarkersRecording();
    void jumpsOnTheRoute_data();
    void jumpsOnTheRoute();
    void dropsAJump();
    void saysWhenAndHowFast();
    void standsWhatIsGone();

private:
    TestHome m_home;
};

void MapPointerTest::opensTheMarkersRecording()
{
    Pane pane;
    pane.parse();
    pane.map->mapView()->setCenter({10, 20}, MapView::Animation::None);
    Q_EMIT pane.map->mapView()->markerDidActivate(pane.marker(2));
    QVERIFY(calloutOf(pane));
    const QList<QLabel*> labels = calloutOf(pane)->findChildren<QLabel*>();
    QVERIFY(std::any_of(labels.begin(), labels.end(), [&pane](const QLabel* label) {
        return label->text() == pane.window.recording(2)->dcfDateString;
    }));
    const QSize size = calloutOf(pane)->imageView()->size();
    QVERIFY(!size.isEmpty() && calloutOf(pane)->imageView()->pixmap().isNull());
    pane.window.recording(2)->thumbnailPath = pane.card.picture(u"thumbnail.jpg"_s);
    Q_EMIT pane.map->mapView()->markerDidActivate(pane.marker(2));
    WAIT_FOR(!calloutOf(pane)->imageView()->pixmap().isNull());
    QCOMPARE(calloutOf(pane)->imageView()->size(), size);
    calloutOf(pane)->calloutActionButton()->click();
    WAIT_FOR(pane.window.controller->currentDCF() == pane.window.recording(2));
    QVERIFY(pane.window.log.take().contains(u"list.select "_s + pane.window.recording(2)->deltaPath));
    QVERIFY(!pane.map->annotationIsSelected());
    WAIT_FOR(isCenteredOn(*pane.map, pane.marker(2)->coordinate.latitude));
}

void MapPointerTest::jumpsOnTheRoute_data()
{
    QTest::addColumn<int>("route");
    QTest::addColumn<int>("after");
    QTest::addColumn<double>("fraction");
    QTest::addColumn<QString>("call");
    QTest::newRow("in view") << 0 << 6 << 0.0 << u"front.setCurrentProgress 0.1"_s;
    QTest::newRow("between fixes") << 0 << 4 << 0.5 << u"front.setCurrentProgress 0.075"_s;
    QTest::newRow("on the way to the next") << 0 << 9 << 0.5 << u"front.setCurrentProgress 0.575"_s;
    QTest::newRow("another recording") << 3 << 6 << 0.0 << u"front.setCurrentProgress 0.1"_s;
}

void MapPointerTest::jumpsOnTheRoute()
{
    QFETCH(int, route);
    QFETCH(int, after);
    QFETCH(double, fraction);
    QFETCH(QString, call);
    Pane pane;
    pane.parse();
    pane.window.play(0, 60);
    const auto index = static_cast<size_t>(route);
    if (index != 0)
        pane.window.front.length = 0; // as of a player that is loading
    Q_EMIT pane.map->mapView()->routeClicked(pane.route(index), static_cast<size_t>(after), fraction);
    QCOMPARE(pane.window.controller->currentDCF(), pane.window.recording(index));
    if (index != 0) {
        pane.window.front.progressed();
        QVERIFY(!pane.window.log.take().contains(call));
        pane.window.front.length = 60;
        pane.window.front.progressed();
    }
    QVERIFY(pane.window.log.take().contains(call));
    pane.window.front.progressed();
    QVERIFY(!pane.window.log.take().contains(call)); // once
}

void MapPointerTest::dropsAJump()
{
    Pane pane;
    pane.parse();
    pane.window.play(0, 60);
    pane.window.front.length = 0;
    Q_EMIT pane.map->mapView()->routeClicked(pane.route(3), 6, 0);
    pane.window.play(1, 60);
    pane.window.play(3, 60);
    pane.window.front.progressed();
    QVERIFY(!pane.window.log.take().contains(u"front.setCurrentProgress 0.1"_s));
}

void MapPointerTest::saysWhenAndHowFast()
{
    Pane pane;
    pane.parse();
    pane.map->show();
    const auto hover = [&pane](const MapView::Route& route, size_t after) {
        Q_EMIT pane.map->mapView()->routeHovered(route, after, 0.5, {590, 390});
        return tipOf(pane).isVisible() ? tipOf(pane).text() : QString();
    };
    QVERIFY(hover(pane.route(1), 3).contains(u":01:0"_s));
    QVERIFY(tipOf(pane).text().endsWith(CustomLocation::unitForCurrentLocale()));
    QVERIFY(pane.map->rect().contains(tipOf(pane).geometry()));
    QVERIFY(hover(pane.route(1), 9).contains(u":01:09"_s)); // and nothing until the next recording
    QVERIFY(tipOf(pane).text().contains(u":02:00"_s));
    QCOMPARE(hover(nullptr, 0), QString());
    QCOMPARE(hover(std::make_shared<CustomMapPolyline>(std::vector<Coordinate>(3)), 0), QString());
    QVERIFY(!hover(pane.route(1), 3).isEmpty());
    pane.window.open(pane.card.root());
    QVERIFY(!tipOf(pane).isVisible());
}

void MapPointerTest::standsWhatIsGone()
{
    Pane pane;
    pane.parse();
    MapView& view = *pane.map->mapView();
    auto orphan = std::make_shared<CustomPointAnnotation>();
    Q_EMIT view.markerDidActivate(orphan);
    QVERIFY(!pane.map->annotationIsSelected());
    pane.map->addAnnotations({orphan});
    QVERIFY(!view.hasMarker(orphan));
    pane.window.play(0, 60);
    pane.window.recording(1)->nmea = std::make_shared<NMEAData>(u"/nowhere"_s);
    Q_EMIT view.routeClicked(pane.route(1), 3, 0.5);
    Q_EMIT view.routeClicked(std::make_shared<CustomMapPolyline>(std::vector<Coordinate>(3)), 0, 0.5);
    Q_EMIT view.routeHovered(pane.route(1), 999, 0.5, {});
    QCOMPARE(pane.window.controller->currentDCF(), pane.window.recording(0));
    // The window closes with a callout open.
    const MapView::Route route = pane.route(0);
    Q_EMIT view.markerDidActivate(pane.marker(2));
    pane.window.controller.reset();
    Q_EMIT view.routeClicked(route, 3, 0.5);
    pane.map->annotationSelected();
    QVERIFY(!pane.map->annotationIsSelected());
}

QTEST_MAIN(MapPointerTest)
#include "MapPointerTest.moc"
