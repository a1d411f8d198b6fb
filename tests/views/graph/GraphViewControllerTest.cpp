#include "views/graph/GraphViewController.h"

#include "support/Waiting.h"
#include "views/PaneTip.h"
#include "views/graph/GraphColors.h"
#include "views/graph/GraphLayerView.h"
#include "views/graph/GraphRecording.h"
#include "views/graph/NeedleView.h"
#include "views/graph/PointerText.h"
#include "views/graph/ReadoutView.h"
#include "views/graph/WarningChip.h"

#include <QApplication>
#include <QPaintEvent>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

/// Four seconds at 10, 20, 30 and 40 knots, with two samples each; in the third a warning.
QByteArray drive()
{
    return "$GTRIP,TRIP0001,1.0\r\n" + group(0, "10.0", "0.1,0.2,-0.3", 2) + group(1, "20.0", "0.4,0,0", 2) +
           group(2, "30.0", "0.5,0,0", 2, collisionWarning) + group(3, "40.0", "0.6,0,0", 2);
}

/// The graph pane of a window whose first recording, of a minute, is being played, with a clock that stands still.
struct Pane : GraphRecording
{
    double now = 0;
    std::unique_ptr<GraphViewController> graph;

    explicit Pane(const QByteArray& text = drive())
    {
        graph = std::make_unique<GraphViewController>(*window.controller);
        graph->setClock([this] { return now; });
        graph->resize(680, 380);
        graph->show();
        window.controller->setGraphVC(graph.get());
        read(text);
        window.play(0, 60);
        window.front.playing = true;
    }
    ~Pane() { window.controller->setGraphVC(nullptr); }

    void tickAt(double fraction)
    {
        window.front.fraction = fraction;
        window.front.progressed();
    }
    QString readouts() const { return graph->readoutView()->texts().join(u' '); }
    QString shownWarning() const
    {
        return graph->warningChip()->isHidden() ? QString() : graph->warningChip()->imageName();
    }
    QPoint at(double fraction) const
    {
        const GraphLayerView& view = *graph->graphView();
        return {qRound(view.xOf(fraction)), view.layerRect().center().y()};
    }
    void mouse(QEvent::Type type, double fraction, Qt::MouseButtons held) const
    {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        const QPoint place = at(fraction);
        QMouseEvent event(type, place, graph->graphView()->mapToGlobal(place), button, held, Qt::NoModifier);
        QApplication::sendEvent(graph->graphView(), &event);
    }
    bool standsAt(double fraction) const { return std::abs(window.front.fraction - fraction) < 0.002; }
};

QString speedOf(double knots)
{
    const double metersPerSecond = knots * 1852 / 3600;
    return QString::asprintf("Speed:%2.1f",
                             static_cast<double>(CustomLocation::speedForCurrentLocale(metersPerSecond)));
}

/// Counts the pixels that a widget is asked to paint.
class PaintedPixels : public QObject
{
public:
    int pixels = 0;

    explicit PaintedPixels(QWidget* widget) { widget->installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            for (const QRect& part : static_cast<QPaintEvent*>(event)->region())
                pixels += part.width() * part.height();
        }
        return false;
    }
};

} // namespace

class GraphViewControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheRecordsOfTheMoment_data()
    {
        QTest::addColumn<double>("fraction");
        QTest::addColumn<QString>("texts");
        QTest::newRow("beginning") << 0.0 << speedOf(10) + u" GX:0.100000 GY:0.200000 GZ:-0.300000"_s;
        QTest::newRow("each from its own list") << 0.7 << speedOf(30) + u" GX:0.500000 GY:0.000000 GZ:0.000000"_s;
        QTest::newRow("last") << 0.99 << speedOf(40) + u" GX:0.600000 GY:0.000000 GZ:0.000000"_s;
        QTest::newRow("end") << 1.0 << u"Speed:--- GX:0.000000 GY:0.000000 GZ:0.000000"_s;
    }
    void showsTheRecordsOfTheMoment()
    {
        QFETCH(double, fraction);
        Pane pane;
        pane.tickAt(fraction);
        QTEST(pane.readouts(), "texts");
        QCOMPARE(pane.graph->currentLocation().has_value(), fraction < 1);
        QCOMPARE(pane.graph->currentMotion().has_value(), fraction < 1);
        QCOMPARE(pane.graph->currentDriveSupport() != nullptr, fraction < 1);
        const QString shown = u"Speed:%1"_s.arg(static_cast<double>(pane.graph->needleView()->speed()), 0, 'f', 1);
        QCOMPARE(shown, fraction < 1 ? pane.readouts().section(u' ', 0, 0) : u"Speed:0.0"_s);
    }

    void speaksOfWhatIsMissing_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("texts");
        const QString nought = u"Speed:0.0 GX:0.000000 GY:0.000000 GZ:0.000000"_s;
        QTest::newRow("empty file") << QByteArray() << u"This recording has no telemetry."_s << nought;
        QTest::newRow("void fix") << fixSentence({.time = noon, .speed = "", .status = 'V'}) << QString() << nought;
        QTest::newRow("negative speed") << fixSentence({.time = noon, .speed = "-20"}) << QString() << nought;
    }
    void speaksOfWhatIsMissing()
    {
        QFETCH(QByteArray, text);
        Pane pane;
        pane.graph->needleView()->updateLayerWithSpeed(99);
        GraphRecording other;
        other.read(text);
        pane.graph->drawGraphWithCurrentDCFInfo(other.info());
        QTEST(pane.graph->graphView()->message(), "message");
        pane.tickAt(0.5);
        QTEST(pane.readouts(), "texts");
        QCOMPARE(pane.graph->needleView()->speed(), 0.0F);
    }

    void waitsForTheParse()
    {
        Pane pane;
        GraphRecording other;
        pane.graph->drawGraphWithCurrentDCFInfo(other.info());
        QCOMPARE(pane.graph->graphView()->message(), u"Reading telemetry…"_s);
        QVERIFY(pane.readouts().startsWith(u"Speed:---"));
        pane.graph->updateProgress(0.7);
        other.read(drive());
        pane.graph->recordingDidParse(pane.info());
        QVERIFY(!pane.graph->graphView()->message().isEmpty());
        pane.graph->recordingDidParse(other.info());
        QVERIFY(pane.graph->graphView()->message().isEmpty());
        QVERIFY(pane.readouts().startsWith(speedOf(30))); // where it stood
        pane.graph->drawGraphWithCurrentDCFInfo(nullptr);
        QCOMPARE(pane.graph->progress(), 0.0);
        QVERIFY(!pane.graph->graphView()->position());
        QVERIFY(pane.readouts().startsWith(u"Speed:---"));
    }

    void thinsOutProgress_data()
    {
        QTest::addColumn<double>("rate");
        QTest::addColumn<double>("pause");
        QTest::addColumn<bool>("applied");
        QTest::newRow("own rate") << 1.0 << 0.0 << true;
        QTest::newRow("fast, too soon") << 2.0 << 0.099 << false;
        QTest::newRow("fast, in time") << 2.0 << 0.1 << true;
        QTest::newRow("slow, too soon") << 0.5 << 0.05 << false;
        QTest::newRow("still, too soon") << 0.0 << 0.05 << false;
    }
    void thinsOutProgress()
    {
        QFETCH(double, rate);
        QFETCH(double, pause);
        QFETCH(bool, applied);
        Pane pane;
        pane.window.front.rate = rate;
        pane.tickAt(0.125); // the clock stands at 0, so that differences are exact
        QCOMPARE(pane.graph->progress(), 0.125);
        pane.now = pause;
        pane.tickAt(0.5);
        QCOMPARE(pane.graph->progress(), applied ? 0.5 : 0.125);
        QCOMPARE(pane.graph->graphView()->position().value(), pane.graph->progress());
        WAIT_FOR(pane.graph->progress() == 0.5); // the last one isn't lost
        if (applied)
            return;
        pane.now += 0.09; // counted from when it was made up for
        pane.tickAt(0.75);
        QCOMPARE(pane.graph->progress(), 0.5);
    }

    void aTickMovesOnlyTheLine()
    {
        Pane pane;
        QVERIFY(QTest::qWaitForWindowExposed(pane.graph.get()));
        WAIT_FOR(pane.graph->graphView()->drawer().drawings() > 0);
        QCoreApplication::processEvents();
        const int drawings = pane.graph->graphView()->drawer().drawings();
        PaintedPixels plot(pane.graph->graphView());
        PaintedPixels ground(pane.graph.get());
        PaintedPixels needle(pane.graph->needleView());
        for (int i = 0; i < 20; ++i) {
            pane.tickAt(0.01 * i);
            QCoreApplication::processEvents();
        }
        QCOMPARE(pane.graph->graphView()->drawer().drawings(), drawings);
        QVERIFY(plot.pixels > 0);
        const int whole = pane.graph->graphView()->width() * pane.graph->graphView()->height();
        QVERIFY2(plot.pixels < 20 * whole / 10, qPrintable(QString::number(plot.pixels)));
        QCOMPARE(needle.pixels, 0); // the same fix all the time
        QCOMPARE(ground.pixels, 0);
        pane.graph->resize(700, 400);
        WAIT_FOR(pane.graph->graphView()->drawer().drawings() == drawings + 1);
    }

    void warns()
    {
        Pane pane;
        pane.tickAt(0.3);
        QCOMPARE(pane.shownWarning(), QString());
        pane.tickAt(0.6);
        QCOMPARE(pane.shownWarning(), u"adas_forward_collision"_s);
        const WarningChip& chip = *pane.graph->warningChip();
        QCOMPARE(chip.toolTip(), pane.graph->currentDriveSupport()->appearanceEventName());
        QVERIFY(!chip.text().isEmpty() && pane.graph->rect().contains(chip.geometry()));
        pane.now = 1.9;
        pane.tickAt(0.9);
        QVERIFY(!pane.shownWarning().isEmpty());
        pane.now = 2;
        pane.tickAt(0.9);
        QCOMPARE(pane.shownWarning(), QString());
        pane.window.front.playing = false;
        pane.tickAt(0.6);
        QVERIFY(!pane.shownWarning().isEmpty());
        pane.graph->drawGraphWithCurrentDCFInfo(nullptr);
        QCOMPARE(pane.shownWarning(), QString());
    }

    void dragsAndPlaysOn()
    {
        Pane pane;
        pane.mouse(QEvent::MouseButtonPress, 0.25, Qt::LeftButton);
        QVERIFY(pane.graph->userControlIsActive());
        QVERIFY(pane.standsAt(0.25));
        QVERIFY(pane.graph->findChild<PaneTip*>()->isVisible());
        QVERIFY(std::abs(pane.window.rear.fraction - 0.25) < 0.002);
        pane.window.front.progressed();
        QVERIFY(!pane.window.front.playing);
        pane.mouse(QEvent::MouseMove, 0.7, Qt::LeftButton);
        QVERIFY(pane.standsAt(0.7));
        QVERIFY(pane.readouts().startsWith(speedOf(30)));
        pane.mouse(QEvent::MouseButtonRelease, 0.7, Qt::NoButton);
        QVERIFY(!pane.graph->userControlIsActive());
        QVERIFY(pane.window.front.playing);
        pane.mouse(QEvent::MouseMove, 0.1, Qt::NoButton);
        QVERIFY(pane.standsAt(0.7));
        // What stood goes on standing, and other buttons do nothing.
        pane.window.front.playing = false;
        QTest::mouseClick(pane.graph->graphView(), Qt::LeftButton, {}, pane.at(0.5));
        QVERIFY(pane.standsAt(0.5) && !pane.window.front.playing);
        QTest::mouseClick(pane.graph->graphView(), Qt::RightButton, {}, pane.at(0.2));
        QVERIFY(pane.standsAt(0.5));
    }

    void aDragNeverSticks_data()
    {
        QTest::addColumn<std::function<void(Pane&)>>("interrupt");
        QTest::addColumn<bool>("playsOn");
        const auto row = [](const char* name, bool playsOn, std::function<void(Pane&)> interrupt) {
            QTest::newRow(name) << std::move(interrupt) << playsOn;
        };
        row("another recording", false,
            [](Pane& pane) { pane.graph->drawGraphWithCurrentDCFInfo(pane.window.recording(1)); });
        row("hidden", true, [](Pane& pane) { pane.graph->hide(); });
        row("window left", true, [](Pane& pane) {
            QEvent event(QEvent::WindowDeactivate);
            QApplication::sendEvent(pane.graph->graphView(), &event);
        });
        row("button came up elsewhere", true, [](Pane& pane) { pane.mouse(QEvent::MouseMove, 0.5, Qt::NoButton); });
    }
    void aDragNeverSticks()
    {
        QFETCH(std::function<void(Pane&)>, interrupt);
        Pane pane;
        pane.mouse(QEvent::MouseButtonPress, 0.25, Qt::LeftButton);
        pane.window.front.progressed();
        interrupt(pane);
        QVERIFY(!pane.graph->userControlIsActive());
        QTEST(pane.window.front.playing, "playsOn");
        pane.mouse(QEvent::MouseMove, 0.75, Qt::LeftButton);
        QVERIFY(pane.standsAt(0.25));
    }

    void outlivesItsController()
    {
        auto controller = std::make_unique<MediaController>();
        GraphViewController graph(*controller);
        controller.reset();
        graph.updateProgress(0.5);
        graph.setCurrentSpeed(0);
        QTest::mouseClick(graph.graphView(), Qt::LeftButton);
        QVERIFY(!graph.userControlIsActive());
    }

    void turnsTheNeedle_data()
    {
        QTest::addColumn<float>("speed");
        QTest::addColumn<QPoint>("place");
        QTest::newRow("still, to the lower left") << 0.0F << QPoint(-40, 40);
        QTest::newRow("halfway, up") << 90.0F << QPoint(0, -50);
        QTest::newRow("full, to the lower right") << 180.0F << QPoint(40, 40);
    }
    void turnsTheNeedle()
    {
        QFETCH(float, speed);
        QFETCH(QPoint, place);
        NeedleView needle;
        needle.resize(240, 200);
        needle.updateLayerWithSpeed(speed);
        QCOMPARE(needle.grab().toImage().pixelColor(QPoint(120, 100) + place), graphNeedleColor);
        needle.updateLayerWithSpeed(speed + 0.9F);
        QCOMPARE(needle.numberText(), QString::number(speed));
    }

    void tellsThePointersPlace()
    {
        GraphRecording recording;
        const std::shared_ptr<const Telemetry> telemetry = recording.read(drive());
        const QStringList lines = pointerText(telemetry.get(), 0.7, 100, noonSeconds).split(u'\n');
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines[0].startsWith(u"1:10  ·  12:01:10"));
        QCOMPARE(lines[1], speedOf(30).mid(6) + u' ' + CustomLocation::unitForCurrentLocale());
        QCOMPARE(lines[2], u"GX 0.500  GY 0.000  GZ 0.000"_s);
        QCOMPARE(pointerText(nullptr, 0.5, 100, {}), u"0:50"_s);
        QCOMPARE(pointerText(nullptr, 0.5, 0, noonSeconds), QString());
        QCOMPARE(pointerText(telemetry.get(), 1, 100, {}), u"1:40"_s); // no records at the very end
    }
};

QTEST_MAIN(GraphViewControllerTest)
#include "GraphViewControllerTest.moc"
