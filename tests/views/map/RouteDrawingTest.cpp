#include "media/CustomMapPolyline.h"
#include "views/map/MapHitTest.h"
#include "views/map/OverlayPicture.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <optional>
#include <random>

using namespace cardreel;

namespace {

const double unknown = std::numeric_limits<double>::quiet_NaN();
const QColor blue(0, 0, 255);
using Line = std::vector<Coordinate>;
using Gaps = std::vector<uint32_t>;

std::shared_ptr<const CustomMapPolyline> makeRoute(Line line, Gaps gaps = {})
{
    return std::make_shared<CustomMapPolyline>(std::move(line), std::move(gaps));
}

/// The picture around a place, 300x200 points unless said otherwise.
QImage pictureOf(const std::shared_ptr<const CustomMapPolyline>& route, Coordinate center, double zoom,
                 double ratio = 1, QSize size = {300, 200}, QPointF offset = {})
{
    OverlaySnapshot snapshot;
    snapshot.lines.push_back({route, blue});
    const double world = 256 * std::exp2(zoom);
    const MapPoint point = mapPoint(center);
    const QPointF origin(std::round(point.x * world) - size.width() / 2.0,
                         std::round(point.y * world) - size.height() / 2.0);
    const std::atomic<bool> stop = false;
    return overlayPicture(snapshot, {zoom, origin + offset, size, ratio}, stop);
}

/// How much of a column or row is painted, in device pixels.
double coverage(const QImage& image, const QRect& part)
{
    double sum = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x)
            sum += qAlpha(image.pixel(x, y)) / 255.0;
    }
    return sum;
}

double total(const QImage& image)
{
    return coverage(image, image.rect());
}

std::vector<Coordinate> wander(int count, unsigned seed, double step)
{
    std::mt19937 random(seed);
    std::normal_distribution<double> way(0, step);
    std::vector<Coordinate> line = {{35, 139}};
    while (static_cast<int>(line.size()) < count)
        line.push_back({line.back().latitude + way(random), line.back().longitude + way(random)});
    return line;
}

/// Each segment looked at, as nobody has the time for with thousands of routes.
double distanceByForce(const CustomMapPolyline& route, const MapPoint& point)
{
    double best = std::numeric_limits<double>::max();
    const std::vector<MapPoint>& points = route.mapPoints();
    for (size_t i = 0; i + 1 < points.size(); ++i) {
        for (int part = 0; part <= 1000; ++part) {
            const double x = std::lerp(points[i].x, points[i + 1].x, part / 1000.0);
            const double y = std::lerp(points[i].y, points[i + 1].y, part / 1000.0);
            best = std::min(best, std::hypot(x - point.x, y - point.y));
        }
    }
    return best;
}

} // namespace

/// What a route looks like, and where it is touched.
class RouteDrawingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isFivePointsWide_data()
    {
        QTest::addColumn<double>("zoom");
        QTest::addColumn<double>("ratio");
        for (const double zoom : {5.0, 11.37, 20.0}) {
            for (const double ratio : {1.0, 1.5, 2.0})
                QTest::addRow("zoom %g at %g pixels a point", zoom, ratio) << zoom << ratio;
        }
    }
    void isFivePointsWide()
    {
        QFETCH(const double, zoom);
        QFETCH(const double, ratio);
        const QImage image = pictureOf(makeRoute({{35, 100}, {35, 170}}), {35, 139}, zoom, ratio);
        for (const int x : {0, 100, image.width() - 1})
            QVERIFY(std::abs(coverage(image, {x, 0, 1, image.height()}) - 5 * ratio) < 0.1);
        QCOMPARE(QColor(image.pixel(image.width() / 2, image.height() / 2)), blue);
    }

    void dashesGaps()
    {
        // The middle third is a gap.
        const Line line = {{0, 0}, {0, 1}, {0, 2}, {0, 3}};
        const QImage image = pictureOf(makeRoute(line, {1}), {0, 1.5}, 8, 1, {540, 20});
        const auto covered = [&image](int from, int to) { return coverage(image, {from, 10, to - from, 1}); };
        QCOMPARE(covered(10, 170), 160.0);
        QCOMPARE(covered(370, 530), 160.0);
        // Nine points in fifteen.
        QVERIFY(std::abs(covered(190, 340) - 90) < 1);
        const auto isOn = [&image](int x) { return qAlpha(image.pixel(x, 10)) == 255; };
        int changes = 0;
        for (int x = 190; x < 340; ++x) {
            changes += isOn(x) != isOn(x - 1);
            QVERIFY(!isOn(x) || std::abs(coverage(image, {x, 0, 1, 20}) - 5) < 0.1);
        }
        QVERIFY(changes >= 18 && changes <= 22);
    }

    void keepsDashesInStepOverManyGaps()
    {
        // Every way is a gap shorter than a dash: still three fifths of the line are to be seen.
        Line line;
        Gaps gaps;
        for (unsigned i = 0; i < 180; ++i) {
            line.push_back({0, i * 0.02});
            gaps.push_back(i);
        }
        gaps.pop_back();
        const QImage image = pictureOf(makeRoute(line, gaps), {0, 1.8}, 8, 1, {600, 20});
        const double share = coverage(image, {50, 10, 450, 1}) / 450;
        QVERIFY2(std::abs(share - 0.6) < 0.03, qPrintable(QString::number(share)));
    }

    void isTheSameInEveryPicture_data()
    {
        QTest::addColumn<Line>("line");
        QTest::addColumn<Gaps>("gaps");
        QTest::addColumn<double>("zoom");
        QTest::newRow("turns") << wander(500, 1, 0.002) << Gaps{} << 12.0;
        QTest::newRow("gaps that lead far") << wander(60, 2, 0.1) << Gaps{3, 4, 10, 11, 12, 30} << 12.0;
        QTest::newRow("points nearer than a pixel") << wander(4000, 3, 0.000'2) << Gaps{500, 700} << 11.3;
    }
    void isTheSameInEveryPicture()
    {
        QFETCH(const Line, line);
        QFETCH(const Gaps, gaps);
        QFETCH(const double, zoom);
        const QSize size(300, 300);
        const QPoint offset(37, -21);
        const auto route = makeRoute(line, gaps);
        const QImage one = pictureOf(route, line[line.size() / 2], zoom, 1, size);
        const QImage other = pictureOf(route, line[line.size() / 2], zoom, 1, size, offset);
        QVERIFY(total(one) > 100);
        // What leads out of the picture is cut off; that may be seen in nothing but where the parts' soft edges meet.
        const QRect both = QRect({}, size) & QRect(offset, size);
        int unlike = 0;
        for (int y = both.top(); y <= both.bottom(); ++y) {
            for (int x = both.left(); x <= both.right(); ++x)
                unlike += std::abs(qAlpha(one.pixel(x, y)) - qAlpha(other.pixel(x - offset.x(), y - offset.y()))) > 40;
        }
        QVERIFY2(unlike <= 0.002 * total(one), qPrintable(QString::number(unlike)));
    }

    void drawsHostileRoutes_data()
    {
        QTest::addColumn<Line>("line");
        QTest::addColumn<Coordinate>("at");
        QTest::addColumn<double>("zoom");
        QTest::addColumn<double>("least"); // pixels painted
        QTest::addColumn<double>("most");
        const double dot = 25 * 3.14159 / 4;
        const Coordinate home = {35, 139};
        QTest::newRow("nothing") << Line{} << home << 10.0 << 0.0 << 0.0;
        QTest::newRow("nothing usable") << Line{{unknown, 1}, {-999, -999}, {35, 1e300}} << home << 10.0 << 0.0 << 0.0;
        QTest::newRow("one fix") << Line{home} << home << 10.0 << dot - 2 << dot + 2;
        QTest::newRow("10,000 equal fixes") << Line(10'000, home) << home << 20.0 << dot - 2 << dot + 2;
        QTest::newRow("all within a pixel") << wander(1000, 1, 1e-7) << home << 8.0 << dot - 2 << dot + 8;
        QTest::newRow("what isn't a place is left out")
            << Line{{35, 138}, {unknown, unknown}, {-999, -999}, {35, 140}} << home << 10.0 << 1500.0 << 1550.0;
        QTest::newRow("a dot at the pole") << Line{{90, 0}, {90, 0}} << Coordinate{89, 0} << 5.0 << 10.0 << dot + 2;
        QTest::newRow("over the antimeridian, from the east")
            << Line{{0, 179}, {0, -179}} << Coordinate{0, -179.9} << 10.0 << 1500.0 << 1600.0;
        QTest::newRow("over the antimeridian, from the west")
            << Line{{0, 179}, {0, -179}} << Coordinate{0, 179.9} << 10.0 << 1500.0 << 1600.0;
        QTest::newRow("on every copy of the world")
            << Line{{0, -1}, {0, 1}} << Coordinate{0, 180} << 0.0 << 20.0 << 60.0;
        Line jumps;
        for (int i = 0; i < 3000; ++i)
            jumps.push_back({i % 2 ? 60.0 : -60.0, i * 119.0 - 360 * std::round(i * 119.0 / 360)});
        QTest::newRow("3,000 jumps round the world") << jumps << Coordinate{1, 1} << 3.0 << 1000.0 << 60'000.0;
        QTest::newRow("3,000 jumps at the deepest zoom") << jumps << Coordinate{1, 1} << 20.0 << 0.0 << 60'000.0;
    }
    void drawsHostileRoutes()
    {
        QFETCH(const Line, line);
        QFETCH(const Coordinate, at);
        QFETCH(const double, zoom);
        QFETCH(const double, least);
        QFETCH(const double, most);
        Gaps gaps;
        for (uint32_t i = 0; i < line.size(); i += 3)
            gaps.push_back(i);
        const double solid = total(pictureOf(makeRoute(line), at, zoom));
        QVERIFY2(solid >= least && solid <= most, qPrintable(QString::number(solid)));
        const double dashed = total(pictureOf(makeRoute(line, gaps), at, zoom));
        QVERIFY2(dashed >= least * 0.4 && dashed <= most, qPrintable(QString::number(dashed)));
    }

    void thinsMarkers()
    {
        QImage pin(20, 20, QImage::Format_ARGB32_Premultiplied);
        pin.fill(Qt::red);
        OverlaySnapshot snapshot;
        for (int i = 0; i < 5000; ++i)
            snapshot.pins.push_back({{0.5 + i * 1e-9, 0.5}, pin});
        pin.fill(Qt::green);
        snapshot.pins.push_back({{0.5, 0.5}, pin});
        snapshot.pins.push_back({{0.5 + 8.0 / 256, 0.5}, pin});
        const std::atomic<bool> stop = false;
        // Here and on the next copy of the world, standing on their points; the last ones lie on top.
        const QImage image = overlayPicture(snapshot, {0, {100, 100}, {400, 56}, 1}, stop);
        for (const int x : {28, 284}) {
            QCOMPARE(total(image.copy(x - 40, 0, 80, 56)), 28.0 * 20);
            QCOMPARE(QColor(image.pixel(x, 27)), QColor(Qt::green));
            QCOMPARE(QColor(image.pixel(x + 12, 27)), QColor(Qt::green));
        }
        QCOMPARE(total(image.copy(0, 28, 400, 28)), 0.0);
    }

    void stops()
    {
        OverlaySnapshot snapshot;
        snapshot.lines.push_back({makeRoute({{0, 0}, {1, 1}}), blue});
        const std::atomic<bool> stop = true;
        QVERIFY(overlayPicture(snapshot, {0, {}, {100, 100}, 1}, stop).isNull());
    }

    void findsTheNearest_data()
    {
        QTest::addColumn<Line>("line");
        QTest::addColumn<Coordinate>("at");
        QTest::addColumn<int>("after"); // -1: out of reach
        QTest::addColumn<double>("fraction");
        const Line corner = {{0, 0}, {0, 4}, {0, 8}, {4, 8}};
        QTest::newRow("beyond reach") << corner << Coordinate{2, 2} << -1 << 0.0;
        QTest::newRow("not a place") << corner << Coordinate{unknown, 2} << -1 << 0.0;
        QTest::newRow("no points") << Line{} << Coordinate{0, 0} << -1 << 0.0;
        QTest::newRow("no usable points") << Line{{unknown, 0}, {-999, -999}} << Coordinate{0, 0} << -1 << 0.0;
        QTest::newRow("on a segment") << corner << Coordinate{0.1, 1} << 0 << 0.25;
        QTest::newRow("before the start") << corner << Coordinate{0, -0.5} << 0 << 0.0;
        QTest::newRow("beyond the end") << corner << Coordinate{4.5, 8} << 2 << 1.0;
        QTest::newRow("single fix") << Line{{10, 10}} << Coordinate{10, 10.2} << 0 << 0.0;
        QTest::newRow("equal fixes") << Line{{10, 10}, {10, 10}} << Coordinate{10, 10.2} << 0 << 0.0;
        QTest::newRow("over what isn't a place") << Line{{0, 0}, {unknown, 1}, {0, 4}} << Coordinate{0, 2} << 0 << 0.5;
        QTest::newRow("beyond the antimeridian") << Line{{0, 178}, {0, -178}} << Coordinate{0, -179} << 0 << 0.75;
        Line stretches;
        for (int i = 0; i < 40; ++i)
            stretches.push_back({0, i * 2.0});
        QTest::newRow("between two stretches") << stretches << Coordinate{0, 31} << 15 << 0.5;
    }
    void findsTheNearest()
    {
        QFETCH(const Line, line);
        QFETCH(const Coordinate, at);
        QFETCH(const int, after);
        const auto route = makeRoute(line);
        const RouteBoxes boxes(*route);
        for (const double copy : {0.0, 3.0, -2.0}) {
            const MapPoint point = {mapPoint(at).x + copy, mapPoint(at).y};
            const std::optional<RouteHit> hit = boxes.nearest(*route, point, 0.6 / 360);
            QCOMPARE(hit ? static_cast<int>(hit->after) : -1, after);
            if (hit) {
                QFETCH(const double, fraction);
                QVERIFY(std::abs(hit->fraction - fraction) < 0.001);
            }
        }
    }

    void findsWhatForceFinds()
    {
        const auto route = makeRoute(wander(200, 4, 0.01));
        const RouteBoxes boxes(*route);
        const MapRect& bounds = route->boundingMapRect();
        const double reach = bounds.width() / 20;
        std::mt19937 random(5);
        std::uniform_real_distribution<double> x(bounds.left - reach, bounds.right + reach);
        std::uniform_real_distribution<double> y(bounds.top - reach, bounds.bottom + reach);
        int found = 0;
        for (int i = 0; i < 100; ++i) {
            const MapPoint point = {x(random), y(random)};
            const double expected = distanceByForce(*route, point);
            const std::optional<RouteHit> hit = boxes.nearest(*route, point, reach);
            if (std::abs(expected - reach) > reach / 1000)
                QCOMPARE(hit.has_value(), expected < reach);
            if (hit)
                QVERIFY(std::abs(hit->distance - expected) < reach / 100);
            found += hit.has_value();
        }
        QVERIFY(found > 10 && found < 90);
    }
};

QTEST_GUILESS_MAIN(RouteDrawingTest)
#include "RouteDrawingTest.moc"
