#include "telemetry/NMEAData.h"

#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <barrier>
#include <thread>
#include <vector>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

constexpr int GROUPS = 500;

/// Whether the snapshot is of one piece: nothing yet, or the whole file.
bool isWhole(const Telemetry& telemetry)
{
    if (telemetry.GOPs().empty())
        return telemetry.motions().empty() && telemetry.totalLocations().empty();
    std::size_t samples = 0;
    for (const GOPData& group : telemetry.GOPs())
        samples += group.motions().size();
    return telemetry.GOPs().size() == GROUPS + 1 && samples == GROUPS && telemetry.motions().size() == GROUPS &&
           telemetry.totalLocations().size() == GROUPS && telemetry.driveSupports().size() % GROUPS == 0 &&
           telemetry.driveSupports().size() > 0;
}

} // namespace

class NMEADataThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsWholeSnapshotsOnly_data();
    void showsWholeSnapshotsOnly();
};

void NMEADataThreadsTest::showsWholeSnapshotsOnly_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::newRow("parsed once") << QByteArray("$GTRIP,1\n");
    QTest::newRow("parsed again and again") << QByteArray("$GSEN\n");
}

void NMEADataThreadsTest::showsWholeSnapshotsOnly()
{
    QFETCH(QByteArray, header);
    QTemporaryDir folder;
    QFile file(folder.filePath(u"side.nmea"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        header +
        QByteArray("$GPRMC,080314.00,V,,,,,,,140625,,,N\n$GSENS,1,2,3\n$QVDSA,,,,,,,,,,,,,,,,\n").repeated(GROUPS));
    file.close();

    CustomLocation last({35, 139}, 0, 10, 10, 90, 7, Instant{});
    NMEAData nmea(file.fileName());
    constexpr int ROUNDS = 20;
    constexpr int PARSERS = 3;
    constexpr int READERS = 2;
    std::atomic<int> torn = 0;
    std::atomic<int> unparsed = 0;
    std::barrier start(PARSERS + READERS + 1);
    std::vector<std::jthread> threads;
    threads.reserve(PARSERS + READERS);
    for (int i = 0; i < PARSERS; ++i) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            for (int round = 0; round < ROUNDS; ++round) {
                nmea.setup();
                nmea.waitUntilParsed();
                // Whoever was first: once nobody is at it, it was read.
                unparsed += nmea.wasParsed() && !nmea.snapshot()->GOPs().empty() ? 0 : 1;
                nmea.carryOver(last, last);
            }
        });
    }
    for (int i = 0; i < READERS; ++i) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            for (int round = 0; round < ROUNDS * 10; ++round) {
                torn += isWhole(*nmea.snapshot()) ? 0 : 1;
                nmea.isParsing();
                nmea.setFilePath(nmea.filePath());
            }
        });
    }
    start.arrive_and_wait();
    threads.clear();
    QCOMPARE(torn.load(), 0);
    QCOMPARE(unparsed.load(), 0);
    QVERIFY(!nmea.isParsing());
    QVERIFY(isWhole(*nmea.snapshot()));
}

QTEST_GUILESS_MAIN(NMEADataThreadsTest)
#include "NMEADataThreadsTest.moc"
