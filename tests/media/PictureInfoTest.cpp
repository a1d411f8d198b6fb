#include "media/PictureInfo.h"

#include "media/CardLayout.h"
#include "support/CardBuilder.h"

#include <QTest>

#include <sys/wait.h>

#include <csignal>
#include <unistd.h>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class PictureInfoTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileThatCantBeOpenedEndsTheProgram();
    void aFileWithoutPictureHasNoProperties();
    void describesAPicture();
    void readsThePosition_data();
    void readsThePosition();
    void findsTheRearTwin();
    void followsTheCardToAnotherRoot();
};

void PictureInfoTest::aFileThatCantBeOpenedEndsTheProgram()
{
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        // Without the test library's report of a crash.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        signal(SIGABRT, SIG_DFL);
        const PictureInfo picture(u"/no/card"_s, u"PICTURE/200101123456.JPG"_s);
        _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
}

void PictureInfoTest::aFileWithoutPictureHasNoProperties()
{
    CardBuilder card;
    card.file(u"PICTURE/200101123456.JPG"_s, "no picture");
    const PictureInfo picture(card.root(), u"PICTURE/200101123456.JPG"_s);
    QVERIFY(picture.exifDict.isEmpty());
    QVERIFY(picture.location == CustomLocation::placeholder());
    QCOMPARE(picture.fileSize, 10U);
}

void PictureInfoTest::describesAPicture()
{
    CardBuilder card;
    const Instant modified = utc(2020, 1, 1, 12, 34, 56, 789);
    const QString path = card.picture(u"PICTURE/200101123456.JPG"_s, modified);
    const PictureInfo picture(card.root(), u"PICTURE/200101123456.JPG"_s);
    QCOMPARE(picture.filePath, path);
    QCOMPARE(picture.secondaryFilePath, QString());
    QCOMPARE(picture.picFileNumber, Q_INT64_C(200101123456));
    QVERIFY(picture.fileDate == modified);
    QCOMPARE(picture.fileSize, quint64(QFile(path).size()));
    QCOMPARE(picture.pictureDateString, recordingDateText(u"200101123456"_s));
    QCOMPARE(picture.pictureName, picture.pictureDateString);
    QCOMPARE(picture.pictureThumbnailPath, QString());
    QCOMPARE(picture.exifDict.value(u"PixelWidth"_s).toInt(), 32);
    QVERIFY(picture.parentDCFInfo.expired());
    card.picture(u"PICTURE/cover.JPG"_s);
    QCOMPARE(PictureInfo(card.root(), u"PICTURE/cover.JPG"_s).picFileNumber, qint64(10000));
}

void PictureInfoTest::readsThePosition_data()
{
    QTest::addColumn<QByteArray>("latitudeRef");
    QTest::addColumn<QByteArray>("longitudeRef");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::newRow("no position") << QByteArray() << QByteArray() << -999.0 << -999.0;
    QTest::newRow("no latitude") << QByteArray() << QByteArray("E") << -999.0 << -999.0;
    QTest::newRow("north east") << QByteArray("N") << QByteArray("E") << 35.5 << 139.75;
    QTest::newRow("north west") << QByteArray("N") << QByteArray("W") << 35.5 << -139.75;
    QTest::newRow("south east") << QByteArray("S") << QByteArray("E") << -35.5 << 139.75;
    QTest::newRow("no hemispheres") << QByteArray("-") << QByteArray("-") << 35.5 << 139.75;
}

void PictureInfoTest::readsThePosition()
{
    QFETCH(QByteArray, latitudeRef);
    QFETCH(QByteArray, longitudeRef);
    CardBuilder card;
    const QString delta = u"PICTURE/200101123456.JPG"_s;
    const auto letter = [](const QByteArray& ref) { return ref == "-" ? nullptr : ref.constData(); };
    if (longitudeRef.isEmpty())
        card.picture(delta);
    else if (latitudeRef.isEmpty())
        card.pictureAt(delta, std::nullopt, nullptr, 139.75, longitudeRef.constData());
    else
        card.pictureAt(delta, 35.5, letter(latitudeRef), 139.75, letter(longitudeRef));
    const PictureInfo picture(card.root(), delta);
    QTEST(picture.location.latitude, "latitude");
    QTEST(picture.location.longitude, "longitude");
    QCOMPARE(picture.location.speed, -1.0);
    QCOMPARE(picture.location.course, -1.0);
    QCOMPARE(picture.location.horizontalAccuracy, 10.0);
}

void PictureInfoTest::findsTheRearTwin()
{
    CardBuilder card;
    card.picture(u"PICTURE/200101123456.JPG"_s);
    const QString rear = card.picture(u"REAR/PICTURE/200101123456.JPG"_s);
    QCOMPARE(PictureInfo(card.root(), u"PICTURE/200101123456.JPG"_s).secondaryFilePath, rear);
}

void PictureInfoTest::followsTheCardToAnotherRoot()
{
    CardBuilder card;
    card.picture(u"PICTURE/200101123456.JPG"_s, utc(2020, 1, 1, 12, 34));
    card.picture(u"REAR/PICTURE/200101123456.JPG"_s);
    PictureInfo picture(card.root(), u"PICTURE/200101123456.JPG"_s);
    picture.pictureThumbnailPath = picture.filePath;
    card.mountAgainAs(u"renamed"_s);
    picture.changeWithRootPath(card.root());
    QCOMPARE(picture.rootPath, card.root());
    QCOMPARE(picture.filePath, card.path(u"PICTURE/200101123456.JPG"_s));
    QCOMPARE(picture.pictureThumbnailPath, picture.filePath);
    QCOMPARE(picture.secondaryFilePath, card.path(u"REAR/PICTURE/200101123456.JPG"_s));
    QVERIFY(picture.fileDate == utc(2020, 1, 1, 12, 34));
}

QTEST_GUILESS_MAIN(PictureInfoTest)
#include "PictureInfoTest.moc"
