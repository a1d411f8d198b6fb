#include "ShownMap.h"
#include "support/Waiting.h"

#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QPushButton>
#include <QSignalSpy>

#include <memory>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

/// What the user does with a map.
class MapViewInputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void zoomsByWheel()
    {
        ShownMap map;
        map.show();
        const Coordinate pointed = beside(-150, 120);
        QSignalSpy moved(&map.view, &MapView::userDidMove);
        // Fine steps act at once, notches glide, and both add up.
        map.wheel(QPointF(middle) + QPointF(-150, 120), 30);
        QCOMPARE(map.view.zoom(), 12.125);
        map.wheel(QPointF(middle) + QPointF(-150, 120), 120);
        map.wheel(QPointF(middle) + QPointF(-150, 120), 120);
        QVERIFY(map.view.zoom() < 13);
        WAIT_FOR(map.view.zoom() == 13.125);
        QCOMPARE(moved.size(), 3);
        const MapRect seen = map.view.visibleMapRect();
        const Coordinate there =
            coordinateAt({std::lerp(seen.left, seen.right, 50 / 400.0), std::lerp(seen.top, seen.bottom, 310 / 380.0)});
        QVERIFY(distance(there, pointed) < 1e-6);
        map.wheel(middle, 120 * 100);
        WAIT_FOR(map.view.zoom() == 20);
    }

    void zoomsByFingers()
    {
        ShownMap map;
        map.show();
        QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, middle, middle,
                                  map.view.viewport()->mapToGlobal(middle), 1.0, {});
        QApplication::sendEvent(map.view.viewport(), &pinch);
        QCOMPARE(map.view.zoom(), 13.0);
        QVERIFY(distance(map.view.center(), city) < 1e-6);
        // On a screen that is touched: one finger drags, two that part zoom.
        const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
        const auto touch = [&] { return QTest::touchEvent(map.view.viewport(), screen.get()); };
        touch().press(0, middle);
        touch().move(0, middle + QPoint(100, 0));
        touch().release(0, middle + QPoint(100, 0));
        QVERIFY(distance(map.view.center(), beside(-100, 0, 13)) < 1e-6);
        touch().press(0, middle - QPoint(50, 0)).press(1, middle + QPoint(50, 0));
        for (int spread = 60; spread <= 100; spread += 10)
            touch().move(0, middle - QPoint(spread, 0)).move(1, middle + QPoint(spread, 0));
        touch().release(0, middle - QPoint(100, 0)).release(1, middle + QPoint(100, 0));
        QVERIFY(map.view.zoom() > 13.5 && map.view.zoom() <= 14);
        QVERIFY(distance(map.view.center(), beside(-100, 0, 13)) < 1e-4);
    }

    void pansByDrag()
    {
        ShownMap map;
        map.show();
        QSignalSpy moved(&map.view, &MapView::userDidMove);
        QWidget* const viewport = map.view.viewport();
        QTest::mousePress(viewport, Qt::LeftButton, {}, middle);
        map.hover(middle + QPoint(2, 2), Qt::LeftButton);
        QVERIFY(moved.isEmpty()); // a hand is never quite still
        map.hover(middle + QPoint(60, 80), Qt::LeftButton);
        map.hover(middle + QPoint(100, 120), Qt::LeftButton);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, middle + QPoint(100, 120));
        QVERIFY(distance(map.view.center(), beside(-100, -120)) < 1e-6);
        QCOMPARE(moved.size(), 2);
    }

    void obeysKeys_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<double>("east");
        QTest::addColumn<double>("south");
        QTest::addColumn<double>("levels");
        QTest::newRow("left") << Qt::Key_Left << -100.0 << 0.0 << 0.0;
        QTest::newRow("right") << Qt::Key_Right << 100.0 << 0.0 << 0.0;
        QTest::newRow("up") << Qt::Key_Up << 0.0 << -100.0 << 0.0;
        QTest::newRow("down") << Qt::Key_Down << 0.0 << 100.0 << 0.0;
        QTest::newRow("plus") << Qt::Key_Plus << 0.0 << 0.0 << 1.0;
        QTest::newRow("minus") << Qt::Key_Minus << 0.0 << 0.0 << -1.0;
        QTest::newRow("home is for others") << Qt::Key_Home << 0.0 << 0.0 << 0.0;
    }
    void obeysKeys()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const double, east);
        QFETCH(const double, south);
        QFETCH(const double, levels);
        ShownMap map;
        map.show();
        map.view.setFocus();
        // Pressed again before the map has come to rest.
        QTest::keyClick(&map.view, key);
        QTest::keyClick(&map.view, key);
        WAIT_FOR(map.view.zoom() == 12 + 2 * levels);
        WAIT_FOR(distance(map.view.center(), beside(2 * east, 2 * south)) < 1e-6);
        WAIT_FOR(map.view.isOverlayCurrent());
        QTest::keyClick(&map.view, key, Qt::ControlModifier);
        QVERIFY(map.view.isOverlayCurrent()); // nothing is on its way
    }

    void zoomsByDoubleClick_data()
    {
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::addColumn<Qt::KeyboardModifier>("modifier");
        QTest::addColumn<double>("zoom");
        QTest::newRow("in") << Qt::LeftButton << Qt::NoModifier << 13.0;
        QTest::newRow("out with Shift") << Qt::LeftButton << Qt::ShiftModifier << 11.0;
        QTest::newRow("out with the right button") << Qt::RightButton << Qt::NoModifier << 11.0;
        QTest::newRow("not with the middle one") << Qt::MiddleButton << Qt::NoModifier << 12.0;
    }
    void zoomsByDoubleClick()
    {
        QFETCH(const Qt::MouseButton, button);
        QFETCH(const Qt::KeyboardModifier, modifier);
        QFETCH(const double, zoom);
        ShownMap map;
        map.show();
        QTest::mouseDClick(map.view.viewport(), button, modifier, middle + QPoint(90, 60));
        WAIT_FOR(map.view.zoom() == zoom);
        const double away = 1 - std::exp2(12 - zoom);
        QVERIFY(distance(map.view.center(), beside(90 * away, 60 * away)) < 1e-6);
    }

    void answersClicks_data()
    {
        QTest::addColumn<QPoint>("offset");
        QTest::addColumn<QString>("answer");
        // A route 50 points below the middle, a pin whose foot stands on it at the middle, the position to the left.
        QTest::newRow("nothing") << QPoint(100, -100) << u""_s;
        QTest::newRow("beside the line") << QPoint(100, 57) << u""_s;
        QTest::newRow("on the line") << QPoint(100, 50) << u"route"_s;
        QTest::newRow("near the line") << QPoint(100, 55) << u"route"_s;
        QTest::newRow("the pin's head") << QPoint(0, 25) << u"pin"_s;
        QTest::newRow("below the pin's foot") << QPoint(0, 53) << u"route"_s;
        QTest::newRow("the position") << QPoint(-100, 61) << u"position"_s;
    }
    void answersClicks()
    {
        QFETCH(const QPoint, offset);
        QFETCH(const QString, answer);
        ShownMap map;
        map.addRoute({beside(-300, 50), beside(-200, 50), beside(300, 50)});
        const MapView::Route upper = map.addRoute({beside(-300, 50), beside(-200, 50), beside(300, 50)});
        map.addMarker(beside(0, 50));
        const MapView::Marker pin = map.addMarker(beside(0, 50));
        const MapView::Marker position = map.addMarker(beside(-100, 50), true);
        map.show();
        QString got;
        connect(&map.view, &MapView::markerDidActivate, &map.view, [&](const MapView::Marker& marker) {
            got += marker == pin ? u"pin"_s : marker == position ? u"position"_s : u"?"_s;
        });
        connect(&map.view, &MapView::routeClicked, &map.view,
                [&](const MapView::Route& route, size_t after, double fraction) {
                    got += u"route"_s;
                    QCOMPARE(route, upper);
                    QCOMPARE(after, 1U);
                    QVERIFY(std::abs(fraction - (offset.x() + 200) / 500.0) < 0.003);
                });
        map.click(middle + offset);
        QCOMPARE(got, answer);
        got.clear();
        map.view.setRoutesShown(false);
        map.click(middle + offset);
        QCOMPARE(got, answer == u"route" ? QString() : answer);
    }

    void tellsWhatThePointerIsOver()
    {
        ShownMap map;
        const MapView::Route route = map.addRoute({beside(-300, 50), beside(300, 50)});
        map.show();
        std::vector<std::pair<MapView::Route, double>> told;
        connect(&map.view, &MapView::routeHovered, &map.view,
                [&](const MapView::Route& over, size_t, double fraction) { told.emplace_back(over, fraction); });
        QWidget* const viewport = map.view.viewport();
        const auto shape = [viewport] { return viewport->cursor().shape(); };
        map.hover(middle);
        map.hover(middle + QPoint(0, 50));
        WAIT_FOR(told.size() == 1);
        QVERIFY(told[0].first == route && std::abs(told[0].second - 0.5) < 0.003);
        QCOMPARE(shape(), Qt::PointingHandCursor);
        map.hover(middle + QPoint(60, 50));
        WAIT_FOR(told.size() == 2);
        QVERIFY(std::abs(told[1].second - 0.6) < 0.003);
        // The route goes away under the pointer.
        map.view.removeRoute(route);
        WAIT_FOR(told.size() == 3);
        QVERIFY(!told[2].first);
        QCOMPARE(shape(), Qt::ArrowCursor);
        map.view.addRoute(route);
        map.hover(middle + QPoint(61, 50));
        WAIT_FOR(told.size() == 4);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(viewport, &leave);
        WAIT_FOR(told.size() == 5);
        QVERIFY(!told[4].first);
    }

    void holdsACallout()
    {
        ShownMap map;
        const MapView::Marker marker = map.addMarker(beside(0, 100));
        map.show();
        map.view.setFocus();
        QSignalSpy deselected(&map.view, &MapView::markerDidDeselect);
        QSignalSpy activated(&map.view, &MapView::markerDidActivate);
        const auto open = [&] {
            auto button = std::make_unique<QPushButton>(u"Open"_s);
            QPushButton* const kept = button.get();
            map.view.selectMarker(marker, std::move(button));
            return kept;
        };
        QTest::keyClick(&map.view, Qt::Key_Return);
        QCOMPARE(activated.size(), 1);
        QPointer<QPushButton> button = open();
        QCOMPARE(map.view.selectedMarkers(), std::vector<MapView::Marker>{marker});
        const auto place = [&] { return button->mapTo(map.view.viewport(), QPoint(0, 0)); };
        const QPoint before = place();
        QVERIFY(before.y() + button->height() < middle.y() + 100 - 30);
        map.view.setCenter(beside(20, 10), Animation::None);
        QCOMPARE(place(), before - QPoint(20, 10));
        // A click on the callout is no click on the map; Tab leads to what it holds and on.
        QTest::mouseClick(button->parentWidget(), Qt::LeftButton, {}, QPoint(3, 3));
        QCOMPARE(map.view.selectedMarkers().size(), 1U);
        QTest::keyClick(&map.view, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), button.data());
        QTest::keyClick(button, Qt::Key_Escape);
        QVERIFY(map.view.selectedMarkers().empty());
        QCOMPARE(QApplication::focusWidget(), &map.view);
        QCOMPARE(deselected.size(), 1);
        WAIT_FOR(!button);

        button = open();
        map.click(middle + QPoint(-150, -150));
        QCOMPARE(deselected.size(), 2);
        WAIT_FOR(!button);
        // Who closes it by himself isn't told so.
        button = open();
        map.view.removeMarker(marker);
        QVERIFY(map.view.selectedMarkers().empty());
        QCOMPARE(deselected.size(), 2);
        map.view.selectMarker(marker, std::make_unique<QWidget>());
        QVERIFY(map.view.selectedMarkers().empty());
    }
};

QTEST_MAIN(MapViewInputTest)
#include "MapViewInputTest.moc"
