#include "playback/MediaControllerManager.h"

#include "platform/BackgroundQueue.h"
#include "playback/FakePanes.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"

#include <QSignalSpy>
#include <QTest>

#include <chrono>
#include <vector>

using namespace cardreel;
using namespace cardreel::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

const Instant noon = utc(2020, 1, 1, 12, 0);
const double noonSeconds = secondsSince1970(noon);

MediaControllerManager& manager()
{
    return MediaControllerManager::sharedInstance();
}

/// One card with three recordings of a minute from noon on, open in several windows, the first of which leads.
struct Windows
{
    CardBuilder card;
    std::vector<std::unique_ptr<FakeWindow>> all;

    explicit Windows(int count)
    {
        for (int i = 0; i < 3; ++i)
            card.file(u"NORMAL/20010112000%1.MP4"_s.arg(i), "x", noon + 60s * (i + 1));
        for (int i = 0; i < count; ++i) {
            all.push_back(std::make_unique<FakeWindow>());
            all.back()->open(card.root());
        }
        manager().updateMasterController(all.front()->controller.get());
    }
    FakeWindow& master() { return *all.front(); }
    FakeWindow& follower(size_t index = 0) { return *all.at(index + 1); }
    /// The master plays its recording at that second.
    void tickAt(double seconds)
    {
        master().front.fraction = seconds / master().front.length;
        master().front.progressed();
    }
};

} // namespace

class MediaControllerManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void announcesTheMaster();
    void relaysOnlyTheMastersTime();
    void findsTheRecordingOfATime_data();
    void findsTheRecordingOfATime();
    void theFirstOfSeveralRecordingsIsTaken();
    void jumpsWhenItIsOff_data();
    void jumpsWhenItIsOff();
    void takesTheMastersRate_data();
    void takesTheMastersRate();
    void everyOtherWindowFollows();
    void theMasterRole_data();
    void theMasterRole();
    void windowsCloseDuringABroadcast_data();
    void windowsCloseDuringABroadcast();
};

void MediaControllerManagerTest::cleanup()
{
    manager().updateMasterController(nullptr);
    QVERIFY(BackgroundQueue::waitForDone(0)); // every recording counted as parsed
}

void MediaControllerManagerTest::announcesTheMaster()
{
    QSignalSpy changed(&manager(), &MediaControllerManager::masterMediaControllerDidChange);
    {
        MediaController controller;
        manager().updateMasterController(&controller);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed[0][0].value<MediaController*>(), &controller);
        QVERIFY(controller.isMasterController());
        manager().updateMasterController(nullptr);
        QVERIFY(!controller.isMasterController());
        manager().updateMasterController(&controller);
    }
    QVERIFY(!manager().masterController());
    QCOMPARE(changed.size(), 2); // what leaves isn't announced

    MediaController disposed;
    manager().updateMasterController(&disposed);
    disposed.dispose();
    QVERIFY(!manager().masterController());
}

void MediaControllerManagerTest::relaysOnlyTheMastersTime()
{
    MediaController master;
    const MediaController other;
    QSignalSpy sent(&manager(), &MediaControllerManager::masterMediaControllerDateDidUpdate);
    manager().updateReferenceTime(1, &master);
    manager().updateReferenceTime(1, nullptr);
    manager().updateMasterController(&master);
    manager().updateReferenceTime(2, &other);
    manager().updateReferenceTime({}, &master);
    manager().updateReferenceTime(2, nullptr);
    QCOMPARE(sent.size(), 0);
    manager().updateReferenceTime(noonSeconds + 0.125, &master);
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent[0][0].toDouble(), noonSeconds + 0.125);
}

void MediaControllerManagerTest::findsTheRecordingOfATime_data()
{
    // By a follower with the three recordings; `duration` is what it knows of the second one, 12:01 to 12:02.
    QTest::addColumn<double>("seconds"); // after noon
    QTest::addColumn<double>("duration");
    QTest::addColumn<bool>("hasDate");
    QTest::addColumn<QStringList>("told");
    const auto found = [](const char* fraction) {
        return QStringList{u"list.select NORMAL/200101120001.MP4"_s, u"front.playWithPath NORMAL/200101120001.MP4"_s,
                           u"rear.playWithPath"_s, u"graph.draw NORMAL/200101120001.MP4"_s,
                           u"front.setCurrentProgress %1"_s.arg(QLatin1StringView(fraction))};
    };
    QTest::newRow("long before") << -1000.0 << 50.0 << true << QStringList();
    QTest::newRow("just before the start") << 69.9 << 50.0 << true << QStringList();
    QTest::newRow("the very start") << 70.0 << 50.0 << true << QStringList();
    QTest::newRow("just after the start") << 70.5 << 50.0 << true << found("0.01");
    QTest::newRow("within") << 95.0 << 50.0 << true << found("0.5");
    QTest::newRow("just before the end") << 119.5 << 50.0 << true << found("0.99");
    QTest::newRow("the very end") << 120.0 << 50.0 << true << QStringList();
    QTest::newRow("never played") << 119.0 << 0.0 << true << found("0");
    QTest::newRow("never played, three minutes before its end") << -60.0 << 0.0 << true << QStringList();
    QTest::newRow("never played, a little later") << -59.5 << 0.0 << true << found("0");
    QTest::newRow("no date") << 95.0 << 50.0 << false << QStringList();
    QTest::newRow("no date, which isn't 1970") << -noonSeconds - 30 << 50.0 << false << QStringList();
    QTest::newRow("1970, as of a recording without dates") << -noonSeconds << 50.0 << true << QStringList();
}

void MediaControllerManagerTest::findsTheRecordingOfATime()
{
    QFETCH(double, seconds);
    QFETCH(double, duration);
    QFETCH(bool, hasDate);
    QFETCH(QStringList, told);
    Windows windows(2);
    FakeWindow& follower = windows.follower();
    follower.recording(0)->duration = 1;
    follower.recording(1)->duration = duration;
    follower.recording(2)->duration = 1;
    if (!hasDate)
        follower.recording(1)->fileDate = {};
    follower.front.rate = windows.master().front.rate = 1;
    manager().updateReferenceTime(noonSeconds + seconds, windows.master().controller.get());
    QCOMPARE(follower.log.take(), told);
    QVERIFY(told.isEmpty() || follower.controller->listDidSelect()); // so it will play on its own
}

void MediaControllerManagerTest::theFirstOfSeveralRecordingsIsTaken()
{
    Windows windows(2);
    FakeWindow& follower = windows.follower();
    for (size_t i = 0; i < 3; ++i)
        follower.recording(i)->duration = i == 0 ? 10 : 300;
    follower.controller->updateCurrentDate(noonSeconds + 30);
    QCOMPARE(follower.controller->currentDCF(), follower.recording(1));
}

void MediaControllerManagerTest::jumpsWhenItIsOff_data()
{
    // The follower shows 12:00:30 of its first recording, 60 s long.
    QTest::addColumn<double>("masterSeconds");
    QTest::addColumn<double>("rate");
    QTest::addColumn<QStringList>("told");
    const auto jumps = [](const char* fraction) {
        return QStringList{u"front.setCurrentProgress %1"_s.arg(QLatin1StringView(fraction))};
    };
    QTest::newRow("together") << 30.0 << 1.0 << QStringList();
    QTest::newRow("close behind") << 30.25 << 1.0 << QStringList();
    QTest::newRow("close before") << 29.75 << 1.0 << QStringList();
    QTest::newRow("behind") << 30.375 << 1.0 << jumps("0.50625");
    QTest::newRow("before") << 29.625 << 1.0 << jumps("0.49375");
    QTest::newRow("twice as fast, close") << 30.5 << 2.0 << QStringList();
    QTest::newRow("twice as fast, behind") << 30.75 << 2.0 << jumps("0.5125");
    QTest::newRow("half as fast, behind") << 30.25 << 0.5 << jumps("0.504166666667");
    QTest::newRow("standing still, together") << 30.0 << 0.0 << jumps("0.5");
    QTest::newRow("standing still, close") << 30.25 << 0.0 << jumps("0.504166666667");
}

void MediaControllerManagerTest::jumpsWhenItIsOff()
{
    QFETCH(double, masterSeconds);
    QFETCH(double, rate);
    Windows windows(2);
    FakeWindow& follower = windows.follower();
    follower.play(0, 60);
    follower.front.fraction = 0.5;
    follower.front.progressed();
    follower.log.take();
    follower.front.rate = windows.master().front.rate = rate;
    manager().updateReferenceTime(noonSeconds + masterSeconds, windows.master().controller.get());
    QTEST(follower.log.take(), "told");
}

void MediaControllerManagerTest::takesTheMastersRate_data()
{
    QTest::addColumn<double>("masterRate");
    QTest::addColumn<double>("followerRate");
    QTest::addColumn<QStringList>("masterTold");
    QTest::addColumn<QStringList>("followerTold");
    const QStringList eight = {u"front.updatePlaybackRate 8"_s};
    QTest::newRow("the same") << 1.0 << 1.0 << QStringList() << QStringList();
    QTest::newRow("slow") << 0.5 << 1.0 << QStringList() << QStringList{u"front.updatePlaybackRate 0.5"_s};
    QTest::newRow("the limit") << 8.0 << 1.0 << QStringList() << eight;
    QTest::newRow("above") << 16.0 << 1.0 << eight << eight;
    QTest::newRow("above, both") << 16.0 << 16.0 << eight << eight;
    QTest::newRow("above, the follower at the limit") << 16.0 << 8.0 << eight << QStringList();
    QTest::newRow("stands still") << 0.0 << 1.0 << QStringList() << QStringList{u"front.updatePlaybackRate 0"_s};
}

void MediaControllerManagerTest::takesTheMastersRate()
{
    QFETCH(double, masterRate);
    QFETCH(double, followerRate);
    Windows windows(2);
    FakeWindow& follower = windows.follower();
    follower.play(0, 60);
    follower.front.fraction = 0.5;
    follower.front.progressed();
    follower.log.take();
    windows.master().front.rate = masterRate;
    follower.front.rate = followerRate;
    manager().updateReferenceTime(noonSeconds + 30, windows.master().controller.get());
    QTEST(windows.master().log.take(), "masterTold");
    QTEST(follower.log.take(), "followerTold");
}

void MediaControllerManagerTest::everyOtherWindowFollows()
{
    Windows windows(4);
    windows.follower(1).controller->setCanReloadMedia(false);
    windows.master().play(2, 60);
    windows.tickAt(15);
    for (const size_t i : {size_t(0), size_t(2)}) {
        FakeWindow& follower = windows.follower(i);
        QCOMPARE(follower.controller->currentDCF(), follower.recording(2));
        follower.front.length = follower.rear.length = 60;
        follower.front.willStartPlay();
        QVERIFY(follower.front.playing);
        follower.front.fraction = 0.5;
        follower.front.progressed();
        follower.log.take();
    }
    QCOMPARE(windows.follower(1).log.take(), QStringList());

    // One has run ahead and comes back, without loading its recording again; the master is told nothing.
    windows.master().log.take();
    windows.tickAt(15.25);
    QCOMPARE(windows.follower(0).log.take(), QStringList{u"front.setCurrentProgress 0.254166666667"_s});
    QVERIFY(!windows.master().log.take().contains(u"list.select NORMAL/200101120002.MP4"_s));

    // Nor does it follow itself.
    windows.master().controller->updateCurrentDate(noonSeconds + 130);
    QCOMPARE(windows.master().log.take(), QStringList());

    // Another window takes over; the one that led follows.
    manager().updateMasterController(windows.follower(2).controller.get());
    windows.follower(2).front.fraction = 0.75;
    windows.follower(2).front.progressed();
    QCOMPARE(windows.master().log.take(), QStringList{u"front.setCurrentProgress 0.75"_s});
}

void MediaControllerManagerTest::theMasterRole_data()
{
    QTest::addColumn<QString>("event");
    for (const QString& event : {u"cleared"_s, u"disposed"_s, u"destroyed"_s, u"unsubscribed"_s})
        QTest::newRow(qPrintable(event)) << event;
}

void MediaControllerManagerTest::theMasterRole()
{
    QFETCH(QString, event);
    Windows windows(2);
    windows.master().play(0, 60);
    windows.follower().play(0, 60);
    windows.follower().front.progressed();
    windows.follower().log.take();
    windows.tickAt(30);
    QVERIFY(!windows.follower().log.take().isEmpty());
    if (event == u"cleared")
        manager().updateMasterController(nullptr);
    else if (event == u"disposed")
        windows.master().controller->dispose();
    else if (event == u"destroyed")
        windows.master().controller.reset();
    else
        windows.follower().controller->removeNotification();
    windows.tickAt(40);
    QCOMPARE(windows.follower().log.take(), QStringList());
    // Asked directly it still finds its place; without a master there is no rate to take.
    windows.follower().controller->updateCurrentDate(noonSeconds + 15);
    QCOMPARE(windows.follower().log.take(), QStringList{u"front.setCurrentProgress 0.25"_s});
}

void MediaControllerManagerTest::windowsCloseDuringABroadcast_data()
{
    QTest::addColumn<size_t>("told"); // the window that closes another while it is told this
    QTest::addColumn<QString>("call");
    QTest::addColumn<size_t>("closes");
    for (const QString& call :
         {u"list.select"_s, u"front.playWithPath"_s, u"front.setCurrentProgress"_s, u"front.updatePlaybackRate"_s}) {
        QTest::addRow("the master in %s", qPrintable(call)) << size_t(1) << call << size_t(0);
        QTest::addRow("the follower itself in %s", qPrintable(call)) << size_t(1) << call << size_t(1);
        QTest::addRow("the next follower in %s", qPrintable(call)) << size_t(1) << call << size_t(2);
    }
    QTest::newRow("the follower while it slows the master") << size_t(0) << u"front.updatePlaybackRate"_s << size_t(1);
}

void MediaControllerManagerTest::windowsCloseDuringABroadcast()
{
    QFETCH(size_t, told);
    QFETCH(QString, call);
    QFETCH(size_t, closes);
    Windows windows(4);
    windows.master().front.rate = 16;
    windows.master().play(1, 60);
    bool wentOn = false;
    connect(windows.all[0]->controller.get(), &MediaController::didTick, this, [&] { wentOn = true; });
    bool isOver = false;
    windows.all[told]->log.during(call, [&] {
        isOver = true;
        windows.all[closes]->controller.reset();
        windows.all[closes]->log.take();
    });
    windows.tickAt(15);
    QVERIFY(isOver);
    QCOMPARE(windows.all[closes]->log.take(), QStringList());
    QCOMPARE(wentOn, closes != 0);
    // The others aren't held up.
    QCOMPARE(windows.follower(2).controller->currentDCF(), windows.follower(2).recording(1));
}

QTEST_MAIN(MediaControllerManagerTest)
#include "MediaControllerManagerTest.moc"
