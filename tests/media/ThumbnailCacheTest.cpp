#include "media/ThumbnailCache.h"

#include "names/ConstClass.h"
#include "platform/files/Files.h"
#include "platform/image/ApplicationImage.h"
#include "sample-card/FrameNumber.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <algorithm>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class ThumbnailCacheTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void isTheUsersOwn();
    void namesTellVideosApart();
    void nothingForAMissingVideo();
    void nothingWithoutACacheFolder();
    void nothingWhenCancelled();
    void brokenVideosGetTheBrokenPicture();
    void isMadeOnce();
    void isMadeAgainWhenItIsCut();
    void fitsTheScreen();
    void showsTheFrameAtOneSecond();
    void listsOnlyThumbnails();
    void removesExportsLeftBehind();
    void removesTheOldest();

private:
    static QString inCache(const QString& name, const QByteArray& bytes = "x");

    TestHome m_home;
    std::atomic<bool> m_cancelFlag = false;
};

void ThumbnailCacheTest::init()
{
    QVERIFY(QDir(ThumbnailCache::cachesDirectoryPath()).removeRecursively());
}

QString ThumbnailCacheTest::inCache(const QString& name, const QByteArray& bytes)
{
    QFile file(files::join(ThumbnailCache::cachesDirectoryPath(), name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("can't write to the cache");
    return file.fileName();
}

void ThumbnailCacheTest::isTheUsersOwn()
{
    const QString folder = ThumbnailCache::cachesDirectoryPath();
    QVERIFY(folder.startsWith(qEnvironmentVariable("XDG_CACHE_HOME") + u'/'));
    QVERIFY(files::isFolder(folder));
}

void ThumbnailCacheTest::namesTellVideosApart()
{
    CardBuilder card;
    const QString path = card.file(u"EVENT/200101123456.x.MP4"_s, "12345");
    const files::Status found = files::status(path);
    const QDateTime created =
        QDateTime::fromMSecsSinceEpoch(found.created.value_or(found.modified).time_since_epoch().count());
    const int hour = created.time().hour() % 12;
    const QString date = created.toString(u"yyyyMMdd"_s) + u"%1"_s.arg(hour == 0 ? 12 : hour, 2, 10, QLatin1Char('0')) +
                         created.toString(u"mmss"_s);
    QCOMPARE(ThumbnailMaker::cacheFileNameWithSourceFilePath(path),
             u"EVENT200101123456.x0000000005"_s + date + u".jpg"_s);
    QCOMPARE(ThumbnailMaker::fileCreationDateString(path), date);
    card.file(u"EVENT/200101123456.x.MP4"_s, QByteArray(12'345, 'x'));
    QCOMPARE(ThumbnailMaker::fileSizeString(path), u"0000012345"_s);
    QFile big(path);
    QVERIFY(big.resize(Q_INT64_C(12'345'678'901)));
    QCOMPARE(ThumbnailMaker::fileSizeString(path), u"12345678901"_s);
}

void ThumbnailCacheTest::nothingForAMissingVideo()
{
    CardBuilder card;
    const ThumbnailMaker maker(1.0, m_cancelFlag);
    QVERIFY(!maker.getThumbnailPathWithSourceFilePath(card.path(u"NORMAL/200101123456.MP4"_s)));
    QVERIFY(ThumbnailCache::cacheFiles().empty());
}

void ThumbnailCacheTest::nothingWithoutACacheFolder()
{
    CardBuilder card;
    const QString video = card.file(u"NORMAL/200101123456.MP4"_s);
    const QByteArray home = qgetenv("XDG_CACHE_HOME");
    qputenv("XDG_CACHE_HOME", card.file(u"a file"_s).toUtf8());
    const QString folder = ThumbnailCache::cachesDirectoryPath();
    const std::optional<QString> thumbnail =
        ThumbnailMaker(1.0, m_cancelFlag).getThumbnailPathWithSourceFilePath(video);
    const bool isEmpty = ThumbnailCache::cacheFiles().empty();
    ThumbnailCache::cacheCleaning();
    qputenv("XDG_CACHE_HOME", home);
    QCOMPARE(folder, QString());
    QVERIFY(!thumbnail);
    QVERIFY(isEmpty);
}

void ThumbnailCacheTest::nothingWhenCancelled()
{
    CardBuilder card;
    const std::atomic<bool> cancelled = true;
    QVERIFY(
        !ThumbnailMaker(1.0, cancelled).getThumbnailPathWithSourceFilePath(card.file(u"NORMAL/200101123456.MP4"_s)));
    QVERIFY(ThumbnailCache::cacheFiles().empty());
}

void ThumbnailCacheTest::brokenVideosGetTheBrokenPicture()
{
    CardBuilder card;
    const QString video = card.file(u"NORMAL/200101123456.MP4"_s, "no video");
    const ThumbnailMaker maker(1.0, m_cancelFlag);
    const QImage broken = applicationImage(u"broken_mov"_s, {240, 135});
    QVERIFY(!broken.isNull());
    QCOMPARE(maker.thumbnailWithContentAtPath(video, {240, 135}), broken);
    const QString path = maker.getThumbnailPathWithSourceFilePath(video).value_or(QString());
    QCOMPARE(files::nameOf(path), ThumbnailMaker::cacheFileNameWithSourceFilePath(video));
    QCOMPARE(QImage(path, "JPG").size(), broken.size());
}

void ThumbnailCacheTest::isMadeOnce()
{
    CardBuilder card;
    const QString video = card.file(u"NORMAL/200101123456.MP4"_s);
    const QString path = inCache(ThumbnailMaker::cacheFileNameWithSourceFilePath(video), "\xFF\xD8kept\xFF\xD9");
    QCOMPARE(ThumbnailMaker(1.0, m_cancelFlag).getThumbnailPathWithSourceFilePath(video), path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\xFF\xD8kept\xFF\xD9"));
    QCOMPARE(ThumbnailCache::cacheFiles(), std::vector<QString>{path});
}

void ThumbnailCacheTest::isMadeAgainWhenItIsCut()
{
    CardBuilder card;
    const QString video = card.file(u"NORMAL/200101123456.MP4"_s);
    const QString path = inCache(ThumbnailMaker::cacheFileNameWithSourceFilePath(video), "\xFF\xD8 cut");
    QCOMPARE(ThumbnailMaker(1.0, m_cancelFlag).getThumbnailPathWithSourceFilePath(video), path);
    QVERIFY(!QImage(path).isNull());
}

void ThumbnailCacheTest::fitsTheScreen()
{
    CardBuilder card;
    for (const auto& [scale, box] : {std::pair(1.0, QSize(240, 135)), std::pair(2.0, QSize(480, 270))}) {
        const QString video = card.file(u"NORMAL/20010112345%1.MP4"_s.arg(scale), "no video");
        const auto path = ThumbnailMaker(scale, m_cancelFlag).getThumbnailPathWithSourceFilePath(video);
        const QSize size = QImage(path.value_or(QString())).size();
        QVERIFY(size.width() == box.width() || size.height() == box.height());
        QVERIFY(size.width() <= box.width() && size.height() <= box.height());
    }
}

void ThumbnailCacheTest::showsTheFrameAtOneSecond()
{
    CardBuilder card;
    const QString sample = card.path(u"sample"_s);
    QCOMPARE(QProcess::execute(qEnvironmentVariable("CARDREEL_SAMPLE_CARD_TOOL"),
                               {u"--recordings"_s, u"1"_s, u"--seconds"_s, u"2"_s, u"--size"_s, u"320x180"_s,
                                u"--fps"_s, u"10"_s, u"--no-rear"_s, u"--pictures"_s, u"0"_s, sample}),
             0);
    const QStringList videos = QDir(sample + u"/NORMAL"_s).entryList({u"*.MP4"_s});
    QCOMPARE(videos.size(), 1);
    const ThumbnailMaker maker(1.0, m_cancelFlag);
    const auto path = maker.getThumbnailPathWithSourceFilePath(sample + u"/NORMAL/"_s + videos.front());
    const QImage thumbnail(path.value_or(QString()), "JPG");
    QCOMPARE(thumbnail.size(), QSize(240, 135));
    QCOMPARE(readFrameNumber(thumbnail).value_or(-1), 10);
}

void ThumbnailCacheTest::listsOnlyThumbnails()
{
    const QString thumbnail = inCache(u"a.jpg"_s);
    for (const QString& name : {u"b.JPG"_s, u"c.jpeg"_s, u"jpg"_s, u"d.jpg.part"_s})
        inCache(name);
    QVERIFY(QDir(ThumbnailCache::cachesDirectoryPath()).mkpath(u"folder/x"_s));
    inCache(u"folder/e.jpg"_s);
    QCOMPARE(ThumbnailCache::cacheFiles(), std::vector<QString>{thumbnail});
}

void ThumbnailCacheTest::removesExportsLeftBehind()
{
    const QStringList exports = {u"a.kml"_s, u"b.KML"_s, u"c.kmz"_s, u"d.KMZ"_s};
    const QStringList others = {u"a.jpg"_s, u"b.Kml"_s, u"c.kml.txt"_s, u"kmz"_s, u"settings"_s};
    for (const QString& name : exports + others)
        inCache(name);
    const QDir folder(ThumbnailCache::cachesDirectoryPath());
    QVERIFY(folder.mkpath(u"tiles.kml"_s));
    inCache(u"tiles.kml/e.kml"_s);
    ThumbnailCache::cacheCleaning();
    QStringList left = folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    left.sort();
    QStringList expected = others + QStringList{u"tiles.kml"_s};
    expected.sort();
    QCOMPARE(left, expected);
    QVERIFY(folder.exists(u"tiles.kml/e.kml"_s));
}

void ThumbnailCacheTest::removesTheOldest()
{
    // Creation times can't be set: the oldest are made first, under names that come last.
    const QStringList oldest = {u"zx.jpg"_s, u"zy.jpg"_s, u"zz.jpg"_s};
    QString last;
    for (const QString& name : oldest)
        last = inCache(name);
    const bool keepsCreation = files::status(last).created.has_value();
    const auto createdAfterThem = [&] {
        const QString probe = inCache(u"a.jpg"_s);
        const auto made = [](const QString& path) {
            const files::Status found = files::status(path);
            return found.created.value_or(found.modified);
        };
        const bool isLater = made(probe) > made(last);
        return QFile::remove(probe) && isLater;
    };
    QVERIFY(QTest::qWaitFor(createdAfterThem));
    for (int i = 0; i < ConstClass::MAX_THUMB_CACHE; ++i) {
        const QString path = inCache(u"%1.jpg"_s.arg(i), {});
        if (keepsCreation && i < 10) // what was made later but changed earlier isn't older
            setModified(path, utc(2001, 1, 1, 0, 0));
    }
    inCache(u"other"_s);
    ThumbnailCache::cacheCleaning();
    const std::vector<QString> left = ThumbnailCache::cacheFiles();
    QCOMPARE(left.size(), 5000U);
    for (const QString& name : oldest)
        QVERIFY2(!QFile::exists(files::join(ThumbnailCache::cachesDirectoryPath(), name)), qPrintable(name));
    // As many as that may stay.
    ThumbnailCache::cacheCleaning();
    QCOMPARE(ThumbnailCache::cacheFiles(), left);
}

QTEST_GUILESS_MAIN(ThumbnailCacheTest)
#include "ThumbnailCacheTest.moc"
