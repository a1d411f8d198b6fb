#include "platform/map/MapGeometry.h"

#include <QTest>

#include <cmath>

using namespace cardreel;

class MapGeometryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void projects_data();
    void projects();
};

void MapGeometryTest::projects_data()
{
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("latitudeBack");
    constexpr double edge = 85.05112877980659;
    QTest::newRow("the middle") << 0.0 << 0.0 << 0.5 << 0.5 << 0.0;
    QTest::newRow("the upper left corner") << edge << -180.0 << 0.0 << 0.0 << edge;
    QTest::newRow("the south pole") << -90.0 << 90.0 << 0.75 << 1.0 << -edge;
    // asinh(1) = 0.881373587 stands for 45 degrees.
    QTest::newRow("half way up") << 45.0 << -90.0 << 0.25 << 0.35972504 << 45.0;
}

void MapGeometryTest::projects()
{
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, latitudeBack);
    const MapPoint point = mapPoint({latitude, longitude});
    QVERIFY(std::abs(point.x - x) < 1e-8);
    QVERIFY(std::abs(point.y - y) < 1e-8);
    for (const double turns : {-2.0, 0.0, 1.0}) {
        const Coordinate back = coordinateAt({point.x + turns, point.y});
        QVERIFY(std::abs(back.latitude - latitudeBack) < 1e-9);
        QVERIFY(std::abs(back.longitude - longitude) < 1e-9);
    }
}

QTEST_GUILESS_MAIN(MapGeometryTest)
#include "MapGeometryTest.moc"
