#include "app/ProgramRun.h"
#include "media/CardLayout.h"
#include "names/ConstClass.h"
#include "platform/files/Files.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"
#include "telemetry/NMEAData.h"

#include <QJsonArray>
#include <QTest>

#include <sys/stat.h>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Result = ProgramRun;

Result run(const CardBuilder& card, const QStringList& arguments)
{
    return runProgram(card.root(), arguments);
}

QString isoDate(Instant date)
{
    return QDateTime::fromMSecsSinceEpoch(date.time_since_epoch().count(), Qt::UTC)
        .toString(u"yyyy-MM-ddTHH:mm:ss.zzzZ");
}

} // namespace

class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exitsAsItSays_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        const auto row = [](const char* what, const QStringList& arguments, int status) {
            QTest::newRow(what) << arguments << status;
        };
        row("unknown option", {u"--bogus"_s}, 2);
        row("list what", {u"list"_s}, 2);
        row("list with another command's option", {u"list"_s, u"--all"_s, u"."_s}, 2);
        row("list with a mistyped option", {u"list"_s, u"."_s, u"--jsn"_s}, 2);
        row("telemetry of two", {u"telemetry"_s, u"side.NMEA"_s, u"side.NMEA"_s}, 2);
        row("list nothing", {u"list"_s, u""_s}, 1);
        row("list what isn't there", {u"list"_s, u"missing"_s}, 1);
        row("list a file", {u"list"_s, u"side.NMEA"_s}, 1);
        row("list an unreadable folder", {u"list"_s, u"locked"_s, u"--json"_s}, 1);
        row("telemetry that fails in the middle", {u"telemetry"_s, u"/proc/self/mem"_s}, 1);
        row("an option behind a card", {u"."_s, u"--json"_s}, 2);
        row("telemetry that isn't there", {u"telemetry"_s, u"missing"_s}, 1);
        row("telemetry of a pipe", {u"telemetry"_s, u"pipe"_s}, 1);
        row("telemetry that can't be read", {u"telemetry"_s, u"locked.NMEA"_s, u"--json"_s}, 1);
        row("help", {u"--help"_s}, 0);
        row("version", {u"--version"_s}, 0);
        row("list", {u"list"_s, u"."_s}, 0);
        row("list a folder that is no card", {u"list"_s, u"NORMAL"_s}, 0);
        row("telemetry", {u"telemetry"_s, u"side.NMEA"_s}, 0);
        row("telemetry without content", {u"telemetry"_s, u"empty.NMEA"_s, u"--json"_s}, 0);
    }
    void exitsAsItSays()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        CardBuilder card;
        card.folder(u"NORMAL"_s);
        card.file(u"side.NMEA"_s, sideFile(utc(2025, 6, 14, 12, 0), 2));
        card.file(u"empty.NMEA"_s, {});
        QCOMPARE(mkfifo(card.path(u"pipe"_s).toUtf8(), 0644), 0);
        QCOMPARE(chmod(card.folder(u"locked"_s).toUtf8(), 0), 0);
        QCOMPARE(chmod(card.file(u"locked.NMEA"_s).toUtf8(), 0), 0);

        const Result result = run(card, arguments);
        QCOMPARE(result.status, status);
        if (status == 0) {
            QCOMPARE(result.err, QByteArray());
            QVERIFY(result.out.endsWith('\n'));
        } else {
            QCOMPARE(result.out, QByteArray());
            QVERIFY2(result.err.startsWith("cardreel: ") && result.err.endsWith('\n'), result.err.constData());
            QCOMPARE(result.err.count('\n'), 1);
        }
    }

    void listsRecordings()
    {
        CardBuilder card;
        const Instant noon = utc(2020, 1, 1, 12, 0);
        card.file(u"NORMAL/200101120000.MP4"_s, "12345", noon + 60s);
        card.file(u"REAR/NORMAL/200101120000.MP4"_s, "123");
        card.file(u"SYSTEM/NMEA/NORMAL/200101120000.NMEA"_s, "1234567");
        QCOMPARE(chmod(card.file(u"EVENT/200101120100.MP4"_s, "1", noon + 120s + 345ms).toUtf8(), 0444), 0);
        card.picture(u"PICTURE/200101120130.JPG"_s, noon + 90s);
        const Result result = run(card, {u"list"_s, u"--json"_s, u"."_s});
        QCOMPARE(result.status, 0);
        const QJsonObject json = result.json();
        QCOMPARE(json[u"rootPath"], QJsonValue(card.root()));
        QCOMPARE(json[u"available"], QJsonValue(true));
        QCOMPARE(json[u"hasSecondary"], QJsonValue(true));

        const QJsonArray recordings = json[u"recordings"].toArray();
        QCOMPARE(recordings.size(), 2);
        QJsonObject first = recordings[0].toObject();
        const QString date = recordingDateText(u"200101120000"_s);
        QCOMPARE(first.take(u"dcfName").toString(), date + u'\n');
        const QJsonObject expected = {
            {u"deltaPath"_s, u"NORMAL/200101120000.MP4"_s},
            {u"filePath"_s, card.path(u"NORMAL/200101120000.MP4"_s)},
            {u"secondaryFilePath"_s, card.path(u"REAR/NORMAL/200101120000.MP4"_s)},
            {u"infoFilePath"_s, card.path(u"SYSTEM/NMEA/NORMAL/200101120000.NMEA"_s)},
            {u"folderName"_s, u"NORMAL"_s},
            {u"eventName"_s, u"EVENTNAME_NORMAL"_s},
            {u"isEventDCF"_s, false},
            {u"isProtected"_s, false},
            {u"fileDate"_s, u"2020-01-01T12:01:00.000Z"_s},
            {u"fileSize"_s, 15},
            {u"dcfFileNumber"_s, Q_INT64_C(200101120000)},
            {u"dcfFolderNumber"_s, 1000},
            {u"dcfDateString"_s, date},
            {u"pictures"_s, QJsonArray()},
        };
        QCOMPARE(first, expected);

        const QJsonObject second = recordings[1].toObject();
        QCOMPARE(second[u"eventName"], QJsonValue(u"EVENTNAME_EVENT"_s));
        QCOMPARE(second[u"isEventDCF"], QJsonValue(true));
        QCOMPARE(second[u"isProtected"], QJsonValue(true));
        QCOMPARE(second[u"secondaryFilePath"], QJsonValue(u""_s));
        QCOMPARE(second[u"fileDate"], QJsonValue(u"2020-01-01T12:02:00.345Z"_s));
        QCOMPARE(second[u"pictures"], QJsonValue(QJsonArray{u"PICTURE/200101120130.JPG"_s}));
        QVERIFY(!second[u"dcfName"].toString().section(u'\n', 1).isEmpty());
    }

    void listsPictures()
    {
        CardBuilder card;
        const Instant noon = utc(2020, 1, 1, 12, 0);
        card.file(u"NORMAL/200101120000.MP4"_s, "12345", noon + 60s);
        setModified(card.pictureAt(u"PICTURE/200101120030.JPG"_s, 35.5, "N", 139.75, "W"), noon + 30s);
        card.picture(u"REAR/PICTURE/200101120030.JPG"_s);
        card.picture(u"PICTURE/200101120200.JPG"_s, noon + 120s);
        const QJsonArray pictures = run(card, {u"list"_s, u"."_s, u"--json"_s}).json()[u"pictures"].toArray();
        QCOMPARE(pictures.size(), 2);
        const QJsonObject expected = {
            {u"deltaPath"_s, u"PICTURE/200101120030.JPG"_s},
            {u"filePath"_s, card.path(u"PICTURE/200101120030.JPG"_s)},
            {u"secondaryFilePath"_s, card.path(u"REAR/PICTURE/200101120030.JPG"_s)},
            {u"picFileNumber"_s, Q_INT64_C(200101120030)},
            {u"fileDate"_s, u"2020-01-01T12:00:30.000Z"_s},
            {u"fileSize"_s, QFile(card.path(u"PICTURE/200101120030.JPG"_s)).size()},
            {u"pictureName"_s, recordingDateText(u"200101120030"_s)},
            {u"isProtected"_s, false},
            {u"latitude"_s, 35.5},
            {u"longitude"_s, -139.75},
            {u"parent"_s, u"NORMAL/200101120000.MP4"_s},
        };
        QCOMPARE(pictures[0].toObject(), expected);
        QCOMPARE(pictures[1][u"latitude"].toDouble(), -999.0);
        QVERIFY(pictures[1][u"parent"].isNull());
    }

    void writesTables()
    {
        CardBuilder card;
        card.file(u"NORMAL/200101120000.MP4"_s);
        card.file(u"EVENT/200101120100.MP4"_s);
        card.picture(u"PICTURE/200101120200.JPG"_s);
        const QList<QByteArray> lines = run(card, {u"list"_s, u"."_s}).out.trimmed().split('\n');
        QCOMPARE(lines.size(), 4); // with a sum
        QVERIFY(lines[0].contains("NORMAL/200101120000.MP4") && lines[1].contains("EVENT/200101120100.MP4"));
        QVERIFY(lines[0].contains(recordingDateText(u"200101120000"_s).toUtf8()));
        QVERIFY(lines[2].contains("PICTURE/200101120200.JPG"));
        QVERIFY(lines[3].contains('2') && lines[3].contains('1'));

        card.file(u"side.NMEA"_s, sideFile(utc(2020, 1, 1, 12, 0), 3));
        const QByteArray summary = run(card, {u"telemetry"_s, u"side.NMEA"_s}).out;
        QVERIFY(summary.contains("TRIP0001"));
        const QByteArray all = run(card, {u"telemetry"_s, u"side.NMEA"_s, u"--all"_s}).out;
        QVERIFY(all.startsWith(summary));
        QCOMPARE(all.sliced(summary.size()).count("2020-01-01T12:00:0"), 3);
        QVERIFY(all.contains("35.000000") && all.contains("139.000000"));
    }

    void listsAFolderThatIsNoCard()
    {
        CardBuilder card;
        card.file(u"DCIM/100ABCDE/ABCD0001.MP4"_s);
        const QJsonObject json = run(card, {u"list"_s, u"--json"_s, u"DCIM/.."_s}).json();
        QCOMPARE(json[u"available"], QJsonValue(false));
        QCOMPARE(json[u"rootPath"], QJsonValue(card.root()));
        QCOMPARE(json[u"recordings"], QJsonValue(QJsonArray()));
        QCOMPARE(json[u"pictures"], QJsonValue(QJsonArray()));
        card.folder(u"REAR"_s);
        QCOMPARE(run(card, {u"list"_s, u"--json"_s, u"."_s}).json()[u"available"], QJsonValue(true));
    }

    void pathsNeedNotBeUtf8()
    {
        CardBuilder card(u"caf"_s + files::fromNativePath("\xE9"));
        card.file(u"NORMAL/200101120000.MP4"_s, "12345");
        card.file(u"NORMAL/200101120000.NMEA"_s, sideFile(utc(2020, 1, 1, 12, 0), 3));
        // QProcess can't pass such an argument, the shell can.
        const auto runAbove = [&](const QString& command) {
            return runIn(files::folderOf(card.root()), u"/bin/sh"_s,
                         {u"-c"_s, command, qEnvironmentVariable("CARDREEL_PROGRAM")});
        };
        const Result list = runAbove(uR"sh("$0" list "$(printf 'caf\351')" --json)sh"_s);
        QCOMPARE(list.status, 0);
        QVERIFY(list.json()[u"recordings"][0][u"fileSize"].toInt() > 5);
        const Result telemetry =
            runAbove(uR"sh("$0" telemetry "$(printf 'caf\351')/NORMAL/200101120000.NMEA" --json)sh"_s);
        QCOMPARE(telemetry.json()[u"totalLocations"].toInt(), 3);
        const Result missing = runAbove(uR"sh("$0" list "$(printf 'th\351')")sh"_s);
        QCOMPARE(missing.status, 1);
        QVERIFY(missing.err.contains("th\xE9"));
    }

    void takesOptionsInAnyOrder()
    {
        CardBuilder card;
        card.file(u"NORMAL/200101120000.MP4"_s);
        card.file(u"--json"_s, sideFile(utc(2020, 1, 1, 12, 0), 3));
        const QByteArray list = run(card, {u"list"_s, u"."_s, u"--json"_s}).out;
        QVERIFY(list.contains("200101120000.MP4"));
        QCOMPARE(run(card, {u"list"_s, u"--json"_s, u"."_s}).out, list);
        const QByteArray telemetry = run(card, {u"telemetry"_s, u"./--json"_s, u"--json"_s, u"--all"_s}).out;
        QVERIFY(telemetry.contains("locations"));
        QCOMPARE(run(card, {u"telemetry"_s, u"--all"_s, u"./--json"_s, u"--json"_s}).out, telemetry);
        // What follows two hyphens is a path.
        QCOMPARE(run(card, {u"telemetry"_s, u"--json"_s, u"--all"_s, u"--"_s, u"--json"_s}).out, telemetry);
        QVERIFY(QJsonDocument::fromJson(run(card, {u"telemetry"_s, u"--"_s, u"--json"_s}).out).isNull());
    }

    void countsTelemetry()
    {
        CardBuilder card;
        card.file(u"side.NMEA"_s, "$GTRIP,7,1.04\r\n$GSENS,0.1,-2.5,1\r\n" +
                                      fixSentence({.time = utc(2020, 1, 1, 12, 0)}) + "$GSENS,0,0,1\r\n" +
                                      fixSentence({.time = utc(2020, 1, 1, 12, 0), .status = 'V'}));
        const QJsonObject expected = {
            {u"tripID"_s, u"7"_s},    {u"version"_s, u"1.04"_s}, {u"GOPs"_s, 3},
            {u"varidLocations"_s, 1}, {u"totalLocations"_s, 2},  {u"motions"_s, 2},
            {u"driveSupports"_s, 0},  {u"maxSpeed"_s, 5.144},    {u"maxMotionABS"_s, 2.5},
        };
        QCOMPARE(run(card, {u"telemetry"_s, u"--json"_s, u"side.NMEA"_s}).json(), expected);
    }

    void printsAllTelemetry()
    {
        CardBuilder card;
        QByteArray text = "$GTRIP,7,1.04\r\n";
        for (int i = 0; i < 50; ++i) {
            text += fixSentence({.time = utc(2020, 1, 1, 12, 0) + i * 1100ms,
                                 .latitude = QByteArray::number(3500 + i * 1.0 / 7, 'f', 7),
                                 .speed = i % 5 == 0 ? QByteArray() : QByteArray::number(i / 3.0, 'g', 17),
                                 .course = i % 7 == 0 ? QByteArray() : QByteArray::number(i * 7.1, 'g', 17),
                                 .status = i % 11 == 0 ? 'V' : 'A'});
            text += "$GSENS," + QByteArray::number(i / 9.0, 'g', 17) + ",-1e-7,1e300\r\n";
        }
        text += "$QVDSA,12.5,1,,,,,,,,,,,,,,\r\n$QVDSA,,,,,,,,,,,,,,,,,,,,,,,,,,,\r\n";
        const QString path = card.file(u"side.NMEA"_s, text);
        NMEAData nmea(path);
        nmea.setup();
        const auto telemetry = nmea.snapshot();
        const QJsonObject json = run(card, {u"telemetry"_s, path, u"--all"_s, u"--json"_s}).json();
        QVERIFY(json[u"maxMotionABS"].toDouble() == telemetry->maxMotionABS());

        const QJsonArray locations = json[u"locations"].toArray();
        QCOMPARE(static_cast<size_t>(locations.size()), telemetry->totalLocations().size());
        for (int i = 0; i < locations.size(); ++i) {
            const CustomLocation& fix = telemetry->totalLocations()[static_cast<size_t>(i)];
            const QJsonObject expected = {{u"valid"_s, i % 11 != 0},
                                          {u"latitude"_s, fix.latitude},
                                          {u"longitude"_s, fix.longitude},
                                          {u"speed"_s, fix.speed},
                                          {u"course"_s, fix.course},
                                          {u"correctedSpeed"_s, fix.correctedSpeed},
                                          {u"correctedDirection"_s, fix.correctedDirection},
                                          {u"timestamp"_s, isoDate(fix.timestamp)}};
            QCOMPARE(locations[i].toObject(), expected);
        }
        const QJsonArray samples = json[u"samples"].toArray();
        QCOMPARE(static_cast<size_t>(samples.size()), telemetry->motions().size());
        for (int i = 0; i < samples.size(); ++i) {
            const MotionData printed(samples[i][0].toDouble(), samples[i][1].toDouble(), samples[i][2].toDouble());
            QVERIFY(printed == telemetry->motions()[static_cast<size_t>(i)]);
        }
        const QJsonArray supports = json[u"supports"].toArray();
        QCOMPARE(supports.size(), 2);
        QCOMPARE(supports[0][u"type"], QJsonValue(ConstClass::QVDSA_TYPE_QVCAM));
        QCOMPARE(supports[0][u"image"], QJsonValue(u"adas_start_delay"_s));
        const auto lines = telemetry->driveSupports()[0].appearanceLineInfos();
        QVERIFY(!lines.empty());
        QCOMPARE(static_cast<size_t>(supports[0][u"lines"].toArray().size()), lines.size());
        QCOMPARE(supports[0][u"lines"][0], QJsonValue(QJsonArray{lines[0].position, lines[0].color.name()}));
        QCOMPARE(supports[1][u"type"], QJsonValue(ConstClass::QVDSA_TYPE_UNKNOWN));

        const QJsonArray groups = json[u"gops"].toArray();
        QCOMPARE(groups.size(), 51);
        const QJsonObject none = {
            {u"latitude"_s, -999}, {u"longitude"_s, -999}, {u"motions"_s, 0}, {u"driveSupportInfos"_s, 0}};
        QCOMPARE(groups[0].toObject(), none);
        QVERIFY(groups[2][u"latitude"].toDouble() == telemetry->totalLocations()[1].latitude);
        QCOMPARE(groups[2][u"motions"].toInt(), 1);
        QCOMPARE(groups[50][u"driveSupportInfos"].toInt(), 2);
    }

    void marksValidFixes()
    {
        CardBuilder card;
        // Without a readable position a valid fix holds the same as a void one.
        const Instant noon = utc(2020, 1, 1, 12, 0);
        QByteArray text;
        for (const char status : {'V', 'A', 'V', 'V', 'A'})
            text += fixSentence({.time = noon, .latitude = "", .speed = "", .course = "", .status = status})
                        .replace(",N,13900.0000,E,", ",,,,");
        card.file(u"side.NMEA"_s, text);
        const QJsonObject json = run(card, {u"telemetry"_s, u"--all"_s, u"--json"_s, u"side.NMEA"_s}).json();
        QList<bool> valid;
        for (const auto& location : json[u"locations"].toArray())
            valid.push_back(location[u"valid"].toBool());
        QCOMPARE(valid, (QList<bool>{false, true, false, false, true}));
    }

private:
    TestHome m_home;
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
