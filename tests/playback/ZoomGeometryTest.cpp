#include "playback/ZoomGeometry.h"

#include <QTest>

#include <cmath>

namespace cardreel {

namespace {

constexpr QSizeF view(640, 360);

bool isNear(QPointF a, QPointF b)
{
    return (a - b).manhattanLength() < 1e-9;
}

} // namespace

class ZoomGeometryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mapsPoints_data()
    {
        QTest::addColumn<double>("magnification");
        QTest::addColumn<QPointF>("origin");
        QTest::addColumn<QPointF>("viewPoint");
        QTest::addColumn<QPointF>("contentPoint");
        QTest::newRow("whole, upper left") << 1.0 << QPointF() << QPointF(0, 0) << QPointF(0, 360);
        QTest::newRow("whole, lower right") << 1.0 << QPointF() << QPointF(640, 360) << QPointF(640, 0);
        QTest::newRow("upper left quarter") << 2.0 << QPointF(0, 180) << QPointF(0, 0) << QPointF(0, 360);
        QTest::newRow("lower right quarter") << 2.0 << QPointF(320, 0) << QPointF(320, 180) << QPointF(480, 90);
    }
    void mapsPoints()
    {
        QFETCH(double, magnification);
        QFETCH(QPointF, origin);
        QFETCH(QPointF, viewPoint);
        QFETCH(QPointF, contentPoint);
        const ZoomGeometry zoom{view, magnification, origin};
        QCOMPARE(zoom.toContent(viewPoint), contentPoint);
        QCOMPARE(zoom.toView(contentPoint), viewPoint);
    }

    void segmentsShowTheirPart_data()
    {
        QTest::addColumn<int>("segment");
        QTest::addColumn<QRectF>("part"); // y upward from the lower edge
        QTest::newRow("whole") << 1 << QRectF(0, 0, 640, 360);
        QTest::newRow("middle") << 2 << QRectF(160, 90, 320, 180);
        QTest::newRow("upper left") << 3 << QRectF(0, 180, 320, 180);
        QTest::newRow("upper right") << 4 << QRectF(320, 180, 320, 180);
        QTest::newRow("lower left") << 5 << QRectF(0, 0, 320, 180);
        QTest::newRow("lower right") << 6 << QRectF(320, 0, 320, 180);
    }
    void segmentsShowTheirPart()
    {
        QFETCH(int, segment);
        QFETCH(QRectF, part);
        for (const ZoomGeometry& start :
             {ZoomGeometry{view, 1, {}}, ZoomGeometry{view, 2, {320, 180}}, ZoomGeometry{view, 7.3, {100, 50}}})
            QCOMPARE(start.segment(segment).visibleRect(), part);
    }

    void magnifiesAboutAPoint()
    {
        for (const QPointF point : {QPointF(320, 180), QPointF(10, 20), QPointF(600, 340)}) {
            ZoomGeometry zoom{view, 1, {}};
            for (const double magnification : {1.3, 2.0, 5.5, 16.0, 4.0, 1.7}) {
                const QPointF content = zoom.toContent(point);
                zoom.magnify(magnification, point);
                QCOMPARE(zoom.magnification, magnification);
                // From the whole picture inwards and back the edges are never in the way.
                QVERIFY(isNear(zoom.toContent(point), content));
            }
        }
    }

    void staysWithinTheContent_data()
    {
        QTest::addColumn<double>("magnification");
        QTest::addColumn<QPointF>("wanted");
        QTest::addColumn<QPointF>("got");
        QTest::newRow("whole can't move") << 1.0 << QPointF(50, -50) << QPointF(0, 0);
        QTest::newRow("inside") << 2.0 << QPointF(50, 60) << QPointF(50, 60);
        QTest::newRow("past the left and the lower edge") << 2.0 << QPointF(-1, -1) << QPointF(0, 0);
        QTest::newRow("past the right and the upper edge") << 4.0 << QPointF(640, 360) << QPointF(480, 270);
    }
    void staysWithinTheContent()
    {
        QFETCH(double, magnification);
        QFETCH(QPointF, wanted);
        QFETCH(QPointF, got);
        ZoomGeometry zoom{view, magnification, {}};
        zoom.scrollTo(wanted);
        QCOMPARE(zoom.origin, got);
    }

    void limitsAndSnaps_data()
    {
        QTest::addColumn<double>("wanted");
        QTest::addColumn<double>("magnification");
        QTest::newRow("smaller than whole") << 0.2 << 1.0;
        QTest::newRow("hardly more than whole") << 1.049 << 1.0;
        QTest::newRow("just enough") << 1.05 << 1.05;
        QTest::newRow("largest") << 16.0 << 16.0;
        QTest::newRow("too large") << 40.0 << 16.0;
    }
    void limitsAndSnaps()
    {
        QFETCH(double, wanted);
        QFETCH(double, magnification);
        ZoomGeometry zoom{view, 2, {100, 100}};
        zoom.magnify(wanted, {320, 180});
        QCOMPARE(zoom.snap(), magnification == 1);
        QCOMPARE(zoom.magnification, magnification);
        if (magnification == 1)
            QCOMPARE(zoom.origin, QPointF());
    }

    void keepsItsPartWhenResized()
    {
        ZoomGeometry zoom{view, 4, {480, 90}};
        const QRectF part = zoom.unitRect();
        zoom.resize({1000, 300});
        QCOMPARE(zoom.magnification, 4.0);
        QCOMPARE(zoom.origin, QPointF(750, 75));
        // A pane may be squeezed to nothing on the way.
        zoom.resize({0, 0});
        zoom.resize({640, 360});
        QCOMPARE(zoom.unitRect().size(), part.size());
    }

    void goesTowardsATarget()
    {
        const ZoomGeometry start{view, 1, {}};
        const ZoomGeometry target = start.segment(4);
        QCOMPARE(start.towards(target, 0).visibleRect(), start.visibleRect());
        QCOMPARE(start.towards(target, 1).visibleRect(), target.visibleRect());
        double former = 1;
        for (double fraction = 0.1; fraction < 1; fraction += 0.1) {
            const ZoomGeometry between = start.towards(target, fraction);
            QVERIFY(between.magnification > former);
            QVERIFY(between.visibleRect().right() <= view.width() + 1e-9);
            former = between.magnification;
        }
    }

    void bottomBar_data()
    {
        QTest::addColumn<QPointF>("wanted");
        QTest::addColumn<int>("wish"); // 1 shown, 0 hidden, -1 none
        QTest::newRow("up") << QPointF(0, -10.5) << 1;
        QTest::newRow("down") << QPointF(0, 10.5) << 0;
        QTest::newRow("too little") << QPointF(0, -10) << -1;
        QTest::newRow("slightly sideways") << QPointF(-10, -80) << 1;
        QTest::newRow("sideways") << QPointF(10.5, -80) << -1;
    }
    void bottomBar()
    {
        QFETCH(QPointF, wanted);
        QFETCH(int, wish);
        const std::optional<bool> got = ZoomGeometry::bottomBarWish(wanted);
        QCOMPARE(got ? int(*got) : -1, wish);
    }

    void rendersNoMoreThanTheVideoHas_data()
    {
        QTest::addColumn<double>("magnification");
        QTest::addColumn<double>("ratio");
        QTest::addColumn<QSize>("natural");
        QTest::addColumn<QSize>("size");
        QTest::newRow("whole") << 1.0 << 1.0 << QSize(1920, 1080) << QSize(640, 360);
        QTest::newRow("whole, fine screen") << 1.0 << 2.0 << QSize(1920, 1080) << QSize(1280, 720);
        QTest::newRow("whole, small video") << 1.0 << 1.0 << QSize(320, 180) << QSize(640, 360);
        QTest::newRow("twice") << 2.0 << 1.0 << QSize(1920, 1080) << QSize(1280, 720);
        QTest::newRow("all there is") << 8.0 << 1.0 << QSize(1920, 1080) << QSize(1920, 1080);
        QTest::newRow("small video") << 8.0 << 1.0 << QSize(320, 180) << QSize(640, 360);
        QTest::newRow("tall video") << 16.0 << 1.0 << QSize(1080, 1920) << QSize(3413, 1920);
        QTest::newRow("unknown") << 8.0 << 1.0 << QSize() << QSize(640, 360);
    }
    void rendersNoMoreThanTheVideoHas()
    {
        QFETCH(double, magnification);
        QFETCH(double, ratio);
        QFETCH(QSize, natural);
        QFETCH(QSize, size);
        const ZoomGeometry zoom{view, magnification, {}};
        QCOMPARE(zoom.renderSize(ratio, natural), size);
        QVERIFY(ZoomGeometry().renderSize(ratio, natural).isEmpty());
    }
};

} // namespace cardreel

QTEST_APPLESS_MAIN(cardreel::ZoomGeometryTest)
#include "ZoomGeometryTest.moc"
