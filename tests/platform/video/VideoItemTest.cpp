#include "platform/video/VideoItem.h"

#include "platform/video/DecodingPolicy.h"
#include "platform/video/VideoAsset.h"
#include "platform/video/VideoComposition.h"
#include "support/SampleVideos.h"

#include <QTest>

#include <cmath>

namespace cardreel {

class VideoItemTest : public QObject
{
    Q_OBJECT

    SampleVideos m_samples;

private Q_SLOTS:
    void readsAnAsset_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<int>("rotation");
        QTest::addColumn<QSize>("trackSize");
        QTest::newRow("upright") << QByteArray("h264") << 0 << QSize(320, 180);
        QTest::newRow("turned") << QByteArray("rotated90") << 90 << QSize(180, 320);
        QTest::newRow("upside down") << QByteArray("rotated180") << 180 << QSize(320, 180);
        QTest::newRow("late") << QByteArray("late-start") << 0 << QSize(320, 180);
        QTest::newRow("another container") << QByteArray("transport") << 0 << QSize(320, 180);
    }
    void readsAnAsset()
    {
        QFETCH(QByteArray, kind);
        const SampleVideo& video = m_samples.good(kind);
        const VideoAsset asset(video.path);
        QVERIFY(asset.exists());
        QCOMPARE(asset.error(), FrameError::None);
        QTEST(asset.rotation(), "rotation");
        QTEST(asset.trackSize(), "trackSize");
        QVERIFY2(std::abs(asset.duration() - video.duration) < 0.07, qPrintable(QString::number(asset.duration())));
        QVERIFY(std::abs(asset.frameRate() - 30) < 1);
    }

    void badAssetsMakeNoComposition()
    {
        for (const QByteArray& kind : SampleVideos::badKinds()) {
            const auto asset = std::make_shared<VideoAsset>(m_samples.bad(kind));
            VideoComposition composition;
            const bool isRead = asset->error() == FrameError::None && asset->duration() > 0;
            QCOMPARE(composition.insertTimeRange(asset), isRead);
            QCOMPARE(composition.asset() != nullptr, isRead);
            QCOMPARE(asset->errorText().isEmpty(), asset->error() == FrameError::None);
        }
        QVERIFY(!VideoAsset(m_samples.bad("missing")).exists());
        QVERIFY(VideoAsset(m_samples.bad("text")).exists());
    }

    void scalesTheWholeRangeOnly()
    {
        const auto asset = std::make_shared<VideoAsset>(m_samples.good("sound").path);
        VideoComposition composition;
        QVERIFY(!composition.scaleTimeRange(0, 1));
        QVERIFY(composition.insertTimeRange(asset));
        const double length = composition.duration();
        for (const double to : {0.0, -1.0, qQNaN(), qInf()})
            QVERIFY(!composition.scaleTimeRange(length, to));
        QVERIFY(!composition.scaleTimeRange(length / 2, 1));
        QCOMPARE(composition.duration(), length);
        QVERIFY(composition.scaleTimeRange(length, length / 8));
        QCOMPARE(composition.speed(), 8.0);
        const VideoItem item(composition);
        QCOMPARE(item.duration(), length / 8);
        QVERIFY(item.canPlayFastForward());
        QVERIFY(item.hasAudio());
    }

    void decodesWhatCanBeDecodedInTime()
    {
        constexpr double fullHd = 1920.0 * 1080 * 30;
        DecodingPolicy policy(2);
        QCOMPARE(policy.decoding(fullHd * 100, 1), Decoding::Full);
        QCOMPARE(policy.decoding(fullHd, 2), Decoding::Full);
        QCOMPARE(policy.decoding(fullHd, 4), Decoding::Coarse);
        QCOMPARE(policy.decoding(fullHd, 8), Decoding::KeyFrames);
        QCOMPARE(policy.decoding(fullHd / 9, 16), Decoding::Full);
        policy.fellBehind(Decoding::Full, fullHd, 2);
        QCOMPARE(policy.decoding(fullHd, 2), Decoding::Coarse);
        QCOMPARE(policy.decoding(fullHd / 2, 2), Decoding::Full);
        policy.fellBehind(Decoding::Coarse, fullHd, 2);
        QCOMPARE(policy.decoding(fullHd, 2), Decoding::KeyFrames);
        policy.fellBehind(Decoding::KeyFrames, fullHd, 2); // there is nothing less

        // What is decoded elsewhere isn't skipped before it was seen to be too much.
        policy.setHardware(true);
        QCOMPARE(policy.decoding(fullHd, 16), Decoding::Full);
        policy.fellBehind(Decoding::Full, fullHd, 16);
        QCOMPARE(policy.decoding(fullHd, 16), Decoding::Coarse);
        QCOMPARE(policy.decoding(fullHd, 8), Decoding::Full);
        policy.setHardware(false);
        QCOMPARE(policy.decoding(fullHd, 8), Decoding::KeyFrames);
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::VideoItemTest)
#include "VideoItemTest.moc"
