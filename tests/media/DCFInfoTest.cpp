#include "media/DCFInfo.h"

#include "media/CardLayout.h"
#include "media/PictureInfo.h"
#include "names/ConstClass.h"
#include "support/CardBuilder.h"
#include "telemetry/NMEAData.h"

#include <QDir>
#include <QTest>

#include <sys/stat.h>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class DCFInfoTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingFilesAreNoError();
    void describesARecording();
    void labelsRecords_data();
    void labelsRecords();
    void takesNumbersFromNames_data();
    void takesNumbersFromNames();
    void findsTheSideFile_data();
    void findsTheSideFile();
    void findsTheRearTwin_data();
    void findsTheRearTwin();
    void looksBesideAPathWithoutAKnownFolder();
    void onlyTheFrontVideoIsProtected();
    void followsTheCardToAnotherRoot();
};

void DCFInfoTest::missingFilesAreNoError()
{
    CardBuilder card;
    const Instant before = now();
    const DCFInfo dcf(card.root(), u"NORMAL/200101123456.MP4"_s);
    QVERIFY(dcf.fileDate >= before && dcf.fileDate <= now());
    QCOMPARE(dcf.fileSize, 0U);
    QCOMPARE(dcf.secondaryFilePath, QString());
    QCOMPARE(dcf.infoFilePath, card.path(u"NORMAL/200101123456.NMEA"_s));
    QVERIFY(!dcf.isProtected());
}

void DCFInfoTest::describesARecording()
{
    CardBuilder card;
    const Instant modified = utc(2020, 1, 1, 12, 35, 56, 789);
    const QString video = card.file(u"EVENT/200101123456.MP4"_s, "12345", modified);
    const QString rear = card.file(u"REAR/EVENT/200101123456.MP4"_s, "1234567890");
    const QString side = card.file(u"SYSTEM/NMEA/EVENT/200101123456.NMEA"_s, sideFile(utc(2020, 1, 1, 12, 34), 2));
    const DCFInfo dcf(card.root(), u"EVENT/200101123456.MP4"_s);
    QCOMPARE(dcf.rootPath, card.root());
    QCOMPARE(dcf.deltaPath, u"EVENT/200101123456.MP4"_s);
    QCOMPARE(dcf.filePath, video);
    QCOMPARE(dcf.secondaryFilePath, rear);
    QCOMPARE(dcf.infoFilePath, side);
    QCOMPARE(dcf.folderName, u"EVENT"_s);
    QVERIFY(dcf.fileDate == modified);
    QVERIFY(!dcf.startDate);
    QCOMPARE(dcf.fileSize, 15U + quint64(QFile(side).size()));
    QCOMPARE(dcf.dcfDateString, recordingDateText(u"200101123456"_s));
    QCOMPARE(dcf.duration, 0.0);
    QVERIFY(dcf.tripID.isEmpty() && dcf.thumbnailPath.isEmpty());
    QVERIFY(dcf.routeLine.empty() && dcf.annotation.empty() && dcf.pictures.empty());
    QCOMPARE(dcf.nmea->filePath(), side);
    QVERIFY(!dcf.nmea->wasParsed());
}

void DCFInfoTest::labelsRecords_data()
{
    QTest::addColumn<bool>("isEvent");
    QTest::addColumn<QString>("label");
    QTest::newRow("NORMAL") << false << u""_s;
    QTest::newRow("100_NORM") << false << u""_s;
    QTest::newRow("EVENT") << true << u"EVENT RECORD"_s;
    QTest::newRow("200_SHOC") << true << u"EVENT RECORD"_s;
    QTest::newRow("MANUAL") << true << u"MANUAL RECORD"_s;
    QTest::newRow("400_PARK") << true << u"PARKING RECORD"_s;
}

void DCFInfoTest::labelsRecords()
{
    QFETCH(QString, label);
    const DCFInfo dcf(u"/no/card"_s, QString::fromLatin1(QTest::currentDataTag()) + u"/200101123456.MP4"_s);
    QTEST(dcf.isEventDCF(), "isEvent");
    QCOMPARE(dcf.dcfName, dcf.dcfDateString + u'\n' + label);
}

void DCFInfoTest::takesNumbersFromNames_data()
{
    QTest::addColumn<qint64>("file");
    QTest::addColumn<qint64>("folder");
    QTest::newRow("NORMAL/ABCD.MP4") << qint64(10000) << qint64(1000);
    QTest::newRow("NORMAL/.MP4") << qint64(10000) << qint64(1000);
    QTest::newRow("NORMAL/200101123456.MP4") << Q_INT64_C(200101123456) << qint64(1000);
    QTest::newRow("NORMAL/000101000000.MP4") << qint64(101000000) << qint64(1000);
    QTest::newRow("100/0042.MP4") << qint64(42) << qint64(100);
}

void DCFInfoTest::takesNumbersFromNames()
{
    const DCFInfo dcf(u"/no/card"_s, QString::fromLatin1(QTest::currentDataTag()));
    QTEST(dcf.dcfFileNumber, "file");
    QTEST(dcf.dcfFolderNumber, "folder");
}

void DCFInfoTest::findsTheSideFile_data()
{
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QString>("found");
    const QString nmea = u"NORMAL/200101123456.NMEA"_s;
    const QString ced = u"NORMAL/200101123456.CED"_s;
    const QString system = u"SYSTEM/NMEA/NORMAL/200101123456.NMEA"_s;
    const QString clip = u"../PRIVATE/MORVEX/CLPEXT/200101123456.CED"_s;
    QTest::newRow("none") << QStringList() << nmea;
    QTest::newRow("another folder's") << QStringList{u"SYSTEM/NMEA/EVENT/200101123456.NMEA"_s} << nmea;
    QTest::newRow("all") << QStringList{nmea, ced, system, clip} << nmea;
    QTest::newRow("beside it before the system's") << QStringList{ced, system, clip} << ced;
    QTest::newRow("the system's before the clips'") << QStringList{system, clip} << system;
    QTest::newRow("the clips'") << QStringList{clip} << clip;
}

void DCFInfoTest::findsTheSideFile()
{
    QFETCH(QStringList, present);
    QFETCH(QString, found);
    CardBuilder card;
    for (const QString& delta : present)
        card.file(delta);
    const QString expected = QDir::cleanPath(card.path(found));
    const DCFInfo dcf(card.root(), u"NORMAL/200101123456.MP4"_s);
    QCOMPARE(dcf.infoFilePath, expected);

    const DCFInfo elsewhere(u"/no/card"_s, u"NORMAL/200101123456.MP4"_s);
    QCOMPARE(elsewhere.infoFilePathWithRootPath(card.root()), expected);
    QCOMPARE(elsewhere.infoFilePath, u"/no/card/NORMAL/200101123456.NMEA"_s);
}

void DCFInfoTest::findsTheRearTwin_data()
{
    QTest::addColumn<QString>("front"); // below a folder that is no card
    QTest::addColumn<QString>("twin");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("of another kind") << u"card/NORMAL/1.MP4"_s << u"card/REAR/EVENT/1.MP4"_s << false;
    QTest::newRow("normal") << u"card/NORMAL/1.MP4"_s << u"card/REAR/NORMAL/1.MP4"_s << true;
    QTest::newRow("parking") << u"card/PARKING/1.MP4"_s << u"card/REAR/PARKING/1.MP4"_s << true;
    QTest::newRow("a folder") << u"card/MANUAL/1.MP4"_s << u"card/REAR/MANUAL/1.MP4/"_s << true;
    QTest::newRow("the card lies in a folder of such a name")
        << u"EVENT/card/NORMAL/1.MP4"_s << u"REAR/EVENT/card/NORMAL/1.MP4"_s << true;
    QTest::newRow("the kinds are sought in turn")
        << u"NORMAL/card/MANUAL/1.MP4"_s << u"NORMAL/card/REAR/MANUAL/1.MP4"_s << true;
    QTest::newRow("within a longer name") << u"my EVENTS/NORMAL/1.MP4"_s << u"my REAR/EVENTS/NORMAL/1.MP4"_s << true;
}

void DCFInfoTest::findsTheRearTwin()
{
    QFETCH(QString, front);
    QFETCH(QString, twin);
    QFETCH(bool, isFound);
    CardBuilder folder;
    folder.file(front);
    const DCFInfo alone(folder.root(), front);
    QCOMPARE(alone.secondaryFilePath, QString());
    if (twin.endsWith(u'/'))
        folder.folder(twin);
    else
        folder.file(twin);
    const DCFInfo paired(folder.root(), front);
    QCOMPARE(paired.secondaryFilePath, isFound ? QDir::cleanPath(folder.path(twin)) : QString());
}

void DCFInfoTest::looksBesideAPathWithoutAKnownFolder()
{
    CardBuilder folder;
    folder.file(u"REAR/clips/1.MP4"_s);
    const QString former = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.root()));
    const QString twin = DCFInfo(u"clips"_s, u"1.MP4"_s).secondaryFilePath;
    QVERIFY(QDir::setCurrent(former));
    QCOMPARE(twin, u"REAR/clips/1.MP4"_s);
}

void DCFInfoTest::onlyTheFrontVideoIsProtected()
{
    CardBuilder card;
    const QString video = card.file(u"NORMAL/200101123456.MP4"_s);
    const QString rear = card.file(u"REAR/NORMAL/200101123456.MP4"_s);
    const DCFInfo dcf(card.root(), u"NORMAL/200101123456.MP4"_s);
    QCOMPARE(chmod(rear.toUtf8(), 0444), 0);
    QVERIFY(!dcf.isProtected());
    QCOMPARE(chmod(rear.toUtf8(), 0644), 0);
    QCOMPARE(chmod(video.toUtf8(), 0444), 0);
    QVERIFY(dcf.isProtected());
}

void DCFInfoTest::followsTheCardToAnotherRoot()
{
    CardBuilder card;
    card.file(u"NORMAL/200101123456.MP4"_s, "x", utc(2020, 1, 1, 12, 35));
    card.file(u"REAR/NORMAL/200101123456.MP4"_s);
    card.file(u"SYSTEM/NMEA/NORMAL/200101123456.NMEA"_s);
    card.picture(u"PICTURE/200101123500.JPG"_s);
    DCFInfo dcf(card.root(), u"NORMAL/200101123456.MP4"_s);
    dcf.pictures.push_back(std::make_shared<PictureInfo>(card.root(), u"PICTURE/200101123500.JPG"_s));
    const DCFInfo before = dcf;

    card.mountAgainAs(u"renamed"_s);
    dcf.changeWithRootPath(card.root());
    QCOMPARE(dcf.rootPath, card.root());
    QCOMPARE(dcf.filePath, card.path(u"NORMAL/200101123456.MP4"_s));
    QCOMPARE(dcf.secondaryFilePath, card.path(u"REAR/NORMAL/200101123456.MP4"_s));
    QCOMPARE(dcf.infoFilePath, card.path(u"SYSTEM/NMEA/NORMAL/200101123456.NMEA"_s));
    QCOMPARE(dcf.nmea, before.nmea);
    QCOMPARE(dcf.nmea->filePath(), dcf.infoFilePath);
    QCOMPARE(dcf.pictures.front()->filePath, card.path(u"PICTURE/200101123500.JPG"_s));
    QVERIFY(dcf.fileDate == before.fileDate);
    QCOMPARE(dcf.fileSize, before.fileSize);
    QCOMPARE(dcf.dcfName, before.dcfName);
    QCOMPARE(dcf.dcfFileNumber, before.dcfFileNumber);
}

QTEST_GUILESS_MAIN(DCFInfoTest)
#include "DCFInfoTest.moc"
