#include "media/RouteBuilder.h"

#include "media/DCFInfo.h"
#include "media/RouteColors.h"
#include "support/CardBuilder.h"
#include "telemetry/NMEAData.h"

#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <numeric>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Recordings with these side files; a null text is a recording without one.
class Drive
{
public:
    void add(const QByteArray& text)
    {
        const QString stem = u"NORMAL/2001010000%1"_s.arg(recordings.size(), 2, 10, QLatin1Char('0'));
        if (!text.isNull())
            m_card.file(stem + u".NMEA"_s, text);
        recordings.push_back(std::make_shared<DCFInfo>(m_card.root(), stem + u".MP4"_s));
    }
    /// The same, unparsed.
    RouteBuilder::DCFList again() const
    {
        RouteBuilder::DCFList result;
        for (const auto& dcf : recordings)
            result.push_back(std::make_shared<DCFInfo>(dcf->rootPath, dcf->deltaPath));
        return result;
    }

    RouteBuilder::DCFList recordings;

private:
    CardBuilder m_card;
};

/// For the length of a test, the local time zone.
void setZone(const char* zone)
{
    qputenv("TZ", zone);
    tzset();
}

const Instant noon = utc(2025, 6, 14, 12, 0);

} // namespace

class RouteBuilderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_zone = qgetenv("TZ"); }
    void cleanup() { setZone(m_zone); }

    void countsDays_data();
    void countsDays();
    void changesColourOnlyForALaterDay();
    void joinsRecordings_data();
    void joinsRecordings();
    void drawsValidFixesOnly();
    void findsGaps_data();
    void findsGaps();
    void marksTheFirstValidFix();
    void nothingToMark();
    void carriesSpeedAndHeadingOver_data();
    void carriesSpeedAndHeadingOver();
    void carryingOverDoesntDependOnTheOrder();
    void coloursDays_data();
    void coloursDays();

private:
    QByteArray m_zone;
};

void RouteBuilderTest::countsDays_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<qint64>("first"); // minutes after 14 June 2025, 12:00 UTC
    QTest::addColumn<qint64>("second");
    QTest::addColumn<qint64>("days");
    const auto row = [](const char* what, const char* zone, Instant first, Instant second, qint64 days) {
        const auto minutes = [](Instant at) {
            return qint64(std::chrono::duration_cast<std::chrono::minutes>(at - noon).count());
        };
        QTest::newRow(what) << QByteArray(zone) << minutes(first) << minutes(second) << days;
    };
    row("midnight in New York", "America/New_York", utc(2025, 6, 15, 3, 59), utc(2025, 6, 15, 4, 0), 1);
    row("a day in Tokyo", "Asia/Tokyo", utc(2025, 6, 15, 3, 59), utc(2025, 6, 15, 4, 0), 0);
    row("midnight in Tokyo", "Asia/Tokyo", utc(2025, 6, 14, 14, 59), utc(2025, 6, 14, 15, 0), 1);
    row("a day in New York", "America/New_York", utc(2025, 6, 14, 14, 59), utc(2025, 6, 14, 15, 0), 0);
    row("midnight in Greenwich", "America/New_York", utc(2025, 6, 14, 23, 59), utc(2025, 6, 15, 0, 0), 0);
    row("a day of 23 hours", "America/New_York", utc(2025, 3, 9, 5, 0), utc(2025, 3, 10, 4, 0), 1);
    row("a day of 25 hours", "America/New_York", utc(2025, 11, 2, 4, 0), utc(2025, 11, 3, 4, 59), 0);
    row("back", "Asia/Tokyo", utc(2025, 6, 14, 15, 0), utc(2025, 6, 14, 14, 59), -1);
    row("a year", "Asia/Tokyo", utc(2023, 12, 31, 15, 0), utc(2024, 12, 31, 15, 0), 366);
}

void RouteBuilderTest::countsDays()
{
    QFETCH(QByteArray, zone);
    QFETCH(qint64, first);
    QFETCH(qint64, second);
    setZone(zone);
    QTEST(daysBetween(noon + std::chrono::minutes(first), noon + std::chrono::minutes(second)), "days");
}

void RouteBuilderTest::changesColourOnlyForALaterDay()
{
    QVERIFY(shouldChangeRouteColor(noon + 48h, noon));
    QVERIFY(!shouldChangeRouteColor(noon, noon));
    QVERIFY(!shouldChangeRouteColor(noon, noon + 48h));
    QVERIFY(!shouldChangeRouteColor(noon, std::nullopt));
    QVERIFY(!shouldChangeRouteColor(std::nullopt, noon));
}

void RouteBuilderTest::joinsRecordings_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QByteArray>("own");
    QTest::addColumn<QByteArray>("next");
    QTest::addColumn<int>("points");
    const QByteArray own = sideFile(noon, 3); // until 12:00:02
    const QByteArray tokyo = "Asia/Tokyo";
    const QByteArray valid = fixSentence({.time = noon + 1min});
    const QByteArray isVoid = fixSentence({.time = noon + 1min, .status = 'V'});
    QTest::newRow("none of its own") << tokyo << isVoid << valid << 0;
    QTest::newRow("no side file") << tokyo << QByteArray() << valid << 0;
    QTest::newRow("the next without a side file") << tokyo << own << QByteArray() << 3;
    QTest::newRow("the next without valid fixes") << tokyo << own << isVoid << 3;
    QTest::newRow("the next begins at an unreadable place")
        << tokyo << own << fixSentence({.time = noon + 1min, .latitude = "?"}) + valid << 3;
    QTest::newRow("same day") << tokyo << own << valid << 4;
    QTest::newRow("the next begins with a void fix") << tokyo << own << isVoid + valid << 4;
    QTest::newRow("the clock was set back") << tokyo << own << fixSentence({.time = noon - 48h}) << 4;
    QTest::newRow("the next day in Tokyo") << tokyo << own << fixSentence({.time = noon + 3h}) << 3;
    QTest::newRow("the same day in New York")
        << QByteArray("America/New_York") << own << fixSentence({.time = noon + 3h}) << 4;
}

void RouteBuilderTest::joinsRecordings()
{
    QFETCH(QByteArray, zone);
    QFETCH(QByteArray, own);
    QFETCH(QByteArray, next);
    setZone(zone);
    Drive drive;
    drive.add(own);
    drive.add(next);
    const auto line = RouteBuilder::polylineForDCFInfos(drive.recordings, 0);
    QTEST(static_cast<int>(line->coordinates().size()), "points");
    QCOMPARE(line->lineColor, routeColors.front());
    QCOMPARE(line->boundingMapRect().isNull(), line->coordinates().empty());
}

void RouteBuilderTest::drawsValidFixesOnly()
{
    Drive drive;
    drive.add(fixSentence({.time = noon, .status = 'V'}) + fixSentence({.time = noon, .latitude = "3530.0000"}) +
              fixSentence({.time = noon, .latitude = ""}) + fixSentence({.time = noon, .latitude = "9999.0000"}) +
              fixSentence({.time = noon, .latitude = "3600.0000"}));
    const auto line = RouteBuilder::polylineForDCFInfos(drive.recordings, 0);
    QCOMPARE(line->coordinates().size(), 2U);
    QCOMPARE(line->coordinates()[0].latitude, 35.5);
    QCOMPARE(line->coordinates()[1].latitude, 36.0);
    QCOMPARE(line->coordinates()[1].longitude, 139.0);
}

void RouteBuilderTest::findsGaps_data()
{
    QTest::addColumn<QList<int>>("times"); // of the fixes; negative for one without a readable position, 1 without date
    QTest::addColumn<int>("next");         // of the following recording's first
    QTest::addColumn<QList<int>>("gaps");
    QTest::newRow("none of its own") << QList<int>{-5} << 100 << QList<int>{};
    QTest::newRow("ten seconds") << QList<int>{0, 10'000, 20'000} << 30'000 << QList<int>{};
    QTest::newRow("a millisecond more") << QList<int>{0, 10'001, 20'001, 40'000} << 40'001 << QList<int>{0, 2};
    QTest::newRow("to the following recording") << QList<int>{0, 1000} << 11'001 << QList<int>{1};
    QTest::newRow("the clock was set back") << QList<int>{20'000, 1000, 2000} << 3000 << QList<int>{0};
    QTest::newRow("without a date") << QList<int>{0, 1, 2000, 1, 20'000} << 21'000 << QList<int>{3};
    QTest::newRow("what isn't drawn ends no gap") << QList<int>{0, -9000, 18'000} << 18'000 << QList<int>{0};
}

void RouteBuilderTest::findsGaps()
{
    QFETCH(QList<int>, times);
    QFETCH(int, next);
    QFETCH(QList<int>, gaps);
    QByteArray own;
    for (const int time : times) {
        own += fixSentence({.time = noon + std::chrono::milliseconds(std::abs(time)),
                            .latitude = time < 0 ? "9999.0000" : "3500.0000"});
        if (time == 1)
            own.replace(own.size() - 15, 6, "");
    }
    Drive drive;
    drive.add(own);
    drive.add(fixSentence({.time = noon + std::chrono::milliseconds(next)}));
    const auto line = RouteBuilder::polylineForDCFInfos(drive.recordings, 0);
    QCOMPARE(QList<int>(line->gaps().begin(), line->gaps().end()), gaps);
}

void RouteBuilderTest::marksTheFirstValidFix()
{
    Drive drive;
    drive.add(fixSentence({.time = noon, .status = 'V'}) + fixSentence({.time = noon, .latitude = ""}) +
              fixSentence({.time = noon, .latitude = "3530.0000", .speed = "20", .course = "48.5"}) +
              fixSentence({.time = noon}));
    const auto marker = RouteBuilder::annotationForDCFInfo(drive.recordings.front());
    QVERIFY(marker);
    QCOMPARE(marker->coordinate.latitude, 35.5);
    QCOMPARE(marker->coordinate.longitude, 139.0);
    QCOMPARE(marker->direction, 48.5);
    QCOMPARE(marker->speed, 10.288F);
    QVERIFY(marker->GPSEnable && !marker->isUserLocation);
    QCOMPARE(marker->info.lock(), drive.recordings.front());
}

void RouteBuilderTest::nothingToMark()
{
    Drive drive;
    drive.add({});
    drive.add(fixSentence({.time = noon, .status = 'V'}));
    for (const auto& dcf : drive.recordings)
        QVERIFY(!RouteBuilder::annotationForDCFInfo(dcf));
}

void RouteBuilderTest::carriesSpeedAndHeadingOver_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("own");
    QTest::addColumn<double>("speed");
    QTest::addColumn<double>("direction");
    const QByteArray moving = fixSentence({.time = noon, .speed = "10", .course = "48.5"});
    const auto lost = [](Instant time) { return fixSentence({.time = time, .speed = "", .course = ""}); };
    QTest::newRow("no side file before") << QByteArray() << lost(noon) << 0.0 << -1.0;
    QTest::newRow("nothing to lend") << lost(noon) << lost(noon + 1s) << 0.0 << -1.0;
    QTest::newRow("another day") << moving << lost(noon + 24h) << 0.0 << -1.0;
    QTest::newRow("too old a speed") << moving << lost(noon + 15s) << 0.0 << 48.5;
    QTest::newRow("both") << moving << lost(noon + 14900ms) << 5.144 << 48.5;
    QTest::newRow("the last that had each")
        << moving + fixSentence({.time = noon + 1s, .speed = "20", .course = ""}) + lost(noon + 2s) << lost(noon + 3s)
        << 10.288 << 48.5;
    QTest::newRow("its own first fix has both")
        << moving << fixSentence({.time = noon + 1s, .speed = "30", .course = "9"}) << 0.0 << 0.0;
}

void RouteBuilderTest::carriesSpeedAndHeadingOver()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, own);
    Drive drive;
    drive.add(before);
    drive.add(own);
    QVERIFY(RouteBuilder::polylineForDCFInfos(drive.recordings, 1));
    const auto telemetry = drive.recordings[1]->nmea->snapshot();
    QTEST(telemetry->totalLocations().front().correctedSpeed, "speed");
    QTEST(telemetry->totalLocations().front().correctedDirection, "direction");
}

void RouteBuilderTest::carryingOverDoesntDependOnTheOrder()
{
    // Begin without, lose it, never have it, only void: whoever comes first must not change what the others get.
    Drive drive;
    const auto at = [](int i) { return noon + std::chrono::seconds(i); };
    drive.add(fixSentence({.time = at(0), .speed = "", .course = ""}) + fixSentence({.time = at(1)}));
    drive.add(fixSentence({.time = at(2), .speed = "", .course = ""}) +
              fixSentence({.time = at(3), .speed = "20", .course = "90"}) +
              fixSentence({.time = at(4), .status = 'V'}));
    drive.add("$GTRIP,7\r\n" + fixSentence({.time = at(5), .speed = "", .course = ""}));
    drive.add(fixSentence({.time = at(6), .speed = "", .course = "180"}));
    drive.add(fixSentence({.time = at(7), .status = 'V'}));

    struct Outcome
    {
        std::vector<std::vector<CustomLocation>> fixes;
        std::vector<size_t> points;
        bool operator==(const Outcome&) const = default;
    };
    const auto outcome = [&](const std::vector<size_t>& order) {
        const RouteBuilder::DCFList recordings = drive.again();
        Outcome result{{}, std::vector<size_t>(order.size())};
        for (const size_t i : order)
            result.points[i] = RouteBuilder::polylineForDCFInfos(recordings, i)->coordinates().size();
        for (const auto& dcf : recordings) {
            const auto telemetry = dcf->nmea->snapshot();
            result.fixes.emplace_back(telemetry->totalLocations().begin(), telemetry->totalLocations().end());
        }
        return result;
    };
    std::vector<size_t> order(drive.recordings.size());
    std::iota(order.begin(), order.end(), size_t(0));
    const Outcome inOrder = outcome(order);
    QCOMPARE(inOrder.fixes[1].front().correctedSpeed, 5.144);
    QCOMPARE(inOrder.fixes[2].front().correctedDirection, 90.0);
    while (std::next_permutation(order.begin(), order.end()))
        QVERIFY(outcome(order) == inOrder);
}

void RouteBuilderTest::coloursDays_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QList<int>>("hours"); // from 14 June 2025, 12:00 UTC to the first fix; -1 without fixes
    QTest::addColumn<QList<int>>("colours");
    const QByteArray tokyo = "Asia/Tokyo";
    QTest::newRow("no fixes at all") << tokyo << QList<int>{-1, -1} << QList<int>{-1, -1};
    QTest::newRow("one day") << tokyo << QList<int>{0, 1, 2} << QList<int>{0, 0, 0};
    QTest::newRow("midnight in Tokyo") << tokyo << QList<int>{2, 3} << QList<int>{0, 1};
    QTest::newRow("midnight in New York")
        << QByteArray("America/New_York") << QList<int>{2, 3, 15, 16} << QList<int>{0, 0, 0, 1};
    QTest::newRow("without fixes between") << tokyo << QList<int>{-1, 0, -1, 24, -1} << QList<int>{-1, 0, -1, 1, -1};
    QTest::newRow("days left out count once") << tokyo << QList<int>{0, 72, 73} << QList<int>{0, 1, 1};
    QTest::newRow("the clock was set back") << tokyo << QList<int>{48, 0, 48, 72} << QList<int>{0, 0, 0, 1};
    QTest::newRow("nine days") << tokyo << QList<int>{0, 24, 48, 72, 96, 120, 144, 168, 192}
                               << QList<int>{0, 1, 2, 3, 4, 5, 6, 0, 1};
}

void RouteBuilderTest::coloursDays()
{
    QFETCH(QByteArray, zone);
    QFETCH(QList<int>, hours);
    QFETCH(QList<int>, colours);
    setZone(zone);
    Drive drive;
    for (const int hour : hours) {
        drive.add(hour < 0 ? QByteArray() : fixSentence({.time = noon + std::chrono::hours(hour)}));
        drive.recordings.back()->nmea->setup();
    }
    const std::vector<QColor> made = RouteBuilder::dayColors(drive.recordings);
    QList<int> found;
    for (const QColor& color : made) {
        const auto place = std::find(routeColors.begin(), routeColors.end(), color);
        found.push_back(place == routeColors.end() ? -1 : static_cast<int>(place - routeColors.begin()));
    }
    QCOMPARE(found, colours);
    for (size_t i = 0; i < made.size(); ++i)
        QCOMPARE(made[i].isValid(), hours[static_cast<int>(i)] >= 0);
}

QTEST_GUILESS_MAIN(RouteBuilderTest)
#include "RouteBuilderTest.moc"
