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
        const auto trimmed = [&video](const QRect& area) {
            return ImageCapture::screenshotFromFile(video.path, 1, {}, area, Flip::None).size();
        };
        QCOMPARE(trimmed({10, 20, 100, 50}), QSize(100, 50));
        QCOMPARE(trimmed({300, 170, 100, 100}), QSize(20, 10)); // as much as there is
        QVERIFY(trimmed({400, 0, 10, 10}).isEmpty());
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

        // Another program reads the same as this one.
        QProcess exiftool;
        exiftool.start(u"exiftool"_s,
                       {u"-n"_s, u"-s3"_s, u"-Composite:GPSLatitude"_s, u"-Composite:GPSLongitude"_s, path});
        QVERIFY2(exiftool.waitForFinished(), qPrintable(exiftool.errorString()));
        const QByteArrayList printed = exiftool.readAllStandardOutput().trimmed().split('\n');
        QCOMPARE(printed.size(), 2);
        const QVariantMap gps = imageProperties(path)->value(u"{GPS}"_s).toMap();
        const auto isSame = [&](const QString& key, const char* positive, const char* negative, double degrees,
                                const QByteArray& composite) {
            return gps.value(key + u"Ref"_s).toString() == QLatin1StringView(degrees < 0 ? negative : positive) &&
                   std::abs(gps.value(key).toDouble() - std::abs(degrees)) < 1e-8 &&
                   std::abs(composite.toDouble() - degrees) < 1e-6;
        };
        QVERIFY(isSame(u"Latitude"_s, "N", "S", latitude, printed[0]));
        QVERIFY(isSame(u"Longitude"_s, "E", "W", longitude, printed[1]));
        const QString local =
            qEnvironmentVariable("TZ") == u"Asia/Tokyo" ? u"2025:06:14 21:00:05"_s : u"2025:06:14 08:00:05"_s;
        for (const QString& key : {u"DateStamp"_s, u"TimeStamp"_s})
            QCOMPARE(gps.value(key).toString(), local);
        for (const QString& key : {u"Altitude"_s, u"AltitudeRef"_s})
            QCOMPARE(gps.contains(key), !std::isnan(altitude));
        if (std::abs(altitude) < 1e6)
            QCOMPARE(gps.value(u"Altitude"_s).toDouble(), std::abs(altitude));
    }

    void cleanupTestCase() { VideoPlayer::waitForShutdown(); }

private:
    SampleVideos m_videos;
};

QTEST_GUILESS_MAIN(ImageCaptureTest)
#include "ImageCaptureTest.moc"
