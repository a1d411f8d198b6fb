#include "playback/MediaController.h"

#include "media/PictureInfo.h"
#include "platform/BackgroundQueue.h"
#include "playback/FakePanes.h"
#include "playback/MediaControllerManager.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"

#include <QSignalSpy>
#include <QTest>

#include <chrono>

using namespace cardreel;
using namespace cardreel::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

const Instant noon = utc(2020, 1, 1, 12, 0);

/// Three recordings of a minute from noon on, the first with a rear video, and a picture.
struct Drive
{
    CardBuilder card;

    explicit Drive(Instant pictureDate = noon + 90s)
    {
        for (int i = 0; i < 3; ++i)
            card.file(u"NORMAL/20010112000%1.MP4"_s.arg(i), "x", noon + 60s * (i + 1));
        card.file(u"REAR/NORMAL/200101120000.MP4"_s);
        card.pictureAt(u"PICTURE/200101120009.JPG"_s, 35, "N", 139, "E");
        setModified(card.path(u"PICTURE/200101120009.JPG"_s), pictureDate);
    }
};

std::shared_ptr<PictureInfo> picture(const FakeWindow& window)
{
    return window.controller->pictureTree().at(0);
}

/// What a lone picture leads to.
QStringList aloneLines()
{
    return {u"graph.setProgressMax 1"_s,
            u"graph.setProgressMin 0"_s,
            u"graph.updateProgress 0"_s,
            u"graph.draw none"_s,
            u"graph.setCurrentSpeed 0"_s,
            u"map.center 35"_s,
            u"front.showImageWithPath PICTURE/200101120009.JPG"_s,
            u"front.pause"_s,
            u"rear.showImageWithPath"_s,
            u"rear.pause"_s};
}

QStringList without(const QStringList& lines, const QString& pane)
{
    QStringList rest;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(rest),
                 [&](const QString& line) { return !line.startsWith(pane + u'.'); });
    return rest;
}

/// Everything that a user does to a window, step by step; each returns what the panes were told.
QList<QStringList> scenario(FakeWindow& window)
{
    // Kept by value: what happens on the way may destroy the controller and with it its library.
    const MediaLibrary::DCFList recordings = window.controller->mediaTree();
    const std::shared_ptr<PictureInfo> still = picture(window);
    const QPointer<MediaController> controller = window.controller.get();
    QList<QStringList> told;
    const auto step = [&](const std::function<void()>& action) {
        if (controller && action)
            action();
        told.push_back(window.log.take());
    };
    const auto select = [&](size_t index, bool fromList, const std::shared_ptr<PictureInfo>& shown) {
        step([&, fromList, index] { controller->updateCurrentDCF(recordings[index], fromList, shown); });
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
    step([&] { controller->updateCurrentDate(secondsSince1970(noon) + 30); });
    step(window.front.didStopPlaying);
    select(1, true, still);
    step(window.front.progressed);
    select(0, true, still);
    step(window.front.progressed);
    step([&] { controller->updateCurrentDCF(nullptr, true, still); });
    return told;
}

} // namespace

class MediaControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void loadsWhatIsSelected();
    void parsesFromTheSelectedRecording();
    void aSelectionOfSeveralPauses_data();
    void aSelectionOfSeveralPauses();
    void aTickKeepsTheRearInStep_data();
    void aTickKeepsTheRearInStep();
    void aTickTellsTheTimeOfDay_data();
    void aTickTellsTheTimeOfDay();
    void theSpeedIsTheMaps();
    void theRearIsSilentAndFollows_data();
    void theRearIsSilentAndFollows();
    void aTickPinsAPicture_data();
    void aTickPinsAPicture();
    void aPictureWithoutARecording();
    void nothingSelectedClearsThePanes();
    void playsOnAtTheEndOfAFile_data();
    void playsOnAtTheEndOfAFile();
    void missingPanes_data();
    void missingPanes();
    void earlierCallbacksAreIgnored();
    void endsInTheMiddleOfACall_data();
    void endsInTheMiddleOfACall();
    void anotherSelectionInTheMiddleOfOne_data();
    void anotherSelectionInTheMiddleOfOne();
    void ticksDontNest();
    void anotherCardHasNoPicture();

private:
    TestHome m_home;
};

void MediaControllerTest::init()
{
    MediaControllerManager::sharedInstance().updateMasterController(nullptr);
}

void MediaControllerTest::cleanup()
{
    QVERIFY(QTest::qWaitFor([] { return BackgroundQueue::waitForDone(0); }));
}

void MediaControllerTest::loadsWhatIsSelected()
{
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    QSignalSpy changed(window.controller.get(), &MediaController::currentDidChange);
    window.controller->updateCurrentDCF(window.recording(0), false, nullptr);
    QCOMPARE(window.log.take(),
             (QStringList{u"list.select NORMAL/200101120000.MP4"_s, u"front.playWithPath NORMAL/200101120000.MP4"_s,
                          u"rear.playWithPath NORMAL/200101120000.MP4"_s, u"graph.draw NORMAL/200101120000.MP4"_s}));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(window.controller->currentDCF(), window.recording(0));
    QVERIFY(!window.rear.willStartPlay);
    QVERIFY(!window.rear.didStopPlaying);

    // The first start plays and no later one, such as that after a change of rate.
    QVERIFY(window.controller->listDidSelect());
    window.front.rate = 4;
    window.front.willStartPlay();
    QCOMPARE(window.log.take(), (QStringList{u"rear.updatePlaybackRate 4"_s, u"front.play"_s}));
    QVERIFY(!window.controller->listDidSelect());
    window.front.willStartPlay();
    QCOMPARE(window.log.take(), QStringList());

    // A picture goes over the video, and the next recording takes it away.
    window.controller->updateCurrentDCF(window.recording(1), true, picture(window));
    QCOMPARE(window.log.take(), (QStringList{u"front.playWithPath NORMAL/200101120001.MP4"_s, u"rear.playWithPath"_s,
                                             u"front.showImageWithPath PICTURE/200101120009.JPG"_s,
                                             u"rear.showImageWithPath"_s, u"graph.draw NORMAL/200101120001.MP4"_s}));
    QCOMPARE(window.controller->currentPicture(), picture(window));
    window.controller->updateCurrentDCF(window.recording(2), true, nullptr);
    QVERIFY(!window.controller->currentPicture());
    QCOMPARE(changed.size(), 3);
}

void MediaControllerTest::parsesFromTheSelectedRecording()
{
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    QSignalSpy finished(window.controller.get(), &MediaLibrary::parseDidFinish);
    MediaLibrary::DCFList parsed;
    connect(window.controller.get(), &MediaLibrary::recordingDidParse, this,
            [&](const std::shared_ptr<DCFInfo>& dcf) { parsed.push_back(dcf); });
    window.recording(2)->thumbnailPath.clear();
    window.controller->updateCurrentDCF(window.recording(0), true, nullptr);
    window.controller->updateCurrentDCF(window.recording(2), true, nullptr);
    window.controller->updateCurrentDCF(window.recording(1), true, nullptr);
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(parsed, (MediaLibrary::DCFList{window.recording(2), window.recording(0), window.recording(1)}));

    window.recording(2)->thumbnailPath.clear();
    window.controller->updateCurrentDCF(std::make_shared<DCFInfo>(drive.card.root(), u"NORMAL/x.MP4"_s), true, nullptr);
    QVERIFY(BackgroundQueue::waitForDone(0)); // one that isn't the library's can't be parsed
}

void MediaControllerTest::aSelectionOfSeveralPauses_data()
{
    QTest::addColumn<size_t>("count");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("none") << size_t(0) << QStringList();
    QTest::newRow("one") << size_t(1) << QStringList();
    QTest::newRow("two") << size_t(2) << QStringList{u"front.pause"_s, u"rear.pause"_s};
}

void MediaControllerTest::aSelectionOfSeveralPauses()
{
    QFETCH(size_t, count);
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    const auto& all = window.controller->mediaTree();
    const MediaLibrary::DCFList selected(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count));
    window.controller->updateSelectedDCFs(selected);
    QTEST(window.log.take(), "told");
    QCOMPARE(window.controller->selectedDCFs(), selected);
}

void MediaControllerTest::aTickKeepsTheRearInStep_data()
{
    // The front file is 60 s long and stands in its middle, the rear one has a length of its own.
    QTest::addColumn<double>("rearLength");
    QTest::addColumn<double>("rearFraction");
    QTest::addColumn<bool>("frontPlays");
    QTest::addColumn<bool>("rearPlays");
    QTest::addColumn<double>("rearRate");
    QTest::addColumn<bool>("dragging");
    QTest::addColumn<QStringList>("told");
    const QStringList jumps = {u"rear.setCurrentProgress 0.5"_s};
    QTest::newRow("together") << 60.0 << 0.5 << true << true << 1.0 << false << QStringList();
    QTest::newRow("almost a second ahead") << 100.0 << 0.5099 << true << true << 1.0 << false << QStringList();
    QTest::newRow("more than a second ahead")
        << 100.0 << 0.5101 << true << true << 1.0 << false << (QStringList{u"rear.play"_s} + jumps);
    QTest::newRow("more than a second behind")
        << 100.0 << 0.4899 << true << true << 1.0 << false << (QStringList{u"rear.play"_s} + jumps);
    QTest::newRow("both paused, within a hundredth")
        << 100.0 << 0.50009 << false << false << 1.0 << false << QStringList();
    QTest::newRow("both paused, apart") << 100.0 << 0.50011 << false << false << 1.0 << false
                                        << (QStringList{u"rear.pause"_s} + jumps);
    QTest::newRow("not started yet") << 100.0 << 0.0 << true << false << 1.0 << false
                                     << (QStringList{u"rear.play"_s} + jumps);
    QTest::newRow("still plays while the front is paused, close")
        << 100.0 << 0.505 << false << true << 1.0 << false << QStringList();
    QTest::newRow("stands still by its rate")
        << 60.0 << 0.5 << true << true << 0.0 << false
        << (QStringList{u"rear.play"_s} + jumps + QStringList{u"rear.updatePlaybackRate 1"_s});
    QTest::newRow("another rate") << 60.0 << 0.5 << true << true << 2.0 << false
                                  << QStringList{u"rear.updatePlaybackRate 1"_s};
    QTest::newRow("no file") << 0.0 << 0.0 << true << false << 1.0 << false << QStringList();
    QTest::newRow("the user drags on the graph")
        << 60.0 << 0.0 << true << true << 2.0 << true << QStringList{u"front.pause"_s, u"rear.pause"_s};
}

void MediaControllerTest::aTickKeepsTheRearInStep()
{
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    window.play(0, 60);
    window.front.fraction = 0.5;
    QFETCH(double, rearLength);
    QFETCH(double, rearFraction);
    QFETCH(bool, frontPlays);
    QFETCH(bool, rearPlays);
    QFETCH(double, rearRate);
    QFETCH(bool, dragging);
    window.front.playing = frontPlays;
    window.rear.length = rearLength;
    window.rear.fraction = rearFraction;
    window.rear.playing = rearPlays;
    window.rear.rate = rearRate;
    window.graph.dragging = dragging;
    QSignalSpy ticked(window.controller.get(), &MediaController::didTick);
    window.front.progressed();
    QFETCH(QStringList, told);
    const QStringList graphMoves = {u"graph.setProgressMax 1"_s, u"graph.setProgressMin 0"_s,
                                    u"graph.updateProgress 0.5"_s};
    const QStringList moment = {u"map.updateDCF NORMAL/200101120000.MP4 30 60"_s, u"graph.setCurrentSpeed -1"_s};
    QCOMPARE(window.log.take(), (dragging ? QStringList() : graphMoves) + told + moment);
    QCOMPARE(ticked.size(), 1);
}

void MediaControllerTest::aTickTellsTheTimeOfDay_data()
{
    QTest::addColumn<bool>("hasFileDate");
    QTest::addColumn<bool>("hasStartDate");
    QTest::addColumn<double>("date"); // at 15 s of 60
    const double base = secondsSince1970(noon);
    QTest::newRow("neither") << false << false << 0.0;
    QTest::newRow("the end is known") << true << false << base + 15;
    QTest::newRow("the start is known") << false << true << base + 1000 + 15;
    QTest::newRow("the start comes before the end") << true << true << base + 1000 + 15;
}

void MediaControllerTest::aTickTellsTheTimeOfDay()
{
    QFETCH(bool, hasFileDate);
    QFETCH(bool, hasStartDate);
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    QCOMPARE(window.controller->userDate(), 0.0);
    if (!hasFileDate)
        window.recording(0)->fileDate = {};
    if (hasStartDate)
        window.recording(0)->startDate = noon + 1000s;
    window.play(0, 60);
    window.front.fraction = 0.25;
    window.front.progressed();
    QTEST(window.controller->userDate(), "date");
    QCOMPARE(window.recording(0)->duration, 60.0);
}

void MediaControllerTest::theSpeedIsTheMaps()
{
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    window.map.shown = CustomLocation({35, 139}, 0, 10, 10, 0, 12.5, noon);
    window.play(0, 60);
    window.front.progressed();
    QCOMPARE(window.log.take().last(), u"graph.setCurrentSpeed 12.5"_s);
}

void MediaControllerTest::theRearIsSilentAndFollows_data()
{
    QTest::addColumn<bool>("frontPlays");
    QTest::addColumn<bool>("rearPlays");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("both play") << true << true << QStringList{u"rear.mutePlay"_s};
    QTest::newRow("the front is paused") << false << true << QStringList{u"rear.pause"_s};
    QTest::newRow("the rear is paused") << true << false << QStringList();
}

void MediaControllerTest::theRearIsSilentAndFollows()
{
    QFETCH(bool, frontPlays);
    QFETCH(bool, rearPlays);
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    window.play(0, 60);
    window.front.playing = frontPlays;
    window.rear.playing = rearPlays;
    window.rear.progressed();
    QTEST(window.log.take(), "told");
}

void MediaControllerTest::aTickPinsAPicture_data()
{
    // Of the second recording, which begins at 12:01.
    QTest::addColumn<qint64>("pictureMs"); // after the recording's start
    QTest::addColumn<double>("length");
    QTest::addColumn<QString>("date"); // which the recording has
    QTest::addColumn<QStringList>("told");
    const auto pinned = [](const char* fraction, const char* seconds, const char* length) {
        return QStringList{
            u"graph.updateProgress %1"_s.arg(QLatin1StringView(fraction)),
            u"front.setCurrentProgress %1"_s.arg(QLatin1StringView(fraction)),
            u"map.updateDCF NORMAL/200101120001.MP4 %1 %2"_s.arg(QLatin1StringView(seconds), QLatin1StringView(length)),
            u"graph.setCurrentSpeed -1"_s, u"front.pause"_s};
    };
    QTest::newRow("length unknown") << qint64(30'000) << 0.0 << u"end"_s << QStringList();
    QTest::newRow("before the start") << qint64(-1) << 60.0 << u"end"_s << aloneLines();
    QTest::newRow("at the start") << qint64(0) << 60.0 << u"end"_s << pinned("0", "0", "60");
    QTest::newRow("in the middle") << qint64(15'000) << 60.0 << u"end"_s << pinned("0.25", "15", "60");
    QTest::newRow("in single precision") << qint64(6'000) << 60.0 << u"end"_s << pinned("0.10000000149", "6", "60");
    QTest::newRow("at the end") << qint64(60'000) << 60.0 << u"end"_s << pinned("1", "60", "60");
    QTest::newRow("after the end") << qint64(60'001) << 60.0 << u"end"_s << aloneLines();
    QTest::newRow("at the end in single precision")
        << qint64(30'000'001) << 30'000.0 << u"end"_s << pinned("1", "30000.001", "30000");
    QTest::newRow("by the start") << qint64(45'000) << 60.0 << u"start"_s << pinned("0.75", "45", "60");
    QTest::newRow("no dates: from 1970 on") << qint64(30'000) << 60.0 << u"none"_s << aloneLines();
}

void MediaControllerTest::aTickPinsAPicture()
{
    QFETCH(qint64, pictureMs);
    QFETCH(double, length);
    QFETCH(QString, date);
    QFETCH(QStringList, told);
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    const auto dcf = window.recording(1);
    const Instant start = noon + 60s;
    dcf->fileDate = date == u"end" ? start + std::chrono::seconds(static_cast<int>(length)) : Instant{};
    if (date == u"start")
        dcf->startDate = start;
    const auto still = picture(window);
    still->fileDate = start + std::chrono::milliseconds(pictureMs);
    MediaControllerManager::sharedInstance().updateMasterController(window.controller.get());
    QSignalSpy sent(&MediaControllerManager::sharedInstance(),
                    &MediaControllerManager::masterMediaControllerDateDidUpdate);
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

void MediaControllerTest::aPictureWithoutARecording()
{
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    const auto still = picture(window);
    auto other = std::make_shared<PictureInfo>(*still);
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
}

void MediaControllerTest::nothingSelectedClearsThePanes()
{
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    window.play(0, 60);
    window.controller->updateCurrentDCF(nullptr, true, nullptr);
    QStringList cleared = without(aloneLines(), u"map"_s);
    cleared.replace(cleared.indexOf(u"front.showImageWithPath PICTURE/200101120009.JPG"_s),
                    u"front.showImageWithPath"_s);
    QCOMPARE(window.log.take(), cleared);
    QCOMPARE(window.controller->currentDCF(), window.recording(0));
}

void MediaControllerTest::playsOnAtTheEndOfAFile_data()
{
    QTest::addColumn<QList<size_t>>("arranged");
    QTest::addColumn<size_t>("current");
    QTest::addColumn<size_t>("next");
    QTest::newRow("the following one") << QList<size_t>{2, 0, 1} << size_t(2) << size_t(0);
    QTest::newRow("around the end") << QList<size_t>{2, 0, 1} << size_t(1) << size_t(2);
    QTest::newRow("not in the list") << QList<size_t>{1, 2} << size_t(0) << size_t(1);
    QTest::newRow("the only one, again") << QList<size_t>{1} << size_t(1) << size_t(1);
}

void MediaControllerTest::playsOnAtTheEndOfAFile()
{
    QFETCH(QList<size_t>, arranged);
    QFETCH(size_t, current);
    QFETCH(size_t, next);
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    window.list.arranged.clear();
    for (const size_t index : arranged)
        window.list.arranged.push_back(window.recording(index));
    window.play(current, 60);
    window.front.didStopPlaying(); // which the answer replaces
    QCOMPARE(window.controller->currentDCF(), window.recording(next));
    const QStringList told = window.log.take();
    QCOMPARE(told.first(), u"list.selectNext "_s + window.recording(current)->deltaPath);
    QCOMPARE(told.last(), u"graph.draw "_s + window.recording(next)->deltaPath);
    window.front.willStartPlay();
    QVERIFY(window.log.take().contains(u"front.play"_s));
}

void MediaControllerTest::missingPanes_data()
{
    QTest::addColumn<QStringList>("missing");
    for (const QString& pane : {u"list"_s, u"front"_s, u"rear"_s, u"graph"_s, u"map"_s})
        QTest::newRow(qPrintable(pane)) << QStringList{pane};
    QTest::newRow("all") << QStringList{u"list"_s, u"front"_s, u"rear"_s, u"graph"_s, u"map"_s};
}

void MediaControllerTest::missingPanes()
{
    QFETCH(QStringList, missing);
    struct Operation
    {
        QString drivenBy; // the pane without which nothing at all happens
        std::function<void(FakeWindow&, PlayerPane*)> run;
    };
    const QList<Operation> operations = {
        {{}, [](FakeWindow& w, PlayerPane*) { w.controller->updateCurrentDCF(w.recording(1), true, picture(w)); }},
        {{}, [](FakeWindow& w, PlayerPane*) { w.controller->updateCurrentDCF(nullptr, true, picture(w)); }},
        {u"list"_s, [](FakeWindow& w, PlayerPane*) { w.controller->updateCurrentDCF(w.recording(1), false, nullptr); }},
        {u"list"_s, [](FakeWindow& w, PlayerPane*) { w.controller->didStopPlayingAction(); }},
        {u"front"_s, [](FakeWindow& w, PlayerPane* front) { w.controller->progressAction(front); }},
        {u"front"_s,
         [](FakeWindow& w, PlayerPane* front) {
             picture(w)->fileDate = noon + 30s;
             w.controller->updateCurrentDCF(w.recording(0), true, picture(w));
             w.log.take();
             w.controller->progressAction(front);
         }},
        {u"front"_s, [](FakeWindow& w, PlayerPane* front) { w.controller->willStartAction(front); }},
        {{}, [](FakeWindow& w, PlayerPane*) { w.controller->updateProgress(0.75); }},
        {{}, [](FakeWindow& w, PlayerPane*) { w.controller->updateSelectedDCFs(w.controller->mediaTree()); }},
        {{}, [](FakeWindow& w, PlayerPane*) { w.controller->updateCurrentDate(secondsSince1970(noon) + 50); }},
    };
    const Drive drive;
    const auto told = [&](const Operation& operation, const QStringList& hidden) {
        FakeWindow window;
        window.open(drive.card.root());
        window.play(0, 60);
        window.front.fraction = 0.5;
        window.rear.rate = 2;
        MediaController& controller = *window.controller;
        if (hidden.contains(u"list"_s))
            controller.setDcfListVC(nullptr);
        if (hidden.contains(u"front"_s))
            controller.setPlayerVC(nullptr);
        if (hidden.contains(u"rear"_s))
            controller.setPlayerVCSecondary(nullptr);
        if (hidden.contains(u"graph"_s))
            controller.setGraphVC(nullptr);
        if (hidden.contains(u"map"_s))
            controller.setMapVC(nullptr);
        operation.run(window, controller.playerVC());
        return window.log.take();
    };
    for (const Operation& operation : operations) {
        QStringList expected = told(operation, {});
        QVERIFY(!expected.isEmpty());
        for (const QString& pane : missing)
            expected = operation.drivenBy == pane ? QStringList() : without(expected, pane);
        QCOMPARE(told(operation, missing), expected);
    }
}

void MediaControllerTest::earlierCallbacksAreIgnored()
{
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
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

    const auto keep = [&] {
        earlier = {window.front.willStartPlay, window.front.progressed, window.front.didStopPlaying};
    };
    earlier = {window.rear.progressed};
    window.rear.playing = true;
    window.controller->setPlayerVCSecondary(nullptr);
    QVERIFY(nothingHappens());
    window.controller->setPlayerVCSecondary(&window.rear);
    keep();
    window.controller->setPlayerVC(&window.rear);
    QVERIFY(nothingHappens());
    window.controller->setPlayerVC(&window.front);
    window.controller->updateCurrentDCF(window.recording(2), true, nullptr);
    window.log.take();
    keep();
    window.controller->dispose();
    QVERIFY(nothingHappens());
    window.controller.reset();
    QVERIFY(nothingHappens());
}

void MediaControllerTest::endsInTheMiddleOfACall_data()
{
    QTest::addColumn<int>("before"); // so many calls
    QTest::addColumn<bool>("destroys");
    const Drive drive(noon + 30s);
    FakeWindow window;
    window.open(drive.card.root());
    int before = 0;
    for (const QStringList& step : scenario(window)) {
        for (const QString& line : step) {
            QTest::addRow("dispose in %d, %s", before, qPrintable(line)) << before << false;
            if (!line.startsWith(u"graph.") && !line.startsWith(u"map."))
                QTest::addRow("destroy in %d, %s", before, qPrintable(line)) << before << true;
            ++before;
        }
    }
}

void MediaControllerTest::endsInTheMiddleOfACall()
{
    QFETCH(int, before);
    QFETCH(bool, destroys);
    const Drive drive(noon + 30s);
    FakeWindow window;
    window.open(drive.card.root());
    bool isOver = false;
    bool wentOn = false;
    connect(window.controller.get(), &MediaController::didTick, this, [&] { wentOn = wentOn || isOver; });
    connect(window.controller.get(), &MediaController::currentDidChange, this, [&] { wentOn = wentOn || isOver; });
    window.log.after(before, [&] {
        isOver = true;
        window.controller->dispose();
        if (destroys)
            window.controller.reset();
    });
    qsizetype calls = 0;
    for (const QStringList& step : scenario(window))
        calls += step.size();
    QVERIFY(isOver);
    QCOMPARE(calls, before + 1);
    QVERIFY(!wentOn);
    if (destroys)
        return;
    window.controller->dispose();
    window.controller->updateCurrentDCF(nullptr, true, nullptr);
    window.controller->showCurrentPictureWithoutDCF();
    window.controller->progressAction(&window.front);
    window.controller->willStartAction(&window.front);
    window.controller->didStopPlayingAction();
    window.controller->updateProgress(0.5);
    window.controller->updateCurrentDate(secondsSince1970(noon) + 90);
    QCOMPARE(window.log.take(), QStringList());
}

void MediaControllerTest::anotherSelectionInTheMiddleOfOne_data()
{
    QTest::addColumn<QString>("call");
    for (const QString& call : {u"front.playWithPath"_s, u"rear.playWithPath"_s, u"front.showImageWithPath"_s,
                                u"rear.showImageWithPath"_s, u"graph.draw"_s})
        QTest::newRow(qPrintable(call)) << call;
}

void MediaControllerTest::anotherSelectionInTheMiddleOfOne()
{
    QFETCH(QString, call);
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    QSignalSpy changed(window.controller.get(), &MediaController::currentDidChange);
    window.log.during(call, [&] { window.controller->updateCurrentDCF(window.recording(2), true, nullptr); });
    window.controller->updateCurrentDCF(window.recording(0), true, picture(window));
    QCOMPARE(window.controller->currentDCF(), window.recording(2));
    const QStringList told = window.log.take();
    QCOMPARE(told.mid(told.size() - 3), (QStringList{u"front.playWithPath NORMAL/200101120002.MP4"_s,
                                                     u"rear.playWithPath"_s, u"graph.draw NORMAL/200101120002.MP4"_s}));
    QVERIFY(!window.controller->currentPicture());
    QCOMPARE(changed.size(), 1);
    window.front.willStartPlay();
    QCOMPARE(window.log.take(), QStringList{u"front.play"_s});
}

void MediaControllerTest::ticksDontNest()
{
    const Drive drive(noon + 90s);
    FakeWindow window;
    window.open(drive.card.root());
    window.controller->updateCurrentDCF(window.recording(1), true, picture(window));
    window.front.length = 60;
    window.log.take();
    // A player that tells the new place at once.
    window.log.during(u"front.setCurrentProgress"_s, window.front.progressed);
    window.front.progressed();
    QCOMPARE(window.log.take().count(u"front.setCurrentProgress 0.5"_s), 1);
    window.front.progressed();
    QCOMPARE(window.log.take().count(u"front.setCurrentProgress 0.5"_s), 1);

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

void MediaControllerTest::anotherCardHasNoPicture()
{
    const Drive drive;
    FakeWindow window;
    window.open(drive.card.root());
    window.play(0, 60);
    window.controller->updateSelectedDCFs({window.recording(0)});
    window.controller->updateCurrentDCF(window.recording(1), true, picture(window));
    window.open(drive.card.root());
    QVERIFY(!window.controller->currentPicture());
    QVERIFY(window.controller->selectedDCFs().empty());
    // The players still show the former card: they are kept in step, and the map has nothing to follow.
    window.log.take();
    window.front.fraction = 0.5;
    window.front.progressed();
    QStringList told = window.log.take();
    QVERIFY(told.contains(u"rear.setCurrentProgress 0.5"_s));
    QCOMPARE(without(told, u"map"_s), told);
    QCOMPARE(window.controller->userDate(), 0.0);
}

QTEST_MAIN(MediaControllerTest)
#include "MediaControllerTest.moc"
