#include "playback/ZoomPlayerSplitViewController.h"

#include "playback/OptionPopover.h"
#include "playback/PaneControls.h"
#include "playback/ZoomPlayerViewController.h"

#include <QAction>
#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

namespace cardreel {

using namespace Qt::StringLiterals;
using Animation = ZoomPlayerSplitViewController::Animation;

namespace {

std::unique_ptr<ZoomPlayerSplitViewController> makeSplit(int width)
{
    auto split = std::make_unique<ZoomPlayerSplitViewController>(
        new ZoomPlayerViewController(u"Front"_s, VideoPlayer::AudioOutput::None),
        new ZoomPlayerViewController(u"Rear"_s, VideoPlayer::AudioOutput::None));
    split->resize(width, 300);
    split->show();
    return split;
}

int front(const ZoomPlayerSplitViewController& split)
{
    return split.primaryPlayerItem()->width();
}

void dragDivider(ZoomPlayerSplitViewController& split, int to)
{
    QSplitterHandle* handle = split.handle(1);
    QTest::mousePress(handle, Qt::LeftButton, {}, QPoint(0, 10));
    const QPointF place = handle->mapFrom(&split, QPointF(to, 10));
    QMouseEvent move(QEvent::MouseMove, place, handle->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton);
}

OptionPopover* popoverOf(const QWidget& target)
{
    return target.findChild<OptionPopover*>();
}

} // namespace

class ZoomPlayerSplitViewControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanupTestCase() { VideoPlayer::waitForShutdown(); }

    void dividerSnaps_data()
    {
        QTest::addColumn<int>("proposed");
        QTest::addColumn<int>("got");
        QTest::newRow("at the middle") << 500 << 500;
        QTest::newRow("near, left") << 450 << 500;
        QTest::newRow("near, right") << 550 << 500;
        QTest::newRow("off, left") << 449 << 449;
        QTest::newRow("off, right") << 551 << 551;
        QTest::newRow("front at its narrowest") << 20 << 160;
        QTest::newRow("rear at its narrowest") << 990 << 840;
    }
    void dividerSnaps()
    {
        QFETCH(int, proposed);
        const auto split = makeSplit(1001);
        QCOMPARE(front(*split), 500);
        dragDivider(*split, proposed);
        QTEST(front(*split), "got");
    }

    void keepsItsPlace()
    {
        const auto split = makeSplit(1001);
        const QByteArray untouched = split->saveState();
        for (const int width : {701, 2001, 1001}) {
            split->resize(width, 300);
            QCOMPARE(front(*split), (width - 1) / 2);
        }
        dragDivider(*split, 250);
        split->resize(2001, 300);
        QCOMPARE(front(*split), 500);
        const QByteArray state = split->saveState();

        const auto other = makeSplit(1001);
        QVERIFY(!other->restoreState({}));
        QVERIFY(!other->restoreState("what another program wrote"));
        QCOMPARE(front(*other), 500);
        QVERIFY(other->restoreState(state));
        QCOMPARE(front(*other), 250);
        other->setSecondaryPlayerEnable(false, Animation::None);
        QCOMPARE(other->saveState(), state);
        QVERIFY(other->restoreState(untouched));
        QVERIFY(!other->secondaryPlayerEnable());
        other->setSecondaryPlayerEnable(true, Animation::None);
        QCOMPARE(front(*other), 500);
        QTest::mouseDClick(split->handle(1), Qt::LeftButton);
        QCOMPARE(front(*split), 1000);
    }

    void foldsTheRearPaneAway_data()
    {
        QTest::addColumn<Animation>("animation");
        QTest::newRow("at once") << Animation::None;
        QTest::newRow("in time") << Animation::Animated;
    }
    void foldsTheRearPaneAway()
    {
        QFETCH(Animation, animation);
        const auto split = makeSplit(1001);
        QSignalSpy changes(split.get(), &ZoomPlayerSplitViewController::secondaryPlayerEnableChanged);
        split->setSecondaryPlayerEnable(false, animation);
        QVERIFY(!split->secondaryPlayerEnable());
        QTRY_VERIFY(!split->secondaryPlayerItem()->isVisible());
        QTRY_VERIFY(front(*split) >= 1000);
        split->resize(801, 300);
        QTRY_VERIFY(front(*split) >= 800);
        split->setSecondaryPlayerEnable(false, animation);
        QCOMPARE(changes.count(), 1);
        split->setSecondaryPlayerEnable(true, animation);
        QTRY_COMPARE(front(*split), 400);
        QVERIFY(split->secondaryPlayerItem()->isVisible());
        // Back and forth without waiting ends where it was left.
        split->setSecondaryPlayerEnable(false, animation);
        split->setSecondaryPlayerEnable(true, animation);
        split->setSecondaryPlayerEnable(false, animation);
        QTRY_VERIFY(!split->secondaryPlayerItem()->isVisible());
        QCOMPARE(split->playerVCs()[0], split->primaryPlayerItem());
        QVERIFY(split->primaryPlayerItem()->isPrimaryPlayer());
        QVERIFY(!split->secondaryPlayerItem()->isPrimaryPlayer());
    }

    void chipsLeaveRoomForTheName_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("magnification");
        QTest::addColumn<bool>("showsName");
        QTest::newRow("wide") << 700 << 40 << true;
        QTest::newRow("half a window") << 360 << 0 << true;
        QTest::newRow("half a window, magnified") << 360 << 40 << true;
        QTest::newRow("narrow") << 240 << 40 << false;
        QTest::newRow("narrowest") << 160 << 40 << false;
    }
    void chipsLeaveRoomForTheName()
    {
        QFETCH(int, width);
        QFETCH(int, magnification);
        constexpr int nameWidth = 50;
        for (const int chips : {7, 8}) {
            const ChipLayout layout = ChipLayout::fitted(width, nameWidth, chips, magnification);
            QTEST(layout.showsName, "showsName");
            const int row = layout.rowWidth(chips, magnification);
            QVERIFY(row + 2 * ChipLayout::margin + (layout.showsName ? nameWidth + ChipLayout::margin : 0) <= width);
            QVERIFY(layout.chipWidth >= 16 && layout.spacing >= 1);
        }
    }

    void chipsFadeAndComeBack()
    {
        ZoomPlayerViewController pane(u"Front"_s, VideoPlayer::AudioOutput::None);
        pane.resize(480, 270);
        pane.show();
        const auto* controls = pane.findChild<PaneControls*>();
        QCOMPARE(controls->opacity(), 1.0);
        QTRY_COMPARE(controls->opacity(), 0.0);
        Q_EMIT pane.playerScrollView()->pointerMoved();
        QTRY_COMPARE(controls->opacity(), 1.0);
        QTRY_COMPARE(controls->opacity(), 0.0);
        // What the keyboard is on stays in sight.
        auto* chip = controls->findChild<ChipButton*>();
        pane.segmentAction(1)->setEnabled(true);
        QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(chip, &in);
        QTRY_COMPARE(controls->opacity(), 1.0);
    }

    void popoverWaitsThenShows()
    {
        QWidget window;
        auto* edit = new QLineEdit(&window);
        auto* target = new QWidget(&window);
        target->setGeometry(100, 100, 80, 24);
        window.resize(400, 300);
        window.show();
        edit->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        OptionPopover::showPopoverWithTarget(target, u"Synchronization canceled."_s);
        QVERIFY(!popoverOf(*target));
        QTRY_VERIFY(popoverOf(*target) && popoverOf(*target)->isVisible());
        QPointer<OptionPopover> popover = popoverOf(*target);
        QVERIFY(popover->y() >= target->mapToGlobal(QPoint(0, target->height())).y());
        QVERIFY(window.screen()->availableGeometry().contains(popover->frameGeometry()));
        QTest::keyClick(edit, Qt::Key_A);
        QCOMPARE(edit->text(), u"a"_s);
        QVERIFY(edit->hasFocus());
        // Another one for the same target takes its place.
        OptionPopover::showPopoverWithTarget(target, u"Again."_s);
        QTRY_VERIFY(!popover);
        QCOMPARE(target->findChildren<OptionPopover*>().size(), 1);
    }

    void popoverGoes_data()
    {
        QTest::addColumn<int>("how");
        QTest::newRow("click elsewhere") << 0;
        QTest::newRow("Escape") << 1;
        QTest::newRow("target hidden") << 2;
        QTest::newRow("target gone") << 3;
        QTest::newRow("window moved") << 4;
    }
    void popoverGoes()
    {
        QFETCH(int, how);
        QWidget window;
        auto* target = new QWidget(&window);
        target->setGeometry(360, 270, 40, 24);
        window.resize(400, 300);
        // At the lower edge there is only room above.
        window.move(0, window.screen()->availableGeometry().bottom() - 300);
        window.show();
        OptionPopover::showPopoverWithTarget(target, u"Select the media to play or synchronize."_s);
        QTRY_VERIFY(popoverOf(*target) && popoverOf(*target)->isVisible());
        const QPointer<OptionPopover> popover = popoverOf(*target);
        QVERIFY(window.screen()->availableGeometry().contains(popover->frameGeometry()));
        QVERIFY(popover->geometry().bottom() < target->mapToGlobal(QPoint()).y());
        if (how == 0)
            QTest::mousePress(&window, Qt::LeftButton, {}, {10, 10});
        else if (how == 1)
            QTest::keyClick(&window, Qt::Key_Escape);
        else if (how == 2)
            target->hide();
        else if (how == 3)
            delete target;
        else
            window.move(30, 30);
        QTRY_VERIFY(!popover);
    }
    void popoverNeedsItsTarget()
    {
        auto target = std::make_unique<QWidget>();
        OptionPopover::showPopoverWithTarget(target.get(), u"Hidden."_s);
        OptionPopover::showPopoverWithTarget(nullptr, u"Nowhere."_s);
        auto going = std::make_unique<QWidget>();
        OptionPopover::showPopoverWithTarget(going.get(), u"Gone."_s);
        going.reset();
        QWidget shown;
        shown.show();
        OptionPopover::showPopoverWithTarget(&shown, u"There."_s);
        QTRY_VERIFY(popoverOf(shown));
        QVERIFY(!popoverOf(*target));
    }
};

} // namespace cardreel

QTEST_MAIN(cardreel::ZoomPlayerSplitViewControllerTest)
#include "ZoomPlayerSplitViewControllerTest.moc"
