#include "app/FullScreenMode.h"

#include "WindowParts.h"
#include "app/CardApplication.h"
#include "app/TransportBar.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/settings/UserDefaults.h"
#include "playback/PlayerScrollView.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"

#include <QApplication>
#include <QMenuBar>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTest>
#include <QWindow>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

/// Full screen of a real window.
class FullScreenModeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void onlyTheVideosAreLeft();
    void everythingComesBackAsItWas_data();
    void everythingComesBackAsItWas();
    void theBarComesWithThePointer();
    void panesAskForTheBar();
    void escapeAndTripleClicks();
    void closingInFullScreenKeepsTheLayout();
    void thePointerComesBack();

private:
    void press(Qt::Key key) { QTest::keyClick(m_window.get(), key); }
    void movePointer(QPoint place) { QTest::mouseMove(m_window->windowHandle(), place); }
    TransportBar* bar() const { return m_window->findChild<TransportBar*>(); }
    QList<QWidget*> chrome() const
    {
        return {m_window->menuBar(), m_window->statusBar(), m_window->findChild<LibraryPanel*>()};
    }

    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<MainWindow> m_window;
};

void FullScreenModeTest::init()
{
    UserDefaults::shared().setValue(u"MainWindowFrameAutosaveName"_s, QByteArray());
    m_card = std::make_unique<CardBuilder>();
    m_card->file(u"NORMAL/200101120000.MP4"_s);
    m_card->file(u"REAR/NORMAL/200101120000.MP4"_s);
    m_window = std::make_unique<MainWindow>();
    m_window->setAttribute(Qt::WA_DeleteOnClose, false);
    m_window->resize(1100, 700);
    QVERIFY(m_window->openCard(m_card->root()));
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void FullScreenModeTest::cleanup()
{
    m_window.reset();
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(QTest::qWaitFor([] { return BackgroundQueue::waitForDone(0); }));
}

void FullScreenModeTest::onlyTheVideosAreLeft()
{
    press(Qt::Key_F);
    QVERIFY(m_window->isFullScreen());
    for (const QWidget* part : chrome())
        QVERIFY2(!part->isVisible(), part->metaObject()->className());
    QVERIFY(!bar()->isVisible());
    const QSize screen = m_window->screen()->size();
    QTRY_COMPARE(m_window->size(), screen);
    auto* panes = m_window->findChild<ZoomPlayerSplitViewController*>();
    QTRY_COMPARE(panes->mapTo(m_window.get(), QPoint()), QPoint());
    QTRY_COMPARE(panes->size(), screen);
}

void FullScreenModeTest::everythingComesBackAsItWas_data()
{
    QTest::addColumn<bool>("maximized");
    QTest::addColumn<bool>("dragged");
    QTest::newRow("plain") << false << false;
    QTest::newRow("borders dragged") << false << true;
    QTest::newRow("maximized") << true << true;
}

void FullScreenModeTest::everythingComesBackAsItWas()
{
    QFETCH(bool, maximized);
    QFETCH(bool, dragged);
    if (maximized) {
        m_window->showMaximized();
        QTRY_VERIFY(m_window->isMaximized() && m_window->width() > 1100 - 400);
    }
    const QList<QSplitter*> splitters = m_window->findChildren<QSplitter*>();
    if (dragged) {
        for (QSplitter* splitter : splitters) {
            auto* handle = splitter->handle(1);
            const QPoint grip = handle->rect().center();
            QTest::mousePress(handle, Qt::LeftButton, {}, grip);
            QTest::mouseMove(handle, grip + QPoint(70, 70));
            QTest::mouseRelease(handle, Qt::LeftButton, {}, grip + QPoint(70, 70));
        }
    }
    QCoreApplication::processEvents();
    const auto sizes = [&splitters] {
        QList<int> all;
        for (const QSplitter* splitter : splitters)
            all += splitter->sizes();
        return all;
    };
    const QList<int> formerSizes = sizes();
    const QRect former = m_window->geometry();
    QWidget* const focus = m_window->focusWidget();
    for (int round = 0; round < 3; ++round) {
        press(Qt::Key_F11);
        QTRY_VERIFY(m_window->isFullScreen() && m_window->size() == m_window->screen()->size());
        press(Qt::Key_F);
        QVERIFY(!m_window->isFullScreen());
    }
    QTRY_COMPARE(m_window->geometry(), former);
    QCOMPARE(m_window->isMaximized(), maximized);
    QTRY_COMPARE(sizes(), formerSizes);
    for (const QWidget* part : chrome())
        QVERIFY2(part->isVisible(), part->metaObject()->className());
    QVERIFY(bar()->isVisible());
    QVERIFY(bar()->mapTo(m_window.get(), QPoint()).y() < m_window->height() - bar()->height());
    QCOMPARE(m_window->focusWidget(), focus);
}

void FullScreenModeTest::theBarComesWithThePointer()
{
    press(Qt::Key_F);
    QTRY_COMPARE(m_window->size(), m_window->screen()->size());
    const int bottom = m_window->height() - 1;
    movePointer({200, 100});
    QVERIFY(!bar()->isVisible());
    movePointer({200, bottom - 5});
    QTRY_VERIFY(bar()->isVisible());
    QCOMPARE(bar()->mapTo(m_window.get(), QPoint(0, bar()->height() - 1)), QPoint(0, bottom));
    QCOMPARE(bar()->width(), m_window->width());
    movePointer({200, 100});
    QTRY_VERIFY(!bar()->isVisible());
}

void FullScreenModeTest::panesAskForTheBar()
{
    ZoomPlayerViewController* pane = rearOf(m_window.get());
    Q_EMIT pane->bottomBarRequested(false);
    QVERIFY(bar()->isVisible()); // it has its place
    press(Qt::Key_F);
    Q_EMIT pane->bottomBarRequested(true);
    QVERIFY(bar()->isVisible());
    Q_EMIT pane->bottomBarRequested(false);
    QVERIFY(!bar()->isVisible());
}

void FullScreenModeTest::escapeAndTripleClicks()
{
    press(Qt::Key_Escape); // a list has the focus
    QVERIFY(!m_window->isFullScreen());
    Q_EMIT frontOf(m_window.get())->tripleTapDetected();
    QVERIFY(m_window->isFullScreen());
    press(Qt::Key_Escape);
    QVERIFY(!m_window->isFullScreen());
    frontOf(m_window.get())->playerScrollView()->setFocus();
    QTest::keyClick(frontOf(m_window.get())->playerScrollView(), Qt::Key_Escape);
    QVERIFY(m_window->isFullScreen());
    QTest::keyClick(frontOf(m_window.get())->playerScrollView(), Qt::Key_Escape);
    QVERIFY(!m_window->isFullScreen());
}

void FullScreenModeTest::closingInFullScreenKeepsTheLayout()
{
    const QSize former = m_window->size();
    press(Qt::Key_F);
    QTRY_COMPARE(m_window->size(), m_window->screen()->size());
    m_window->close();
    const MainWindow next;
    QVERIFY(!next.isFullScreen());
    QCOMPARE(next.size(), former);
}

void FullScreenModeTest::thePointerComesBack()
{
    press(Qt::Key_F);
    QTRY_COMPARE(m_window->size(), m_window->screen()->size());
    movePointer({200, 100});
    QTRY_VERIFY_WITH_TIMEOUT(QApplication::overrideCursor(), patienceMs);
    movePointer({220, 100});
    QTRY_VERIFY(!QApplication::overrideCursor());
    QTRY_VERIFY_WITH_TIMEOUT(QApplication::overrideCursor(), patienceMs);
    press(Qt::Key_Escape);
    QVERIFY(!QApplication::overrideCursor());
}

int main(int argc, char* argv[])
{
    const TestHome home;
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Cardreel"_s);
    QCoreApplication::setApplicationName(u"FullScreenModeTest"_s);
    setupDefaults();
    const Theme theme(application);
    FullScreenModeTest test;
    const int failures = QTest::qExec(&test, argc, argv);
    InterfaceThread::close();
    BackgroundQueue::waitForDone();
    VideoPlayer::waitForShutdown();
    return failures;
}

#include "FullScreenModeTest.moc"
