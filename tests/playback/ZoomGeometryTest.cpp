#include "playback/ZoomGeometry.h"

#include <QTest>

namespace cardreel {

namespace {

constexpr QSizeF view(640, 360);

} // namespace

class ZoomGeometryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mapsPoints()
    {
        const ZoomGeometry whole{view, 1, {}};
        QCOMPARE(whole.toContent({0, 0}), QPointF(0, 360));
        const ZoomGeometry zoom{view, 2, {320, 0}}; // the lower right quarter
        QCOMPARE(zoom.toContent({320, 180}), QPointF(480, 90));
        QCOMPARE(zoom.toView({480, 90}), QPointF(320, 180));
    }

    void segmentsShowTheirPart()
    {
        // From the first on; y upward from the lower edge.
        const QRectF parts[] = {{0, 0, 640, 360},     {160, 90, 320, 180}, {0, 180, 320, 180},
                                {320, 180, 320, 180}, {0, 0, 320, 180},    {320, 0, 320, 180}};
        for (const ZoomGeometry& start : {ZoomGeometry{view, 1, {}}, ZoomGeometry{view, 7.3, {100, 50}}}) {
            for (int segment = 1; segment <= 6; ++segment)
                QCOMPARE(start.segment(segment).visibleRect(), parts[segment - 1]);
        }
    }

    void magnifiesAboutAPoint()
    {
        for (const QPointF point : {QPointF(320, 180), QPointF(10, 20), QPointF(600, 340)}) {
            ZoomGeometry zoom{view, 1, {}};
            for (const double magnification : {1.3, 5.5, 16.0, 4.0, 1.7}) {
                const QPointF content = zoom.toContent(point);
                zoom.magnify(magnification, point);
                // From the whole picture inwards and back the edges are never in the way.
                QVERIFY((zoom.toContent(point) - content).manhattanLength() < 1e-9);
            }
        }
    }

    void limitsAndSnaps()
    {
        const QList<std::pair<double, double>> magnifications = {{0.2, 1}, {40, 16}, {1.049, 1}, {1.05, 1.05}};
        for (const auto& [wanted, magnification] : magnifications) {
            ZoomGeometry zoom{view, 2, {100, 100}};
            zoom.magnify(wanted, {320, 180});
            QCOMPARE(zoom.snap(), magnification == 1);
            QCOMPARE(zoom.magnification, magnification);
            QCOMPARE(zoom.origin.isNull(), magnification == 1);
            // Nor does it leave the content.
            zoom.scrollTo({-1, 400});
            QCOMPARE(zoom.origin, QPointF(0, 360 - 360 / magnification));
        }
    }

    void keepsItsPartWhenResized()
    {
        ZoomGeometry zoom{view, 4, {480, 90}};
        zoom.resize({1000, 300});
        QCOMPARE(zoom.magnification, 4.0);
        QCOMPARE(zoom.origin, QPointF(750, 75));
        // A pane may be squeezed to nothing on the way.
        zoom.resize({0, 0});
        zoom.resize({640, 360});
        QCOMPARE(zoom.magnification, 4.0);
    }

    void goesTowardsATarget()
    {
        const ZoomGeometry start{view, 1, {}};
        const ZoomGeometry target = start.segment(4);
        QCOMPARE(start.towards(target, 1).visibleRect(), target.visibleRect());
        double former = 1;
        for (double fraction = 0.1; fraction < 1; fraction += 0.1) {
            const ZoomGeometry between = start.towards(target, fraction);
            QVERIFY(between.magnification > former);
            QCOMPARE(between.visibleRect().right(), view.width()); // its corner stays in the corner
            former = between.magnification;
        }
    }

    void pansAskForTheBottomBar()
    {
        QCOMPARE(ZoomGeometry::bottomBarWish({0, -10}), std::nullopt);    // too little
        QCOMPARE(ZoomGeometry::bottomBarWish({10.5, -80}), std::nullopt); // sideways
        QCOMPARE(ZoomGeometry::bottomBarWish({-10, -10.5}), true);
        QCOMPARE(ZoomGeometry::bottomBarWish({0, 10.5}), false);
    }

    void rendersNoMoreThanTheVideoHas_data()
    {
        QTest::addColumn<double>("magnification");
        QTest::addColumn<double>("ratio");
        QTest::addColumn<QSize>("natural");
        QTest::addColumn<QSize>("size");
        QTest::newRow("unknown") << 8.0 << 1.0 << QSize() << QSize(640, 360);
        QTest::newRow("whole, fine screen") << 1.0 << 2.0 << QSize(1920, 1080) << QSize(1280, 720);
        QTest::newRow("twice") << 2.0 << 1.0 << QSize(1920, 1080) << QSize(1280, 720);
        QTest::newRow("all there is") << 8.0 << 1.0 << QSize(1920, 1080) << QSize(1920, 1080);
        QTest::newRow("small video") << 8.0 << 1.0 << QSize(320, 180) << QSize(640, 360);
        QTest::newRow("tall video") << 16.0 << 1.0 << QSize(1080, 1920) << QSize(3413, 1920);
    }
    void rendersNoMoreThanTheVideoHas()
    {
        QFETCH(double, magnification);
        QFETCH(double, ratio);
        QFETCH(QSize, natural);
        QTEST((ZoomGeometry{view, magnification, {}}.renderSize(ratio, natural)), "size");
        QVERIFY(ZoomGeometry().renderSize(ratio, natural).isEmpty());
    }
};

} // namespace cardreel

QTEST_APPLESS_MAIN(cardreel::ZoomGeometryTest)
#include "ZoomGeometryTest.moc"
