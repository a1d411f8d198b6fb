#include "app/PlaybackActions.h"

#include "WindowParts.h"
#include "app/FullScreenMode.h"
#include "app/PositionSlider.h"
#include "app/ShortcutsSheet.h"
#include "app/TransportBar.h"
#include "media/DCFInfo.h"
#include "playback/PlayerScrollView.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabBar>
#include <QToolButton>

#include <functional>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

/// The keys of a real window with a playable card.
class PlaybackActionsTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_card = m_folder.filePath(u"card"_s);
        QVERIFY(makeSampleCard(m_card, 4, 20, 2));
    }

    void init()
    {
        makeWindow();
        m_front = frontPane();
        QVERIFY(m_window->openCard(m_card));
        WAIT_FOR(isReady() && m_front->isPlaying());
    }

    void cleanup() { endWindow(); }

    void keysWorkWhateverHasTheFocus_data()
    {
        QTest::addColumn<std::function<QWidget*()>>("place");
        const auto row = [](const char* name, const std::function<QWidget*()>& place) { QTest::newRow(name) << place; };
        row("recordings", [this] { return list(Recordings); });
        row("tabs", [this] { return m_window->findChild<QTabBar*>(); });
        row("position", [this] { return m_window->findChild<PositionSlider*>(); });
        row("a button", [this] { return m_window->findChild<TransportBar*>()->findChild<QToolButton*>(); });
        row("the video", [this] { return m_front->playerScrollView(); });
    }
    void keysWorkWhateverHasTheFocus()
    {
        QFETCH(std::function<QWidget*()>, place);
        QWidget* widget = place();
        widget->setFocus();
        QCOMPARE(QApplication::focusWidget(), widget);

        press(widget, Qt::Key_Space);
        QVERIFY(!m_front->isPlaying());
        press(widget, Qt::Key_K);
        QVERIFY(m_front->isPlaying());
        press(widget, Qt::Key_K);
        press(widget, Qt::Key_L);
        press(widget, Qt::Key_L);
        QCOMPARE(m_front->playbackRate(), 4.0);
        press(widget, Qt::Key_J);
        press(widget, Qt::Key_J);
        QCOMPARE(m_front->playbackRate(), 1.0);
        press(widget, Qt::Key_End);
        QCOMPARE(m_front->progress(), 1.0);
        press(widget, Qt::Key_Home);
        QCOMPARE(m_front->progress(), 0.0);
        press(widget, Qt::Key_4);
        QCOMPARE(m_front->lastSelectedSegment(), 4);
        press(widget, Qt::Key_1);
        QCOMPARE(m_front->lastSelectedSegment(), 1);
        press(widget, Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(!m_front->isInitialPosition());
        press(widget, Qt::Key_0, Qt::ControlModifier);
        QTRY_VERIFY(m_front->isInitialPosition());
        press(widget, Qt::Key_H);
        QVERIFY(m_front->isMirror());
        press(widget, Qt::Key_M);
        QCOMPARE(m_front->volume(), 0.0);
        press(widget, Qt::Key_M);
        QCOMPARE(m_front->volume(), 1.0);
        press(widget, Qt::Key_PageDown);
        QCOMPARE(list(Recordings)->currentRow(), 1);
        press(widget, Qt::Key_PageUp);
        press(widget, Qt::Key_PageUp);
        QCOMPARE(list(Recordings)->currentRow(), 3);
        QCOMPARE(QApplication::focusWidget(), widget);
    }

    void textFieldsKeepTheirKeys()
    {
        auto* field = new QLineEdit;
        m_window->statusBar()->addWidget(field);
        field->show();
        field->setFocus();
        QTest::keyClicks(field, u"k jlm1hf?,."_s);
        press(field, Qt::Key_Home);
        press(field, Qt::Key_Right);
        QTest::keyClicks(field, u"!"_s);
        QCOMPARE(field->text(), u"k! jlm1hf?,."_s);
        QVERIFY(m_front->isPlaying());
        QCOMPARE(m_front->playbackRate(), 1.0);
        QVERIFY(!m_front->isMirror());
        QVERIFY(!m_window->isFullScreen());
        // What no field writes with works on.
        press(field, Qt::Key_Minus, Qt::ControlModifier);
        press(field, Qt::Key_3, Qt::ControlModifier);
        QVERIFY(list(Pictures)->isVisible());
    }

    void seeksAddUpFromWhereTheLastOneLeads()
    {
        pauseAtStart();
        const double start = seconds();
        for (int i = 0; i < 3; ++i)
            press(Qt::Key_Right);
        press(Qt::Key_Right, Qt::ShiftModifier);
        press(Qt::Key_Right, Qt::ShiftModifier);
        press(Qt::Key_Left);
        QVERIFY2(qAbs(seconds() - start - 12) < 0.1, qPrintable(QString::number(seconds())));
        WAIT_FOR(!m_front->player()->isSeeking());
        QVERIFY(qAbs(seconds() - start - 12) < 0.1);
        for (int i = 0; i < 5; ++i)
            press(Qt::Key_Left);
        QCOMPARE(m_front->progress(), 0.0);
    }

    void theEndIsShownBeforeTheNextRecording()
    {
        press(Qt::Key_End);
        WAIT_FOR(!m_front->player()->isSeeking());
        QCOMPARE(list(Recordings)->currentRow(), 0);
        QVERIFY(m_front->progress() > 0.99);
        press(Qt::Key_Space);
        WAIT_FOR(list(Recordings)->currentRow() == 1 && isReady() && m_front->isPlaying());
    }

    void framesStep()
    {
        pauseAtStart();
        const auto isAtFrame = [&](int number) {
            return !m_front->player()->isSeeking() && qAbs(seconds() * 30 - (number + 0.5)) < 0.75;
        };
        WAIT_FOR(isAtFrame(0));
        for (int i = 0; i < 4; ++i)
            press(Qt::Key_Period);
        WAIT_FOR(isAtFrame(4));
        press(Qt::Key_Comma);
        press(Qt::Key_Comma);
        WAIT_FOR(isAtFrame(2));
        QVERIFY(!m_front->isPlaying());
    }

    void theBarSeeks()
    {
        pauseAtStart();
        auto* slider = m_window->findChild<PositionSlider*>();
        WAIT_FOR(slider->isActive());
        QTest::mouseClick(slider, Qt::LeftButton, {}, {slider->width() * 525 / 1000, slider->height() / 2});
        QVERIFY(qAbs(m_front->progress() - 0.525) < 0.01);
        WAIT_FOR(named<QLabel>(m_window.get(), TransportBar::tr("Elapsed"))->text() == u"0:10");
    }

    void playsOnFromAPicture()
    {
        list(Pictures)->selectRow(0);
        QVERIFY(controller().currentPicture());
        WAIT_FOR(isReady() && !m_front->isPlaying());
        press(Qt::Key_Space);
        QVERIFY(!controller().currentPicture());
        WAIT_FOR(isReady() && m_front->isPlaying());
    }

    void keysAndSelectionsAsFastAsTheyCome()
    {
        for (size_t i = 0; i < 200; ++i) {
            static constexpr Qt::Key keys[] = {
                Qt::Key_PageDown, Qt::Key_L, Qt::Key_Right, Qt::Key_Space, Qt::Key_J,    Qt::Key_PageUp,  Qt::Key_Comma,
                Qt::Key_5,        Qt::Key_H, Qt::Key_End,   Qt::Key_L,     Qt::Key_Home, Qt::Key_PageDown};
            press(keys[i % std::size(keys)]);
            if (i % 20 == 0)
                QCoreApplication::processEvents();
        }
        press(Qt::Key_PageDown);
        for (int i = 0; i < 200; ++i)
            (i % 7 == 6 ? list(Pictures) : i % 5 == 4 ? list(Events) : list(Recordings))->selectRow(i % 2);
        list(Recordings)->selectRow(2);
        // What is shown in the end is what was chosen last.
        const std::shared_ptr<DCFInfo> dcf = controller().mediaTree()[2];
        QCOMPARE(controller().currentDCF(), dcf);
        QVERIFY(!controller().currentPicture());
        WAIT_FOR(isReady() && m_front->isPlaying() && m_front->progress() > 0 && m_front->originalTotalTime() > 19);
        QCOMPARE(m_front->currentItemPath(), dcf->filePath);
        QCOMPARE(rearPane()->currentItemPath(), dcf->secondaryFilePath);
        // The window may go in the middle of a seek, and while another one loads.
        press(Qt::Key_Right);
        QSignalSpy closed(m_window.get(), &MainWindow::didClose);
        m_window->close();
        QCOMPARE(closed.size(), 1);
        list(Recordings)->selectRow(0);
    }

    void theSoundIsTheUsersOwn()
    {
        auto* bar = m_window->findChild<TransportBar*>();
        Q_EMIT bar->volumeRequested(0.25);
        QCOMPARE(m_front->volume(), 0.25);
        // On the video the middle button means the same as the key does.
        QTest::mouseClick(m_front->playerScrollView(), Qt::MiddleButton);
        QCOMPARE(m_front->volume(), 0.0);
        QVERIFY(!m_front->isMuted());
        // Another window in front changes nothing of it.
        m_window->setSilenced(true);
        QVERIFY(m_front->isMuted());
        m_window->setSilenced(false);
        QCOMPARE(m_front->volume(), 0.0);
        press(Qt::Key_M);
        QCOMPARE(m_front->volume(), 0.25);
        press(Qt::Key_M);
        Q_EMIT bar->volumeRequested(0.5); // who turns the volume wants to hear it
        QCOMPARE(m_front->volume(), 0.5);
        const MainWindow next;
        QCOMPARE(frontOf(&next)->volume(), 0.5);
        Q_EMIT bar->volumeRequested(1);
    }

    void theSheetListsEveryKey()
    {
        press(Qt::Key_Question);
        auto* sheet = m_window->findChild<ShortcutsSheet*>();
        QVERIFY(sheet && sheet->isVisible());
        QStringList texts;
        for (const QLabel* label : sheet->findChildren<QLabel*>())
            texts.push_back(label->text());
        int keys = 0;
        for (const QAction* action : m_window->menuBar()->findChildren<QAction*>()) {
            for (const QKeySequence& key : action->shortcuts()) {
                const QString text = key.toString(QKeySequence::NativeText);
                QVERIFY2(texts.filter(text).size() > 0, qPrintable(text));
                ++keys;
            }
        }
        QVERIFY(keys > 30);
        QVERIFY(texts.filter(u"&"_s).isEmpty());
        QTest::keyClick(sheet, Qt::Key_Escape);
        QTRY_VERIFY(!m_window->findChild<ShortcutsSheet*>());
    }

private:
    void press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(widget, key, modifiers);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        press(QApplication::focusWidget(), key, modifiers);
    }
    bool isReady() const
    {
        return m_front->player() && m_front->player()->status() == VideoPlayer::Status::Ready && !m_front->isLoading();
    }
    double seconds() const { return m_front->originalCurrentTime(); }
    void pauseAtStart()
    {
        m_front->pause();
        controller().updateProgress(0);
        WAIT_FOR(!m_front->isPlaying() && seconds() < 0.1);
    }

    QTemporaryDir m_folder;
    QString m_card;
    ZoomPlayerViewController* m_front = nullptr;
};

int main(int argc, char* argv[])
{
    return runWithWindows<PlaybackActionsTest>(argc, argv);
}

#include "PlaybackActionsTest.moc"
