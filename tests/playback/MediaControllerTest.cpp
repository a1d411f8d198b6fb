#include "playback/MediaController.h"

#include "media/PictureInfo.h"
#include "platform/BackgroundQueue.h"
#include "playback/FakePanes.h"
#include "playback/MediaControllerManager.h"
#include "support/TestHome.h"

#include <QSignalSpy>
#include <QTest>

using namespace cardreel;
using namespace cardreel::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

struct Drive : FakeWindow
{
    DriveCard card;

    explicit Drive(Instant pictureDate = noon + 90s)
        : card(pictureDate)
    {
        open(card.root());
    }
    const std::shared_ptr<PictureInfo>& picture() const { return controller->pictureTree().at(0); }
};

/// What a lone picture leads to.
QStringList aloneLines(const QString& still = u" PICTURE/200101120009.JPG"_s)
{
    return {u"graph.setProgressMax 1"_s,          u"graph.setProgressMin 0"_s,
            u"graph.updateProgress 0"_s,          u"graph.draw none"_s,
            u"graph.setCurrentSpeed 0"_s,         u"map.center 35"_s,
            u"front.showImageWithPath"_s + still, u"front.pause"_s,
            u"rear.showImageWithPath"_s,          u"rear.pause"_s};
}

QStringList without(QStringList lines, const QString& pane)
{
    erase_if(lines, [&](const QString& line) { return line.startsWith(pane + u'.'); });
    return lines;
}

/// Everything that a user does to a window; returns what the panes were told. Any call may end the controller.
QStringList scenario(Drive& window)
{
    // Kept by value: what happens on the way may destroy the controller and with it its library.
    const MediaLibrary::DCFList recordings = window.controller->mediaTree();
    const std::shared_ptr<PictureInfo> still = window.picture();
    const QPointer<MediaController> controller = window.controller.get();
    const auto step = [&](const std::function<void()>& action) {
        if (controller && action)
            action();
    };
    const auto select = [&](size_t index, bool fromList, const std::shared_ptr<PictureInfo>& shown) {
        step([&] { controller->updateCurrentDCF(recordings[index], fromList, shown); });
        window.front.length = window.rear.length = 60;
        step(window.front.willStartPlay);
    };
    select(0, false, nullptr);
    window.front.fraction = 0.5;
    step(window.front.progressed);
    step(window.rear.progressed);
    window.front.rate = 2;
    step(window.front.willStartPlay);
    window.front.playing = false;
    step(window.rear.progressed);
    window.rear.fraction = 0;
    step(window.front.progressed);
    window.graph.dragging = true;
    step(window.front.progressed);
    window.graph.dragging = false;
    step([&] { controller->updateProgress(0.25); });
    step([&] { controller->updateSelectedDCFs({recordings[0], recordings[1]}); });
    step([&] { controller->updateCurrentDate(noonSeconds + 30); });
    step(window.front.didStopPlaying);
    select(1, true, still);
    step(window.front.progressed);
    select(0, true, still);
    step(window.front.progressed);
    step([&] { controller->updateCurrentDCF(nullptr, true, still); });
    return window.log.take();
}

} // namespace

class MediaControllerTest : public QObject
{
    Q_OBJECT

    TestHome m_home;

private Q_SLOTS:
    void init() { MediaControllerManager::sharedInstance().updateMasterController(nullptr); }
    void cleanup()
    {
        QVERIFY(QTest::qWaitFor([] { return BackgroundQueue::waitForDone(0); }));
    }

    void loadsWhatIsSelected()
    {
        Drive window;
        QSignalSpy changed(window.controller.get(), &MediaController::currentDidChange);
        window.controller->updateCurrentDCF(window.recording(0), false, nullptr);
        QCOMPARE(
            window.log.take(),
            (QStringList{u"list.select NORMAL/200101120000.MP4"_s, u"front.playWithPath NORMAL/200101120000.MP4"_s,
                         u"rear.playWithPath NORMAL/200101120000.MP4"_s, u"graph.draw NORMAL/200101120000.MP4"_s}));
        QCOMPARE(window.controller->currentDCF(), window.recording(0));
        QVERIFY(!window.rear.willStartPlay && !window.rear.didStopPlaying);

        // The first start plays and no later one, such as that after a change of rate.
        QVERIFY(window.controller->listDidSelect());
        window.front.rate = 4;
        window.front.willStartPlay();
        QCOMPARE(window.log.take(), (QStringList{u"rear.updatePlaybackRate 4"_s, u"front.play"_s}));
        QVERIFY(!window.controller->listDidSelect());
        window.front.willStartPlay();
        QCOMPARE(window.log.take(), QStringList());

        // A picture goes over the video, and the next recording takes it away.
        window.controller->updateCurrentDCF(window.recording(1), true, window.picture());
        QCOMPARE(window.log.take(),
                 (QStringList{u"front.playWithPath NORMAL/200101120001.MP4"_s, u"rear.playWithPath"_s,
                              u"front.showImageWithPath PICTURE/200101120009.JPG"_s, u"rear.showImageWithPath"_s,
                              u"graph.draw NORMAL/200101120001.MP4"_s}));
        QCOMPARE(window.controller->currentPicture(), window.picture());
        window.controller->updateCurrentDCF(window.recording(2), true, nullptr);
        QVERIFY(!window.controller->currentPicture());
        QCOMPARE(changed.size(), 3);
    }

    void parsesFromTheSelectedRecording()
    {
        Drive window;
        QSignalSpy finished(window.controller.get(), &MediaLibrary::parseDidFinish);
        MediaLibrary::DCFList parsed;
        connect(window.controller.get(), &MediaLibrary::recordingDidParse, this,
                [&](const std::shared_ptr<DCFInfo>& dcf) { parsed.push_back(dcf); });
        window.recording(2)->thumbnailPath.clear();
        for (const size_t index : {0U, 2U, 1U})
            window.controller->updateCurrentDCF(window.recording(index), true, nullptr);
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(parsed, (MediaLibrary::DCFList{window.recording(2), window.recording(0), window.recording(1)}));
    }

    void aSelectionOfSeveralPauses()
    {
        Drive window;
        window.controller->updateSelectedDCFs({window.recording(0)});
        QCOMPARE(window.log.take(), QStringList());
        window.controller->updateSelectedDCFs({window.recording(2), window.recording(1)});
        QCOMPARE(window.log.take(), (QStringList{u"front.pause"_s, u"rear.pause"_s}));
        QCOMPARE(window.controller->selectedDCFs(), (MediaLibrary::DCFList{window.recording(2), window.recording(1)}));
    }

    void aTickKeepsTheRearInStep_data()
    {
        // The front file is 60 s long and stands in its middle, the rear one has a length of its own.
        QTest::addColumn<double>("length");
        QTest::addColumn<double>("fraction");
        QTest::addColumn<double>("rate");
        QTest::addColumn<QString>("state"); // front and rear: > plays, | is paused
        QTest::addColumn<QStringList>("told");
        const auto row = [](const char* name, double length, double fraction, double rate, const QString& state,
                            const QStringList& told) {
            QTest::newRow(name) << length << fraction << rate << state << told;
        };
        const QString jump = u"rear.setCurrentProgress 0.5"_s, rate = u"rear.updatePlaybackRate 1"_s;
        row("no file", 0, 0, 1, u">|"_s, {});
        row("almost a second ahead", 100, 0.5099, 1, u">>"_s, {});
        row("more than a second ahead", 100, 0.5101, 1, u">>"_s, {u"rear.play"_s, jump});
        row("more than a second behind", 100, 0.4899, 1, u">>"_s, {u"rear.play"_s, jump});
        row("both paused, within a hundredth", 100, 0.50009, 1, u"||"_s, {});
        row("both paused, apart", 100, 0.50011, 1, u"||"_s, {u"rear.pause"_s, jump});
        row("not started yet", 100, 0, 1, u">|"_s, {u"rear.play"_s, jump});
        row("plays beside a paused one, close", 100, 0.505, 1, u"|>"_s, {});
        row("stands still by its rate", 60, 0.5, 0, u">>"_s, {u"rear.play"_s, jump, rate});
        row("another rate", 60, 0.5, 2, u">>"_s, {rate});
    }
    void aTickKeepsTheRearInStep()
    {
        QFETCH(double, length);
        QFETCH(double, fraction);
        QFETCH(double, rate);
        QFETCH(QString, state);
        QFETCH(QStringList, told);
        Drive window;
        window.play(0, 60);
        window.front.fraction = 0.5;
        window.front.playing = state[0] == u'>';
        window.rear.length = length;
        window.rear.fraction = fraction;
        window.rear.playing = state[1] == u'>';
        window.rear.rate = rate;
        QSignalSpy ticked(window.controller.get(), &MediaController::didTick);
        window.front.progressed();
        const QStringList graph = {u"graph.setProgressMax 1"_s, u"graph.setProgressMin 0"_s,
                                   u"graph.updateProgress 0.5"_s};
        const QStringList moment = {u"map.updateDCF NORMAL/200101120000.MP4 30 60"_s, u"graph.setCurrentSpeed -1"_s};
        QCOMPARE(window.log.take(), graph + told + moment);
        QCOMPARE(ticked.size(), 1);
        // While the user drags on the graph it stays as it is, and both stand.
        window.graph.dragging = true;
        window.front.progressed();
        QCOMPARE(window.log.take(), (QStringList{u"front.pause"_s, u"rear.pause"_s} + moment));
        // The rear one is silent and follows on its own ticks.
        window.rear.progressed();
        window.rear.playing = true;
        window.rear.progressed();
        window.front.playing = window.rear.playing = true;
        window.rear.progressed();
        QCOMPARE(window.log.take(), (QStringList{u"rear.pause"_s, u"rear.mutePlay"_s}));
    }

    void aTickTellsTheTimeOfDayAndTheSpeed()
    {
        Drive window;
        window.play(0, 60);
        window.front.fraction = 0.25;
        const auto dateWith = [&](Instant end, std::optional<Instant> start) {
            window.recording(0)->fileDate = end;
            window.recording(0)->startDate = start;
            window.front.progressed();
            return window.controller->userDate();
        };
        QCOMPARE(dateWith({}, {}), 0.0);
        QCOMPARE(dateWith(noon + 60s, {}), noonSeconds + 15);
        QCOMPARE(dateWith({}, noon + 1000s), noonSeconds + 1015);
        QCOMPARE(dateWith(noon + 60s, noon + 1000s), noonSeconds + 1015);
        QCOMPARE(window.recording(0)->duration, 60.0);
        window.map.shown.emplace().speed = 12.5F;
        window.front.progressed();
        QCOMPARE(window.log.take().last(), u"graph.setCurrentSpeed 12.5"_s);
    }

    void aTickPinsAPicture_data()
    {
        // Of the second recording, which begins at 12:01.
        QTest::addColumn<qint64>("pictureMs"); // after the recording's start
        QTest::addColumn<double>("length");
        QTest::addColumn<QStringList>("told");
        const auto pinned = [](const QString& fraction, const QString& place) {
            return QStringList{u"graph.updateProgress "_s + fraction, u"front.setCurrentProgress "_s + fraction,
                               u"map.updateDCF NORMAL/200101120001.MP4 "_s + place, u"graph.setCurrentSpeed -1"_s,
                               u"front.pause"_s};
        };
        QTest::newRow("length unknown") << qint64(30'000) << 0.0 << QStringList();
        QTest::newRow("before the start") << qint64(-1) << 60.0 << aloneLines();
        QTest::newRow("after the end") << qint64(60'001) << 60.0 << aloneLines();
        QTest::newRow("at the start") << qint64(0) << 60.0 << pinned(u"0"_s, u"0 60"_s);
        QTest::newRow("in single precision") << qint64(6'000) << 60.0 << pinned(u"0.10000000149"_s, u"6 60"_s);
        QTest::newRow("at the end in single precision")
            << qint64(30'000'001) << 30'000.0 << pinned(u"1"_s, u"30000.001 30000"_s);
    }
    void aTickPinsAPicture()
    {
        QFETCH(qint64, pictureMs);
        QFETCH(double, length);
        QFETCH(QStringList, told);
        Drive window;
        const auto dcf = window.recording(1);
        const auto still = window.picture();
        dcf->startDate = noon + 60s;
        still->fileDate = noon + 60s + std::chrono::milliseconds(pictureMs);
        MediaControllerManager& manager = MediaControllerManager::sharedInstance();
        manager.updateMasterController(window.controller.get());
        QSignalSpy sent(&manager, &MediaControllerManager::masterMediaControllerDateDidUpdate);
        QSignalSpy ticked(window.controller.get(), &MediaController::didTick);
        window.controller->updateCurrentDCF(dcf, true, still);
        window.front.length = length;
        window.log.take();

        window.front.progressed();
        QCOMPARE(window.log.take(), told);
        QCOMPARE(window.controller->userDate(), length == 0 ? 0.0 : secondsSince1970(still->fileDate));
        QCOMPARE(dcf->duration, length);
        QCOMPARE(ticked.size(), 1);
        QCOMPARE(sent.size(), 0);
        const bool isAlone = told == aloneLines();
        QCOMPARE(dcf->pictures.empty(), isAlone);
        QCOMPARE(still->parentDCFInfo.lock(), isAlone ? nullptr : dcf);
    }

    void aPictureWithoutARecording()
    {
        Drive window;
        const auto still = window.picture();
        const auto other = std::make_shared<PictureInfo>(*still);
        window.recording(1)->pictures.push_back(other);
        QSignalSpy changed(window.controller.get(), &MediaController::currentDidChange);
        window.controller->updateCurrentDCF(nullptr, true, still);
        QCOMPARE(window.log.take(), aloneLines());
        QCOMPARE(changed.size(), 1);
        QCOMPARE(window.recording(1)->pictures, (MediaLibrary::PictureList{other}));
        QVERIFY(still->parentDCFInfo.expired());
        // A tick of whatever the player has loaded: nothing without a length, else the picture again.
        window.controller->progressAction(&window.front);
        QCOMPARE(window.log.take(), QStringList());
        window.front.length = 60;
        window.controller->progressAction(&window.front);
        QCOMPARE(window.log.take(), aloneLines());
        // Nothing at all clears the panes.
        window.play(0, 60);
        window.controller->updateCurrentDCF(nullptr, true, nullptr);
        QCOMPARE(window.log.take(), without(aloneLines({}), u"map"_s));
        QCOMPARE(window.controller->currentDCF(), window.recording(0));
    }

    void playsOnAtTheEndOfAFile()
    {
        Drive window;
        window.play(1, 60);
        window.front.didStopPlaying(); // which the answer replaces
        QCOMPARE(window.log.take().first(), u"list.selectNext NORMAL/200101120001.MP4"_s);
        QCOMPARE(window.controller->currentDCF(), window.recording(2));
        window.front.willStartPlay();
        QCOMPARE(window.log.take(), QStringList{u"front.play"_s});
    }

    void earlierCallbacksAreIgnored()
    {
        Drive window;
        window.play(0, 60);
        QList<PlayerPane::Callback> earlier = {window.front.willStartPlay, window.front.progressed,
                                               window.front.didStopPlaying, window.rear.progressed};
        const auto nothingHappens = [&] {
            for (const PlayerPane::Callback& callback : earlier)
                callback();
            return window.log.take().isEmpty();
        };
        QVERIFY(!nothingHappens());
        window.controller->updateCurrentDCF(window.recording(1), true, nullptr);
        window.log.take();
        QVERIFY(nothingHappens());
        QCOMPARE(window.recording(1)->duration, 0.0);
        QVERIFY(window.controller->listDidSelect());
        // Nor does a pane that was taken away or replaced say anything.
        earlier = {window.rear.progressed};
        window.rear.playing = true;
        window.controller->setPlayerVCSecondary(nullptr);
        QVERIFY(nothingHappens());
        earlier = {window.front.willStartPlay, window.front.progressed, window.front.didStopPlaying};
        window.controller->setPlayerVC(&window.rear);
        QVERIFY(nothingHappens());
    }

    void endsInTheMiddleOfAnyCall()
    {
        Drive whole(noon + 30s);
        const QStringList calls = scenario(whole);
        for (int i = 0; i < 2 * calls.size(); ++i) {
            const QString& call = calls[i / 2];
            const bool destroys = i % 2 != 0;
            if (destroys && (call.startsWith(u"graph.") || call.startsWith(u"map.")))
                continue;
            Drive window(noon + 30s);
            int wentOn = -1;
            const auto count = [&wentOn] { wentOn += wentOn >= 0; };
            connect(window.controller.get(), &MediaController::didTick, this, count);
            connect(window.controller.get(), &MediaController::currentDidChange, this, count);
            window.log.after(i / 2, [&] {
                wentOn = 0;
                if (destroys)
                    window.controller.reset();
                else
                    window.controller->dispose();
            });
            QVERIFY2(scenario(window) == calls.first(i / 2 + 1) && wentOn == 0, qPrintable(call));
        }
        whole.controller->dispose();
        whole.controller->showCurrentPictureWithoutDCF();
        whole.controller->progressAction(&whole.front);
        whole.controller->willStartAction(&whole.front);
        whole.controller->didStopPlayingAction();
        QCOMPARE(whole.log.take(), QStringList());
    }

    void anotherSelectionInTheMiddleOfOne()
    {
        for (const QString& call : {u"front.playWithPath"_s, u"rear.playWithPath"_s, u"front.showImageWithPath"_s,
                                    u"rear.showImageWithPath"_s, u"graph.draw"_s}) {
            Drive window;
            QSignalSpy changed(window.controller.get(), &MediaController::currentDidChange);
            window.log.during(call, [&] { window.controller->updateCurrentDCF(window.recording(2), true, nullptr); });
            window.controller->updateCurrentDCF(window.recording(0), true, window.picture());
            QCOMPARE(window.controller->currentDCF(), window.recording(2));
            QCOMPARE(window.log.take().last(3),
                     (QStringList{u"front.playWithPath NORMAL/200101120002.MP4"_s, u"rear.playWithPath"_s,
                                  u"graph.draw NORMAL/200101120002.MP4"_s}));
            QVERIFY(!window.controller->currentPicture());
            QCOMPARE(changed.size(), 1);
            window.front.willStartPlay();
            QCOMPARE(window.log.take(), QStringList{u"front.play"_s});
        }
    }

    void ticksDontNest()
    {
        Drive window;
        window.controller->updateCurrentDCF(window.recording(1), true, window.picture());
        window.front.length = 60;
        window.log.take();
        // A player that tells the new place at once.
        window.log.during(u"front.setCurrentProgress"_s, window.front.progressed);
        for (int i = 0; i < 2; ++i) {
            window.front.progressed();
            QCOMPARE(window.log.take().count(u"front.setCurrentProgress 0.5"_s), 1);
        }
        // What was selected from within a tick ticks on its own.
        QSignalSpy ticked(window.controller.get(), &MediaController::didTick);
        window.log.during(u"front.pause"_s, [&] {
            window.controller->updateCurrentDCF(window.recording(2), true, nullptr);
            window.front.progressed();
        });
        window.front.progressed();
        QCOMPARE(window.log.take().last(), u"graph.setCurrentSpeed -1"_s);
        QCOMPARE(ticked.size(), 1);
        QCOMPARE(window.recording(2)->duration, 60.0);
    }

    void anotherCardHasNoPicture()
    {
        Drive window;
        window.play(0, 60);
        window.controller->updateSelectedDCFs({window.recording(0)});
        window.controller->updateCurrentDCF(window.recording(1), true, window.picture());
        window.open(window.card.root());
        QVERIFY(!window.controller->currentPicture());
        QVERIFY(window.controller->selectedDCFs().empty());
        // The players still show the former card: they are kept in step, and the map has nothing to follow.
        window.log.take();
        window.front.fraction = 0.5;
        window.front.progressed();
        const QStringList told = window.log.take();
        QVERIFY(told.contains(u"rear.setCurrentProgress 0.5"_s));
        QCOMPARE(without(told, u"map"_s), told);
        QCOMPARE(window.controller->userDate(), 0.0);
    }
};

QTEST_MAIN(MediaControllerTest)
#include "MediaControllerTest.moc"
