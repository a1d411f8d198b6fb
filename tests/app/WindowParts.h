#pragma once

#include "app/CardApplication.h"
#include "app/LibraryPanel.h"
#include "app/MainWindow.h"
#include "app/WindowKeys.h"
#include "app/lists/CardListView.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/settings/UserDefaults.h"
#include "playback/ZoomPlayerSplitViewController.h"
#include "playback/ZoomPlayerViewController.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QProcess>
#include <QTest>

#include <memory>

namespace cardreel::test {

enum List { Recordings, Events, Pictures };

/// A part of a window by what it is called to the blind.
template<typename Widget>
Widget* named(const QWidget* window, const QString& accessibleName)
{
    for (Widget* widget : window->findChildren<Widget*>()) {
        if (widget->accessibleName() == accessibleName)
            return widget;
    }
    qFatal("the window has no part named %s", qPrintable(accessibleName));
}

inline CardListView* listOf(const MainWindow* window, List which)
{
    const QStringList names = {LibraryPanel::tr("Recordings"), LibraryPanel::tr("Events"),
                               LibraryPanel::tr("Pictures")};
    return named<CardListView>(window, names[which]);
}

inline ZoomPlayerViewController* frontOf(const MainWindow* window)
{
    return window->findChild<ZoomPlayerSplitViewController*>()->primaryPlayerItem();
}

inline ZoomPlayerViewController* rearOf(const MainWindow* window)
{
    return window->findChild<ZoomPlayerSplitViewController*>()->secondaryPlayerItem();
}

/// Makes a playable card; false when that failed.
inline bool makeSampleCard(const QString& path, int recordings, int seconds, int pictures = 0)
{
    return QProcess::execute(qEnvironmentVariable("CARDREEL_SAMPLE_CARD_TOOL"),
                             {QStringLiteral("--recordings"), QString::number(recordings), QStringLiteral("--seconds"),
                              QString::number(seconds), QStringLiteral("--size"), QStringLiteral("320x180"),
                              QStringLiteral("--pictures"), QString::number(pictures), path}) == 0;
}

/// What the tests of a window begin with.
class WindowTest : public QObject
{
protected:
    void makeWindow()
    {
        m_window = std::make_unique<MainWindow>();
        m_window->setAttribute(Qt::WA_DeleteOnClose, false);
        m_window->resize(1100, 700);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void endWindow()
    {
        m_window.reset();
        QVERIFY(QTest::qWaitFor([] { return BackgroundQueue::waitForDone(0); }));
    }
    bool open(const CardBuilder& card) { return m_window->openCard(card.root()); }
    MediaController& controller() const { return m_window->mediaController(); }
    LibraryPanel* panel() const { return m_window->findChild<LibraryPanel*>(); }
    CardListView* list(List which) const { return listOf(m_window.get(), which); }
    ZoomPlayerViewController* frontPane() const { return frontOf(m_window.get()); }
    ZoomPlayerViewController* rearPane() const { return rearOf(m_window.get()); }

    std::unique_ptr<MainWindow> m_window;
};

/// Runs the tests of a class in an application such as main() makes, and ends what they left running.
template<typename Test>
int runWithWindows(int argc, char* argv[])
{
    const TestHome home;
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Cardreel"));
    QCoreApplication::setApplicationName(QLatin1StringView(Test::staticMetaObject.className()));
    QApplication::setQuitOnLastWindowClosed(false);
    setupDefaults();
    UserDefaults::shared().setValue(keys::mapTiles, QString()); // tests ask no server of the world
    const Theme theme(application);
    Test test;
    const int failures = QTest::qExec(&test, argc, argv);
    InterfaceThread::close();
    BackgroundQueue::waitForDone();
    VideoPlayer::waitForShutdown();
    return failures;
}

} // namespace cardreel::test
