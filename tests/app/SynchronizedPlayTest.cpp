#include "app/SynchronizedPlay.h"

#include "playback/MediaController.h"
#include "playback/MediaControllerManager.h"
#include "support/TestHome.h"

#include <QSignalSpy>
#include <QTest>

#include <array>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

/// Notes what it was told.
struct FakeWindow : SynchronizedWindow
{
    MediaController controller;
    bool card = true, rear = true, synchronized = false, silenced = false, leading = false;
    QString told;

    MediaController& mediaController() override { return controller; }
    bool hasCard() const override { return card; }
    bool isRearCameraOn() const override { return rear; }
    void setSynchronized(bool value) override { synchronized = value; }
    void setSilenced(bool value) override { silenced = value; }
    void setLeading(bool value) override { leading = value; }
    void tellSynchronizationCanceled() override { told += u'c'; }
    void tellToSelectMedia() override { told += u'm'; }
};

MediaController* master()
{
    return MediaControllerManager::sharedInstance().masterController();
}

/// Windows, the first of which has the keyboard.
struct Desktop
{
    std::array<FakeWindow, 3> windows;
    SynchronizedPlay play;

    /// A letter a window: c with card, front alone; C with card and rear; e without card.
    explicit Desktop(const QString& kinds)
    {
        for (qsizetype i = 0; i < kinds.size(); ++i) {
            FakeWindow& window = windows.at(static_cast<size_t>(i));
            window.card = kinds[i] != u'e';
            window.rear = kinds[i] != u'c';
            play.addWindow(&window);
        }
        play.windowDidBecomeKey(&windows[0]);
    }
    /// A letter a window, x for yes.
    QString all(bool FakeWindow::*field) const
    {
        QString result;
        for (const FakeWindow& window : windows)
            result += window.*field ? u'x' : u'-';
        return result;
    }
    QString leading() const { return all(&FakeWindow::leading); }
    QString silenced() const { return all(&FakeWindow::silenced); }
};

} // namespace

class SynchronizedPlayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(!master()); }

    void whoIsSynchronized_data()
    {
        QTest::addColumn<QString>("windows");
        QTest::addColumn<QString>("expected");
        QTest::newRow("alone and empty") << u"e"_s << u"---"_s;
        QTest::newRow("alone") << u"C"_s << u"---"_s;
        QTest::newRow("two fronts") << u"cc"_s << u"xx-"_s;
        QTest::newRow("a front beside an empty one") << u"ce"_s << u"-x-"_s;
        QTest::newRow("a pair beside an empty one") << u"Ce"_s << u"xx-"_s;
        QTest::newRow("three, one of them empty") << u"cCe"_s << u"-xx"_s;
    }
    void whoIsSynchronized()
    {
        QFETCH(QString, windows);
        const Desktop desktop(windows);
        QTEST(desktop.all(&FakeWindow::synchronized), "expected");
    }

    void theLeadAndTheSoundGoWithTheKeyboard()
    {
        Desktop desktop(u"CCC"_s);
        QCOMPARE(desktop.silenced(), u"-xx"_s);
        QVERIFY(!master()); // nobody asked for one
        desktop.play.setLeading(&desktop.windows[0], true);
        desktop.play.windowDidResignKey(&desktop.windows[0]);
        QCOMPARE(desktop.silenced(), u"xxx"_s);
        QCOMPARE(desktop.leading(), u"x--"_s);
        desktop.play.windowDidBecomeKey(&desktop.windows[2]);
        QCOMPARE(desktop.silenced(), u"xx-"_s);
        QCOMPARE(desktop.leading(), u"--x"_s);
        QCOMPARE(master(), &desktop.windows[2].controller);
        // The order in which two windows hear of it is up to the desktop.
        desktop.play.windowDidBecomeKey(&desktop.windows[1]);
        desktop.play.windowDidResignKey(&desktop.windows[2]);
        QCOMPARE(desktop.silenced(), u"x-x"_s);
        QCOMPARE(desktop.leading(), u"-x-"_s);
        // The last window is heard again, whoever had the keyboard.
        desktop.play.removeWindow(&desktop.windows[1]);
        desktop.play.removeWindow(&desktop.windows[2]);
        QVERIFY(!desktop.windows[0].silenced && !desktop.windows[0].synchronized);
    }

    void windowsOutsideArentTouched()
    {
        Desktop desktop(u"ce"_s);
        desktop.play.windowDidBecomeKey(&desktop.windows[1]);
        desktop.play.setLeading(&desktop.windows[1], true);
        QCOMPARE(desktop.silenced(), u"---"_s);
        desktop.play.windowDidBecomeKey(&desktop.windows[0]);
        QCOMPARE(desktop.leading(), u"-x-"_s);
        QCOMPARE(desktop.silenced(), u"-x-"_s);
        // The second card makes all of them one.
        desktop.windows[1].card = true;
        desktop.play.windowDidChange();
        QVERIFY(desktop.windows[0].synchronized);
    }

    void aLoneLeaderGetsCompany()
    {
        Desktop desktop(u"C"_s);
        QSignalSpy wanted(&desktop.play, &SynchronizedPlay::newWindowRequested);
        desktop.play.setLeading(&desktop.windows[0], true);
        QCOMPARE(wanted.size(), 1);
        desktop.windows[1].card = false;
        desktop.play.addWindow(&desktop.windows[1]);
        QCOMPARE(desktop.leading(), u"x--"_s);
        desktop.play.windowDidBecomeKey(&desktop.windows[1]);
        QCOMPARE(desktop.leading(), u"-x-"_s);
        desktop.play.setLeading(&desktop.windows[0], true);
        QCOMPARE(wanted.size(), 1);
        // A lead taken elsewhere is shown.
        MediaControllerManager::sharedInstance().updateMasterController(&desktop.windows[1].controller);
        QCOMPARE(desktop.leading(), u"-x-"_s);
    }

    void leadingEndsByTheButton()
    {
        Desktop desktop(u"CC"_s);
        desktop.play.setLeading(&desktop.windows[0], true);
        desktop.play.setLeading(&desktop.windows[0], false);
        QCOMPARE(desktop.leading(), u"---"_s);
        QCOMPARE(desktop.windows[0].told, u"c"_s);
        QCOMPARE(desktop.windows[1].told, QString());
        desktop.play.windowDidBecomeKey(&desktop.windows[1]);
        QVERIFY(!master());
    }

    void anyWindowThatClosesEndsTheLead()
    {
        for (const size_t closing : {0U, 2U}) { // the leader, a follower
            Desktop desktop(u"CCC"_s);
            desktop.play.setLeading(&desktop.windows[0], true);
            desktop.play.removeWindow(&desktop.windows[closing]);
            QVERIFY(!master());
            QCOMPARE(desktop.leading(), closing == 0 ? u"x--"_s : u"---"_s); // nothing is told to the one that went
            // It hears of it once more when it is destroyed.
            desktop.play.setLeading(&desktop.windows[1], true);
            desktop.play.removeWindow(&desktop.windows[closing]);
            QCOMPARE(master(), &desktop.windows[1].controller);
        }
    }

    void aWindowWithoutCardAsksForOneEachTime()
    {
        Desktop desktop(u"Ce"_s);
        desktop.play.windowDidBecomeKey(&desktop.windows[1]);
        desktop.play.windowDidBecomeKey(&desktop.windows[1]);
        QCOMPARE(desktop.windows[1].told, u"m"_s);
        desktop.play.windowDidBecomeKey(&desktop.windows[0]);
        desktop.play.windowDidBecomeKey(&desktop.windows[1]);
        QCOMPARE(desktop.windows[1].told, u"mm"_s);
        QCOMPARE(desktop.windows[0].told, QString());
    }
};

int main(int argc, char* argv[])
{
    const TestHome home;
    const QCoreApplication application(argc, argv);
    SynchronizedPlayTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "SynchronizedPlayTest.moc"
