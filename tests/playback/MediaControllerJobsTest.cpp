#include "platform/BackgroundQueue.h"
#include "platform/files/Files.h"
#include "playback/FakePanes.h"
#include "support/TestHome.h"
#include "support/Waiting.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

enum Job { Export, BackUp };

struct Drive : FakeWindow
{
    DriveCard card;
    CardBuilder disk{u"disk"_s};
    FakeProgress sheet{log};
    QString target = disk.path(u"backup"_s);

    Drive() { open(card.root()); }

    /// Begins a job with the first recordings.
    void begin(Job job, size_t count)
    {
        const auto& all = controller->mediaTree();
        const MediaLibrary::DCFList dcfs(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count));
        if (job == Export)
            controller->exportInfos(dcfs, target, &sheet);
        else
            controller->backUpSelectedInfos(BackUpList(dcfs.begin(), dcfs.end()), target, ReadBack::No, &sheet);
    }
};

bool isIdle()
{
    return BackgroundQueue::waitForDone(0);
}

} // namespace

class MediaControllerJobsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { WAIT_FOR(isIdle()); }

    void tellsHowTheJobGoes_data()
    {
        QTest::addColumn<Job>("job");
        QTest::addColumn<QString>("target"); // on the disk, where there is "file"
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QStringList>("end");
        const QStringList exported = {u"setProgress 0.5"_s, u"setItem 200101120000.MP4"_s, u"setProgress 0.99"_s,
                                      u"setItem 200101120001.MP4"_s};
        const QStringList copied = {u"setProgress 0"_s,   u"setItem 200101120000.MP4"_s, u"setProgress 0.5"_s,
                                    u"setProgress 0.5"_s, u"setItem 200101120001.MP4"_s, u"setProgress 1"_s};
        const QString full = u"setProgress 1"_s;
        const QString exportEnd = u"setInfoText KML/KMZ export is complete"_s;
        QTest::newRow("export") << Export << u"a/route.kml"_s << exported
                                << QStringList{full, exportEnd, u"jobDidEnd a/route.kml"_s};
        // The first text is the same, and what it says isn't true.
        QTest::newRow("export that fails")
            << Export << u"gone/route.kml"_s << exported << QStringList{full, exportEnd, u"jobDidEnd failed"_s};
        QTest::newRow("backup") << BackUp << u"backup"_s << copied
                                << QStringList{full, u"setInfoText Backup is complete"_s, u"jobDidEnd backup"_s};
        QTest::newRow("backup that fails")
            << BackUp << u"file/backup"_s << QStringList()
            << QStringList{full, u"setInfoText An error occurred during backup"_s, u"jobDidEnd failed"_s};
    }
    void tellsHowTheJobGoes()
    {
        QFETCH(Job, job);
        QFETCH(QString, target);
        QFETCH(QStringList, items);
        QFETCH(QStringList, end);
        Drive window;
        window.disk.file(u"file"_s);
        window.disk.folder(u"a"_s);
        window.target = window.disk.path(target);
        window.begin(job, 2);
        QVERIFY(window.controller->isJobRunning() && !window.controller->canReloadMedia());
        QCOMPARE(window.controller->currentBackUp() != nullptr, job == BackUp);
        QCOMPARE(window.controller->currentKmlBuilder() != nullptr, job == Export);
        WAIT_FOR(isIdle());
        const QStringList told = window.log.take()
                                     .replaceInStrings(u"sheet."_s, QString())
                                     .replaceInStrings(window.disk.path({}), QString());
        QCOMPARE(told, QStringList{u"setInfoText"_s} + items + end);
        QVERIFY(!window.controller->isJobRunning() && !window.controller->canReloadMedia());
        QCOMPARE(files::exists(window.target), !end.back().endsWith(u"failed"_s));
        window.controller->closeProgress();
        QVERIFY(window.controller->canReloadMedia() && !window.controller->currentProgressVC());
        QVERIFY(!window.controller->currentBackUp() && !window.controller->currentKmlBuilder());
        QVERIFY(window.log.take().isEmpty());
    }

    void nothingBeginsForNoItems()
    {
        for (const Job job : {Export, BackUp}) {
            Drive window;
            window.begin(job, 0);
            QVERIFY(!window.controller->isJobRunning() && !window.controller->canReloadMedia());
            QVERIFY(isIdle());
            QCOMPARE(window.log.take(), QStringList{u"sheet.setInfoText"_s});
            window.controller->closeProgress();
            QVERIFY(window.controller->canReloadMedia() && !files::exists(window.target));
            WAIT_FOR(isIdle()); // the parse goes on
        }
    }

    // At every call that the sheet gets, and from within it.
    void endsInTheMiddle_data()
    {
        using Ending = std::function<void(Drive&)>;
        QTest::addColumn<Job>("job");
        QTest::addColumn<Ending>("ending");
        QTest::addColumn<bool>("goesOn"); // whether the controller does
        const std::pair<const char*, std::pair<Ending, bool>> endings[] = {
            {"closed", {[](Drive& window) { window.controller->closeProgress(); }, true}},
            {"destroyed", {[](Drive& window) { window.controller.reset(); }, false}},
            {"card renamed",
             {[](Drive& window) {
                  window.controller->volumeRenameToPath(u"/nowhere"_s, QString(window.controller->rootPath()));
              },
              true}},
        };
        for (const Job job : {Export, BackUp}) {
            for (const auto& [name, ending] : endings)
                QTest::addRow("%s of %s", name, job == Export ? "export" : "backup")
                    << job << ending.first << ending.second;
        }
    }
    void endsInTheMiddle()
    {
        QFETCH(Job, job);
        QFETCH(std::function<void(Drive&)>, ending);
        QFETCH(bool, goesOn);
        const int last = job == Export ? 10 : 13;
        for (int calls = 0; calls < last; ++calls) {
            Drive window;
            window.log.after(calls, [&] { ending(window); });
            window.begin(job, 3);
            WAIT_FOR(isIdle());
            QStringList told = window.log.take();
            told.removeAll(u"sheet.dismiss"_s);
            QCOMPARE(told.size(), calls + 1);
            // The last three come once all is done; then what was written stays.
            const bool isWhole = calls >= last - 3;
            QCOMPARE(files::exists(window.target), isWhole);
            QCOMPARE(window.controller && window.controller->canReloadMedia(), goesOn);
            if (goesOn)
                QVERIFY(!window.controller->isJobRunning() && !window.controller->currentProgressVC());
        }
    }

    void theParseRestsMeanwhile()
    {
        Drive window;
        for (const std::shared_ptr<DCFInfo>& dcf : window.controller->mediaTree())
            dcf->thumbnailPath.clear();
        window.controller->setCurrentDCF(window.recording(1));
        QStringList parsed;
        connect(window.controller.get(), &MediaLibrary::recordingDidParse, this,
                [&](const std::shared_ptr<DCFInfo>& dcf) { parsed.push_back(dcf->deltaPath); });
        QSignalSpy finished(window.controller.get(), &MediaLibrary::parseDidFinish);
        window.controller->reparseAtIndex(0);
        window.begin(BackUp, 3);
        FakeProgress other(window.log);
        window.controller->exportInfos(window.controller->mediaTree(), u"/other.kml"_s, &other); // one at a time
        QCOMPARE(window.controller->currentProgressVC(), &window.sheet);
        WAIT_FOR(isIdle());
        QVERIFY(!window.controller->isJobRunning() && !files::exists(u"/other.kml"_s));
        QVERIFY(parsed.isEmpty() && finished.isEmpty());
        window.controller->closeProgress();
        WAIT_FOR(!finished.isEmpty() && isIdle());
        QCOMPARE(parsed.size(), 3);
        QCOMPARE(parsed.front(), window.recording(1)->deltaPath);
        window.controller->closeProgress(); // starts no parse without a job
        QVERIFY(isIdle());
    }
};

int main(int argc, char* argv[])
{
    const TestHome home;
    QGuiApplication application(argc, argv);
    MediaControllerJobsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "MediaControllerJobsTest.moc"
