#include "playback/RearFollower.h"

#include "platform/video/VideoAsset.h"
#include "platform/video/VideoComposition.h"
#include "platform/video/VideoItem.h"
#include "support/SampleVideos.h"

#include <QTest>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceMs = 20'000;

std::shared_ptr<VideoItem> item(const QString& path, double speed)
{
    VideoComposition composition;
    if (!composition.insertTimeRange(std::make_shared<VideoAsset>(path)))
        return nullptr;
    if (speed != 1) {
        composition.removeAudioTracks();
        composition.scaleTimeRange(composition.duration(), composition.duration() / speed);
    }
    return std::make_shared<VideoItem>(composition);
}

} // namespace

class RearFollowerTest : public QObject
{
    Q_OBJECT

    SampleVideos m_samples;

private Q_SLOTS:
    void cleanupTestCase() { VideoPlayer::waitForShutdown(); }

    void corrects_data()
    {
        QTest::addColumn<double>("behind");
        QTest::addColumn<double>("pace");
        QTest::addColumn<double>("seconds");
        QTest::newRow("level") << 0.0 << 1.0 << 0.0;
        QTest::newRow("hardly behind") << 0.005 << 1.0 << 0.0;
        QTest::newRow("behind") << 0.02 << 1.1 << 0.2;
        QTest::newRow("ahead") << -0.02 << 0.9 << 0.2;
        QTest::newRow("far behind") << 0.2 << 1.5 << 0.4;
        QTest::newRow("farther ahead than is made up at once") << -9.0 << 0.5 << 2.0;
    }
    void corrects()
    {
        QFETCH(double, behind);
        const RearFollower::Correction correction = RearFollower::correctionFor(behind);
        QTEST(correction.pace, "pace");
        QTEST(correction.seconds, "seconds");
    }

    void showsTheSameMoment_data()
    {
        QTest::addColumn<QByteArray>("rearKind");
        QTest::addColumn<double>("speed");
        QTest::newRow("alike") << QByteArray("hevc") << 1.0;
        QTest::newRow("uneven frames") << QByteArray("variable") << 1.0;
        QTest::newRow("starts late") << QByteArray("late-start") << 1.0;
        QTest::newRow("four times as fast") << QByteArray("hevc") << 4.0;
    }
    void showsTheSameMoment()
    {
        QFETCH(QByteArray, rearKind);
        QFETCH(double, speed);
        const SampleVideo& frontVideo = m_samples.good("sound");
        const SampleVideo& rearVideo = m_samples.good(rearKind);
        VideoPlayer front(VideoPlayer::AudioOutput::None);
        VideoPlayer rear(VideoPlayer::AudioOutput::None);
        front.setRenderSize({320, 180});
        rear.setRenderSize({320, 180});
        RearFollower follower;
        follower.setPlayers(&front, &rear);
        front.replaceCurrentItem(item(frontVideo.path, speed));
        rear.replaceCurrentItem(item(rearVideo.path, speed));
        const auto isLevel = [&] {
            if (front.isSeeking() || rear.isSeeking())
                return false;
            const double fraction = front.currentTime() / front.currentItem()->duration();
            const double rearTime = fraction * rear.currentItem()->duration() * speed;
            // A hair later, for what is a frame's start by one file's clock may fall just before it by the other's.
            return frontVideo.numberIn(front.currentFrame()) ==
                       frontVideo.frameAt(front.currentTime() * speed + 1e-5) &&
                   rearVideo.numberIn(rear.currentFrame()) == rearVideo.frameAt(rearTime + 1e-5);
        };
        QTRY_VERIFY_WITH_TIMEOUT(isLevel(), patienceMs);
        for (int round = 0; round < 3; ++round) {
            front.seek((0.31 + round * 0.7) / speed); // nobody tells the rear one
            QTRY_VERIFY_WITH_TIMEOUT(isLevel() && front.currentTime() > 0.1 / speed, patienceMs);
            const double from = front.currentTime();
            front.play();
            rear.play();
            QTRY_VERIFY_WITH_TIMEOUT(front.currentTime() > from + 0.4 / speed, patienceMs);
            front.pause();
            rear.pause();
            QTRY_VERIFY_WITH_TIMEOUT(isLevel(), patienceMs);
            front.stepFrame();
            QTRY_VERIFY_WITH_TIMEOUT(isLevel(), patienceMs);
            front.stepFrame(VideoPlayer::FrameStep::Backward);
            front.stepFrame(VideoPlayer::FrameStep::Backward);
            QTRY_VERIFY_WITH_TIMEOUT(isLevel(), patienceMs);
        }
    }

    void catchesUp()
    {
        const SampleVideo& video = m_samples.good("sound");
        VideoPlayer front(VideoPlayer::AudioOutput::None);
        VideoPlayer rear(VideoPlayer::AudioOutput::None);
        RearFollower follower;
        follower.setPlayers(&front, &rear);
        front.replaceCurrentItem(item(video.path, 0.5));
        rear.replaceCurrentItem(item(video.path, 0.5));
        front.play();
        QTRY_VERIFY_WITH_TIMEOUT(front.currentTime() > 0.08, patienceMs);
        rear.play();
        QTRY_VERIFY_WITH_TIMEOUT(front.currentTime() > 3 && std::abs(rear.currentTime() - front.currentTime()) < 0.035,
                                 patienceMs);
    }

    void playersMayGo()
    {
        const SampleVideo& video = m_samples.good("sound");
        VideoPlayer front(VideoPlayer::AudioOutput::None);
        auto rear = std::make_unique<VideoPlayer>(VideoPlayer::AudioOutput::None);
        RearFollower follower;
        follower.setPlayers(&front, rear.get());
        for (VideoPlayer* player : {&front, rear.get()}) {
            player->replaceCurrentItem(item(video.path, 1));
            player->play();
        }
        QTRY_VERIFY_WITH_TIMEOUT(front.currentTime() > 0.2, patienceMs);
        rear.reset();
        const double from = front.currentTime();
        QTRY_VERIFY_WITH_TIMEOUT(front.currentTime() > from + 0.2, patienceMs);
        front.pause();
        follower.setPlayers(&front, nullptr);
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::RearFollowerTest)
#include "RearFollowerTest.moc"
