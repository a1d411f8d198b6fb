#include "views/graph/GraphGeometry.h"

#include "telemetry/CustomLocation.h"
#include "views/graph/CurveLines.h"
#include "views/graph/GraphPaneLayout.h"
#include "views/graph/WarningTimer.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QImage drawn(const std::vector<QLineF>& lines, QSize size)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 1));
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
    return picture;
}

} // namespace

class GraphGeometryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void speedAxis_data()
    {
        QTest::addColumn<double>("maxSpeed");
        QTest::addColumn<double>("kilometers");
        QTest::addColumn<double>("miles");
        QTest::newRow("not a number") << notANumber << 120.0 << 120.0;
        QTest::newRow("no speed") << 0.0 << 120.0 << 120.0;
        QTest::newRow("120 km/h") << 120 / 3.6 << 120.0 << 120.0;
        QTest::newRow("144 km/h, 89.5 mph") << 40.0 << 180.0 << 120.0;
        QTest::newRow("198 km/h, 123 mph") << 55.0 << 240.0 << 180.0;
        QTest::newRow("leaves the plot") << 100.0 << 240.0 << 240.0;
        QTest::newRow("infinite") << infinity << 240.0 << 240.0;
    }
    void speedAxis()
    {
        QFETCH(double, maxSpeed);
        QTEST(speedLabelMaxValue(maxSpeed), CustomLocation::shouldUseMilePerHour() ? "miles" : "kilometers");
    }

    void motionAxis_data()
    {
        QTest::addColumn<double>("maxMotionABS");
        QTest::addColumn<double>("top");
        QTest::newRow("not a number") << notANumber << 1.0;
        QTest::newRow("still") << 0.0 << 1.0;
        QTest::newRow("whole") << 1.0 << 1.0;
        QTest::newRow("a little above") << 1.01 << 2.0;
        QTest::newRow("eight") << 8.0 << 8.0;
        QTest::newRow("far above") << 12.0 << 9.0;
    }
    void motionAxis()
    {
        QFETCH(double, maxMotionABS);
        QTEST(motionLabelMaxABSValue(maxMotionABS), "top");
    }

    void labels()
    {
        QCOMPARE(speedLabels(120), QStringList({u"0"_s, u"30"_s, u"60"_s, u"90"_s, u"120"_s}));
        QCOMPARE(speedLabels(121.9), QStringList({u"0"_s, u"30"_s, u"60"_s, u"90"_s, u"121"_s}));
        QCOMPARE(motionLabels(3), QStringList({u"3.0"_s, u"1.5"_s, u"0.0"_s, u"-1.5"_s, u"-3.0"_s}));
    }

    void recordIndex_data()
    {
        QTest::addColumn<float>("fraction");
        QTest::addColumn<size_t>("count");
        QTest::addColumn<int>("index"); // -1 for none
        QTest::newRow("not a number") << static_cast<float>(notANumber) << size_t(10) << -1;
        QTest::newRow("no records") << 0.5F << size_t(0) << -1;
        QTest::newRow("the very end") << 1.0F << size_t(10) << -1;
        QTest::newRow("beyond") << 1e30F << size_t(10) << -1;
        QTest::newRow("the beginning") << 0.0F << size_t(10) << 0;
        QTest::newRow("cut, not rounded") << 0.19F << size_t(10) << 1;
        // 0.29 * 100 is below 29 in double precision and 29 in single.
        QTest::newRow("single precision") << 0.29F << size_t(100) << 29;
        QTest::newRow("the last") << std::nextafter(1.0F, 0.0F) << size_t(10) << 9;
    }
    void recordIndex()
    {
        QFETCH(float, fraction);
        QFETCH(size_t, count);
        QFETCH(int, index);
        const std::optional<size_t> found = recordIndexAt(fraction, count);
        QCOMPARE(found ? static_cast<int>(*found) : -1, index);
    }

    void needle()
    {
        const float quarter = std::acos(0.0F);
        QCOMPARE(rotationTransformForSpeed(0), 4 * quarter);
        QCOMPARE(rotationTransformForSpeed(60), 3 * quarter);
        QCOMPARE(rotationTransformForSpeed(180), quarter);
        QCOMPARE(needleRestAngle, 1.5F * quarter); // up becomes the lower left
    }

    void positions()
    {
        const GraphGeometry graph{QSizeF(240, 140), 20, 10};
        QCOMPARE(graph.groupX(0, 5), 20.0);
        QCOMPARE(graph.groupX(4, 5), 220.0);
        QCOMPARE(graph.speedY(0, 120), 10.0);
        QCOMPARE(graph.speedY(60, 120), 70.0);
        QCOMPARE(graph.speedY(240, 120), 250.0);
        QCOMPARE(graph.motionX(0, 4), 20.0);
        QCOMPARE(graph.motionX(3, 4), 170.0); // the last sample stands before the right axis
        QCOMPARE(graph.motionY(-2, 2), 10.0);
        QCOMPARE(graph.motionY(1, 2), 100.0);
        QCOMPARE(graph.markerX(2, 5, 5), graph.groupX(2, 5));
        QCOMPARE(graph.markerX(2, 5, 10), 145.0);
        QCOMPARE(graph.zeroY(), 70.0);
        QCOMPARE(graph.tickY(0), 10.0);
        QCOMPARE(graph.tickY(3), 100.0);
        QCOMPARE(graph.positionX(0.25), 70.0);
        QCOMPARE(graph.fractionAt(70), 0.25);
        QCOMPARE(graph.fractionAt(0), 0.0);
        QCOMPARE(graph.fractionAt(1000), 1.0);
        QCOMPARE((GraphGeometry{QSizeF(30, 30), 20, 10}).fractionAt(15), 0.0);
    }

    void curvesLeaveOutWhatIsNotFinite()
    {
        CurveLines curve(1);
        const double ys[] = {notANumber, 1, 2, infinity, 3, notANumber, 4, -1e300, 5};
        for (int i = 0; i < 9; ++i)
            curve.add(i, ys[i]);
        const std::vector<QLineF> lines = curve.finish();
        QCOMPARE(lines.size(), size_t(3)); // a lone point makes no line
        QCOMPARE(lines[0], QLineF(1, 1, 2, 2));
        QCOMPARE(lines[1].p1(), QPointF(6, 4));
        QVERIFY(lines[1].y2() < -1000 && std::isfinite(lines[1].y2()));
    }

    void denseCurvesLookTheSame()
    {
        constexpr int points = 60'000;
        constexpr QSize size(120, 80);
        std::mt19937 random(7);
        std::normal_distribution<double> noise(40, 8);
        CurveLines curve(1);
        std::vector<QLineF> all;
        QPointF last;
        for (int i = 0; i < points; ++i) {
            const QPointF point(i * double(size.width()) / points, noise(random));
            curve.add(point.x(), point.y());
            if (i > 0)
                all.emplace_back(last, point);
            last = point;
        }
        const std::vector<QLineF> lines = curve.finish();
        QVERIFY(lines.size() <= size_t(4 * size.width()));
        const QImage reduced = drawn(lines, size);
        const QImage whole = drawn(all, size);
        int differing = 0;
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x)
                differing += std::abs(qGray(reduced.pixel(x, y)) - qGray(whole.pixel(x, y))) > 128 ? 1 : 0;
        }
        QVERIFY2(differing * 100 < size.width() * size.height(), qPrintable(QString::number(differing)));
    }

    void paneLayout_data()
    {
        QTest::addColumn<QSize>("pane");
        QTest::addColumn<bool>("hasDial");
        QTest::newRow("smallest") << QSize(300, 180) << false;
        QTest::newRow("low") << QSize(420, 220) << false;
        QTest::newRow("low, one row of figures") << QSize(600, 200) << false;
        QTest::newRow("low and wide") << QSize(900, 180) << true;
        QTest::newRow("narrow") << QSize(300, 260) << true;
        QTest::newRow("narrow and high") << QSize(300, 700) << true;
        QTest::newRow("usual") << QSize(680, 380) << true;
        QTest::newRow("huge") << QSize(2500, 900) << true;
    }
    void paneLayout()
    {
        QFETCH(QSize, pane);
        const GraphPaneLayout layout = GraphPaneLayout::fitted(pane, QSize(104, 20));
        QTEST(!layout.dial.isEmpty(), "hasDial");
        QVERIFY(layout.plot.height() >= 120 && layout.plot.width() >= 300);
        QVERIFY(layout.warning.width() >= 36 && layout.warning.height() >= 36);
        QCOMPARE(layout.readouts.width() * layout.readouts.height(), 4 * 104 * 20);
        const QList<QRect> parts = {layout.plot, layout.hairline, layout.dial, layout.readouts, layout.warning};
        for (int i = 0; i < parts.size(); ++i) {
            QVERIFY(parts[i].isEmpty() || QRect({}, pane).contains(parts[i]));
            for (int other = 0; other < i; ++other)
                QVERIFY2(!parts[i].intersects(parts[other]), qPrintable(u"%1 and %2"_s.arg(other).arg(i)));
        }
    }

    void warnings()
    {
        struct Step
        {
            double now;
            int record; // -1 for none
            bool warns;
            bool plays;
            int shown; // -1 for none
        };
        const Step steps[] = {
            {0, 0, false, true, -1},
            {1, 1, true, true, 1},
            {2, 2, false, true, 1}, // its record is over, its
                                    // time not
            {2.99, 3, false, true, 1},
            {3, 3, false, true, -1},
            {4, 1, true, true, 1},    // sought back
            {6.5, 1, true, true, -1}, // as long as it lasts: it isn't new
            {7, 4, true, true, 4},
            {7.5, 5, true, true, 5}, // another takes its place
            {9.4, -1, false, true, 5},
            {9.5, -1, false, true, -1},
            {20, 6, true, false, 6}, // at once in a pause
            {90, 6, true, false, 6}, // in which no time goes by
            {91, 6, true, true, 6},
            {92.9, 7, false, true, 6},
            {93, 7, false, true, -1},
            {94, 8, true, true, 8},
            {94.1, 7, false, false, -1},
        };
        WarningTimer timer;
        for (const Step& step : steps) {
            const auto index = [](int number) {
                return number < 0 ? std::nullopt : std::optional(static_cast<size_t>(number));
            };
            const auto shown = timer.update(index(step.record), step.warns, step.plays, step.now);
            QVERIFY2(shown == index(step.shown), qPrintable(QString::number(step.now)));
        }
    }
};

QTEST_GUILESS_MAIN(GraphGeometryTest)
#include "GraphGeometryTest.moc"
