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

#include <functional>
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

struct TargetWindow : QWidget
{
    QWidget* target = new QWidget(this);

    explicit TargetWindow(QRect place)
    {
        target->setGeometry(place);
        resize(400, 300);
        show();
    }
    OptionPopover* popover() const { return target->findChild<OptionPopover*>(); }
};

} // namespace

class ZoomPlayerSplitViewControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanupTestCase() { VideoPlayer::waitForShutdown(); }

    void dividerSnapsToTheMiddleAndStopsBeforeTheEdges()
    {
        const QList<std::pair<int, int>> places = {{20, 160},  {990, 840}, {450, 500},
                                                   {550, 500}, {449, 449}, {551, 551}};
        for (const auto& [proposed, got] : places) {
            const auto split = makeSplit(1001);
            QCOMPARE(front(*split), 500);
            dragDivider(*split, proposed);
            QCOMPARE(front(*split), got);
        }
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

    void foldsTheRearPaneAway()
    {
        for (const Animation animation : {Animation::None, Animation::Animated}) {
            const auto split = makeSplit(1001);
            QSignalSpy changes(split.get(), &ZoomPlayerSplitViewController::secondaryPlayerEnableChanged);
            split->setSecondaryPlayerEnable(false, animation);
            QVERIFY(!split->secondaryPlayerEnable());
            QTRY_VERIFY(!split->secondaryPlayerItem()->isVisible() && front(*split) >= 1000);
            split->resize(801, 300);
            QTRY_VERIFY(front(*split) >= 800);
            split->setSecondaryPlayerEnable(false, animation);
            QCOMPARE(changes.count(), 1);
            split->setSecondaryPlayerEnable(true, animation);
            QTRY_COMPARE(front(*split), 400);
            QVERIFY(split->secondaryPlayerItem()->isVisible());
            // Back and forth without waiting ends where it was left.
            for (const bool isOn : {false, true, false})
                split->setSecondaryPlayerEnable(isOn, animation);
            QTRY_VERIFY(!split->secondaryPlayerItem()->isVisible());
            QVERIFY(split->primaryPlayerItem()->isPrimaryPlayer());
            QVERIFY(!split->secondaryPlayerItem()->isPrimaryPlayer());
        }
    }

    void chipsLeaveRoomForTheName()
    {
        constexpr int nameWidth = 50, magnification = 40;
        for (const int width : {160, 240, 360, 700}) {
            for (const int chips : {7, 8}) {
                const ChipLayout layout = ChipLayout::fitted(width, nameWidth, chips, magnification);
                QCOMPARE(layout.showsName, width >= 360);
                const int row = layout.rowWidth(chips, magnification) + 2 * ChipLayout::margin;
                QVERIFY(row + (layout.showsName ? nameWidth + ChipLayout::margin : 0) <= width);
                QVERIFY(layout.chipWidth >= 16 && layout.spacing >= 1);
            }
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
        pane.segmentAction(1)->setEnabled(true);
        QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(controls->findChild<ChipButton*>(), &in);
        QTRY_COMPARE(controls->opacity(), 1.0);
    }

    void popoverShowsBelowItsTarget()
    {
        TargetWindow window({100, 100, 80, 24});
        auto* edit = new QLineEdit(&window);
        edit->show();
        edit->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        // Where there is nothing to show it at, none comes.
        QWidget hidden;
        OptionPopover::showPopoverWithTarget(&hidden, u"Hidden."_s);
        OptionPopover::showPopoverWithTarget(nullptr, u"Nowhere."_s);
        auto going = std::make_unique<QWidget>();
        OptionPopover::showPopoverWithTarget(going.get(), u"Gone."_s);
        going.reset();
        OptionPopover::showPopoverWithTarget(window.target, u"Synchronization canceled."_s);
        QVERIFY(!window.popover());
        QTRY_VERIFY(window.popover() && window.popover()->isVisible());
        const QPointer<OptionPopover> popover = window.popover();
        QVERIFY(!hidden.findChild<OptionPopover*>());
        QVERIFY(popover->y() >= window.target->mapToGlobal(QPoint(0, window.target->height())).y());
        QVERIFY(window.screen()->availableGeometry().contains(popover->frameGeometry()));
        QTest::keyClick(edit, Qt::Key_A);
        QCOMPARE(edit->text(), u"a"_s);
        QVERIFY(edit->hasFocus());
        // Another one for the same target takes its place.
        OptionPopover::showPopoverWithTarget(window.target, u"Again."_s);
        QTRY_VERIFY(!popover);
        QCOMPARE(window.target->findChildren<OptionPopover*>().size(), 1);
    }

    void popoverGoes()
    {
        const std::function<void(TargetWindow&)> events[] = {
            [](TargetWindow& window) {
                QTest::mousePress(&window, Qt::LeftButton, {}, {10, 10});
            },
            [](TargetWindow& window) { QTest::keyClick(&window, Qt::Key_Escape); },
            [](TargetWindow& window) { window.target->hide(); },
            [](TargetWindow& window) { delete window.target; },
            [](TargetWindow& window) { window.move(30, 30); },
        };
        for (const auto& event : events) {
            // At the lower edge there is only room above.
            TargetWindow window({360, 270, 40, 24});
            window.move(0, window.screen()->availableGeometry().bottom() - 300);
            OptionPopover::showPopoverWithTarget(window.target, u"Select the media to play or synchronize."_s);
            QTRY_VERIFY(window.popover() && window.popover()->isVisible());
            const QPointer<OptionPopover> popover = window.popover();
            QVERIFY(window.screen()->availableGeometry().contains(popover->frameGeometry()));
            QVERIFY(popover->geometry().bottom() < window.target->mapToGlobal(QPoint()).y());
            event(window);
            QTRY_VERIFY(!popover);
        }
    }
};

} // namespace cardreel

QTEST_MAIN(cardreel::ZoomPlayerSplitViewControllerTest)
#include "ZoomPlayerSplitViewControllerTest.moc"
