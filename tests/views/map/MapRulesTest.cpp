#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "playback/FakePanes.h"
#include "views/map/MarkerImages.h"
#include "views/map/PlaceText.h"
#include "views/map/PositionMarker.h"
#include "views/map/RouteFitting.h"
#include "views/map/RouteMoment.h"

#include <QFile>
#include <QTest>

#include <cmath>
#include <limits>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const double unknown = std::numeric_limits<double>::quiet_NaN();

CustomLocation fixAt(double latitude, double speed, double course, Instant time = noon)
{
    return {{latitude, 139}, 0, 10, 10, course, speed, time};
}

std::shared_ptr<const CustomMapPolyline> routeBetween(double west, double east)
{
    return std::make_shared<CustomMapPolyline>(std::vector<Coordinate>{{35, west}, {36, east}});
}

} // namespace

/// What the map pane goes by, without a map.
class MapRulesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placesMomentsInTime();
    void movesTheMarker_data();
    void movesTheMarker();
    void leavesTheMarker_data();
    void leavesTheMarker();
    void unitesRoutes_data();
    void unitesRoutes();
    void startsTracing_data();
    void startsTracing();
    void findsMomentsOnARoute_data();
    void findsMomentsOnARoute();
    void losesMomentsOfOtherFixes();
    void saysWhatIsKnown();
    void drawsMarkersByKind_data();
    void drawsMarkersByKind();
};

void MapRulesTest::placesMomentsInTime()
{
    DCFInfo dcf(u"/nowhere"_s, u"NORMAL/200101120000.MP4"_s);
    dcf.fileDate = noon;
    QCOMPARE(timeOfDay(dcf, 15.25, 60), noonSeconds - 60 + 15.25);
    dcf.startDate = noon + 1000s;
    QCOMPARE(timeOfDay(dcf, 15.25, 60), noonSeconds + 1000 + 15.25);
    dcf.startDate.reset();
    dcf.fileDate = {};
    QCOMPARE(timeOfDay(dcf, 15.25, 60), 0.0);
}

void MapRulesTest::movesTheMarker_data()
{
    QTest::addColumn<bool>("hasPrevious");
    QTest::addColumn<double>("speed"); // of the fix
    QTest::addColumn<double>("course");
    QTest::addColumn<float>("shownSpeed");
    QTest::addColumn<double>("shownDirection");
    QTest::newRow("the first, nothing known") << false << -1.0 << -1.0 << -1.0F << -1.0;
    QTest::newRow("the first") << false << 0.1 << 48.5 << 0.1F << 48.5;
    QTest::newRow("nothing known") << true << -1.0 << -1.0 << 12.5F << 90.0;
    QTest::newRow("no number") << true << unknown << unknown << 12.5F << 90.0;
    QTest::newRow("standing, heading north") << true << 0.0 << 0.0 << 0.0F << 0.0;
    QTest::newRow("course lost") << true << 8.2 << -1.0 << 8.2F << 90.0;
}

void MapRulesTest::movesTheMarker()
{
    QFETCH(bool, hasPrevious);
    QFETCH(double, speed);
    QFETCH(double, course);
    CustomPointAnnotation previous;
    previous.coordinate = {35, 139};
    previous.speed = 12.5F;
    previous.direction = 90;
    const CustomLocation fix = fixAt(36, speed, course);
    const auto moved = movedMarker(&fix, true, hasPrevious ? &previous : nullptr);
    QVERIFY(moved && moved->isUserLocation && moved->GPSEnable);
    QCOMPARE(moved->coordinate, (Coordinate{36, 139}));
    QTEST(moved->speed, "shownSpeed");
    QTEST(moved->direction, "shownDirection");
}

void MapRulesTest::leavesTheMarker_data()
{
    QTest::addColumn<double>("latitude");
    QTest::addColumn<bool>("GPSEnable");
    QTest::addColumn<bool>("moves");
    QTest::newRow("no position") << CustomLocation::NO_COORDINATE << true << false;
    QTest::newRow("off the earth") << 90.5 << true << false;
    QTest::newRow("no number") << unknown << true << false;
    QTest::newRow("the same place") << 35.0 << true << false;
    QTest::newRow("the same place, lost") << 35.0 << false << true;
    QTest::newRow("elsewhere") << 35.000001 << true << true;
}

void MapRulesTest::leavesTheMarker()
{
    QFETCH(double, latitude);
    QFETCH(bool, GPSEnable);
    CustomPointAnnotation previous;
    previous.coordinate = {35, 139};
    previous.GPSEnable = true;
    const CustomLocation fix = fixAt(latitude, 20, 20);
    QTEST(movedMarker(&fix, GPSEnable, &previous).has_value(), "moves");
    QVERIFY(!movedMarker(nullptr, GPSEnable, &previous));
}

void MapRulesTest::unitesRoutes_data()
{
    QTest::addColumn<QList<double>>("longitudes"); // west and east end of each
    QTest::addColumn<double>("left");              // longitude
    QTest::addColumn<double>("width");             // degrees
    QTest::newRow("none") << QList<double>{} << -180.0 << 0.0;
    QTest::newRow("one") << QList<double>{139, 140} << 139.0 << 1.0;
    QTest::newRow("two") << QList<double>{10, 20, -5, 1} << -5.0 << 25.0;
    QTest::newRow("half round the world") << QList<double>{-90, -80, 80, 90} << -90.0 << 180.0;
    QTest::newRow("both sides of the antimeridian") << QList<double>{-179, -178, 178, 179} << 178.0 << 4.0;
    QTest::newRow("across it") << QList<double>{179, -179, -178, -177} << 179.0 << 4.0;
}

void MapRulesTest::unitesRoutes()
{
    QFETCH(QList<double>, longitudes);
    QFETCH(double, width);
    std::vector<std::shared_ptr<const CustomMapPolyline>> routes = {
        std::make_shared<CustomMapPolyline>(std::vector<Coordinate>{})};
    for (int i = 0; i < longitudes.size(); i += 2)
        routes.push_back(routeBetween(longitudes[i], longitudes[i + 1]));
    const MapRect rect = totalMapRect(routes);
    QCOMPARE(rect.isNull(), longitudes.isEmpty());
    QVERIFY(std::abs(rect.width() * 360 - width) < 1e-9);
    if (!rect.isNull())
        QTEST(std::round(rect.left * 360 - 180), "left");
}

void MapRulesTest::startsTracing_data()
{
    QTest::addColumn<QList<double>>("visible"); // left, top, right, bottom; the routes are 0.4 to 0.6
    QTest::addColumn<int>("start");
    const auto row = [](const char* what, const QList<double>& visible, TracingStart start) {
        QTest::newRow(what) << visible << static_cast<int>(start);
    };
    row("just the routes", {0.4, 0.4, 0.6, 0.6}, TracingStart::CenterOnPosition);
    row("wider", {0.3, 0.4, 0.7, 0.6}, TracingStart::Nothing);
    row("higher", {0.4, 0.3, 0.6, 0.6}, TracingStart::Nothing);
    row("a part of them", {0.45, 0.45, 0.55, 0.55}, TracingStart::Nothing);
    row("an edge of them", {0.6, 0.6, 0.7, 0.7}, TracingStart::Nothing);
    row("beside them", {0.61, 0.4, 0.7, 0.6}, TracingStart::FitRoutes);
    row("below them", {0.4, 0.61, 0.6, 0.7}, TracingStart::FitRoutes);
    row("just the routes, a turn further", {1.4, 0.4, 1.6, 0.6}, TracingStart::CenterOnPosition);
    row("beside them, a turn back", {-0.7, 0.4, -0.61, 0.6}, TracingStart::FitRoutes);
}

void MapRulesTest::startsTracing()
{
    QFETCH(QList<double>, visible);
    QFETCH(int, start);
    const MapRect routes{0.4, 0.4, 0.6, 0.6};
    const MapRect rect{visible[0], visible[1], visible[2], visible[3]};
    QCOMPARE(static_cast<int>(tracingStart(rect, routes)), start);
    QCOMPARE(tracingStart(rect, {}), TracingStart::Nothing);
}

void MapRulesTest::findsMomentsOnARoute_data()
{
    QTest::addColumn<int>("after");
    QTest::addColumn<double>("fraction");
    QTest::addColumn<double>("seconds"); // after noon; negative for nothing
    QTest::addColumn<double>("speed");
    QTest::addColumn<bool>("silent");
    QTest::newRow("before half the way") << 0 << 0.25 << 0.5 << 10.0 << false;
    QTest::newRow("after half the way") << 0 << 0.75 << 1.5 << 20.0 << false;
    QTest::newRow("within a gap, no speed") << 1 << 0.5 << 31.0 << 7.0 << true;
    QTest::newRow("on the joint") << 2 << 0.5 << 61.0 << 40.0 << false;
    QTest::newRow("at the very end") << 3 << 0.9 << 62.0 << 40.0 << false;
    QTest::newRow("beyond") << 4 << 0.0 << -1.0 << 0.0 << false;
    QTest::newRow("fraction too large") << 0 << 7.0 << 2.0 << 20.0 << false;
    QTest::newRow("no fraction") << 0 << unknown << 0.0 << 10.0 << false;
}

void MapRulesTest::findsMomentsOnARoute()
{
    QFETCH(int, after);
    QFETCH(double, fraction);
    QFETCH(double, seconds);
    // The second has no readable position, the third is void.
    std::vector<CustomLocation> all = {fixAt(35, 10, 0), fixAt(99, 15, 0, noon + 1s), fixAt(45, 15, 0, noon + 1s),
                                       fixAt(36, 20, 0, noon + 2s), fixAt(37, -1, 0, noon + 60s)};
    all.back().correctedSpeed = 7;
    const CustomLocation next = fixAt(38, 40, 0, noon + 62s);
    const std::vector<uint32_t> valid = {0, 1, 3, 4};
    const CustomMapPolyline route({{35, 139}, {36, 139}, {37, 139}, {38, 139}}, {1});
    const auto moment = momentOnRoute(route, {valid, all}, &next, static_cast<size_t>(after), fraction);
    QCOMPARE(moment.has_value(), seconds >= 0);
    if (!moment)
        return;
    QCOMPARE(moment->time - noonSeconds, seconds);
    QTEST(moment->metersPerSecond, "speed");
    QTEST(moment->silence.has_value(), "silent");
    if (moment->silence)
        QVERIFY(moment->silence->from == noon + 2s && moment->silence->to == noon + 60s);
}

/// The card changed while its routes were still on the map.
void MapRulesTest::losesMomentsOfOtherFixes()
{
    const CustomMapPolyline route({{35, 139}, {36, 139}, {37, 139}});
    std::vector<CustomLocation> moved = {fixAt(35, 10, 0), fixAt(36.5, 10, 0), fixAt(37, 10, 0)};
    const std::vector<uint32_t> valid = {0, 1, 2};
    QVERIFY(!momentOnRoute(route, {valid, moved}, nullptr, 0, 0.5));
    moved[1] = fixAt(36, 10, 0, {}); // there, but without a date
    QVERIFY(!momentOnRoute(route, {valid, moved}, nullptr, 0, 0.5));
    QVERIFY(momentOnRoute(route, {valid, moved}, nullptr, 2, 0));
    QVERIFY(!momentOnRoute(route, {}, nullptr, 0, 0.5));
    QVERIFY(!momentOnRoute(CustomMapPolyline({}), {valid, moved}, nullptr, 0, 0.5));
}

void MapRulesTest::saysWhatIsKnown()
{
    CustomPointAnnotation marker;
    marker.coordinate = {35.67773, -139.7548135};
    QVERIFY(positionMarkerText(marker).endsWith(u"\n35.677730, -139.754814"_s));
    QCOMPARE(positionMarkerText(marker).count(u'\n'), 1);
    marker.GPSEnable = true;
    marker.speed = 0;
    marker.direction = 359.7;
    const QStringList lines = positionMarkerText(marker).split(u'\n');
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines[0], u"0 "_s + CustomLocation::unitForCurrentLocale());
    QVERIFY(lines[1].contains(u"000°"_s));
    const RouteMoment silent{.time = noonSeconds, .silence = RouteMoment::Silence{noon, noon + 61s}};
    QVERIFY(routeMomentText(silent).contains(u":01:01"_s));
}

void MapRulesTest::drawsMarkersByKind_data()
{
    QTest::addColumn<QString>("folder"); // empty for the present position
    QTest::addColumn<bool>("GPSEnable");
    QTest::addColumn<double>("direction");
    QTest::addColumn<QString>("drawing");
    QTest::addColumn<double>("turn");
    QTest::newRow("position") << QString() << true << 270.0 << u"CurrentPos_Gmap"_s << 270.0;
    QTest::newRow("position, no course") << QString() << true << -1.0 << u"CurrentPos_Gmap"_s << 0.0;
    QTest::newRow("position lost") << QString() << false << 42.5 << u"CurrentPos_Gmap_Disable"_s << 42.5;
    QTest::newRow("normal") << u"NORMAL"_s << true << 90.0 << u"fileStartMarker"_s << 0.0;
    QTest::newRow("event") << u"EVENT"_s << true << 90.0 << u"Accident"_s << 0.0;
    QTest::newRow("by hand") << u"MANUAL"_s << true << 90.0 << u"manual"_s << 0.0;
    QTest::newRow("parking") << u"PARKING"_s << true << 90.0 << u"Parking"_s << 0.0;
}

void MapRulesTest::drawsMarkersByKind()
{
    QFETCH(QString, folder);
    QFETCH(bool, GPSEnable);
    QFETCH(double, direction);
    const auto dcf = std::make_shared<DCFInfo>(u"/nowhere"_s, folder + u"/200101120000.MP4"_s);
    CustomPointAnnotation marker;
    marker.isUserLocation = folder.isEmpty();
    marker.GPSEnable = GPSEnable;
    marker.direction = direction;
    if (!folder.isEmpty())
        marker.info = dcf;
    QTEST(annotationImageName(marker), "drawing");
    QTEST(annotationRotation(marker), "turn");
    const QString drawing = u":/images/%1.svg"_s.arg(annotationImageName(marker));
    QVERIFY2(QFile::exists(drawing), qPrintable(drawing));
}

QTEST_GUILESS_MAIN(MapRulesTest)
#include "MapRulesTest.moc"
