#include "sample-card/FrameNumber.h"

#include <QBuffer>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QTest>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

QImage numberedFrame(QSize size, int number)
{
    QImage frame(size, QImage::Format_RGB32);
    QPainter painter(&frame);
    QLinearGradient scene(0, 0, size.width(), size.height());
    scene.setColorAt(0, QColor(0x7e, 0xa7, 0xcd));
    scene.setColorAt(1, QColor(0x4a, 0x4b, 0x4e));
    painter.fillRect(frame.rect(), scene);
    paintFrameNumber(painter, size, number);
    return frame;
}

QImage throughJpeg(const QImage& image, int quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG", quality);
    return QImage::fromData(bytes, "JPG");
}

QImage mixed(const QImage& first, const QImage& second)
{
    QImage result = first;
    QPainter painter(&result);
    painter.setOpacity(0.5);
    painter.drawImage(0, 0, second);
    return result;
}

QImage checkerboard(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixelColor(x, y, x / 8 % 2 == 0 ? Qt::white : Qt::black);
    return image;
}

QImage plain(Qt::GlobalColor color)
{
    QImage image(640, 360, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

} // namespace

class FrameNumberTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rejectsWhatIsNoNumber_data()
    {
        QTest::addColumn<QImage>("picture");
        const QImage frame = numberedFrame({640, 360}, 0x2fd1);
        QTest::newRow("no picture") << QImage();
        QTest::newRow("one pixel") << QImage(1, 1, QImage::Format_RGB32);
        QTest::newRow("black") << plain(Qt::black);
        QTest::newRow("white") << plain(Qt::white);
        QTest::newRow("grey") << plain(Qt::gray);
        QTest::newRow("checkerboard") << checkerboard({640, 360});
        QTest::newRow("mirrored") << frame.mirrored(true, false);
        QTest::newRow("upside down") << frame.mirrored(false, true);
        QTest::newRow("two frames mixed") << mixed(frame, numberedFrame({640, 360}, 0x2fd2));
        QTest::newRow("cropped by half a block") << frame.copy(11, 0, 629, 360);
        QTest::newRow("shown in a letterbox") << [&] {
            QImage box = plain(Qt::black);
            QPainter painter(&box);
            painter.drawImage(QRect(80, 45, 480, 270), frame);
            painter.end();
            return box;
        }();
        QTest::newRow("one block wrong") << [&] {
            QImage damaged = frame;
            QPainter painter(&damaged);
            // The last bit of the number, which is 1 here.
            painter.fillRect(QRect(640 * 17 / 28, 330, 640 / 28 + 1, 30), Qt::black);
            painter.end();
            return damaged;
        }();
    }

    void rejectsWhatIsNoNumber()
    {
        QFETCH(QImage, picture);
        QVERIFY(!readFrameNumber(picture).has_value());
    }

    void survivesScalingAndCompression_data()
    {
        QTest::addColumn<QSize>("painted");
        QTest::addColumn<QSize>("shown");
        QTest::addColumn<int>("jpegQuality"); // 0: none
        QTest::newRow("as painted") << QSize(1280, 720) << QSize(1280, 720) << 0;
        QTest::newRow("thumbnail") << QSize(1280, 720) << QSize(240, 135) << 75;
        QTest::newRow("thumbnail of a large frame") << QSize(3840, 2160) << QSize(240, 135) << 50;
        QTest::newRow("odd pane") << QSize(1280, 720) << QSize(717, 403) << 60;
        QTest::newRow("enlarged") << QSize(320, 180) << QSize(1111, 625) << 60;
        QTest::newRow("badly compressed") << QSize(1280, 720) << QSize(640, 360) << 10;
        QTest::newRow("smallest") << QSize(160, 90) << QSize(160, 90) << 80;
        QTest::newRow("stretched") << QSize(1280, 720) << QSize(400, 400) << 75;
    }

    void survivesScalingAndCompression()
    {
        QFETCH(QSize, painted);
        QFETCH(QSize, shown);
        QFETCH(int, jpegQuality);
        for (const int number : {0, 1, 599, 0x5555, 0xaaaa, 0x8000, FRAME_NUMBER_LIMIT - 1}) {
            QImage picture =
                numberedFrame(painted, number).scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            if (jpegQuality > 0)
                picture = throughJpeg(picture, jpegQuality);
            QCOMPARE(readFrameNumber(picture).value_or(-1), number);
        }
    }

    void wrapsAtItsLimit()
    {
        QCOMPARE(readFrameNumber(numberedFrame({320, 180}, FRAME_NUMBER_LIMIT + 7)).value_or(-1), 7);
    }

    void readsEveryPixelFormat()
    {
        const QImage frame = numberedFrame({640, 360}, 4711);
        for (const auto format : {QImage::Format_ARGB32_Premultiplied, QImage::Format_RGB888, QImage::Format_RGBX8888,
                                  QImage::Format_Grayscale8, QImage::Format_RGB16})
            QCOMPARE(readFrameNumber(frame.convertToFormat(format)).value_or(-1), 4711);
    }
};

QTEST_GUILESS_MAIN(FrameNumberTest)
#include "FrameNumberTest.moc"
