#include "export/ImageCapture.h"

#include "platform/files/Files.h"
#include "platform/image/ImageProperties.h"
#include "platform/video/VideoAsset.h"
#include "platform/video/VideoComposition.h"
#include "platform/video/VideoItem.h"
#include "platform/video/VideoPlayer.h"
#include "support/CardBuilder.h"
#include "support/FailingDevice.h"
#include "support/SampleVideos.h"
#include "support/Waiting.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <cmath>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

/// Left half red, right half blue.
QImage twoColors()
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, Qt::red);
    image.setPixelColor(1, 0, Qt::blue);
    return image.scaled(64, 32);
}

CustomLocation at(double latitude, double longitude, double altitude)
{
    return {{latitude, longitude}, altitude, 1.0, 0, 90, 10, utc(2025, 6, 14, 12, 0, 5)};
}

} // namespace

class ImageCaptureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFrameShownIsTaken()
    {
        constexpr double speed = 2;
        const SampleVideo& video = m_videos.good("h264");
        const auto asset = std::make_shared<const VideoAsset>(video.path);
        VideoComposition composition;
        QVERIFY(composition.insertTimeRange(asset));
        QVERIFY(composition.scaleTimeRange(asset->duration(), asset->duration() / speed));
        VideoPlayer player(VideoPlayer::AudioOutput::None);
        QVERIFY(ImageCapture::screenshotFromPlayer(&player, {}, {}, 0.0, Flip::None).isNull());
        player.replaceCurrentItem(std::make_shared<VideoItem>(composition));
        WAIT_FOR(player.currentItem()->status() == VideoItem::Status::ReadyToPlay);
        const auto middleOf = [&video](size_t frame) { return (video.starts[frame] + video.starts[frame + 1]) / 2; };
        player.seek(middleOf(41) / speed);
        const QSize size = asset->trackSize();
        const QImage image = ImageCapture::screenshotFromPlayer(&player, size, QRect({}, size), {}, Flip::None);
        QCOMPARE(image.size(), size);
        QCOMPARE(video.numberIn(image), std::optional(41));
        const QImage other =
            ImageCapture::screenshotFromPlayer(&player, size, {}, middleOf(7) / speed, Flip::Horizontal);
        QCOMPARE(video.numberIn(other.mirrored(true, false)), std::optional(7));
    }

    void trimming_data()
    {
        QTest::addColumn<QRect>("area");
        QTest::addColumn<QSize>("size");
        QTest::newRow("inside") << QRect(10, 20, 100, 50) << QSize(100, 50);
        QTest::newRow("partly outside") << QRect(300, 170, 100, 100) << QSize(20, 10);
        QTest::newRow("outside") << QRect(400, 0, 10, 10) << QSize(0, 0);
    }
    void trimming()
    {
        QFETCH(QRect, area);
        const QString path = m_videos.good("h264").path;
        QTEST(ImageCapture::screenshotFromFile(path, 1, {}, area, Flip::None).size(), "size");
    }

    void theExtensionDecides_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("begins"); // empty: not written
        const QByteArray jpeg = "\xFF\xD8\xFF";
        QTest::newRow("jpg") << u"a.jpg"_s << jpeg;
        QTest::newRow("JPEG") << u"a.JPEG"_s << jpeg;
        QTest::newRow("png") << u"写真 it's.Png"_s << QByteArray("\x89PNG");
        QTest::newRow("name that isn't UTF-8") << files::fromNativePath("\xFF.jpg") << jpeg;
        QTest::newRow("tiff") << u"a.tiff"_s << QByteArray();
        QTest::newRow("no folder") << u"no/a.png"_s << QByteArray();
    }
    void theExtensionDecides()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, begins);
        CardBuilder folder;
        folder.folder(u""_s);
        const QString path = folder.path(name);
        const auto error = ImageCapture::writeFileWithCaptureImage(twoColors(), {}, path);
        QCOMPARE(error.has_value(), begins.isEmpty());
        QCOMPARE(files::names(folder.root()).size(), begins.isEmpty() ? 0U : 1U);
        if (error)
            return;
        const std::unique_ptr<QFile> file = files::openForReading(path);
        QVERIFY(file);
        const QByteArray bytes = file->readAll();
        QVERIFY(bytes.startsWith(begins));
        const QImage read = QImage::fromData(bytes);
        QCOMPARE(read.size(), QSize(64, 32));
        QVERIFY(read.pixelColor(5, 16).red() > 200 && read.pixelColor(60, 16).blue() > 200);
    }

    void aFailureKeepsWhatIsThere()
    {
        CardBuilder folder;
        const QString path = folder.file(u"a.jpg"_s, "mine");
        FailingDevice device;
        device.room = 100;
        QVERIFY(ImageCapture::writeFileWithCaptureImage(twoColors(), {}, path, &device));
        QVERIFY(ImageCapture::writeFileWithCaptureImage({}, {}, path));
        QCOMPARE(files::names(folder.root()), std::vector<QString>{u"a.jpg"_s});
        QCOMPARE(files::openForReading(path)->readAll(), QByteArray("mine"));
    }

    void thePositionIsReadBack_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<double>("altitude");
        QTest::newRow("south east") << -35.5 << 139.7 << 0.0;
        QTest::newRow("north west, below the sea") << 40.7127531 << -74.0059739 << -12.345;
        QTest::newRow("just below a whole degree") << 35.0166666666 << 139.9999999999 << 8848.0;
        QTest::newRow("the last corner") << 90.0 << -180.0 << std::nan("");
        QTest::newRow("near zero") << -0.000001 << 0.000001 << 1e300;
    }
    void thePositionIsReadBack()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        QFETCH(double, altitude);
        CardBuilder folder;
        folder.folder(u""_s);
        const QString path = folder.path(u"a.jpg"_s);
        const CustomLocation location = at(latitude, longitude, altitude);
        QVERIFY(!ImageCapture::writeFileWithCaptureImage(twoColors(), location, path));

        const QVariantMap gps = imageProperties(path)->value(u"{GPS}"_s).toMap();
        QCOMPARE(gps.value(u"LatitudeRef"_s).toString(), latitude < 0 ? u"S"_s : u"N"_s);
        QCOMPARE(gps.value(u"LongitudeRef"_s).toString(), longitude < 0 ? u"W"_s : u"E"_s);
        QVERIFY(std::abs(gps.value(u"Latitude"_s).toDouble() - std::abs(latitude)) < 1e-8);
        QVERIFY(std::abs(gps.value(u"Longitude"_s).toDouble() - std::abs(longitude)) < 1e-8);
        const QString local =
            qEnvironmentVariable("TZ") == u"Asia/Tokyo" ? u"2025:06:14 21:00:05"_s : u"2025:06:14 08:00:05"_s;
        QCOMPARE(gps.value(u"DateStamp"_s).toString(), local);
        QCOMPARE(gps.value(u"TimeStamp"_s).toString(), local);
        QCOMPARE(gps.contains(u"Altitude"_s), !std::isnan(altitude));
        QCOMPARE(gps.contains(u"AltitudeRef"_s), !std::isnan(altitude));
        if (std::abs(altitude) < 1e6)
            QCOMPARE(gps.value(u"Altitude"_s).toDouble(), std::abs(altitude));

        const QString exiftool = QStandardPaths::findExecutable(u"exiftool"_s);
        if (exiftool.isEmpty())
            QSKIP("exiftool isn't installed");
        QProcess process;
        process.start(exiftool, {u"-n"_s, u"-s3"_s, u"-Composite:GPSLatitude"_s, u"-Composite:GPSLongitude"_s, path});
        QVERIFY(process.waitForFinished());
        const QByteArrayList printed = process.readAllStandardOutput().trimmed().split('\n');
        QCOMPARE(printed.size(), 2);
        QVERIFY(std::abs(printed[0].toDouble() - latitude) < 1e-6);
        QVERIFY(std::abs(printed[1].toDouble() - longitude) < 1e-6);
    }

    void cleanupTestCase() { VideoPlayer::waitForShutdown(); }

private:
    SampleVideos m_videos;
};

QTEST_GUILESS_MAIN(ImageCaptureTest)
#include "ImageCaptureTest.moc"
