#include "app/CardApplication.h"

#include "app/LeadButton.h"
#include "export/JobParts.h"
#include "platform/settings/UserDefaults.h"
#include "playback/MediaControllerManager.h"
#include "playback/OptionPopover.h"

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>

#include <csignal>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

template<typename Widget>
QList<Widget*> shown()
{
    QList<Widget*> result;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<Widget*>(widget); found && found->isVisible())
            result.push_back(found);
    }
    return result;
}

LeadButton* leadButton(const MainWindow* window)
{
    return window->findChild<LeadButton*>();
}

MainWindow* otherThan(const MainWindow* known)
{
    const QList<MainWindow*> windows = shown<MainWindow>();
    return windows.front() == known ? windows.back() : windows.front();
}

QAction* actionNamed(const MainWindow* window, const QString& text)
{
    const QList<QAction*> actions = window->findChildren<QAction*>();
    return *std::find_if(actions.begin(), actions.end(), [&](const QAction* action) { return action->text() == text; });
}

QStringList popovers(const MainWindow* window)
{
    QStringList result;
    for (const OptionPopover* popover : window->findChildren<OptionPopover*>()) {
        for (const QLabel* label : popover->findChildren<QLabel*>())
            result.push_back(label->text());
    }
    return result;
}

/// The cards in view; empty texts are windows without one.
QStringList cardsInView()
{
    QStringList result;
    for (const MainWindow* window : shown<MainWindow>())
        result.push_back(window->cardPath());
    result.sort();
    return result;
}

} // namespace

class CardApplicationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<CardBuilder>();
        m_card->file(u"NORMAL/200101120000.MP4"_s);
        m_other = std::make_unique<CardBuilder>(u"this & that"_s);
        m_other->file(u"NORMAL/200101120000.MP4"_s);
    }

    void opensOneWindowACard()
    {
        {
            CardApplication application(*qApp);
            application.openAtStart({});
            QCOMPARE(cardsInView(), QStringList{u""_s});
        }
        CardApplication application(*qApp);
        const QString sameAgain = m_card->path(u"NORMAL/../"_s);
        const QString relative = QDir::current().relativeFilePath(m_other->root());
        application.openAtStart({m_card->root(), relative, sameAgain});
        QStringList expected = {m_card->root(), m_other->root()};
        expected.sort();
        QCOMPARE(cardsInView(), expected);
        QVERIFY(shown<QMessageBox>().isEmpty());
    }

    void refusesWhatIsNoCard()
    {
        QStringList reasons;
        for (const QString& name : {u"missing"_s, u"200101120000.MP4"_s, u""_s}) { // nothing, a file, a card's folder
            CardApplication application(*qApp);
            application.openAtStart({m_card->path(u"NORMAL/"_s + name)});
            QCOMPARE(cardsInView(), QStringList{u""_s});
            const QList<QMessageBox*> boxes = shown<QMessageBox>();
            QCOMPARE(boxes.size(), 1);
            QVERIFY(boxes.front()->text().contains(name.isEmpty() ? u"NORMAL"_s : name));
            QVERIFY(!reasons.contains(boxes.front()->informativeText()));
            reasons.push_back(boxes.front()->informativeText());
        }
    }

    void remembersCards()
    {
        UserDefaults::shared().setValue(u"RecentCards"_s, QStringList());
        {
            CardApplication application(*qApp);
            application.openAtStart({m_card->root(), m_other->root(), m_card->path(u"missing"_s)});
        }
        CardApplication application(*qApp);
        application.openAtStart({m_card->root()});
        MainWindow* window = shown<MainWindow>().value(0);
        QVERIFY(window);
        QMenu* menu = window->recentMenu();
        Q_EMIT menu->aboutToShow();
        const QList<QAction*> actions = menu->actions();
        QVERIFY(actions.size() > 2);
        QCOMPARE(actions[0]->text(), m_card->root());
        QCOMPARE(actions[1]->text(), QString(m_other->root()).replace(u'&', u"&&"_s));
        QVERIFY(actions[2]->isSeparator());
        actions[1]->trigger();
        QVERIFY(cardsInView().contains(m_other->root()));
        actions.back()->trigger();
        Q_EMIT menu->aboutToShow();
        QVERIFY(menu->isEmpty() && !menu->isEnabled());
    }

    void windowsLeadEachOther()
    {
        CardApplication application(*qApp);
        application.openAtStart({m_card->root()});
        MainWindow* first = shown<MainWindow>().value(0);
        first->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(first));
        QCOMPARE(frontOf(first)->rateLimit(), 16.0);
        QVERIFY(!frontOf(first)->isMuted());

        // A window that leads nobody gets company, which takes the lead along with the keyboard and asks for a card.
        leadButton(first)->click();
        QCOMPARE(shown<MainWindow>().size(), 2);
        MainWindow* second = otherThan(first);
        QVERIFY(QTest::qWaitForWindowActive(second));
        QTRY_VERIFY(second->mediaController().isMasterController());
        QVERIFY(leadButton(second)->isChecked() && !leadButton(first)->isChecked());
        QTRY_COMPARE(popovers(second), QStringList{MainWindow::tr("Select the media to play or synchronize.")});
        QVERIFY(frontOf(second)->rateLimit() == 8);
        QVERIFY(!frontOf(second)->isMuted());

        QVERIFY(second->openCard(m_other->root()));
        QCOMPARE(frontOf(first)->rateLimit(), 8.0);
        QVERIFY(frontOf(first)->isMuted());
        first->activateWindow();
        QTRY_VERIFY(first->mediaController().isMasterController());
        QVERIFY(!frontOf(first)->isMuted() && frontOf(second)->isMuted());
        // The click that brought the window forward has given it the lead and doesn't take it again.
        QTest::mouseClick(leadButton(first), Qt::LeftButton);
        QVERIFY(leadButton(first)->isChecked());
        leadButton(first)->click();
        QVERIFY(!first->mediaController().isMasterController() && !leadButton(first)->isChecked());
        QTRY_COMPARE(popovers(first), QStringList{MainWindow::tr("Synchronization canceled.")});
    }

    void theLeaderClosesInTheMiddleOfPlay()
    {
        const QString path = m_card->path(u"sample"_s);
        QVERIFY(makeSampleCard(path, 2, 20));
        CardApplication application(*qApp);
        application.openAtStart({path, m_other->root(), m_card->root()});
        const QList<MainWindow*> windows = shown<MainWindow>();
        QCOMPARE(windows.size(), 3);
        const auto leader = std::find_if(windows.begin(), windows.end(),
                                         [&path](const MainWindow* each) { return each->cardPath() == path; });
        QVERIFY(leader != windows.end());
        (*leader)->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(*leader));
        leadButton(*leader)->click();
        QVERIFY((*leader)->mediaController().isMasterController());
        QTRY_VERIFY_WITH_TIMEOUT(frontOf(*leader)->isPlaying() && frontOf(*leader)->progress() > 0, patienceMs);
        (*leader)->mediaController().updateProgress(0.5);
        (*leader)->close();
        QTRY_COMPARE(shown<MainWindow>().size(), 2);
        for (const MainWindow* window : shown<MainWindow>())
            QVERIFY(!leadButton(window)->isChecked());
        QVERIFY(!MediaControllerManager::sharedInstance().masterController());
        leadButton(shown<MainWindow>().front())->click();
        QCOMPARE(shown<MainWindow>().size(), 2);
    }

    void rearCamerasMakeTheDifference()
    {
        m_card->file(u"REAR/NORMAL/200101120000.MP4"_s);
        CardApplication application(*qApp);
        application.openAtStart({m_card->root()});
        MainWindow* window = shown<MainWindow>().value(0);
        QAction* rear = actionNamed(window, MainWindow::tr("Rear Ca&mera"));
        actionNamed(window, MainWindow::tr("&New Window"))->trigger();
        QCOMPARE(cardsInView(), (QStringList{u""_s, m_card->root()}));
        QCOMPARE(frontOf(window)->rateLimit(), 8.0);
        QVERIFY(rearOf(window)->isVisible());
        rear->trigger();
        QCOMPARE(frontOf(window)->rateLimit(), 16.0);
        QTRY_VERIFY(!rearOf(window)->isVisible()); // it folds away
        QVERIFY(otherThan(window)->isRearCameraOn());
        // Remembered.
        MainWindow next;
        QVERIFY(next.isRearCameraOn());
        next.openCard(m_card->root());
        QVERIFY(!next.isRearCameraOn());
        rear->trigger();
        QVERIFY(rearOf(window)->isVisible());
    }

    void endsInTheMiddleOfAParse()
    {
        for (int i = 0; i < 60; ++i)
            m_card->file(u"NORMAL/2001011200%1.MP4"_s.arg(i, 2, 10, QLatin1Char('0')));
        {
            CardApplication application(*qApp);
            application.openAtStart({m_card->root()});
            QCOMPARE(cardsInView(), QStringList{m_card->root()});
            // No event is handled any more: what waits for that is released, or the end would never come.
        }
        QVERIFY(shown<MainWindow>().isEmpty());
        QVERIFY(BackgroundQueue::waitForDone(0));
    }

    void quittingAsksOnce()
    {
        CardBuilder disk(u"disk"_s);
        const QString folder = disk.folder(u"backups"_s);
        {
            CardApplication application(*qApp);
            application.openAtStart({m_card->root(), m_other->root()});
            const QList<MainWindow*> windows = shown<MainWindow>();
            QCOMPARE(windows.size(), 2);
            for (MainWindow* window : windows)
                beginBackUp(window, folder);
            QAction* quit = actionNamed(windows[0], MainWindow::tr("&Quit"));
            quit->trigger();
            actionNamed(windows[1], MainWindow::tr("&Quit"))->trigger();
            QCOMPARE(shown<QMessageBox>().size(), 1);
            MainWindow* asking = shownBy<QMessageBox>(windows[0]) ? windows[0] : windows[1];
            answer(asking, QMessageBox::RejectRole);
            QVERIFY(windows[0]->jobs().isJobRunning() && windows[1]->jobs().isJobRunning());
            quit->trigger();
            answer(asking, QMessageBox::DestructiveRole);
            QVERIFY(shown<MainWindow>().isEmpty() && shown<QMessageBox>().isEmpty());
        }
        QVERIFY(QDir(folder).isEmpty()); // the end has waited for that
    }

    void theQuestionGoesWithTheLastJob()
    {
        CardBuilder disk(u"disk"_s);
        CardApplication application(*qApp);
        application.openAtStart({m_card->root(), m_other->root()});
        const QList<MainWindow*> windows = shown<MainWindow>();
        for (MainWindow* window : windows)
            beginBackUp(window, disk.folder(u"backups"_s));
        actionNamed(windows[0], MainWindow::tr("&Quit"))->trigger();
        windows[0]->jobs().stop();
        QCOMPARE(shown<QMessageBox>().size(), 1);
        WAIT_FOR(!windows[1]->jobs().isJobRunning());
        QVERIFY(shown<QMessageBox>().isEmpty());
        QCOMPARE(shown<MainWindow>().size(), 2);
    }

    void aSignalStopsJobsUnasked()
    {
        CardBuilder disk(u"disk"_s);
        const QString folder = disk.folder(u"backups"_s);
        {
            std::signal(SIGTERM, SIG_DFL); // which is the tests' own otherwise
            CardApplication application(*qApp);
            application.endOnSignals();
            application.openAtStart({m_card->root()});
            beginBackUp(shown<MainWindow>().value(0), folder);
            std::raise(SIGTERM);
            WAIT_FOR(shown<MainWindow>().isEmpty());
        }
        QVERIFY(QDir(folder).isEmpty());
    }

    void theSessionsEndIsNotHeldUp()
    {
        CardBuilder disk(u"disk"_s);
        CardApplication application(*qApp);
        application.openAtStart({m_card->root()});
        MainWindow* window = shown<MainWindow>().value(0);
        beginBackUp(window, disk.folder(u"backups"_s));
        window->jobs().stopAsking();
        actionNamed(window, MainWindow::tr("&Quit"))->trigger();
        QVERIFY(shown<MainWindow>().isEmpty());
    }

private:
    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<CardBuilder> m_other;
};

int main(int argc, char* argv[])
{
    return runWithWindows<CardApplicationTest>(argc, argv);
}

#include "CardApplicationTest.moc"
