#include "media/DCFAsyncParser.h"

#include "media/DCFInfo.h"
#include "media/RouteColors.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"
#include "telemetry/NMEAData.h"

#include <QTest>
#include <QThread>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

bool contains(const MapRect& outer, const MapRect& inner)
{
    return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
           outer.bottom >= inner.bottom;
}

} // namespace

class DCFAsyncParserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void beginsAtTheIndexAndWraps_data();
    void beginsAtTheIndexAndWraps();
    void nothingToDo();
    void everythingIsThereWhenARecordingIsReported();
    void recordingsWithoutTelemetryAreReportedToo();
    void whatIsThereStays();
    void callbacksMayBeMissing();
    void cancelledBeforeAnythingIsReported_data();
    void cancelledBeforeAnythingIsReported();
    void cancelledWithinAReport_data();
    void cancelledWithinAReport();
    void droppedBeforeAnythingIsReported();
    void droppedWithinAReport();
    void aSecondStartDoesNothing();
    void anotherParserTakesOver();
    void theClosingApplicationReleasesIt();
    void aCardThatIsGone();

private:
    std::shared_ptr<DCFAsyncParser> start(size_t index = 0);
    void waitForFirstParse() const;
    static bool poolIsIdle() { return BackgroundQueue::waitForDone(0); }

    TestHome m_home;
    std::unique_ptr<CardBuilder> m_card;
    DCFAsyncParser::DCFList m_recordings; // five
    QList<int> m_reported;
    int m_finished = 0;
    std::function<void()> m_atReport;
};

void DCFAsyncParserTest::init()
{
    m_card = std::make_unique<CardBuilder>();
    m_recordings.clear();
    for (int i = 0; i < 5; ++i) {
        const QString stem = u"NORMAL/20250614120%100"_s.arg(i);
        m_card->file(stem + u".MP4"_s);
        m_card->file(stem + u".NMEA"_s, sideFile(utc(2025, 6, 14 + static_cast<unsigned>(i / 2), 12, i), 20));
        m_recordings.push_back(std::make_shared<DCFInfo>(m_card->root(), stem + u".MP4"_s));
    }
    m_reported.clear();
    m_finished = 0;
    m_atReport = {};
}

void DCFAsyncParserTest::cleanup()
{
    InterfaceThread::open();
    QVERIFY(QTest::qWaitFor(poolIsIdle));
}

/// Notes in the test what the parser reports.
std::shared_ptr<DCFAsyncParser> DCFAsyncParserTest::start(size_t index)
{
    auto parser = std::make_shared<DCFAsyncParser>(1.0);
    parser->setUpDCFAsync(
        m_recordings, index,
        [this](const std::shared_ptr<DCFInfo>& dcf) {
            QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
            const auto place = std::find(m_recordings.begin(), m_recordings.end(), dcf);
            m_reported.push_back(static_cast<int>(place - m_recordings.begin()));
            if (m_atReport)
                m_atReport();
        },
        [this] {
            QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
            ++m_finished;
        });
    return parser;
}

void DCFAsyncParserTest::beginsAtTheIndexAndWraps_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QList<int>>("order");
    QTest::newRow("first") << 0 << QList<int>{0, 1, 2, 3, 4};
    QTest::newRow("third but last") << 3 << QList<int>{3, 4, 0, 1, 2};
    QTest::newRow("last") << 4 << QList<int>{4, 0, 1, 2, 3};
}

void DCFAsyncParserTest::beginsAtTheIndexAndWraps()
{
    QFETCH(int, index);
    const auto parser = start(static_cast<size_t>(index));
    QVERIFY(parser->isRunning);
    QTRY_COMPARE(m_finished, 1);
    QTEST(m_reported, "order");
    QVERIFY(parser->isRunning);
}

void DCFAsyncParserTest::nothingToDo()
{
    m_recordings.clear();
    const auto parser = start();
    QVERIFY(parser->isRunning);
    QVERIFY(poolIsIdle());
    QCoreApplication::processEvents();
    QCOMPARE(m_finished, 0);
}

void DCFAsyncParserTest::everythingIsThereWhenARecordingIsReported()
{
    std::shared_ptr<DCFAsyncParser> parser;
    m_atReport = [&] {
        const DCFInfo& dcf = *m_recordings[static_cast<size_t>(m_reported.back())];
        QVERIFY(!dcf.nmea->isParsing());
        QCOMPARE(dcf.nmea->snapshot()->varidLocations().size(), 20U);
        QCOMPARE(dcf.routeLine.size(), 1U);
        QCOMPARE(dcf.annotation.size(), 1U);
        QVERIFY(QFile::exists(dcf.thumbnailPath));
        QCOMPARE(dcf.routeLine.front()->lineColor, routeColors[0]);
        const MapRect& route = dcf.routeLine.front()->boundingMapRect();
        QVERIFY(!route.isNull() && contains(parser->totalRect, route));
    };
    parser = start(2);
    QTRY_COMPARE(m_finished, 1);
    // Two a day.
    for (size_t i = 0; i < m_recordings.size(); ++i)
        QCOMPARE(m_recordings[i]->routeLine.front()->lineColor, routeColors[i / 2]);
}

void DCFAsyncParserTest::recordingsWithoutTelemetryAreReportedToo()
{
    QVERIFY(QFile::remove(m_recordings[1]->infoFilePath));
    const auto parser = start();
    QTRY_COMPARE(m_finished, 1);
    QCOMPARE(m_reported, (QList<int>{0, 1, 2, 3, 4}));
    QVERIFY(m_recordings[1]->routeLine.empty() && m_recordings[1]->annotation.empty());
    QVERIFY(!m_recordings[1]->thumbnailPath.isEmpty());
    QVERIFY(m_recordings[0]->routeLine.size() == 1 && m_recordings[2]->routeLine.size() == 1);
}

void DCFAsyncParserTest::whatIsThereStays()
{
    auto route = std::make_shared<CustomMapPolyline>(std::vector<Coordinate>{{1, 2}, {3, 4}});
    auto marker = std::make_shared<CustomPointAnnotation>();
    m_recordings[0]->routeLine = {route};
    m_recordings[0]->annotation = {marker};
    m_recordings[0]->thumbnailPath = u"/mine.jpg"_s;
    const auto parser = start();
    QTRY_COMPARE(m_finished, 1);
    QCOMPARE(m_recordings[0]->routeLine.front(), route);
    QCOMPARE(m_recordings[0]->annotation.front(), marker);
    QCOMPARE(m_recordings[0]->thumbnailPath, u"/mine.jpg"_s);
    QVERIFY(contains(parser->totalRect, route->boundingMapRect()));
}

void DCFAsyncParserTest::callbacksMayBeMissing()
{
    const auto parser = std::make_shared<DCFAsyncParser>(1.0);
    parser->setUpDCFAsync(m_recordings, 0, {}, {});
    QVERIFY(QTest::qWaitFor(poolIsIdle));
    QCOMPARE(m_recordings.back()->routeLine.front()->lineColor, routeColors[2]);
}

/// Without handling an event, so that the job can't report what it has.
void DCFAsyncParserTest::waitForFirstParse() const
{
    while (!m_recordings.front()->nmea->wasParsed())
        QThread::yieldCurrentThread();
}

void DCFAsyncParserTest::cancelledBeforeAnythingIsReported_data()
{
    QTest::addColumn<bool>("isAtWork");
    QTest::newRow("at once") << false;
    QTest::newRow("with a recording under way") << true;
}

void DCFAsyncParserTest::cancelledBeforeAnythingIsReported()
{
    QFETCH(bool, isAtWork);
    const auto parser = start();
    if (isAtWork)
        waitForFirstParse();
    parser->cancelFlag = true;
    QVERIFY(QTest::qWaitFor(poolIsIdle));
    QVERIFY(m_reported.isEmpty());
    QCOMPARE(m_finished, 0);
    for (const auto& dcf : m_recordings)
        QVERIFY(dcf->routeLine.empty() && dcf->thumbnailPath.isEmpty());
}

void DCFAsyncParserTest::cancelledWithinAReport_data()
{
    QTest::addColumn<int>("after");
    QTest::newRow("first") << 1;
    QTest::newRow("second") << 2;
    QTest::newRow("last") << 5;
}

void DCFAsyncParserTest::cancelledWithinAReport()
{
    QFETCH(int, after);
    std::shared_ptr<DCFAsyncParser> parser;
    m_atReport = [&] { parser->cancelFlag = m_reported.size() == after; };
    parser = start();
    QVERIFY(QTest::qWaitFor(poolIsIdle));
    QCOMPARE(m_reported.size(), after);
    QCOMPARE(m_finished, 0);
}

void DCFAsyncParserTest::droppedBeforeAnythingIsReported()
{
    std::shared_ptr<DCFAsyncParser> parser = start();
    waitForFirstParse();
    const std::weak_ptr<DCFAsyncParser> dropped = parser;
    parser.reset();
    QVERIFY(QTest::qWaitFor(poolIsIdle));
    QVERIFY(dropped.expired());
    QVERIFY(m_reported.isEmpty());
    QCOMPARE(m_finished, 0);
}

void DCFAsyncParserTest::droppedWithinAReport()
{
    std::shared_ptr<DCFAsyncParser> parser;
    m_atReport = [&] { parser.reset(); };
    parser = start();
    QVERIFY(QTest::qWaitFor(poolIsIdle));
    QCOMPARE(m_reported, QList<int>{0});
    QCOMPARE(m_finished, 0);
}

void DCFAsyncParserTest::aSecondStartDoesNothing()
{
    const auto parser = start();
    bool called = false;
    const auto again = [&] {
        parser->setUpDCFAsync(
            m_recordings, 0, [&](const std::shared_ptr<DCFInfo>&) { called = true; }, [&] { called = true; });
    };
    again();
    QTRY_COMPARE(m_finished, 1);
    again();
    QVERIFY(QTest::qWaitFor(poolIsIdle));
    QCOMPARE(m_reported, (QList<int>{0, 1, 2, 3, 4}));
    QCOMPARE(m_finished, 1);
    QVERIFY(!called);
}

void DCFAsyncParserTest::anotherParserTakesOver()
{
    std::shared_ptr<DCFAsyncParser> first;
    std::shared_ptr<DCFAsyncParser> second;
    m_atReport = [&] {
        if (second)
            return;
        first->cancelFlag = true;
        second = start(3);
    };
    first = start();
    QTRY_COMPARE(m_finished, 1);
    // The first one's report, then the second one's.
    QCOMPARE(m_reported, (QList<int>{0, 3, 4, 0, 1, 2}));
    for (const auto& dcf : m_recordings)
        QCOMPARE(dcf->routeLine.size(), 1U);
}

void DCFAsyncParserTest::theClosingApplicationReleasesIt()
{
    const auto parser = start();
    InterfaceThread::close();
    // Without any event being handled.
    QVERIFY(BackgroundQueue::waitForDone(30'000));
    QVERIFY(m_reported.isEmpty());
    QCOMPARE(m_finished, 0);
    QVERIFY(!m_recordings.back()->nmea->wasParsed()); // it doesn't go on for nobody
}

void DCFAsyncParserTest::aCardThatIsGone()
{
    m_card.reset();
    const auto parser = start();
    QTRY_COMPARE(m_finished, 1);
    for (const auto& dcf : m_recordings)
        QVERIFY(dcf->routeLine.empty() && dcf->annotation.empty() && dcf->thumbnailPath.isEmpty());
}

QTEST_GUILESS_MAIN(DCFAsyncParserTest)
#include "DCFAsyncParserTest.moc"
