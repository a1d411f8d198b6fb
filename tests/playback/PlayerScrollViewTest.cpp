#include "playback/PlayerScrollView.h"

#include <QApplication>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPointingDevice>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

namespace cardreel {

namespace {

constexpr QPoint middle(320, 180);

struct Press
{
    int atMs = 0;
    QPoint point = middle;
    bool isDoubleClick = false;
    QPoint releasePoint = point;
};

/// A view that counts what its clicks do.
struct CountingView
{
    PlayerScrollView view;
    int singles = 0;
    int doubles = 0;
    QSignalSpy triples{&view, &PlayerScrollView::tripleTapDetected};

    CountingView()
    {
        view.resize(640, 360);
        view.setSingleClickBlock([this](PlayerScrollView&) { ++singles; });
        view.setDoubleClickBlock([this](PlayerScrollView&) { ++doubles; });
    }

    void send(QEvent::Type type, QPoint point, quint64 atMs, Qt::MouseButton button = Qt::LeftButton)
    {
        const bool isHeld = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, QPointF(point), view.mapToGlobal(QPointF(point)),
                          type == QEvent::MouseMove ? Qt::NoButton : button, isHeld ? button : Qt::NoButton,
                          Qt::NoModifier);
        event.setTimestamp(atMs);
        QApplication::sendEvent(&view, &event);
    }

    void click(const QList<Press>& presses)
    {
        for (const Press& press : presses) {
            const auto at = quint64(10'000 + press.atMs);
            send(press.isDoubleClick ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, press.point, at);
            if (press.releasePoint != press.point)
                send(QEvent::MouseMove, press.releasePoint, at);
            send(QEvent::MouseButtonRelease, press.releasePoint, at);
        }
    }

    void wheel(int angle, QPoint point = middle, Qt::ScrollPhase phase = Qt::NoScrollPhase, QPoint pixels = {})
    {
        QWheelEvent event(point, view.mapToGlobal(point), pixels, QPoint(0, angle), Qt::NoButton, Qt::NoModifier, phase,
                          false);
        QApplication::sendEvent(&view, &event);
    }

    QColor shownAt(QPoint point) { return view.grab().toImage().pixelColor(point); }
};

/// Four quarters of different colours.
QImage quarters(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    const QSize half = size / 2;
    painter.fillRect(QRect({0, 0}, half), Qt::red);
    painter.fillRect(QRect({half.width(), 0}, half), Qt::green);
    painter.fillRect(QRect({0, half.height()}, half), Qt::blue);
    painter.fillRect(QRect({half.width(), half.height()}, half), Qt::yellow);
    return image;
}

} // namespace

class PlayerScrollViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsClicksApart_data()
    {
        QTest::addColumn<QList<Press>>("presses");
        QTest::addColumn<int>("singles");
        QTest::addColumn<int>("doubles");
        QTest::addColumn<int>("triples");
        const int slow = QApplication::doubleClickInterval() + 1;
        const Press first;
        const Press second{100, middle, true};
        QTest::newRow("in the control bar") << QList<Press>{{0, {320, 23}}, {100, {320, 23}, true}} << 0 << 0 << 0;
        QTest::newRow("a drag") << QList<Press>{{0, middle, false, {360, 180}}} << 0 << 0 << 0;
        QTest::newRow("under the control bar") << QList<Press>{{0, {320, 24}}} << 1 << 0 << 0;
        QTest::newRow("a drag, a click") << QList<Press>{{0, {355, 180}, false, middle}, {100}} << 1 << 0 << 0;
        QTest::newRow("two") << QList{first, second} << 1 << 1 << 0;
        QTest::newRow("three") << QList{first, second, {200}} << 1 << 0 << 1;
        QTest::newRow("four") << QList{first, second, {200}, {300, middle, true}} << 1 << 0 << 1;
        QTest::newRow("two slow ones") << QList{first, {slow}} << 2 << 0 << 0;
        QTest::newRow("two, and one later") << QList{first, second, {100 + slow}} << 2 << 1 << 0;
        QTest::newRow("two far apart") << QList{first, {100, QPoint(100, 100)}} << 2 << 0 << 0;
    }
    void tellsClicksApart()
    {
        QFETCH(QList<Press>, presses);
        CountingView one;
        one.click(presses);
        QTEST(one.singles, "singles");
        QCOMPARE(one.doubles, 0);
        QTEST(int(one.triples.count()), "triples");
        CountingView deaf;
        deaf.view.setScrollingEnabled(false);
        deaf.click(presses);
        QCOMPARE(deaf.singles + int(deaf.triples.count()), 0);
        CountingView disabled;
        disabled.click(presses);
        disabled.view.setScrollingEnabled(false);
        // Once this one's double click is due, the others' would be as well.
        CountingView late;
        late.click({{0}, {100, middle, true}});
        QTRY_COMPARE(late.doubles, 1);
        QTEST(one.doubles, "doubles");
        QCOMPARE(disabled.doubles + deaf.doubles, 0);
    }

    void wheelZoomsAboutThePointer()
    {
        CountingView one;
        QSignalSpy changes(&one.view, &PlayerScrollView::boundsDidChange);
        const QPoint pointer(100, 300);
        const QPointF content = one.view.geometryNow().toContent(pointer);
        one.wheel(120, pointer);
        QCOMPARE(one.view.magnification(), ZoomGeometry::wheelFactor(1));
        QVERIFY((one.view.geometryNow().toContent(pointer) - content).manhattanLength() < 1e-9);
        QCOMPARE(changes.count(), 1);
        one.wheel(40 * 120, pointer);
        QCOMPARE(one.view.magnification(), 16.0);
        one.wheel(-40 * 120, pointer);
        one.wheel(120, pointer, Qt::ScrollMomentum);
        QCOMPARE(one.view.magnification(), 1.0);
        one.wheel(0, pointer, Qt::ScrollUpdate, QPoint(0, 50));
        QCOMPARE(one.view.magnification(), ZoomGeometry::wheelFactor(1));
    }

    void smallStepsAddUpThroughTheSnap()
    {
        CountingView one;
        int steps = 0;
        while (one.view.magnification() == 1 && steps < 100) {
            one.wheel(8);
            ++steps;
        }
        QCOMPARE(one.view.magnification(), ZoomGeometry::wheelFactor(steps * 8 / 120.0));
        QVERIFY(one.view.magnification() < 1.07);
        // Something else moved the view: what had added up before is forgotten.
        one.view.setMagnification(3, middle);
        QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, middle, middle,
                                  one.view.mapToGlobal(middle), 0.5, {});
        QApplication::sendEvent(&one.view, &pinch);
        QCOMPARE(one.view.magnification(), 4.5);
        one.view.setScrollingEnabled(false);
        QApplication::sendEvent(&one.view, &pinch);
        one.wheel(120);
        QCOMPARE(one.view.magnification(), 4.5);
    }

    void pansInContentUnits()
    {
        CountingView one;
        QList<PlayerScrollView::PanPhase> phases;
        QPointF way;
        connect(&one.view, &PlayerScrollView::panned, this, [&](PlayerScrollView::PanPhase phase, QPointF translation) {
            phases << phase;
            if (phase == PlayerScrollView::PanPhase::Changed)
                way = translation;
        });
        using Phase = PlayerScrollView::PanPhase;
        const QList<Phase> whole = {Phase::Began, Phase::Changed, Phase::Ended};
        one.view.setMagnification(4, middle);
        for (const bool isTakenAway : {false, true}) { // the right to scroll, in the middle
            one.send(QEvent::MouseButtonPress, middle, 1);
            one.send(QEvent::MouseMove, middle + QPoint(2, 0), 2); // not yet a drag
            QVERIFY(phases.isEmpty());
            one.send(QEvent::MouseMove, middle + QPoint(40, -20), 3);
            QCOMPARE(way, QPointF(10, 5));
            if (isTakenAway)
                one.view.setScrollingEnabled(false);
            one.send(QEvent::MouseButtonRelease, middle + QPoint(40, -20), 4);
            QCOMPARE(std::exchange(phases, {}), whole);
        }
        one.send(QEvent::MouseMove, middle, 5);
        QVERIFY(phases.isEmpty());
    }

    void cursorSaysWhatCanBeDone()
    {
        CountingView one;
        const auto cursorAt = [&one](QPoint point) {
            one.send(QEvent::MouseMove, point, 1, Qt::NoButton);
            return one.view.cursor().shape();
        };
        QCOMPARE(cursorAt(middle), Qt::CrossCursor);
        QCOMPARE(cursorAt({320, 5}), Qt::ArrowCursor);
        one.view.setMagnification(2, middle);
        QCOMPARE(cursorAt({320, 5}), Qt::OpenHandCursor);
        one.view.setMouseIsDown(true);
        QCOMPARE(one.view.cursor().shape(), Qt::ClosedHandCursor);
    }

    void movesToATargetInTime()
    {
        CountingView one;
        one.view.show();
        int finished = 0;
        QSignalSpy changes(&one.view, &PlayerScrollView::boundsDidChange);
        one.view.moveTo(one.view.geometryNow().segment(2), PlayerScrollView::Transition::Animated, [&] { ++finished; });
        QCOMPARE(one.view.magnification(), 2.0);
        QCOMPARE(finished, 0);
        QTRY_COMPARE(finished, 1);
        QCOMPARE(one.view.geometryNow().visibleRect(), QRectF(160, 90, 320, 180));
        QCOMPARE(changes.count(), 1);
        // A wheel takes over from where the picture is.
        one.view.moveTo(one.view.geometryNow().segment(1), PlayerScrollView::Transition::Animated, [&] { ++finished; });
        one.wheel(120);
        QCOMPARE(finished, 2);
        QVERIFY(one.view.magnification() > 1.5);
        one.view.moveTo(one.view.geometryNow().segment(1), PlayerScrollView::Transition::Animated, [&] { ++finished; });
        one.view.resize(320, 180);
        QCOMPARE(finished, 3);
        QCOMPARE(one.view.geometryNow().visibleRect(), QRectF(0, 0, 320, 180));
    }

    void paintsTheVisiblePart_data()
    {
        QTest::addColumn<int>("segment");
        QTest::addColumn<bool>("mirrored");
        QTest::addColumn<QColor>("upperLeft");
        QTest::addColumn<QColor>("lowerRight");
        const QColor red(Qt::red), green(Qt::green), blue(Qt::blue), yellow(Qt::yellow);
        QTest::newRow("whole") << 1 << false << red << yellow;
        QTest::newRow("middle, mirrored") << 2 << true << green << blue;
        QTest::newRow("upper left, mirrored") << 3 << true << green << green;
        QTest::newRow("upper right") << 4 << false << green << green;
        QTest::newRow("lower left") << 5 << false << blue << blue;
    }
    void paintsTheVisiblePart()
    {
        QFETCH(int, segment);
        QFETCH(bool, mirrored);
        CountingView one;
        one.view.setMirrored(mirrored);
        one.view.moveTo(one.view.geometryNow().segment(segment), PlayerScrollView::Transition::AtOnce);
        // In the size of the view, in that of a magnified one, and in one from before a resize.
        for (const QSize size : {QSize(640, 360), QSize(1280, 720), QSize(320, 182)}) {
            one.view.setFrameSource([size] { return quarters(size); });
            QTEST(one.shownAt({60, 60}), "upperLeft");
            QTEST(one.shownAt({580, 300}), "lowerRight");
        }
    }

    void paintsThePictureOverTheVideo()
    {
        CountingView one;
        one.view.setFrameSource([] { return quarters({640, 360}); });
        one.view.setPictureShown(true);
        QCOMPARE(one.shownAt({60, 60}), QColor(Qt::black));
        // A square one, in the middle.
        QImage still(50, 50, QImage::Format_RGB32);
        still.fill(Qt::cyan);
        one.view.setPicture(still);
        QCOMPARE(one.shownAt({60, 60}), QColor(Qt::black));
        QCOMPARE(one.shownAt(middle), QColor(Qt::cyan));
        one.view.setPictureShown(false);
        QCOMPARE(one.shownAt({60, 60}), QColor(Qt::red));
        one.view.setContentOpacity(0.5);
        QVERIFY(std::abs(one.shownAt({60, 60}).red() - 125) < 25);
        one.view.setVideoShown(false);
        QCOMPARE(one.shownAt({60, 60}), QColor(Qt::black));
    }
};

} // namespace cardreel

QTEST_MAIN(cardreel::PlayerScrollViewTest)
#include "PlayerScrollViewTest.moc"
