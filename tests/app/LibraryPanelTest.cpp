#include "app/LibraryPanel.h"

#include "WindowParts.h"
#include "media/DCFInfo.h"

#include <QSignalSpy>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

/// Choosing in the lists of a real window.
class LibraryPanelTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeWindow(); }
    void cleanup() { endWindow(); }

    void choosingInOneListLeavesNothingChosenInTheOthers()
    {
        CardBuilder card;
        card.file(u"NORMAL/200101120000.MP4"_s);
        card.file(u"EVENT/200101120100.MP4"_s);
        card.picture(u"PICTURE/200101120130.JPG"_s);
        open(card);
        QSignalSpy recordings(panel(), &LibraryPanel::recordingChosen);
        QSignalSpy pictures(panel(), &LibraryPanel::pictureChosen);
        const auto chosenRows = [this] {
            return QList<int>{list(Recordings)->currentRow(), list(Events)->currentRow(), list(Pictures)->currentRow()};
        };
        QCOMPARE(chosenRows(), (QList<int>{0, -1, -1}));
        list(Events)->selectRow(0);
        QCOMPARE(chosenRows(), (QList<int>{-1, 0, -1}));
        list(Pictures)->selectRow(0);
        QCOMPARE(chosenRows(), (QList<int>{-1, -1, 0}));
        list(Recordings)->selectRow(0);
        QCOMPARE(chosenRows(), (QList<int>{0, -1, -1}));
        QCOMPARE(recordings.size(), 2);
        QCOMPARE(pictures.size(), 1);
    }

    void stepsWithinTheListInPlay_data()
    {
        QTest::addColumn<int>("which");
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("next");
        QTest::addColumn<int>("previous");
        QTest::newRow("first recording") << int(Recordings) << 0 << 1 << 3;
        QTest::newRow("last recording") << int(Recordings) << 3 << 0 << 2;
        QTest::newRow("first event") << int(Events) << 0 << 1 << 1;
        QTest::newRow("last picture") << int(Pictures) << 2 << 0 << 1;
    }
    void stepsWithinTheListInPlay()
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

    void stepsOnAmongEventsWhereTheClockWent()
    {
        CardBuilder card;
        int minute = 0;
        for (const QString& folder : {u"NORMAL"_s, u"EVENT"_s, u"NORMAL"_s, u"NORMAL"_s, u"MANUAL"_s, u"NORMAL"_s})
            card.file(folder + u"/2001011200%1.MP4"_s.arg(minute++, 2, 10, QLatin1Char('0')));
        open(card);
        list(Events)->selectRow(0);
        controller().didStopPlayingAction();
        QCOMPARE(controller().currentDCF(), controller().mediaTree()[2]);
        QCOMPARE(list(Events)->selectedRows(), QList<int>());
        // The user still goes through the events.
        panel()->selectNext();
        QCOMPARE(list(Events)->currentRow(), 1);
        for (const int clockSteps : {1, 2}) {
            for (int i = 0; i < clockSteps; ++i)
                controller().didStopPlayingAction();
            clockSteps == 1 ? panel()->selectNext() : panel()->selectPrevious();
            QCOMPARE(list(Events)->currentRow(), 0);
        }
    }

    void theClockGoesThroughTheRecordings()
    {
        CardBuilder card;
        for (int i = 0; i < 3; ++i)
            card.file(u"NORMAL/20010112000%1.MP4"_s.arg(i));
        open(card);
        for (const int row : {1, 2, 0}) {
            controller().didStopPlayingAction();
            QCOMPARE(list(Recordings)->currentRow(), row);
            QCOMPARE(controller().currentDCF(), controller().mediaTree()[static_cast<size_t>(row)]);
        }
        panel()->selectCurrentDCF(controller().mediaTree()[2]);
        QCOMPARE(list(Recordings)->currentRow(), 2);
        const auto stranger = std::make_shared<DCFInfo>(card.root(), u"NORMAL/200101120009.MP4"_s);
        panel()->selectNextDCFWithCurrentDCF(stranger);
        QCOMPARE(list(Recordings)->currentRow(), 0);
        // A card's only recording is chosen anew.
        CardBuilder single;
        single.file(u"NORMAL/200101120000.MP4"_s);
        open(single);
        QSignalSpy chosen(panel(), &LibraryPanel::recordingChosen);
        panel()->selectNext();
        controller().didStopPlayingAction();
        QCOMPARE(chosen.size(), 2);
        QCOMPARE(list(Recordings)->currentRow(), 0);
    }

    void severalSelectedPauseAndOneIsShown()
    {
        CardBuilder folder;
        const QString card = folder.path(u"sample"_s);
        QVERIFY(makeSampleCard(card, 3, 20));
        QVERIFY(m_window->openCard(card));
        QTRY_VERIFY_WITH_TIMEOUT(frontPane()->isPlaying() && frontPane()->progress() > 0, patienceMs);
        CardListView* recordings = list(Recordings);
        const auto click = [recordings](int row, Qt::KeyboardModifiers modifiers) {
            const QRect place = recordings->visualRect(recordings->model()->index(row, 0));
            QTest::mouseClick(recordings->viewport(), Qt::LeftButton, modifiers, place.center());
        };
        click(2, Qt::ShiftModifier);
        QCOMPARE(recordings->selectedRows(), (QList<int>{0, 1, 2}));
        QCOMPARE(controller().selectedDCFs(), controller().mediaTree());
        QVERIFY(!frontPane()->isPlaying());
        QCOMPARE(controller().currentDCF(), controller().mediaTree()[0]);
        click(1, Qt::ControlModifier);
        QCOMPARE(controller().selectedDCFs().size(), 2U);
        QVERIFY(!frontPane()->isPlaying());
        // What the program chooses while a key is down doesn't extend what the user selected.
        click(1, {});
        QCOMPARE(controller().selectedDCFs(), MediaLibrary::DCFList{controller().mediaTree()[1]});
        QCOMPARE(controller().currentDCF(), controller().mediaTree()[1]);
        QTRY_VERIFY_WITH_TIMEOUT(frontPane()->isPlaying(), patienceMs);
        QTest::keyClick(recordings, Qt::Key_Down);
        QCOMPARE(controller().currentDCF(), controller().mediaTree()[2]);
        list(Events)->selectAll();
        QCOMPARE(controller().selectedDCFs(), controller().eventTree());
    }
};

int main(int argc, char* argv[])
{
    return runWithWindows<LibraryPanelTest>(argc, argv);
}

#include "LibraryPanelTest.moc"
