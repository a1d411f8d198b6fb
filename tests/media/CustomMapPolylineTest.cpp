#include "media/CustomMapPolyline.h"

#include <QTest>

#include <cmath>

using namespace cardreel;

class CustomMapPolylineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goesTheShorterWay_data();
    void goesTheShorterWay();
};

void CustomMapPolylineTest::goesTheShorterWay_data()
{
    QTest::addColumn<QList<double>>("longitudes");
    QTest::addColumn<QList<double>>("drawn"); // degrees east of the antimeridian
    QTest::newRow("none") << QList<double>{} << QList<double>{};
    QTest::newRow("one") << QList<double>{-180} << QList<double>{0};
    QTest::newRow("within") << QList<double>{-10, 10} << QList<double>{170, 190};
    QTest::newRow("east and back") << QList<double>{179, -179, 179} << QList<double>{359, 361, 359};
    QTest::newRow("west") << QList<double>{-179, 179, 178} << QList<double>{1, -1, -2};
    QTest::newRow("round the earth") << QList<double>{0, 120, -120, 0, 120} << QList<double>{180, 300, 420, 540, 660};
}

void CustomMapPolylineTest::goesTheShorterWay()
{
    QFETCH(QList<double>, longitudes);
    QFETCH(QList<double>, drawn);
    std::vector<Coordinate> line;
    for (const double longitude : longitudes)
        line.push_back({35, longitude});
    const CustomMapPolyline route(line);
    QList<double> found;
    for (const MapPoint& point : route.mapPoints()) {
        found.push_back(std::round(point.x * 360));
        QVERIFY(route.boundingMapRect().contains(point));
    }
    QCOMPARE(found, drawn);
    QCOMPARE(route.boundingMapRect().isNull(), drawn.isEmpty());
    QCOMPARE(route.coordinates(), line);
}

QTEST_GUILESS_MAIN(CustomMapPolylineTest)
#include "CustomMapPolylineTest.moc"
