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
class FakeWindow : public SynchronizedWindow
{
public:
    MediaController& mediaController() override { return m_controller; }
    bool hasCard() const override { return card; }
    bool isRearCameraOn() const override { return rear; }
    void setSynchronized(bool value) override { synchronized = value; }
    void setSilenced(bool value) override { silenced = value; }
    void setLeading(bool value) override { leading = value; }
    void tellSynchronizationCanceled() override { told += u'c'; }
    void tellToSelectMedia() override { told += u'm'; }

    bool card = true;
    bool rear = true;
    bool synchronized = false;
    bool silenced = false;
    bool leading = false;
    QString told;

private:
    MediaController m_controller;
};

MediaController* master()
{
    return MediaControllerManager::sharedInstance().masterController();
}

} // namespace

class SynchronizedPlayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void whoIsSynchronized_data();
    void whoIsSynchronized();
    void theLeadAndTheSoundGoWithTheKeyboard();
    void windowsOutsideArentTouched();
    void aLoneLeaderGetsCompany();
    void leadingEndsByTheButton();
    void anyWindowThatClosesEndsTheLead_data();
    void anyWindowThatClosesEndsTheLead();
    void aWindowWithoutCardAsksForOneEachTime();
    void theLastWindowIsHeardAgain();
    void aLeadTakenElsewhereIsShown();

private:
    void add(int count)
    {
        for (int i = 0; i < count; ++i)
            m_play->addWindow(&m_windows->at(static_cast<size_t>(i)));
    }
    FakeWindow& window(size_t index) { return m_windows->at(index); }
    /// One letter a window: what it was told last.
    template<typename Get>
    QString all(Get get)
    {
        QString result;
        for (const FakeWindow& each : *m_windows)
            result += get(each) ? u'x' : u'-';
        return result;
    }
    QString leading()
    {
        return all([](const FakeWindow& each) { return each.leading; });
    }
    QString silenced()
    {
        return all([](const FakeWindow& each) { return each.silenced; });
    }

    std::unique_ptr<std::array<FakeWindow, 3>> m_windows;
    std::unique_ptr<SynchronizedPlay> m_play;
};

void SynchronizedPlayTest::init()
{
    m_windows = std::make_unique<std::array<FakeWindow, 3>>();
    m_play = std::make_unique<SynchronizedPlay>();
}

void SynchronizedPlayTest::cleanup()
{
    m_play.reset();
    m_windows.reset();
    QVERIFY(!master());
}

void SynchronizedPlayTest::whoIsSynchronized_data()
{
    // A letter a window: c with card, front alone; C with card and rear; e without card.
    QTest::addColumn<QString>("windows");
    QTest::addColumn<QString>("expected");
    QTest::newRow("alone") << u"C"_s << u"-"_s;
    QTest::newRow("alone and empty") << u"e"_s << u"-"_s;
    QTest::newRow("two fronts") << u"cc"_s << u"xx"_s;
    QTest::newRow("a front and a pair") << u"cC"_s << u"xx"_s;
    QTest::newRow("a front beside an empty one") << u"ce"_s << u"-x"_s;
    QTest::newRow("a pair beside an empty one") << u"Ce"_s << u"xx"_s;
    QTest::newRow("three, one of them empty") << u"cCe"_s << u"-xx"_s;
}

void SynchronizedPlayTest::whoIsSynchronized()
{
    QFETCH(QString, windows);
    for (qsizetype i = 0; i < windows.size(); ++i) {
        window(static_cast<size_t>(i)).card = windows[i] != u'e';
        window(static_cast<size_t>(i)).rear = windows[i] != u'c';
    }
    add(static_cast<int>(windows.size()));
    QString told;
    QString asked;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        told += window(static_cast<size_t>(i)).synchronized ? u'x' : u'-';
        asked += m_play->isSynchronized(&window(static_cast<size_t>(i))) ? u'x' : u'-';
    }
    QTEST(told, "expected");
    QTEST(asked, "expected");
}

void SynchronizedPlayTest::theLeadAndTheSoundGoWithTheKeyboard()
{
    add(3);
    m_play->windowDidBecomeKey(&window(0));
    QCOMPARE(silenced(), u"-xx"_s);
    QVERIFY(!master()); // nobody asked for one
    m_play->setLeading(&window(0), true);
    QCOMPARE(leading(), u"x--"_s);
    m_play->windowDidResignKey(&window(0));
    QCOMPARE(silenced(), u"xxx"_s);
    QCOMPARE(leading(), u"x--"_s);
    m_play->windowDidBecomeKey(&window(2));
    QCOMPARE(silenced(), u"xx-"_s);
    QCOMPARE(leading(), u"--x"_s);
    QCOMPARE(master(), &window(2).mediaController());
    // The order in which two windows hear of it is up to the desktop.
    m_play->windowDidBecomeKey(&window(1));
    m_play->windowDidResignKey(&window(2));
    QCOMPARE(silenced(), u"x-x"_s);
    QCOMPARE(leading(), u"-x-"_s);
}

void SynchronizedPlayTest::windowsOutsideArentTouched()
{
    window(0).rear = false;
    window(1).card = false;
    add(2);
    m_play->windowDidBecomeKey(&window(1));
    m_play->setLeading(&window(1), true);
    QVERIFY(!window(0).silenced);
    m_play->windowDidBecomeKey(&window(0));
    QCOMPARE(leading(), u"-x-"_s);
    QVERIFY(window(1).silenced);
    // The second card makes all of them one.
    window(1).card = true;
    m_play->windowDidChange();
    QVERIFY(window(0).synchronized);
    QCOMPARE(silenced(), u"-x-"_s);
}

void SynchronizedPlayTest::aLoneLeaderGetsCompany()
{
    add(1);
    m_play->windowDidBecomeKey(&window(0));
    QSignalSpy wanted(m_play.get(), &SynchronizedPlay::newWindowRequested);
    m_play->setLeading(&window(0), true);
    QCOMPARE(wanted.size(), 1);
    QVERIFY(window(0).leading);
    window(1).card = false;
    m_play->addWindow(&window(1));
    QCOMPARE(leading(), u"x--"_s);
    m_play->windowDidBecomeKey(&window(1));
    QCOMPARE(leading(), u"-x-"_s);
    m_play->windowDidBecomeKey(&window(0));
    m_play->setLeading(&window(0), true);
    QCOMPARE(wanted.size(), 1);
}

void SynchronizedPlayTest::leadingEndsByTheButton()
{
    add(2);
    m_play->windowDidBecomeKey(&window(0));
    m_play->setLeading(&window(0), true);
    m_play->setLeading(&window(0), false);
    QVERIFY(!master());
    QCOMPARE(leading(), u"---"_s);
    QCOMPARE(window(0).told, u"c"_s);
    QCOMPARE(window(1).told, QString());
    m_play->windowDidBecomeKey(&window(1));
    QVERIFY(!master());
}

void SynchronizedPlayTest::anyWindowThatClosesEndsTheLead_data()
{
    QTest::addColumn<int>("closing");
    QTest::newRow("the leader") << 0;
    QTest::newRow("a follower") << 2;
}

void SynchronizedPlayTest::anyWindowThatClosesEndsTheLead()
{
    QFETCH(int, closing);
    add(3);
    m_play->windowDidBecomeKey(&window(0));
    m_play->setLeading(&window(0), true);
    FakeWindow& closed = window(static_cast<size_t>(closing));
    m_play->removeWindow(&closed);
    QVERIFY(!master());
    QVERIFY(!window(1).leading);
    QCOMPARE(window(0).leading, closing == 0); // nothing is told to the one that went
    // It hears of it once more when it is destroyed.
    m_play->setLeading(&window(1), true);
    m_play->removeWindow(&closed);
    QCOMPARE(master(), &window(1).mediaController());
}

void SynchronizedPlayTest::aWindowWithoutCardAsksForOneEachTime()
{
    window(1).card = false;
    add(2);
    m_play->windowDidBecomeKey(&window(1));
    m_play->windowDidBecomeKey(&window(1));
    QCOMPARE(window(1).told, u"m"_s);
    m_play->windowDidBecomeKey(&window(0));
    m_play->windowDidBecomeKey(&window(1));
    QCOMPARE(window(1).told, u"mm"_s);
    QCOMPARE(window(0).told, QString());
}

void SynchronizedPlayTest::theLastWindowIsHeardAgain()
{
    add(2);
    m_play->windowDidBecomeKey(&window(1));
    QVERIFY(window(0).silenced);
    m_play->removeWindow(&window(1));
    QVERIFY(!window(0).silenced);
    QVERIFY(!window(0).synchronized);
}

void SynchronizedPlayTest::aLeadTakenElsewhereIsShown()
{
    add(2);
    MediaControllerManager::sharedInstance().updateMasterController(&window(1).mediaController());
    QCOMPARE(leading(), u"-x-"_s);
}

int main(int argc, char* argv[])
{
    const TestHome home;
    const QCoreApplication application(argc, argv);
    SynchronizedPlayTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "SynchronizedPlayTest.moc"
