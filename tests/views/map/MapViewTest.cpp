#include "ShownMap.h"
#include "support/Waiting.h"

#include <QDir>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <limits>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

const double unknown = std::numeric_limits<double>::quiet_NaN();

/// Notes what a view paints.
class PaintWatch : public QObject
{
public:
    QRegion painted;

    explicit PaintWatch(QWidget* watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

} // namespace

/// What a map shows, and what its pane asks of it.
class MapViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWhatIsNoPlace_data()
    {
        QTest::addColumn<Coordinate>("coordinate");
        for (const double bad : {unknown, -999.0, 1e300, std::numeric_limits<double>::infinity()}) {
            QTest::addRow("latitude %g", bad) << Coordinate{bad, 10};
            QTest::addRow("longitude %g", bad) << Coordinate{10, bad};
        }
    }
    void refusesWhatIsNoPlace()
    {
        QFETCH(const Coordinate, coordinate);
        ShownMap map;
        const MapRect before = map.view.visibleMapRect();
        map.view.setCenter(coordinate, Animation::None);
        map.view.setZoom(unknown, Animation::None);
        map.view.setVisibleMapRect({}, 10, Animation::None);
        map.view.setVisibleMapRect({0, 0, unknown, 1}, 10, Animation::None);
        map.view.setVisibleMapRect({0, 0, 1, std::numeric_limits<double>::infinity()}, 10, Animation::None);
        QCOMPARE(map.view.visibleMapRect().left, before.left);
        QCOMPARE(map.view.zoom(), 12.0);
        map.addMarker(coordinate);
        map.addMarker(coordinate, true);
        map.show();
        WAIT_FOR(map.view.isOverlayCurrent());
    }

    void fitsAtFirstShow()
    {
        ShownMap map;
        const MapPoint point = mapPoint(city);
        const MapRect rect = {point.x - 0.01, point.y - 0.001, point.x + 0.01, point.y + 0.001};
        map.view.setVisibleMapRect(rect, 20, Animation::Animated);
        map.view.setCenter({34, 138}, Animation::None);
        map.view.resize(840, 600);
        map.show();
        WAIT_FOR(std::abs(map.view.zoom() - std::log2(800 / 0.02 / 256)) < 1e-9);
        QVERIFY(distance(map.view.center(), {34, 138}) < 1e-9);
        // Once it has been seen it stays, whatever size the window takes.
        map.view.grab();
        const double zoom = map.view.zoom();
        map.view.resize(500, 400);
        QCOMPARE(map.view.zoom(), zoom);
        QVERIFY(distance(map.view.center(), {34, 138}) < 1e-9);
    }

    void standsAnySize()
    {
        ShownMap map;
        map.addRoute({city, beside(50, 50)});
        map.show();
        for (const QSize size : {QSize(0, 0), QSize(1, 500), QSize(400, 380)}) {
            map.view.resize(size);
            map.view.setVisibleMapRect({0.4, 0.4, 0.6, 0.6}, 50, Animation::None);
            map.wheel({0, 0}, 120);
            map.view.grab();
        }
        WAIT_FOR(map.view.isOverlayCurrent());
    }

    void agreesWithItsScene_data()
    {
        QTest::addColumn<Coordinate>("center");
        QTest::addColumn<double>("zoom");
        QTest::newRow("deepest") << city << 20.0;
        QTest::newRow("between levels") << city << 13.37;
        QTest::newRow("west of the antimeridian's far side") << Coordinate{-30, -179.99999} << 17.1;
        QTest::newRow("the world") << Coordinate{0, 0} << 0.0;
    }
    void agreesWithItsScene()
    {
        QFETCH(const Coordinate, center);
        QFETCH(const double, zoom);
        ShownMap map;
        map.show();
        map.view.setZoom(zoom, Animation::None);
        map.view.setCenter(center, Animation::None);
        const MapRect seen = map.view.visibleMapRect();
        const QPointF corner = map.view.mapToScene(0, 0) / (256.0 * (1 << 20));
        const double point = 1 / (256 * std::exp2(zoom));
        QVERIFY(std::abs(corner.x() - seen.left) < point && std::abs(corner.y() - seen.top) < point);
        QVERIFY(std::abs(seen.width() - 400 * point) < point / 100);
    }

    void keepsGoingWhenCentredOnTheWay()
    {
        // The present position moves the map while the user zooms.
        ShownMap map;
        map.show();
        map.view.zoomBy(1, Animation::Animated);
        map.view.setCenter(beside(30, 0), Animation::None);
        QCOMPARE(map.view.zoom(), 13.0);
        QVERIFY(distance(map.view.center(), beside(30, 0)) < 1e-9);
        // What is far away is jumped to.
        map.view.setCenter({-33, 151}, Animation::Animated);
        QVERIFY(distance(map.view.center(), {-33, 151}) < 1e-9);
    }

    void showsRoutesAndMarkers()
    {
        ShownMap map;
        const MapView::Route route = map.addRoute({beside(-300, 50), beside(300, 50)}, Qt::red);
        const MapView::Marker marker = map.addMarker(beside(-100, 0));
        map.view.addRoute(route);
        map.show();
        WAIT_FOR(map.view.isOverlayCurrent());
        const QColor ground = map.colorAt(middle + QPoint(77, -77));
        QCOMPARE(map.colorAt(middle + QPoint(0, 50)), QColor(Qt::red));
        QVERIFY(map.colorAt(middle + QPoint(-100, -20)) != ground);
        QCOMPARE(map.colorAt(middle + QPoint(-100, 10)), ground);
        map.view.setRoutesShown(false);
        WAIT_FOR(map.view.isOverlayCurrent());
        QVERIFY(map.colorAt(middle + QPoint(0, 50)) != QColor(Qt::red));
        QVERIFY(map.view.hasRoute(route));
        map.view.setRoutesShown(true);
        map.view.removeMarker(marker);
        WAIT_FOR(map.view.isOverlayCurrent());
        QCOMPARE(map.colorAt(middle + QPoint(0, 50)), QColor(Qt::red));
        QCOMPARE(map.colorAt(middle + QPoint(-100, -20)), ground);
        map.view.clear();
        QVERIFY(!map.view.hasRoute(route) && map.view.isOverlayCurrent());
        QVERIFY(map.colorAt(middle + QPoint(0, 50)) != QColor(Qt::red));
    }

    void followsTheMapWithItsPicture()
    {
        // The former picture moves with the map at once; at rest a line is as wide as ever.
        ShownMap map;
        map.addRoute({beside(-300, 0), beside(300, 0)}, Qt::red);
        map.show();
        WAIT_FOR(map.view.isOverlayCurrent());
        map.view.setCenter(beside(0, -100), Animation::None);
        QCOMPARE(map.colorAt(middle + QPoint(0, 100)), QColor(Qt::red));
        map.view.setZoom(14, Animation::None);
        QVERIFY(!map.view.isOverlayCurrent());
        map.view.setCenter(city, Animation::None);
        QCOMPARE(map.colorAt(middle + QPoint(0, 7)), QColor(Qt::red));
        WAIT_FOR(map.view.isOverlayCurrent());
        QVERIFY(map.colorAt(middle + QPoint(0, 7)) != QColor(Qt::red));
        QCOMPARE(map.colorAt(middle), QColor(Qt::red));
    }

    void addsThousandsOfRoutesBesideTheInterface()
    {
        ShownMap map;
        map.show();
        std::vector<MapView::Route> routes;
        for (int i = 0; i < 2000; ++i)
            routes.push_back(map.addRoute({beside(i % 100 - 50, -20), beside(i % 90 - 45, 20)}, Qt::green));
        // Coloured anew while the first picture is under way.
        QCoreApplication::processEvents();
        for (const MapView::Route& route : routes) {
            map.view.removeRoute(route);
            map.addRoute(route->coordinates(), Qt::red);
        }
        WAIT_FOR(map.view.isOverlayCurrent());
        QCOMPARE(map.colorAt(middle), QColor(Qt::red));
        map.view.setZoom(5, Animation::None);
        QCoreApplication::processEvents();
        // The window closes while the picture is painted.
    }

    void repaintsOnlyAroundThePosition()
    {
        ShownMap map;
        map.addRoute({city, beside(50, 50)});
        MapView::Marker position = map.addMarker(beside(-20, 0), true);
        map.show();
        QVERIFY(QTest::qWaitForWindowActive(&map.view));
        WAIT_FOR(map.view.isOverlayCurrent());
        map.view.viewport()->repaint(); // what was still to be painted is
        PaintWatch watch(map.view.viewport());
        map.view.removeMarker(position);
        position = map.addMarker(beside(-10, 5), true);
        WAIT_FOR(!watch.painted.isEmpty());
        QCoreApplication::processEvents();
        const QRect around = QRect(middle, middle).adjusted(-45, -25, 20, 30);
        QVERIFY(around.contains(watch.painted.boundingRect()));
        QVERIFY(map.view.isOverlayCurrent());
        QVERIFY(map.colorAt(middle + QPoint(-10, 5)) != map.colorAt(middle + QPoint(-150, 5)));
    }

    void showsTiles()
    {
        // The world in red, its eastern half at the next level in green; the south-east is missing.
        QTemporaryDir folder;
        const auto tile = [&folder](const QString& name, QColor color) {
            QImage image(256, 256, QImage::Format_RGB32);
            image.fill(color);
            QDir(folder.path()).mkpath(name + u"/.."_s);
            QVERIFY(image.save(folder.filePath(name + u".png"_s)));
        };
        tile(u"0/0/0"_s, Qt::red);
        tile(u"1/1/0"_s, Qt::green);
        ShownMap map;
        map.view.resize(512, 512);
        map.view.setZoom(1, Animation::None);
        map.view.setCenter({0, 0}, Animation::None);
        map.show();
        const QColor ground = map.colorAt({300, 300});
        map.view.setTileSettings({folder.path(), {}, {}});
        WAIT_FOR(map.colorAt({300, 60}) == QColor(Qt::green));
        QCOMPARE(map.colorAt({60, 300}), ground);
        // A coarser tile stands in, on each copy of the world and without a seam.
        map.view.setZoom(0, Animation::None);
        WAIT_FOR(map.colorAt({300, 300}) == QColor(Qt::red));
        map.view.setZoom(1.3, Animation::None);
        const QImage image = map.view.viewport()->grab().toImage();
        for (int x = 100; x < 412; ++x)
            QCOMPARE(image.pixelColor(x, 300), QColor(Qt::red));
        map.view.setTileSettings({});
        QCOMPARE(map.colorAt({301, 301}), ground);
    }
};

QTEST_MAIN(MapViewTest)
#include "MapViewTest.moc"
