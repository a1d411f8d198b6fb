#include "app/PlaybackActions.h"

#include "WindowParts.h"
#include "app/CardApplication.h"
#include "app/FullScreenMode.h"
#include "app/PositionSlider.h"
#include "app/ShortcutsSheet.h"
#include "app/TransportBar.h"
#include "media/DCFInfo.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "playback/PlayerScrollView.h"
#include "support/TestHome.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

/// The keys of a real window with a playable card.
class PlaybackActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void keysWorkWhateverHasTheFocus_data();
    void keysWorkWhateverHasTheFocus();
    void textFieldsKeepTheirKeys();
    void seeksAddUpFromWhereTheLastOneLeads();
    void theEndIsShownBeforeTheNextRecording();
    void framesStep();
    void theBarSeeks();
    void playsOnFromAPicture();
    void keysAsFastAsTheyCanBePressed();
    void selectionsAsFastAsTheyCome();
    void theSoundIsTheUsersOwn();
    void closesInTheMiddleOfASeek();
    void theSheetListsEveryKey();

private:
    void press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(widget, key, modifiers);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        press(QApplication::focusWidget(), key, modifiers);
    }
    CardListView* list(List which) const { return listOf(m_window.get(), which); }
    bool isReady() const
    {
        return m_front->player() && m_front->player()->status() == VideoPlayer::Status::Ready && !m_front->isLoading();
    }
    double seconds() const { return m_front->originalCurrentTime(); }
    void pauseAtStart();

    QTemporaryDir m_folder;
    QString m_card;
    std::unique_ptr<MainWindow> m_window;
    ZoomPlayerViewController* m_front = nullptr;
};

void PlaybackActionsTest::initTestCase()
{
    m_card = m_folder.filePath(u"card"_s);
    QVERIFY(makeSampleCard(m_card, 4, 20, 2));
}

void PlaybackActionsTest::init()
{
    m_window = std::make_unique<MainWindow>();
    m_window->setAttribute(Qt::WA_DeleteOnClose, false);
    m_front = frontOf(m_window.get());
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QVERIFY(m_window->openCard(m_card));
    QTRY_VERIFY_WITH_TIMEOUT(isReady() && m_front->isPlaying(), patienceMs);
}

void PlaybackActionsTest::cleanup()
{
    m_window.reset();
    QVERIFY(QTest::qWaitFor([] { return BackgroundQueue::waitForDone(0); }));
}

void PlaybackActionsTest::pauseAtStart()
{
    m_front->pause();
    m_window->mediaController().updateProgress(0);
    QTRY_VERIFY_WITH_TIMEOUT(!m_front->isPlaying() && seconds() < 0.1, patienceMs);
}

void PlaybackActionsTest::keysWorkWhateverHasTheFocus_data()
{
    QTest::addColumn<int>("which");
    QTest::newRow("recordings") << 0;
    QTest::newRow("pictures") << 1;
    QTest::newRow("tabs") << 2;
    QTest::newRow("position") << 3;
    QTest::newRow("a button") << 4;
    QTest::newRow("the video") << 5;
}

void PlaybackActionsTest::keysWorkWhateverHasTheFocus()
{
    QFETCH(int, which);
    if (which == 1)
        press(m_window.get(), Qt::Key_3, Qt::ControlModifier);
    QWidget* const widgets[] = {list(Recordings),
                                list(Pictures),
                                m_window->findChild<QTabBar*>(),
                                m_window->findChild<PositionSlider*>(),
                                m_window->findChild<TransportBar*>()->findChild<QToolButton*>(),
                                m_front->playerScrollView()};
    QWidget* widget = widgets[which];
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

void PlaybackActionsTest::textFieldsKeepTheirKeys()
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

void PlaybackActionsTest::seeksAddUpFromWhereTheLastOneLeads()
{
    pauseAtStart();
    const double start = seconds();
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Right);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Left);
    QVERIFY2(qAbs(seconds() - start - 12) < 0.1, qPrintable(QString::number(seconds())));
    QTRY_VERIFY_WITH_TIMEOUT(!m_front->player()->isSeeking(), patienceMs);
    QVERIFY2(qAbs(seconds() - start - 12) < 0.1, qPrintable(QString::number(seconds())));
    for (int i = 0; i < 5; ++i)
        press(Qt::Key_Left);
    QCOMPARE(m_front->progress(), 0.0);
}

void PlaybackActionsTest::theEndIsShownBeforeTheNextRecording()
{
    press(Qt::Key_End);
    QTRY_VERIFY_WITH_TIMEOUT(!m_front->player()->isSeeking(), patienceMs);
    QCOMPARE(list(Recordings)->currentRow(), 0);
    QVERIFY(m_front->progress() > 0.99);
    press(Qt::Key_Space);
    QTRY_COMPARE_WITH_TIMEOUT(list(Recordings)->currentRow(), 1, patienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(isReady() && m_front->isPlaying(), patienceMs);
}

void PlaybackActionsTest::framesStep()
{
    pauseAtStart();
    const double frame = 1 / 30.0;
    const auto isAtFrame = [&](int number) { return qAbs(seconds() - (number + 0.5) * frame) < frame * 0.75; };
    QTRY_VERIFY_WITH_TIMEOUT(!m_front->player()->isSeeking() && isAtFrame(0), patienceMs);
    for (int i = 0; i < 4; ++i)
        press(Qt::Key_Period);
    QTRY_VERIFY_WITH_TIMEOUT(!m_front->player()->isSeeking() && isAtFrame(4), patienceMs);
    press(Qt::Key_Comma);
    press(Qt::Key_Comma);
    QTRY_VERIFY_WITH_TIMEOUT(!m_front->player()->isSeeking() && isAtFrame(2), patienceMs);
    QVERIFY(!m_front->isPlaying());
}

void PlaybackActionsTest::theBarSeeks()
{
    pauseAtStart();
    auto* slider = m_window->findChild<PositionSlider*>();
    QTRY_VERIFY(slider->isActive());
    QTest::mouseClick(slider, Qt::LeftButton, {}, {slider->width() * 525 / 1000, slider->height() / 2});
    QVERIFY(qAbs(m_front->progress() - 0.525) < 0.01);
    QTRY_COMPARE_WITH_TIMEOUT(named<QLabel>(m_window.get(), TransportBar::tr("Elapsed"))->text(), u"0:10"_s,
                              patienceMs);
}

void PlaybackActionsTest::playsOnFromAPicture()
{
    const std::shared_ptr<DCFInfo> dcf = m_window->mediaController().currentDCF();
    list(Pictures)->selectRow(0);
    QVERIFY(m_window->mediaController().currentPicture());
    QTRY_VERIFY_WITH_TIMEOUT(isReady() && !m_front->isPlaying(), patienceMs);
    press(Qt::Key_Space);
    QVERIFY(!m_window->mediaController().currentPicture());
    QTRY_VERIFY_WITH_TIMEOUT(isReady() && m_front->isPlaying(), patienceMs);
}

void PlaybackActionsTest::keysAsFastAsTheyCanBePressed()
{
    for (size_t i = 0; i < 300; ++i) {
        static constexpr Qt::Key keys[] = {Qt::Key_PageDown, Qt::Key_L,     Qt::Key_Right,   Qt::Key_Space, Qt::Key_J,
                                           Qt::Key_PageUp,   Qt::Key_Comma, Qt::Key_5,       Qt::Key_H,     Qt::Key_End,
                                           Qt::Key_L,        Qt::Key_Home,  Qt::Key_PageDown};
        press(keys[i % std::size(keys)]);
        if (i % 20 == 0)
            QCoreApplication::processEvents();
    }
    press(Qt::Key_PageDown);
    // What is shown in the end is what was chosen last.
    const std::shared_ptr<DCFInfo> dcf = m_window->mediaController().currentDCF();
    QCOMPARE(m_front->currentItemPath(), dcf->filePath);
    QTRY_VERIFY_WITH_TIMEOUT(isReady() && m_front->isPlaying(), patienceMs);
    QCOMPARE(m_front->currentItemPath(), dcf->filePath);
    QTRY_VERIFY_WITH_TIMEOUT(m_front->progress() > 0 && m_front->originalTotalTime() > 19, patienceMs);
}

void PlaybackActionsTest::selectionsAsFastAsTheyCome()
{
    for (int i = 0; i < 400; ++i)
        (i % 7 == 6 ? list(Pictures) : i % 5 == 4 ? list(Events) : list(Recordings))->selectRow(i % 2);
    list(Recordings)->selectRow(2);
    const std::shared_ptr<DCFInfo> dcf = m_window->mediaController().mediaTree()[2];
    QCOMPARE(m_window->mediaController().currentDCF(), dcf);
    QVERIFY(!m_window->mediaController().currentPicture());
    QTRY_VERIFY_WITH_TIMEOUT(isReady() && m_front->isPlaying(), patienceMs);
    QCOMPARE(m_front->currentItemPath(), dcf->filePath);
    QCOMPARE(rearOf(m_window.get())->currentItemPath(), dcf->secondaryFilePath);
    // Gone while the last one still loads.
    list(Recordings)->selectRow(0);
    m_window.reset();
}

void PlaybackActionsTest::theSoundIsTheUsersOwn()
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

void PlaybackActionsTest::closesInTheMiddleOfASeek()
{
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Right);
    QVERIFY(m_front->player()->isSeeking() || m_front->isLoading());
    QSignalSpy closed(m_window.get(), &MainWindow::didClose);
    m_window->close();
    QCOMPARE(closed.size(), 1);
    QCoreApplication::processEvents();
    m_window.reset();
    QCoreApplication::processEvents();
}

void PlaybackActionsTest::theSheetListsEveryKey()
{
    press(Qt::Key_Question);
    auto* sheet = m_window->findChild<ShortcutsSheet*>();
    QVERIFY(sheet && sheet->isVisible());
    QStringList texts;
    for (const QLabel* label : sheet->findChildren<QLabel*>())
        texts.push_back(label->text());
    int keys = 0;
    for (const QAction* menu : m_window->menuBar()->actions()) {
        for (const QAction* action : menu->menu()->findChildren<QAction*>()) {
            for (const QKeySequence& key : action->shortcuts()) {
                const QString text = key.toString(QKeySequence::NativeText);
                QVERIFY2(texts.filter(text).size() > 0, qPrintable(text));
                ++keys;
            }
        }
    }
    QVERIFY(keys > 30);
    QVERIFY(texts.filter(u"&"_s).isEmpty());
    QTest::keyClick(sheet, Qt::Key_Escape);
    QTRY_VERIFY(!m_window->findChild<ShortcutsSheet*>());
}

int main(int argc, char* argv[])
{
    const TestHome home;
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Cardreel"_s);
    QCoreApplication::setApplicationName(u"PlaybackActionsTest"_s);
    setupDefaults();
    const Theme theme(application);
    PlaybackActionsTest test;
    const int failures = QTest::qExec(&test, argc, argv);
    InterfaceThread::close();
    BackgroundQueue::waitForDone();
    VideoPlayer::waitForShutdown();
    return failures;
}

#include "PlaybackActionsTest.moc"
