#include "app/FullScreenMode.h"

#include "WindowParts.h"
#include "app/TransportBar.h"
#include "platform/settings/UserDefaults.h"
#include "playback/PlayerScrollView.h"

#include <QMenuBar>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QWindow>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

/// Full screen of a real window.
class FullScreenModeTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        UserDefaults::shared().setValue(u"MainWindowFrameAutosaveName"_s, QByteArray());
        m_card = std::make_unique<CardBuilder>();
        m_card->file(u"NORMAL/200101120000.MP4"_s);
        m_card->file(u"REAR/NORMAL/200101120000.MP4"_s);
        makeWindow();
        QVERIFY(open(*m_card));
    }
    void cleanup()
    {
        endWindow();
        QVERIFY(!QApplication::overrideCursor());
    }

    void onlyTheVideosAreLeft()
    {
        press(Qt::Key_F);
        QVERIFY(m_window->isFullScreen());
        for (const QWidget* part : chrome())
            QVERIFY2(!part->isVisible(), part->metaObject()->className());
        QVERIFY(!bar()->isVisible());
        QTRY_VERIFY(fillsTheScreen());
        auto* panes = m_window->findChild<ZoomPlayerSplitViewController*>();
        QTRY_COMPARE(panes->mapTo(m_window.get(), QPoint()), QPoint());
        QTRY_COMPARE(panes->size(), m_window->size());
        press(Qt::Key_M); // the keys of the menus that are hidden
        QCOMPARE(frontPane()->volume(), 0.0);
        press(Qt::Key_M);
    }

    void everythingComesBackAsItWas_data()
    {
        QTest::addColumn<QString>("state");
        for (const char* state : {"plain", "dragged", "maximized"})
            QTest::newRow(state) << QString::fromLatin1(state);
    }
    void everythingComesBackAsItWas()
    {
        QFETCH(QString, state);
        const bool maximized = state == u"maximized";
        if (maximized) {
            m_window->showMaximized();
            QTRY_VERIFY(m_window->isMaximized() && m_window->width() > 1100 - 400);
        }
        const QList<QSplitter*> splitters = m_window->findChildren<QSplitter*>();
        if (state == u"dragged") {
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
        const QRect formerBar = bar()->geometry();
        QWidget* const focus = m_window->focusWidget();
        for (int round = 0; round < 3; ++round) {
            press(Qt::Key_F11);
            QTRY_VERIFY(m_window->isFullScreen() && fillsTheScreen());
            press(Qt::Key_F);
            QVERIFY(!m_window->isFullScreen());
        }
        QTRY_COMPARE(m_window->geometry(), former);
        QCOMPARE(m_window->isMaximized(), maximized);
        QTRY_COMPARE(sizes(), formerSizes);
        for (const QWidget* part : chrome())
            QVERIFY2(part->isVisible(), part->metaObject()->className());
        QVERIFY(bar()->isVisible());
        QTRY_COMPARE(bar()->geometry(), formerBar);
        QCOMPARE(m_window->focusWidget(), focus);
    }

    void theBarComesWithThePointer()
    {
        press(Qt::Key_F);
        QTRY_VERIFY(fillsTheScreen());
        const int bottom = m_window->height() - 1;
        movePointer({200, 100});
        QVERIFY(!bar()->isVisible());
        movePointer({200, bottom - 5});
        QTRY_VERIFY(bar()->isVisible());
        QCOMPARE(bar()->mapTo(m_window.get(), QPoint(0, bar()->height() - 1)), QPoint(0, bottom));
        QCOMPARE(bar()->width(), m_window->width());
        movePointer({200, 100});
        QTRY_VERIFY(!bar()->isVisible());
        // A pane can ask for it too.
        Q_EMIT rearPane()->bottomBarRequested(true);
        movePointer({210, 100});
        QVERIFY(bar()->isVisible());
        Q_EMIT rearPane()->bottomBarRequested(false);
        QVERIFY(!bar()->isVisible());
        press(Qt::Key_F);
        Q_EMIT rearPane()->bottomBarRequested(false);
        QVERIFY(bar()->isVisible()); // it has its place
    }

    void escapeAndTripleClicks()
    {
        press(Qt::Key_Escape); // a list has the focus
        QVERIFY(!m_window->isFullScreen());
        Q_EMIT frontPane()->tripleTapDetected();
        QVERIFY(m_window->isFullScreen());
        press(Qt::Key_Escape);
        QVERIFY(!m_window->isFullScreen());
        frontPane()->playerScrollView()->setFocus();
        for (const bool isFull : {true, false}) {
            QTest::keyClick(frontPane()->playerScrollView(), Qt::Key_Escape);
            QCOMPARE(m_window->isFullScreen(), isFull);
        }
    }

    void closingInFullScreenKeepsTheLayout()
    {
        const QSize former = m_window->size();
        press(Qt::Key_F);
        QTRY_VERIFY(fillsTheScreen());
        m_window->close();
        const MainWindow next;
        QVERIFY(!next.isFullScreen());
        QCOMPARE(next.size(), former);
    }

    void thePointerComesBack()
    {
        press(Qt::Key_F);
        QTRY_VERIFY(fillsTheScreen());
        movePointer({200, 100});
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::overrideCursor(), patienceMs);
        movePointer({220, 100});
        QTRY_VERIFY(!QApplication::overrideCursor());
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::overrideCursor(), patienceMs);
        press(Qt::Key_Escape);
        QVERIFY(!QApplication::overrideCursor());
    }

private:
    bool fillsTheScreen() const { return m_window->size() == m_window->screen()->size(); }
    void press(Qt::Key key) { QTest::keyClick(m_window.get(), key); }
    void movePointer(QPoint place) { QTest::mouseMove(m_window->windowHandle(), place); }
    TransportBar* bar() const { return m_window->findChild<TransportBar*>(); }
    QList<QWidget*> chrome() const
    {
        return {m_window->menuBar(), m_window->statusBar(), m_window->findChild<LibraryPanel*>()};
    }

    std::unique_ptr<CardBuilder> m_card;
};

int main(int argc, char* argv[])
{
    return runWithWindows<FullScreenModeTest>(argc, argv);
}

#include "FullScreenModeTest.moc"
