#include "telemetry/NMEAData.h"

#include <QTemporaryDir>
#include <QTest>

using namespace cardreel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QByteArray fix(const QByteArray& time, const QByteArray& status, const QByteArray& speed, const QByteArray& course)
{
    return "$GPRMC," + time + ',' + status + ",3540.6620,N,13945.2880,E," + speed + ',' + course + ",140625,,,A*42\r\n";
}

} // namespace

class NMEADataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void startsEmpty();
    void readsGroups();
    void readsAgainWhatWasNotThere();
    void countsGroups_data();
    void countsGroups();
    void lendsSpeedsForAWhileAndCoursesForEver();
    void survivesBadFiles_data();
    void survivesBadFiles();
    void parsesAFileWithATripOnce();
    void parsesAFileWithoutATripAgain();
    void keepsNothingOfAFileThatBecameUnreadable();
    void followsANewPath();
    void keepsOldSnapshots();
    void carriesOver_data();
    void carriesOver();
    void carryingOverTwiceChangesNothing();
    void parsesSingleLines();
    void convertsDates();

private:
    QString write(const QByteArray& text);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void NMEADataTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

QString NMEADataTest::write(const QByteArray& text)
{
    QFile file(m_folder->filePath(u"side.nmea"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("no side file");
    return file.fileName();
}

void NMEADataTest::startsEmpty()
{
    const NMEAData nmea(u"/no/such.nmea"_s);
    const std::shared_ptr<const Telemetry> telemetry = nmea.snapshot();
    QVERIFY(!nmea.isParsing() && !nmea.wasParsed());
    nmea.waitUntilParsed();
    QVERIFY(telemetry->GOPs().empty() && telemetry->totalLocations().empty() && telemetry->driveSupports().empty());
    const CustomLocation& last = telemetry->lastValidSpeedLocation();
    QCOMPARE(last.latitude, -999);
    QCOMPARE(last.longitude, -999);
    QCOMPARE(last.horizontalAccuracy, 10);
    QCOMPARE(last.verticalAccuracy, 10);
    QCOMPARE(last.speed, -1);
    QCOMPARE(last.course, -1);
    QVERIFY(last.timestamp == Instant{});
    QVERIFY(telemetry->lastValidHeadingLocation() == last);
}

void NMEADataTest::readsGroups()
{
    NMEAData nmea(
        write("$GTRIP,77,1.04\r\n$GSENS,-0.50,0.25,1.00\r\n" + fix("080314.00", "A", "10", "48.5") +
              "$GSENS,abc,0.2,-1.3\r\n$GSENS,1,2\r\n$QVDSA,12,1,,,,,,,,,,,,,,\r\n" + fix("080315.00", "V", "30", "2") +
              "$QVDSA,,,,,,,,,,,,,,,,,,,,,,,,,,,\r\n$QVDSA,,,,,,,,,,,,,,,\r\n" + fix("080316.00", "X", "50", "2")));
    nmea.setup();
    QVERIFY(nmea.wasParsed());
    const std::shared_ptr<const Telemetry> telemetry = nmea.snapshot();
    QCOMPARE(telemetry->tripID(), u"77"_s);
    QCOMPARE(telemetry->version(), u"1.04"_s);
    QCOMPARE(telemetry->maxSpeed(), 5.144);
    QCOMPARE(telemetry->maxMotionABS(), 1.3);
    QCOMPARE(telemetry->totalLocations().size(), 2U);
    QCOMPARE(telemetry->varidLocations().size(), 1U);
    QCOMPARE(telemetry->motions().size(), 3U);
    QCOMPARE(telemetry->driveSupports().size(), 2U);

    const GOPList groups = telemetry->GOPs();
    QCOMPARE(groups.size(), 4U);
    QVERIFY(groups[0].location() == CustomLocation::placeholder());
    QVERIFY(groups[0].motions()[0] == MotionData(-0.5, 0.25, 1));
    const CustomLocation& location = groups[1].location();
    QCOMPARE(location.latitude, 35 + (3540.662 - 3500) / 60);
    QCOMPARE(location.longitude, 139 + (13945.288 - 13900) / 60);
    QCOMPARE(location.horizontalAccuracy, 10);
    QCOMPARE(location.speed, 5.144);
    QCOMPARE(location.course, 48.5);
    QVERIFY(location.timestamp == Instant{1749888194000ms});
    QCOMPARE(groups[1].motions().size(), 2U);
    QVERIFY(groups[1].motions()[0] == MotionData(0, 0.2, -1.3));
    QVERIFY(groups[1].motions()[1] == MotionData(0, 0, 0));
    QCOMPARE(groups[1].driveSupportInfos().front().appearanceImageName(), u"adas_start_delay"_s);
    QCOMPARE(groups[2].location().latitude, -999);
    QCOMPARE(groups[2].location().speed, -1);
    QVERIFY(groups[2].location().timestamp == Instant{1749888195000ms});
    QCOMPARE(groups[2].driveSupportInfos().front().QVDSAType, u"QVDSA_TYPE_UNKNOWN"_s);
    QVERIFY(groups[3].location() == CustomLocation::placeholder());
}

void NMEADataTest::readsAgainWhatWasNotThere()
{
    NMEAData nmea(m_folder->filePath(u"side.nmea"_s));
    QVERIFY(nmea.parsedSnapshot()->GOPs().empty());
    QFile file(write("$GSENS,1,2,3\n"));
    QCOMPARE(nmea.parsedSnapshot()->motions().size(), 1U);
    QVERIFY(file.remove());
    QCOMPARE(nmea.parsedSnapshot()->motions().size(), 1U);
}

void NMEADataTest::countsGroups_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("groups");
    QTest::addColumn<int>("fixes");
    const QByteArray one = fix("080314.00", "A", "10", "48.5");
    QTest::newRow("empty file") << QByteArray() << 0 << 0;
    QTest::newRow("header only") << QByteArray("$GTRIP,1\n") << 1 << 0;
    QTest::newRow("header and two fixes") << "$GTRIP,1\n" + one + one << 3 << 2;
    QTest::newRow("begins with a fix") << one << 2 << 1;
    QTest::newRow("twelve fields") << one.chopped(8) + "*42\r\n" + one << 3 << 1;
    QTest::newRow("a fix within a line") << "$GSENS,1,2,3 " + one << 2 << 1;
    QTest::newRow("begins with a fix that lost its tag") << one.sliced(6) << 1 << 1;
    QTest::newRow("only the first line after a tag lost it")
        << "$GPRMC$GSENS,1,2,3\r\n" + one.sliced(6) + "$GPRMC\r\n" + one.sliced(6) << 3 << 0;
    QTest::newRow("carriage returns alone") << QByteArray(one + one).replace("\r\n", "\r") << 3 << 2;
}

void NMEADataTest::countsGroups()
{
    QFETCH(QByteArray, text);
    NMEAData nmea(write(text));
    nmea.setup();
    QTEST(static_cast<int>(nmea.snapshot()->GOPs().size()), "groups");
    QTEST(static_cast<int>(nmea.snapshot()->totalLocations().size()), "fixes");
}

void NMEADataTest::lendsSpeedsForAWhileAndCoursesForEver()
{
    NMEAData nmea(write(fix("080313.00", "V", "", "") + fix("080314.00", "A", "10", "48.5") +
                        fix("080328.90", "V", "", "") + fix("080329.00", "V", "", "") +
                        fix("080330.00", "A", "", "50") + fix("080331.00", "A", "20", "")));
    nmea.setup();
    const std::shared_ptr<const Telemetry> telemetry = nmea.snapshot();
    const auto fixes = telemetry->totalLocations();
    QList<double> speeds;
    QList<double> directions;
    for (const CustomLocation& location : fixes) {
        speeds.append(location.correctedSpeed);
        directions.append(location.correctedDirection);
    }
    QCOMPARE(speeds, (QList<double>{0, 0, 5.144, 0, 0, 0}));
    QCOMPARE(directions, (QList<double>{-1, 0, 48.5, 48.5, 0, 50}));
    QCOMPARE(telemetry->lastValidSpeedLocation().speed, 10.288);
    QCOMPARE(telemetry->lastValidHeadingLocation().course, 50);
}

void NMEADataTest::survivesBadFiles_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("groups");
    const QByteArray sentences = "$GTRIP,5\r\n" + fix("080314.00", "A", "10", "48.5") + "$GSENS,1,2,3\r\n";
    QTest::newRow("not UTF-8 at the very end") << sentences + "\xFF" << 0;
    QTest::newRow("UTF-16 without a mark") << QByteArray("$\0G\0T\0R\0I\0P\0,\0"
                                                         "5\0",
                                                         16)
                                           << 1;
    QTest::newRow("full of NULs") << QByteArray(100'000, '\0') << 1;
    QTest::newRow("one huge line") << QByteArray(3'000'000, ',') << 1;
    QTest::newRow("a huge line of fixes") << QByteArray("$GPRMC").repeated(200'000) << 200'001;
    QTest::newRow("cut in a sentence") << "$GTRIP,5\r\n" + fix("080314.00", "A", "10", "48.5").first(30) << 2;
}

void NMEADataTest::survivesBadFiles()
{
    QFETCH(QByteArray, text);
    NMEAData nmea(write(text));
    nmea.setup();
    const std::shared_ptr<const Telemetry> telemetry = nmea.snapshot();
    QVERIFY(!nmea.isParsing() && nmea.wasParsed());
    QTEST(static_cast<int>(telemetry->GOPs().size()), "groups");
    QVERIFY(telemetry->totalLocations().empty() && telemetry->motions().empty());
}

void NMEADataTest::parsesAFileWithATripOnce()
{
    NMEAData nmea(write("$GTRIP,1\n$GTRIP,2\n$GSENS,1,2,3\n"));
    nmea.setup();
    const std::shared_ptr<const Telemetry> before = nmea.snapshot();
    QCOMPARE(before->tripID(), u"2"_s);
    write("$GTRIP,3\n");
    nmea.setup();
    QCOMPARE(nmea.snapshot(), before);
}

void NMEADataTest::parsesAFileWithoutATripAgain()
{
    const QByteArray text = fix("080314.00", "V", "", "") + fix("080315.00", "A", "10", "48.5") +
                            "$GSENS,1,2,3\n$QVDSA,1,1,,,,,,,,,,,,,,\n$QVDSA,2,1,,,,,,,,,,,,,,\n";
    NMEAData nmea(write(text));
    nmea.setup();
    nmea.setup();
    const std::shared_ptr<const Telemetry> telemetry = nmea.snapshot();
    QCOMPARE(telemetry->GOPs().size(), 3U);
    QCOMPARE(telemetry->totalLocations().size(), 2U);
    QCOMPARE(telemetry->motions().size(), 1U);
    QList<double> positions;
    for (const DriveSupportData& data : telemetry->driveSupports())
        positions.append(data.delayStartPosition);
    QCOMPARE(positions, (QList<double>{1, 2, 1, 2}));
    const IndexedList<DriveSupportData> ofGroup = telemetry->GOPs()[2].driveSupportInfos();
    QCOMPARE(ofGroup.size(), 2U);
    QCOMPARE(ofGroup[1].delayStartPosition, 2);
    // The last valid fixes of the first parse are still there when the second meets the void one.
    QCOMPARE(telemetry->totalLocations()[0].correctedSpeed, 5.144);
    QCOMPARE(telemetry->totalLocations()[0].correctedDirection, 48.5);
}

void NMEADataTest::keepsNothingOfAFileThatBecameUnreadable()
{
    NMEAData nmea(write(fix("080315.00", "A", "10", "48.5") + "$GSENS,1,2,3\n$QVDSA,1,1,,,,,,,,,,,,,,\n"));
    nmea.setup();
    // Reading its beginning fails as a medium does; the others can't be opened.
    for (const QString& path : {u"/proc/self/mem"_s, m_folder->path(), u"/no/such.nmea"_s, u""_s}) {
        nmea.setFilePath(path);
        nmea.setup();
        const std::shared_ptr<const Telemetry> telemetry = nmea.snapshot();
        QVERIFY(telemetry->GOPs().empty() && telemetry->totalLocations().empty() &&
                telemetry->varidLocations().empty());
        QVERIFY(telemetry->motions().empty());
        QCOMPARE(telemetry->maxSpeed(), 0);
        QCOMPARE(telemetry->maxMotionABS(), 0);
        QCOMPARE(telemetry->driveSupports().size(), 1U);
        QCOMPARE(telemetry->lastValidSpeedLocation().speed, 5.144);
        QVERIFY(!nmea.isParsing());
    }
}

void NMEADataTest::followsANewPath()
{
    NMEAData nmea(u"/no/such.nmea"_s);
    nmea.setup();
    QVERIFY(nmea.snapshot()->GOPs().empty());
    const QString path = write("$GTRIP,9\n");
    nmea.setFilePath(path);
    QCOMPARE(nmea.filePath(), path);
    nmea.setup();
    QCOMPARE(nmea.snapshot()->tripID(), u"9"_s);
}

void NMEADataTest::keepsOldSnapshots()
{
    NMEAData nmea(write("$GSENS,1,2,3\n$QVDSA,1,1,,,,,,,,,,,,,,\n"));
    nmea.setup();
    const std::shared_ptr<const Telemetry> before = nmea.snapshot();
    write("$GSENS,4,5,6\n$GSENS,7,8,9\n");
    nmea.setup();
    QCOMPARE(nmea.snapshot()->motions().size(), 2U);
    QCOMPARE(before->motions().size(), 1U);
    QVERIFY(before->GOPs()[0].motions()[0] == MotionData(1, 2, 3));
    QCOMPARE(before->driveSupports().front().delayStart, u"1"_s);
}

void NMEADataTest::carriesOver_data()
{
    QTest::addColumn<double>("speed");
    QTest::addColumn<double>("course");
    QTest::addColumn<QList<double>>("speeds");
    QTest::addColumn<QList<double>>("directions");
    QTest::newRow("nothing to lend") << -1.0 << -1.0 << QList<double>{0, 0, 0, 5.144} << QList<double>{-1, -1, 0, 0};
    QTest::newRow("a speed, for less than 15 s")
        << 7.0 << -1.0 << QList<double>{7, 0, 0, 5.144} << QList<double>{-1, -1, 0, 0};
    QTest::newRow("a course, without a limit")
        << -1.0 << 90.0 << QList<double>{0, 0, 0, 5.144} << QList<double>{90, 90, 0, 0};
    QTest::newRow("both") << 7.0 << 90.0 << QList<double>{7, 0, 0, 5.144} << QList<double>{90, 90, 0, 0};
}

void NMEADataTest::carriesOver()
{
    QFETCH(double, speed);
    QFETCH(double, course);
    CustomLocation speedLocation;
    speedLocation.speed = speed;
    speedLocation.timestamp = Instant{1749888180000ms}; // 08:03:00
    CustomLocation headingLocation;
    headingLocation.course = course;

    // 14.9 s and 15.0 s younger; then a fix with both, and one that borrows within its own file.
    NMEAData nmea(write(fix("080314.90", "V", "", "") + fix("080315.00", "A", "", "") +
                        fix("080316.00", "A", "10", "48.5") + fix("080317.00", "A", "", "2")));
    nmea.setup();
    const std::shared_ptr<const Telemetry> before = nmea.snapshot();
    nmea.carryOver(speedLocation, headingLocation);
    const std::shared_ptr<const Telemetry> after = nmea.snapshot();
    QList<double> speeds;
    QList<double> directions;
    for (const CustomLocation& location : after->totalLocations()) {
        speeds.append(location.correctedSpeed);
        directions.append(location.correctedDirection);
    }
    QTEST(speeds, "speeds");
    QTEST(directions, "directions");
    QCOMPARE(after->varidLocations().front().correctedDirection, directions[1]);
    QCOMPARE(after->GOPs()[1].location().correctedSpeed, speeds[0]);
    QCOMPARE(before->totalLocations()[0].correctedDirection, -1);
    QVERIFY(after->lastValidSpeedLocation() == before->lastValidSpeedLocation());
}

void NMEADataTest::carryingOverTwiceChangesNothing()
{
    CustomLocation last({35, 139}, 0, 10, 10, 90, 7, Instant{1749888180000ms});
    NMEAData nmea(write(fix("080301.00", "V", "", "") + fix("080316.00", "A", "10", "48.5")));
    nmea.setup();
    nmea.carryOver(last, last);
    const std::shared_ptr<const Telemetry> once = nmea.snapshot();
    nmea.carryOver(last, last);
    QCOMPARE(nmea.snapshot(), once);
    // Parsed again, the first fix borrows from the end of its own file; carrying over comes to the same all the same.
    nmea.setup();
    QCOMPARE(nmea.snapshot()->totalLocations()[0].correctedSpeed, 5.144);
    nmea.carryOver(last, last);
    QVERIFY(nmea.snapshot()->totalLocations()[0] == once->totalLocations()[0]);
}

void NMEADataTest::parsesSingleLines()
{
    NMEAData nmea(write(fix("080314.00", "A", "10", "48.5") + "$GSENS,1,2,3\n"));
    nmea.setup();
    const ParsedGOP group = nmea.parseNMEALinesWithLines(
        QString::fromLatin1(fix("080315.00", "V", "", "") + "$GSENS,0.5,-4,0\n$QVDSA,3,1,,,,,,,,,,,,,,") +
        QChar(0x2028) + u"$GTRIP,発,2"_s);
    QCOMPARE(group.location.correctedSpeed, 5.144);
    QCOMPARE(group.motions.size(), 1U);
    QCOMPARE(group.driveSupportInfos.size(), 1U);
    const std::shared_ptr<const Telemetry> telemetry = nmea.snapshot();
    QCOMPARE(telemetry->GOPs().size(), 2U);
    QCOMPARE(telemetry->GOPs()[1].motions().size(), 1U);
    QCOMPARE(telemetry->motions().size(), 2U);
    QCOMPARE(telemetry->driveSupports().size(), 1U);
    QCOMPARE(telemetry->totalLocations().size(), 2U);
    QCOMPARE(telemetry->maxMotionABS(), 4);
    QCOMPARE(telemetry->tripID(), u"発"_s);
    QVERIFY(nmea.parseNMEALinesWithLines(u"junk"_s).location == CustomLocation::placeholder());
}

void NMEADataTest::convertsDates()
{
    const auto date = NMEAData::convertToDateWithDateString(u"140625 080314.00"_s, u"ddMMyy HHmmss.SS"_s);
    QVERIFY(date == Instant{1749888194000ms});
    QVERIFY(NMEAData::convertToDateWithDateString(u"2025/06/14"_s, u"yyyy/MM/dd"_s) == Instant{1749859200000ms});
    QVERIFY(!NMEAData::convertToDateWithDateString(u"soon"_s, u"yyyy/MM/dd"_s));
}

QTEST_GUILESS_MAIN(NMEADataTest)
#include "NMEADataTest.moc"
