#include "media/MediaLibrary.h"

#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "names/ConstClass.h"
#include "platform/BackgroundQueue.h"
#include "platform/files/Files.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"
#include "telemetry/NMEAData.h"

#include <QSignalSpy>
#include <QTest>

#include <sys/stat.h>

#include <algorithm>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

QStringList deltas(const MediaLibrary::DCFList& recordings)
{
    QStringList result;
    for (const auto& dcf : recordings)
        result.push_back(dcf->deltaPath);
    return result;
}

QStringList deltas(const MediaLibrary::PictureList& pictures)
{
    QStringList result;
    for (const auto& picture : pictures)
        result.push_back(picture->deltaPath);
    return result;
}

QString recording(int number, const QString& folder = u"NORMAL"_s)
{
    return folder + u"/2001011200%1.MP4"_s.arg(number, 2, 10, QLatin1Char('0'));
}

} // namespace

class MediaLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void listsRecordings_data();
    void listsRecordings();
    void aFileBelongsToTheFolderMetLast();
    void listsPictures();
    void sortsByTheRecordersClock();
    void attachesPictures_data();
    void attachesPictures();
    void announcesWhatItFound();
    void changesNothingWhileItMustNotReload();
    void unreadableFoldersAreEmpty();
    void linksInCirclesEnd();
    void namesNeedNotBeUtf8();
    void picturesThatCantBeOpenedArePassedOver();
    void anotherCardReplacesTheFirst();
    void parsesFromTheRecordingInView();
    void aRenamedVolumeIsFollowed();
    void whatWasMissedWhileTheCardWasAwayIsReadAgain();
    void anotherVolumesNewNameMeansNothing();
    void goesInTheMiddleOfAParse();

private:
    TestHome m_home;
};

void MediaLibraryTest::cleanup()
{
    QVERIFY(QTest::qWaitFor([] { return BackgroundQueue::waitForDone(0); }));
}

void MediaLibraryTest::listsRecordings_data()
{
    QTest::addColumn<QStringList>("entries"); // with a slash at the end, folders
    QTest::addColumn<QStringList>("listed");
    QTest::newRow("nothing") << QStringList() << QStringList();
    QTest::newRow("only the rear camera") << QStringList{u"REAR/200101120001.MP4"_s} << QStringList();
    QTest::newRow("a file named as a folder") << QStringList{u"NORMAL"_s, u"REAR/"_s} << QStringList();
    QTest::newRow("below another folder") << QStringList{recording(1, u"NORMAL/SUB"_s)} << QStringList();
    QTest::newRow("folders that aren't the recorder's")
        << QStringList{u"NORMAL/"_s, recording(1, u"NORMAL2"_s), recording(2, u"normal"_s), recording(3, u"SYSTEM"_s)}
        << QStringList();
    QTest::newRow("names that aren't the recorder's") << QStringList{u"NORMAL/a.MP4"_s,
                                                                     u"NORMAL/200101120001.AVI"_s,
                                                                     u"NORMAL/200101120001.JPG"_s,
                                                                     u"NORMAL/200101240001.MP4"_s,
                                                                     u"NORMAL/.200101120001.MP4"_s,
                                                                     recording(1) + u'/'}
                                                      << QStringList();
    QTest::newRow("rear twins aren't recordings of their own")
        << QStringList{recording(1), recording(1, u"REAR/NORMAL"_s), recording(2, u"REAR/NORMAL"_s)}
        << QStringList{recording(1)};
    QTest::newRow("what lies in the rear camera's folder itself is one")
        << QStringList{recording(1), recording(2, u"REAR"_s)} << QStringList{recording(1), recording(2, u"REAR"_s)};
    const QStringList all = {recording(1, u"PARKING"_s), recording(2, u"MANUAL"_s), recording(3, u"EVENT"_s),
                             recording(4), recording(5, u"PICTURE"_s)};
    QTest::newRow("every kind") << all << all;
    const QStringList endings = {u"NORMAL/200101120001.MP4"_s, u"NORMAL/200101120002.mp4"_s,
                                 u"NORMAL/200101120003.MOV"_s, u"NORMAL/200101120004.mov"_s};
    QTest::newRow("every ending") << endings << endings;
}

void MediaLibraryTest::listsRecordings()
{
    QFETCH(QStringList, entries);
    CardBuilder card;
    for (const QString& entry : entries) {
        if (entry.endsWith(u'/'))
            card.folder(entry);
        else
            card.file(entry);
    }
    MediaLibrary library;
    QVERIFY(library.mediaTreeSyncAtRootPath(card.root()));
    QTEST(deltas(library.mediaTree()), "listed");
}

void MediaLibraryTest::aFileBelongsToTheFolderMetLast()
{
    CardBuilder card;
    for (int i = 0; i < 40; ++i) {
        card.file(recording(i));
        if (i == 20)
            card.file(u"NORMAL/SUB/x"_s);
    }
    // The file system decides what comes behind the inner folder, and all of that isn't counted.
    QStringList expected;
    for (const QString& name : files::names(card.path(u"NORMAL"_s))) {
        if (name == u"SUB")
            break;
        expected.push_back(u"NORMAL/"_s + name);
    }
    expected.sort();
    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(card.root());
    QCOMPARE(deltas(library.mediaTree()), expected);
}

void MediaLibraryTest::listsPictures()
{
    CardBuilder card;
    card.picture(u"PICTURE/200101120003.JPG"_s);
    card.picture(u"EVENT/200101120001.jpg"_s);
    card.picture(u"PICTURE/cover.JPG"_s);
    card.picture(u"REAR/PICTURE/200101120003.JPG"_s);
    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(card.root());
    QCOMPARE(deltas(library.pictureTree()), (QStringList{u"EVENT/200101120001.jpg"_s, u"PICTURE/200101120003.JPG"_s}));
    const PictureInfo& last = *library.pictureTree().back();
    QCOMPARE(last.pictureThumbnailPath, last.filePath);
    QCOMPARE(last.secondaryFilePath, card.path(u"REAR/PICTURE/200101120003.JPG"_s));
    QVERIFY(library.mediaTree().empty());
}

void MediaLibraryTest::sortsByTheRecordersClock()
{
    CardBuilder card;
    const QStringList sorted = {u"PARKING/000101000000.MP4"_s, recording(1, u"EVENT"_s), recording(2),
                                recording(3, u"MANUAL"_s), u"NORMAL/991231235959.MP4"_s};
    for (const int i : {3, 1, 4, 0, 2})
        card.file(sorted[i]);
    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(card.root());
    QCOMPARE(deltas(library.mediaTree()), sorted);
    QCOMPARE(deltas(library.eventTree()), (QStringList{sorted[0], sorted[1], sorted[3]}));
}

void MediaLibraryTest::attachesPictures_data()
{
    QTest::addColumn<int>("taken"); // ms after 12:00
    QTest::addColumn<int>("parent");
    QTest::newRow("later than all") << 180'001 << -1;
    QTest::newRow("at the end of the last") << 180'000 << -1;
    QTest::newRow("before all") << -60'000 << 0;
    QTest::newRow("just before the end of one") << 59'999 << 0;
    QTest::newRow("at the end of one") << 60'000 << 1;
    QTest::newRow("during the last") << 179'999 << 2;
}

void MediaLibraryTest::attachesPictures()
{
    QFETCH(int, taken);
    QFETCH(int, parent);
    const Instant noon = utc(2020, 1, 1, 12, 0);
    CardBuilder card;
    for (int i = 0; i < 3; ++i)
        card.file(recording(i), "x", noon + std::chrono::minutes(i + 1));
    const QString name = u"PICTURE/200101120000.JPG"_s;
    card.picture(name, noon + std::chrono::milliseconds(taken));
    card.picture(u"PICTURE/200101120001.JPG"_s, noon);
    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(card.root());

    const auto& recordings = library.mediaTree();
    const PictureInfo& picture = *library.pictureTree().front();
    QCOMPARE(picture.parentDCFInfo.lock(), parent < 0 ? nullptr : recordings[static_cast<size_t>(parent)]);
    for (int i = 0; i < 3; ++i) {
        const QStringList expected = (i == parent ? QStringList{name} : QStringList()) +
                                     (i == 0 ? QStringList{u"PICTURE/200101120001.JPG"_s} : QStringList());
        QCOMPARE(deltas(recordings[static_cast<size_t>(i)]->pictures), expected);
    }
}

void MediaLibraryTest::announcesWhatItFound()
{
    CardBuilder card;
    MediaLibrary library;
    QSignalSpy synced(&library, &MediaLibrary::mediaTreeDidSync);
    const auto isActive = [&] {
        library.mediaTreeSyncAtRootPath(card.root());
        return synced.takeFirst().front().toBool();
    };
    QVERIFY(!isActive());
    card.picture(u"PICTURE/200101120000.JPG"_s);
    QVERIFY(isActive());
    card.file(recording(1));
    QVERIFY(isActive());
    QVERIFY(!library.hasSecondary());
    card.file(recording(2));
    card.file(recording(2, u"REAR/NORMAL"_s));
    QVERIFY(isActive());
    QVERIFY(library.hasSecondary());
    QVERIFY(QFile::remove(card.path(recording(2, u"REAR/NORMAL"_s))));
    QVERIFY(isActive());
    QVERIFY(!library.hasSecondary());
}

void MediaLibraryTest::changesNothingWhileItMustNotReload()
{
    CardBuilder card;
    card.file(recording(1));
    CardBuilder other;
    other.file(recording(2));
    MediaLibrary library;
    QVERIFY(library.canReloadMedia());
    library.mediaTreeSyncAtRootPath(card.root());
    library.setCanReloadMedia(false);
    QSignalSpy synced(&library, &MediaLibrary::mediaTreeDidSync);
    QVERIFY(!library.mediaTreeSyncAtRootPath(other.root()));
    QCOMPARE(deltas(library.mediaTree()), QStringList{recording(1)});
    QCOMPARE(library.rootPath(), card.root());
    QVERIFY(synced.isEmpty());
    library.setCanReloadMedia(true);
    QVERIFY(library.mediaTreeSyncAtRootPath(other.root()));
    QCOMPARE(deltas(library.mediaTree()), QStringList{recording(2)});
}

void MediaLibraryTest::unreadableFoldersAreEmpty()
{
    CardBuilder card;
    card.file(recording(1));
    card.file(recording(2, u"EVENT"_s));
    QCOMPARE(chmod(card.path(u"EVENT"_s).toUtf8(), 0), 0);
    MediaLibrary library;
    {
        const OrdinaryPermissions ordinary;
        library.mediaTreeSyncAtRootPath(card.root());
        QCOMPARE(deltas(library.mediaTree()), QStringList{recording(1)});
        QCOMPARE(chmod(card.root().toUtf8(), 0), 0);
        QVERIFY(library.mediaTreeSyncAtRootPath(card.root()));
        QVERIFY(library.mediaTree().empty());
        QCOMPARE(chmod(card.root().toUtf8(), 0755), 0);
    }
    QCOMPARE(chmod(card.path(u"EVENT"_s).toUtf8(), 0755), 0);
    QVERIFY(library.mediaTreeSyncAtRootPath(card.path(u"missing"_s)));
    QVERIFY(library.mediaTree().empty());
}

void MediaLibraryTest::linksInCirclesEnd()
{
    CardBuilder card;
    card.file(recording(1));
    card.link(u"EVENT"_s, "NORMAL");
    card.link(u"MANUAL/up"_s, "..");
    card.link(u"PARKING/200101120002.MP4"_s, "200101120002.MP4");
    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(card.root());
    QCOMPARE(deltas(library.mediaTree()), (QStringList{recording(1), recording(2, u"PARKING"_s)}));
    QCOMPARE(library.mediaTree().back()->fileSize, 0U);
}

void MediaLibraryTest::namesNeedNotBeUtf8()
{
    const QString stray = files::fromNativePath("\xE9");
    CardBuilder card(u"caf"_s + stray);
    // Any one character may stand before the ending.
    const QString name = u"NORMAL/200101120001"_s + stray + u"MP4"_s;
    card.file(name, "12345");
    card.file(u"REAR/"_s + name, "123");
    card.file(u"NORMAL/"_s + stray + u".MP4"_s);
    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(card.root());
    QCOMPARE(deltas(library.mediaTree()), QStringList{name});
    QCOMPARE(library.mediaTree().front()->fileSize, 8U);
    QSignalSpy finished(&library, &MediaLibrary::parseDidFinish);
    library.reparseAtIndex(0);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(QFile::exists(library.mediaTree().front()->thumbnailPath));
}

void MediaLibraryTest::picturesThatCantBeOpenedArePassedOver()
{
    CardBuilder card;
    card.link(u"PICTURE/200101120001.JPG"_s, "gone");
    card.file(u"PICTURE/200101120002.JPG"_s, "no picture inside");
    QCOMPARE(chmod(card.picture(u"PICTURE/200101120003.JPG"_s).toUtf8(), 0), 0);
    card.picture(u"PICTURE/200101120004.JPG"_s);
    MediaLibrary library;
    const OrdinaryPermissions ordinary;
    library.mediaTreeSyncAtRootPath(card.root());
    QCOMPARE(deltas(library.pictureTree()),
             (QStringList{u"PICTURE/200101120002.JPG"_s, u"PICTURE/200101120004.JPG"_s}));
}

void MediaLibraryTest::anotherCardReplacesTheFirst()
{
    CardBuilder card;
    card.file(recording(1));
    card.file(recording(1, u"REAR/NORMAL"_s));
    card.picture(u"PICTURE/200101120003.JPG"_s);
    CardBuilder other;
    other.file(recording(2));
    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(card.root());
    library.setCurrentDCF(library.mediaTree().front());
    QSignalSpy parsed(&library, &MediaLibrary::recordingDidParse);
    library.reparseAtIndex(0);
    library.mediaTreeSyncAtRootPath(other.root());
    QCOMPARE(deltas(library.mediaTree()), QStringList{recording(2)});
    QVERIFY(library.pictureTree().empty() && !library.hasSecondary() && !library.currentDCF());
    cleanup();
    QVERIFY(parsed.isEmpty());
}

void MediaLibraryTest::parsesFromTheRecordingInView()
{
    CardBuilder card;
    for (int i = 0; i < 5; ++i)
        card.file(recording(i));
    MediaLibrary library;
    QSignalSpy finished(&library, &MediaLibrary::parseDidFinish);
    library.reparseAtIndex(3); // without a card there is nothing to do
    library.mediaTreeSyncAtRootPath(card.root());
    MediaLibrary::DCFList parsed;
    connect(&library, &MediaLibrary::recordingDidParse, this,
            [&](const std::shared_ptr<DCFInfo>& dcf) { parsed.push_back(dcf); });
    library.reparseAtIndex(3);
    QTRY_COMPARE(finished.size(), 1);
    const auto& all = library.mediaTree();
    QCOMPARE(parsed, (MediaLibrary::DCFList{all[3], all[4], all[0], all[1], all[2]}));
}

void MediaLibraryTest::aRenamedVolumeIsFollowed()
{
    CardBuilder card;
    const Instant noon = utc(2020, 1, 1, 12, 0);
    for (int i = 0; i < 3; ++i) {
        card.file(recording(i), "x", noon + std::chrono::minutes(i + 1));
        card.file(u"SYSTEM/NMEA/NORMAL/2001011200%1.NMEA"_s.arg(i, 2, 10, QLatin1Char('0')),
                  sideFile(noon + std::chrono::minutes(i), 2));
    }
    card.file(recording(1, u"REAR/NORMAL"_s));
    card.picture(u"PICTURE/200101120000.JPG"_s, noon);
    card.picture(u"PICTURE/200101120500.JPG"_s, noon + std::chrono::minutes(5)); // during no recording
    card.picture(u"REAR/PICTURE/200101120500.JPG"_s);
    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(card.root());
    const MediaLibrary::DCFList before = library.mediaTree();
    library.setCurrentDCF(before[2]);
    QStringList events;
    connect(&library, &MediaLibrary::jobsShouldCancel, this, [&] { events << u"cancel"_s; });
    connect(&library, &MediaLibrary::didChangeRoot, this, [&] { events << u"root"_s; });
    connect(&library, &MediaLibrary::recordingDidParse, this,
            [&](const std::shared_ptr<DCFInfo>& dcf) { events << dcf->deltaPath; });
    connect(&library, &MediaLibrary::parseDidFinish, this, [&] { events << u"finish"_s; });
    library.reparseAtIndex(0);

    const QString former = card.root();
    card.mountAgainAs(u"renamed"_s);
    library.volumeRenameToPath(card.root(), former);
    QTRY_VERIFY(events.contains(u"finish"_s));
    QCOMPARE(events, (QStringList{u"cancel"_s, u"root"_s, recording(2), recording(0), recording(1), u"finish"_s}));
    QCOMPARE(library.mediaTree(), before);
    QCOMPARE(library.rootPath(), card.root());
    QCOMPARE(before[1]->secondaryFilePath, card.path(recording(1, u"REAR/NORMAL"_s)));
    for (const auto& dcf : before) {
        QCOMPARE(dcf->filePath, card.path(dcf->deltaPath));
        QVERIFY(dcf->infoFilePath.startsWith(card.path(u"SYSTEM/NMEA"_s)));
        QCOMPARE(dcf->nmea->snapshot()->totalLocations().size(), 2U);
    }
    for (const auto& picture : library.pictureTree()) {
        QCOMPARE(picture->filePath, card.path(picture->deltaPath));
        QCOMPARE(picture->pictureThumbnailPath, picture->filePath);
    }
    QCOMPARE(library.pictureTree()[1]->secondaryFilePath, card.path(u"REAR/PICTURE/200101120500.JPG"_s));
}

void MediaLibraryTest::whatWasMissedWhileTheCardWasAwayIsReadAgain()
{
    CardBuilder card;
    for (int i = 0; i < 3; ++i) {
        card.file(recording(i));
        card.file(u"NORMAL/2001011200%1.NMEA"_s.arg(i, 2, 10, QLatin1Char('0')), sideFile(utc(2020, 1, 1, 12, i), 2));
    }
    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(card.root());
    const QString former = card.root();
    card.mountAgainAs(u"renamed"_s);
    QSignalSpy finished(&library, &MediaLibrary::parseDidFinish);
    library.reparseAtIndex(0);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(library.mediaTree().front()->routeLine.empty());
    QVERIFY(library.mediaTree().front()->thumbnailPath.isEmpty());

    library.volumeRenameToPath(card.root(), former);
    QTRY_COMPARE(finished.size(), 2);
    for (const auto& dcf : library.mediaTree()) {
        QCOMPARE(dcf->routeLine.size(), 1U);
        QCOMPARE(dcf->annotation.size(), 1U);
        QVERIFY(!dcf->thumbnailPath.isEmpty());
    }
}

void MediaLibraryTest::anotherVolumesNewNameMeansNothing()
{
    CardBuilder card;
    MediaLibrary library;
    QSignalSpy changed(&library, &MediaLibrary::didChangeRoot);
    QSignalSpy cancelled(&library, &MediaLibrary::jobsShouldCancel);
    library.volumeRenameToPath(u"/new"_s, u""_s);
    card.file(recording(1));
    library.mediaTreeSyncAtRootPath(card.root());
    library.volumeRenameToPath(u"/new"_s, u"/old"_s);
    QVERIFY(changed.isEmpty() && cancelled.isEmpty());
    QCOMPARE(library.mediaTree().front()->rootPath, card.root());
}

void MediaLibraryTest::goesInTheMiddleOfAParse()
{
    CardBuilder card;
    for (int i = 0; i < 5; ++i)
        card.file(recording(i));
    auto library = std::make_unique<MediaLibrary>();
    library->mediaTreeSyncAtRootPath(card.root());
    const MediaLibrary::DCFList recordings = library->mediaTree();
    int parsed = 0;
    connect(library.get(), &MediaLibrary::recordingDidParse, this, [&] { ++parsed; });
    library->reparseAtIndex(0);
    QTRY_VERIFY(parsed > 0);
    library.reset();
    const int before = parsed;
    cleanup();
    QCOMPARE(parsed, before);
    QVERIFY(recordings.back()->thumbnailPath.isEmpty() || before == 5);
}

QTEST_GUILESS_MAIN(MediaLibraryTest)
#include "MediaLibraryTest.moc"
