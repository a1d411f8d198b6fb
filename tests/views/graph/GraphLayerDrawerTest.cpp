#include "views/graph/GraphLayerDrawer.h"

#include "names/ConstClass.h"
#include "platform/image/ApplicationImage.h"
#include "views/graph/GraphColors.h"
#include "views/graph/GraphRecording.h"

#include <QPainter>
#include <QTest>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize bounds(440, 224);

QImage drawn(GraphLayerDrawer& drawer, double scale)
{
    QImage picture(bounds * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(graphBackGroundColor);
    QPainter painter(&picture);
    drawer.draw(painter, bounds);
    return picture;
}

/// How far a pixel is from a colour.
int distance(QRgb pixel, const QColor& color)
{
    return std::abs(qRed(pixel) - color.red()) + std::abs(qGreen(pixel) - color.green()) +
           std::abs(qBlue(pixel) - color.blue());
}

bool isLike(QRgb pixel, const QColor& color)
{
    // A line between two pixels gives half of itself to each.
    return distance(pixel, color) < distance(pixel, graphBackGroundColor) + 24;
}

/// Whether a curve passes at this place, given in points from the lower left, and isn't seen above and below.
bool passes(const QImage& picture, const QColor& color, double x, double y)
{
    const double scale = picture.devicePixelRatio();
    const auto like = [&](double up) {
        const int row = static_cast<int>(std::floor((bounds.height() - y - up) * scale));
        return isLike(picture.pixel(static_cast<int>(x * scale), row), color);
    };
    return (like(0) || like(0.5) || like(-0.5)) && !like(3) && !like(-3);
}

} // namespace

class GraphLayerDrawerTest : public QObject
{
    Q_OBJECT

    static void scales()
    {
        QTest::addColumn<double>("scale");
        for (const double scale : {1.0, 1.5, 2.0})
            QTest::addRow("%g", scale) << scale;
    }

private Q_SLOTS:
    void drawsEachCurveInItsPlace_data() { scales(); }
    void drawsEachCurveInItsPlace()
    {
        QFETCH(double, scale);
        GraphRecording recording;
        QByteArray text = "$GTRIP,TRIP0001,1.0\r\n";
        for (int second = 0; second < 10; ++second)
            text += group(second, second < 5 ? "20.0" : "40.0", "0.5,-0.9,0.35", 3,
                          second == 4   ? delayWarning
                          : second == 7 ? collisionWarning
                                        : ",,,,,,,,,,,,,,,");
        const std::shared_ptr<const Telemetry> telemetry = recording.read(text);
        QCOMPARE(telemetry->GOPs().size(), size_t(11)); // the first has no fix
        GraphLayerDrawer drawer;
        drawer.setCurrentGOPs(telemetry, 120, 1);
        const QImage picture = drawn(drawer, scale);
        const GraphGeometry graph = drawer.geometry(bounds);
        for (const double x : {graph.motionX(7, 30), graph.motionX(22, 30)}) {
            QVERIFY(passes(picture, graphGXColor, x, graph.motionY(0.5, 1)));
            QVERIFY(passes(picture, graphGYColor, x, graph.motionY(-0.9, 1)));
            QVERIFY(passes(picture, graphGZColor, x, graph.motionY(0.35, 1)));
        }
        const auto speed = [&](size_t fix) {
            return graph.speedY(static_cast<double>(telemetry->totalLocations()[fix].speedForCurrentLocale()), 120);
        };
        QVERIFY(passes(picture, graphSpeedColor, graph.groupX(3, 11) - 6, speed(0)));
        QVERIFY(passes(picture, graphSpeedColor, graph.groupX(8, 11) - 6, speed(9)));
        QVERIFY(!passes(picture, graphSpeedColor, graph.groupX(1, 11) - 18, speed(0) * 0.7)); // none rises from nought
        const auto bottom = [&](double x) {
            return picture.pixel(static_cast<int>(x * scale), static_cast<int>((bounds.height() - 15) * scale));
        };
        QCOMPARE(bottom(graph.markerX(5, 11, 5)), adasDelayColor.rgb());
        QCOMPARE(bottom(graph.markerX(8, 11, 10)), adasForwardCollisionColor.rgb());
        QCOMPARE(bottom(graph.markerX(7, 11, 5)), graphBackGroundColor.rgb());
        const int gap = static_cast<int>((bounds.height() - 12 - 5.5) * scale);
        QCOMPARE(picture.pixel(static_cast<int>(graph.markerX(5, 11, 5) * scale), gap), graphBackGroundColor.rgb());
    }

    void axesAreCrisp_data() { scales(); }
    void axesAreCrisp()
    {
        QFETCH(double, scale);
        GraphLayerDrawer drawer;
        drawer.offsetX = 40.5;
        const QImage picture = drawn(drawer, scale);
        const int row = static_cast<int>(30 * scale);
        QList<QRgb> colors;
        int axisPixels = 0;
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, row);
            axisPixels += pixel == graphAxisColor.rgb() ? 1 : 0;
            if (!colors.contains(pixel))
                colors.push_back(pixel);
        }
        QCOMPARE(colors.size(), 2); // nothing between ground and axis
        QCOMPARE(axisPixels, 2 * qRound(scale));
        const int tickX = static_cast<int>(37 * scale);
        QCOMPARE(picture.pixel(tickX, static_cast<int>((bounds.height() / 2.0) * scale)), graphAxisColor.rgb());
    }

    void drawsNoCurves_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("nothing read") << QByteArray();
        QTest::newRow("one group") << QByteArray("$GTRIP,TRIP0001,1.0\r\n$GSENS,0.5,0.5,0.5\r\n");
    }
    void drawsNoCurves()
    {
        QFETCH(QByteArray, text);
        GraphRecording recording;
        GraphLayerDrawer empty;
        GraphLayerDrawer drawer;
        drawer.setCurrentGOPs(recording.read(text), 0, 0);
        QCOMPARE(drawer.maxSpeedValue(), 1.0);
        QCOMPARE(drawer.maxMotionABSValue(), 1.0);
        QVERIFY(drawer.currentGOPs()->size() < 2 && !empty.currentGOPs());
        QCOMPARE(drawn(drawer, 1), drawn(empty, 1));
    }

    void survivesWildNumbers()
    {
        GraphRecording recording;
        const QByteArray wild = ",,,,,1e300,1,,,,,,,,,";
        const auto telemetry = recording.read(group(0, "1e300", "1e300,-1e300,nan", 2) + group(1, "nan", "inf,0,0", 2) +
                                              group(2, "10.0", "0.1,0.1,0.1", 2, wild) + group(3, "10.0", "0,0,0", 2));
        GraphLayerDrawer drawer;
        drawer.setCurrentGOPs(telemetry, 240, 9);
        const QImage picture = drawn(drawer, 1);
        const GraphGeometry graph = drawer.geometry(bounds);
        QVERIFY(isLike(picture.pixel(int(graph.motionX(5, 8)), int(bounds.height() - graph.motionY(0.1, 9))),
                       graphGZColor));
    }

    void everyWarningHasADrawing_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString& name :
             {ConstClass::QVDSA_ICONIMAGE_NAME_DELAY, ConstClass::QVDSA_ICONIMAGE_NAME_DEPERTURE,
              ConstClass::QVDSA_ICONIMAGE_NAME_COLLISION, ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_DELAY,
              ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_DEPERTURE, ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_COLLISION,
              ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_LONGRUNNING, ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_WOBBLE,
              ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_RAPIDACCEL, ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_RAPIDDECEL,
              ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_REVERSERUN, ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_VIORATION,
              ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_PEDCOLLISION, ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_ABRUPTLEFT,
              ConstClass::QVDSA_ICONIMAGE_NAME_STRIX_ABRUPTRIGHT})
            QTest::newRow(name.toLatin1().constData()) << name;
    }
    void everyWarningHasADrawing()
    {
        QFETCH(QString, name);
        for (const int side : {16, 64}) {
            const QImage drawing = applicationImage(name, QSize(side, side));
            QCOMPARE(drawing.size(), QSize(side, side));
            int inked = 0;
            for (int y = 0; y < side; ++y) {
                for (int x = 0; x < side; ++x)
                    inked += qAlpha(drawing.pixel(x, y)) > 127 ? 1 : 0;
            }
            QVERIFY2(inked > side * side / 12 && inked < side * side / 2, qPrintable(QString::number(inked)));
        }
    }
};

QTEST_MAIN(GraphLayerDrawerTest)
#include "GraphLayerDrawerTest.moc"
