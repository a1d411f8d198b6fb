#include "app/LibraryPanel.h"

#include "WindowParts.h"
#include "app/CardApplication.h"
#include "media/DCFInfo.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

/// Choosing in the lists of a real window.
class LibraryPanelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void choosingInOneListLeavesNothingChosenInTheOthers();
    void stepsWithinTheListInPlay_data();
    void stepsWithinTheListInPlay();
    void stepsOnAmongEventsWhereTheClockWent();
    void theClockGoesThroughTheRecordings();
    void aSingleRecordingIsPlayedAnew();
    void severalSelectedPauseAndOneIsShown();

private:
    bool open(const CardBuilder& card) { return m_window->openCard(card.root()); }
    LibraryPanel* panel() const { return m_window->findChild<LibraryPanel*>(); }
    CardListView* list(List which) const { return listOf(m_window.get(), which); }
    ZoomPlayerViewController* frontPane() const { return frontOf(m_window.get()); }

    std::unique_ptr<MainWindow> m_window;
};

void LibraryPanelTest::init()
{
    m_window = std::make_unique<MainWindow>();
    m_window->setAttribute(Qt::WA_DeleteOnClose, false);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void LibraryPanelTest::cleanup()
{
    m_window.reset();
    QVERIFY(QTest::qWaitFor([] { return BackgroundQueue::waitForDone(0); }));
}

void LibraryPanelTest::choosingInOneListLeavesNothingChosenInTheOthers()
{
    CardBuilder card;
    card.file(u"NORMAL/200101120000.MP4"_s);
    card.file(u"EVENT/200101120100.MP4"_s);
    card.picture(u"PICTURE/200101120130.JPG"_s);
    open(card);
    QSignalSpy recordings(panel(), &LibraryPanel::recordingChosen);
    QSignalSpy pictures(panel(), &LibraryPanel::pictureChosen);
    const auto rows = [this] {
        return QList<int>{list(Recordings)->currentRow(), list(Events)->currentRow(), list(Pictures)->currentRow()};
    };
    QCOMPARE(rows(), (QList<int>{0, -1, -1}));
    list(Events)->selectRow(0);
    QCOMPARE(rows(), (QList<int>{-1, 0, -1}));
    list(Pictures)->selectRow(0);
    QCOMPARE(rows(), (QList<int>{-1, -1, 0}));
    list(Recordings)->selectRow(0);
    QCOMPARE(rows(), (QList<int>{0, -1, -1}));
    QCOMPARE(recordings.size(), 2);
    QCOMPARE(pictures.size(), 1);
}

void LibraryPanelTest::stepsWithinTheListInPlay_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("next");
    QTest::addColumn<int>("previous");
    QTest::newRow("first recording") << int(Recordings) << 0 << 1 << 3;
    QTest::newRow("last recording") << int(Recordings) << 3 << 0 << 2;
    QTest::newRow("first event") << int(Events) << 0 << 1 << 1;
    QTest::newRow("last event") << int(Events) << 1 << 0 << 0;
    QTest::newRow("last picture") << int(Pictures) << 2 << 0 << 1;
}

void LibraryPanelTest::stepsWithinTheListInPlay()
{
    QFETCH(int, which);
    QFETCH(int, row);
    CardBuilder card;
    for (int i = 0; i < 4; ++i)
        card.file((i < 2 ? u"NORMAL"_s : u"EVENT"_s) + u"/20010112000%1.MP4"_s.arg(i));
    for (int i = 0; i < 3; ++i)
        card.picture(u"PICTURE/20010112000%1.JPG"_s.arg(i));
    open(card);
    CardListView* inPlay = list(List(which));
    inPlay->selectRow(row);
    panel()->selectNext();
    QTEST(inPlay->currentRow(), "next");
    inPlay->selectRow(row);
    panel()->selectPrevious();
    QTEST(inPlay->currentRow(), "previous");
}

void LibraryPanelTest::stepsOnAmongEventsWhereTheClockWent()
{
    CardBuilder card;
    int minute = 0;
    for (const QString& folder : {u"NORMAL"_s, u"EVENT"_s, u"NORMAL"_s, u"NORMAL"_s, u"MANUAL"_s, u"NORMAL"_s})
        card.file(folder + u"/2001011200%1.MP4"_s.arg(minute++, 2, 10, QLatin1Char('0')));
    open(card);
    MediaController& controller = m_window->mediaController();
    list(Events)->selectRow(0);
    controller.didStopPlayingAction();
    QCOMPARE(controller.currentDCF(), controller.mediaTree()[2]);
    QCOMPARE(list(Events)->selectedRows(), QList<int>());
    QVERIFY(!list(Events)->isVisible() || list(Recordings)->currentRow() == 2);
    // The user still goes through the events.
    panel()->selectNext();
    QCOMPARE(list(Events)->currentRow(), 1);
    controller.didStopPlayingAction();
    panel()->selectNext();
    QCOMPARE(list(Events)->currentRow(), 0);
    controller.didStopPlayingAction();
    controller.didStopPlayingAction();
    panel()->selectPrevious();
    QCOMPARE(list(Events)->currentRow(), 0);
}

void LibraryPanelTest::theClockGoesThroughTheRecordings()
{
    CardBuilder card;
    for (int i = 0; i < 3; ++i)
        card.file(u"NORMAL/20010112000%1.MP4"_s.arg(i));
    open(card);
    MediaController& controller = m_window->mediaController();
    for (const int row : {1, 2, 0}) {
        controller.didStopPlayingAction();
        QCOMPARE(list(Recordings)->currentRow(), row);
        QCOMPARE(controller.currentDCF(), controller.mediaTree()[static_cast<size_t>(row)]);
    }
    panel()->selectCurrentDCF(controller.mediaTree()[2]);
    QCOMPARE(list(Recordings)->currentRow(), 2);
    const auto stranger = std::make_shared<DCFInfo>(card.root(), u"NORMAL/200101120009.MP4"_s);
    panel()->selectNextDCFWithCurrentDCF(stranger);
    QCOMPARE(list(Recordings)->currentRow(), 0);
}

void LibraryPanelTest::aSingleRecordingIsPlayedAnew()
{
    CardBuilder card;
    card.file(u"NORMAL/200101120000.MP4"_s);
    open(card);
    QSignalSpy chosen(panel(), &LibraryPanel::recordingChosen);
    panel()->selectNext();
    panel()->selectPrevious();
    QCOMPARE(chosen.size(), 2);
    QCOMPARE(list(Recordings)->currentRow(), 0);
}

void LibraryPanelTest::severalSelectedPauseAndOneIsShown()
{
    CardBuilder folder;
    const QString card = folder.path(u"sample"_s);
    QVERIFY(makeSampleCard(card, 3, 20));
    QVERIFY(m_window->openCard(card));
    QTRY_VERIFY_WITH_TIMEOUT(frontPane()->isPlaying() && frontPane()->progress() > 0, patienceMs);
    MediaController& controller = m_window->mediaController();
    CardListView* recordings = list(Recordings);
    const auto click = [recordings](int row, Qt::KeyboardModifiers modifiers) {
        const QRect place = recordings->visualRect(recordings->model()->index(row, 0));
        QTest::mouseClick(recordings->viewport(), Qt::LeftButton, modifiers, place.center());
    };
    click(2, Qt::ShiftModifier);
    QCOMPARE(recordings->selectedRows(), (QList<int>{0, 1, 2}));
    QCOMPARE(controller.selectedDCFs(), controller.mediaTree());
    QVERIFY(!frontPane()->isPlaying());
    QCOMPARE(controller.currentDCF(), controller.mediaTree()[0]);
    click(1, Qt::ControlModifier);
    QCOMPARE(controller.selectedDCFs().size(), 2U);
    QVERIFY(!frontPane()->isPlaying());
    // What the program chooses while a key is down doesn't extend what the user selected.
    click(1, {});
    QCOMPARE(controller.selectedDCFs(), MediaLibrary::DCFList{controller.mediaTree()[1]});
    QCOMPARE(controller.currentDCF(), controller.mediaTree()[1]);
    QTRY_VERIFY_WITH_TIMEOUT(frontPane()->isPlaying(), patienceMs);
    QTest::keyClick(recordings, Qt::Key_Down);
    QCOMPARE(controller.currentDCF(), controller.mediaTree()[2]);
    list(Events)->selectAll();
    QCOMPARE(controller.selectedDCFs(), controller.eventTree());
}

int main(int argc, char* argv[])
{
    const TestHome home;
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Cardreel"_s);
    QCoreApplication::setApplicationName(u"LibraryPanelTest"_s);
    setupDefaults();
    const Theme theme(application);
    LibraryPanelTest test;
    const int failures = QTest::qExec(&test, argc, argv);
    InterfaceThread::close();
    BackgroundQueue::waitForDone();
    VideoPlayer::waitForShutdown();
    return failures;
}

#include "LibraryPanelTest.moc"
