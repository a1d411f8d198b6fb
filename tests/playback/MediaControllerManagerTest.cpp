#include "playback/MediaControllerManager.h"

#include "platform/BackgroundQueue.h"
#include "playback/FakePanes.h"
#include "support/TestHome.h"

#include <QSignalSpy>
#include <QTest>

#include <array>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

MediaControllerManager& manager()
{
    return MediaControllerManager::sharedInstance();
}

/// One card open in four windows, the first of which leads.
struct Windows
{
    DriveCard card;
    std::array<FakeWindow, 4> all;
    FakeWindow& master = all[0];
    FakeWindow& follower = all[1];

    Windows()
    {
        for (FakeWindow& window : all)
            window.open(card.root());
        manager().updateMasterController(master.controller.get());
    }
    /// The master plays its recording at that second.
    void tickAt(double seconds)
    {
        master.front.fraction = seconds / master.front.length;
        master.front.progressed();
    }
    /// The follower shows the middle of its first recording, 12:00:30.
    void playFollower()
    {
        follower.play(0, 60);
        follower.front.fraction = 0.5;
        follower.front.progressed();
        follower.log.take();
    }
    /// What the follower is told of a moment, in seconds after noon.
    QStringList followerAt(double seconds)
    {
        manager().updateReferenceTime(noonSeconds + seconds, master.controller.get());
        return follower.log.take();
    }
};

QStringList jumpsTo(const QString& fraction)
{
    return {u"front.setCurrentProgress "_s + fraction};
}

QStringList takesRate(const QString& rate)
{
    return {u"front.updatePlaybackRate "_s + rate};
}

} // namespace

class MediaControllerManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        manager().updateMasterController(nullptr);
        QVERIFY(BackgroundQueue::waitForDone(0)); // every recording counted as parsed
    }

    void announcesTheMasterAndItsTimeOnly()
    {
        QSignalSpy changed(&manager(), &MediaControllerManager::masterMediaControllerDidChange);
        QSignalSpy sent(&manager(), &MediaControllerManager::masterMediaControllerDateDidUpdate);
        {
            MediaController controller;
            const MediaController other;
            manager().updateReferenceTime(1, nullptr);
            manager().updateMasterController(&controller);
            QCOMPARE(changed.takeFirst().front().value<MediaController*>(), &controller);
            manager().updateReferenceTime(2, &other);
            manager().updateReferenceTime({}, &controller);
            manager().updateReferenceTime(2, nullptr);
            QCOMPARE(sent.size(), 0);
            manager().updateReferenceTime(noonSeconds + 0.125, &controller);
            QCOMPARE(sent.takeFirst(), QVariantList{noonSeconds + 0.125});
        }
        QVERIFY(!manager().masterController());
        QCOMPARE(changed.size(), 0); // what leaves isn't announced
    }

    void findsTheRecordingOfATime_data()
    {
        // By a follower with the three recordings; `duration` is what it knows of the second one, 12:01 to 12:02.
        QTest::addColumn<double>("seconds"); // after noon
        QTest::addColumn<double>("duration");
        QTest::addColumn<QString>("fraction"); // empty when it isn't found
        QTest::newRow("no date") << 95.0 << -1.0 << QString();
        QTest::newRow("no date, which isn't 1970") << -noonSeconds - 30 << -1.0 << QString();
        QTest::newRow("1970, as of a recording without dates") << -noonSeconds << 50.0 << QString();
        QTest::newRow("the very start") << 70.0 << 50.0 << QString();
        QTest::newRow("just after the start") << 70.5 << 50.0 << u"0.01"_s;
        QTest::newRow("just before the end") << 119.5 << 50.0 << u"0.99"_s;
        QTest::newRow("the very end") << 120.0 << 50.0 << QString();
        QTest::newRow("never played") << 119.0 << 0.0 << u"0"_s;
        QTest::newRow("never played, three minutes before its end") << -60.0 << 0.0 << QString();
        QTest::newRow("never played, a little later") << -59.5 << 0.0 << u"0"_s;
    }
    void findsTheRecordingOfATime()
    {
        QFETCH(double, duration);
        QFETCH(double, seconds);
        QFETCH(QString, fraction);
        Windows windows;
        FakeWindow& follower = windows.follower;
        follower.recording(0)->duration = follower.recording(2)->duration = 1;
        follower.recording(1)->duration = duration;
        if (duration < 0)
            follower.recording(1)->fileDate = {};
        const QStringList loads = {u"list.select NORMAL/200101120001.MP4"_s,
                                   u"front.playWithPath NORMAL/200101120001.MP4"_s, u"rear.playWithPath"_s,
                                   u"graph.draw NORMAL/200101120001.MP4"_s};
        const bool isFound = !fraction.isEmpty();
        QCOMPARE(windows.followerAt(seconds), isFound ? loads + jumpsTo(fraction) : QStringList());
        QCOMPARE(follower.controller->listDidSelect(), isFound); // so it will play on its own
        // Of several recordings the first is taken.
        follower.recording(1)->duration = follower.recording(2)->duration = 300;
        follower.recording(1)->fileDate = follower.recording(2)->fileDate;
        windows.followerAt(30);
        QCOMPARE(follower.controller->currentDCF(), follower.recording(1));
    }

    void jumpsWhenItIsOff()
    {
        Windows windows;
        windows.playFollower();
        const auto toldAt = [&windows](double seconds, double rate) {
            windows.follower.front.rate = windows.master.front.rate = rate;
            return windows.followerAt(seconds); // the follower is at 30
        };
        QCOMPARE(toldAt(30.25, 1), QStringList());
        QCOMPARE(toldAt(29.75, 1), QStringList());
        QCOMPARE(toldAt(30.5, 2), QStringList());
        QCOMPARE(toldAt(30.375, 1), jumpsTo(u"0.50625"_s));
        QCOMPARE(toldAt(29.625, 1), jumpsTo(u"0.49375"_s));
        QCOMPARE(toldAt(30.75, 2), jumpsTo(u"0.5125"_s));
        QCOMPARE(toldAt(30, 0), jumpsTo(u"0.5"_s)); // standing still
    }

    void takesTheMastersRate()
    {
        Windows windows;
        windows.playFollower();
        const auto told = [&windows](double masterRate, double followerRate) {
            windows.master.front.rate = masterRate;
            windows.follower.front.rate = followerRate;
            const QStringList follower = windows.followerAt(30);
            return QList<QStringList>{windows.master.log.take(), follower};
        };
        QCOMPARE(told(1, 1), (QList<QStringList>{{}, {}}));
        QCOMPARE(told(0.5, 1), (QList<QStringList>{{}, takesRate(u"0.5"_s)}));
        QCOMPARE(told(0, 1), (QList<QStringList>{{}, takesRate(u"0"_s)}));
        QCOMPARE(told(8, 1), (QList<QStringList>{{}, takesRate(u"8"_s)}));
        QCOMPARE(told(16, 16), (QList<QStringList>{takesRate(u"8"_s), takesRate(u"8"_s)}));
        QCOMPARE(told(16, 8), (QList<QStringList>{takesRate(u"8"_s), {}}));
    }

    void everyOtherWindowFollows()
    {
        Windows windows;
        windows.all[2].controller->setCanReloadMedia(false);
        windows.master.play(2, 60);
        windows.tickAt(15);
        for (FakeWindow* follower : {&windows.all[1], &windows.all[3]}) {
            QCOMPARE(follower->controller->currentDCF(), follower->recording(2));
            follower->play(2, 60);
            follower->front.fraction = 0.5;
            follower->front.progressed();
            follower->log.take();
        }
        QCOMPARE(windows.all[2].log.take(), QStringList());

        // One has run ahead and comes back, without loading its recording again.
        windows.tickAt(15.25);
        QCOMPARE(windows.follower.log.take(), jumpsTo(u"0.254166666667"_s));
        // The master doesn't follow itself.
        windows.master.log.take();
        windows.master.controller->updateCurrentDate(noonSeconds + 130);
        QCOMPARE(windows.master.log.take(), QStringList());
        // Another window takes over; the one that led follows.
        manager().updateMasterController(windows.all[3].controller.get());
        windows.all[3].front.fraction = 0.75;
        windows.all[3].front.progressed();
        QCOMPARE(windows.master.log.take(), jumpsTo(u"0.75"_s));
    }

    void theLeadEnds()
    {
        for (const QByteArray event : {"cleared", "disposed", "destroyed", "unsubscribed"}) {
            Windows windows;
            windows.master.play(0, 60);
            windows.playFollower();
            windows.tickAt(40);
            QVERIFY(!windows.follower.log.take().isEmpty());
            if (event == "cleared")
                manager().updateMasterController(nullptr);
            else if (event == "disposed")
                windows.master.controller->dispose();
            else if (event == "destroyed")
                windows.master.controller.reset();
            else
                windows.follower.controller->removeNotification();
            QCOMPARE(manager().masterController() != nullptr, event == "unsubscribed");
            windows.tickAt(50);
            QCOMPARE(windows.follower.log.take(), QStringList());
            // Asked directly it still finds its place; without a master there is no rate to take.
            windows.follower.controller->updateCurrentDate(noonSeconds + 15);
            QCOMPARE(windows.follower.log.take(), jumpsTo(u"0.25"_s));
        }
    }

    void windowsCloseDuringABroadcast_data()
    {
        QTest::addColumn<size_t>("told"); // the window that closes another while it is told this
        QTest::addColumn<QString>("call");
        QTest::addColumn<size_t>("closes");
        const QString rate = u"front.updatePlaybackRate"_s;
        for (const QString& call : {u"list.select"_s, u"front.playWithPath"_s, u"front.setCurrentProgress"_s, rate}) {
            for (const size_t closes : {0U, 1U, 2U}) // the master, the follower itself, the next follower
                QTest::addRow("%d in %s", int(closes), qPrintable(call)) << size_t(1) << call << closes;
        }
        QTest::newRow("the follower while it slows the master") << size_t(0) << rate << size_t(1);
    }
    void windowsCloseDuringABroadcast()
    {
        QFETCH(size_t, told);
        QFETCH(QString, call);
        QFETCH(size_t, closes);
        Windows windows;
        windows.master.front.rate = 16;
        windows.master.play(1, 60);
        bool wentOn = false;
        connect(windows.master.controller.get(), &MediaController::didTick, this, [&] { wentOn = true; });
        bool isOver = false;
        windows.all[told].log.during(call, [&] {
            isOver = true;
            windows.all[closes].controller.reset();
            windows.all[closes].log.take();
        });
        windows.tickAt(15);
        QVERIFY(isOver);
        QCOMPARE(windows.all[closes].log.take(), QStringList());
        QCOMPARE(wentOn, closes != 0);
        // The others aren't held up.
        QCOMPARE(windows.all[3].controller->currentDCF(), windows.all[3].recording(1));
    }
};

QTEST_MAIN(MediaControllerManagerTest)
#include "MediaControllerManagerTest.moc"
