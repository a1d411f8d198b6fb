#include "playback/RearFollower.h"

#include "platform/video/VideoAsset.h"
#include "platform/video/VideoComposition.h"
#include "platform/video/VideoItem.h"
#include "support/SampleVideos.h"
#include "support/Waiting.h"

#include <QTest>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

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

    void corrects()
    {
        const auto isCorrected = [](double behind, double pace, double seconds) {
            const RearFollower::Correction correction = RearFollower::correctionFor(behind);
            return std::abs(correction.pace - pace) + std::abs(correction.seconds - seconds) < 1e-9;
        };
        QVERIFY(isCorrected(0.005, 1, 0));
        QVERIFY(isCorrected(0.02, 1.1, 0.2));
        QVERIFY(isCorrected(0.2, 1.5, 0.4));
        QVERIFY(isCorrected(-9, 0.5, 2)); // farther ahead than is made up at once
    }

    void showsTheSameMoment_data()
    {
        QTest::addColumn<QByteArray>("rearKind");
        QTest::addColumn<double>("speed");
        QTest::newRow("uneven frames") << QByteArray("variable") << 1.0;
        QTest::newRow("starts late") << QByteArray("late-start") << 1.0;
        QTest::newRow("fewer frames a second") << QByteArray("27.5") << 1.0;
        QTest::newRow("shorter") << QByteArray("shorter") << 1.0;
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
        WAIT_FOR(isLevel());
        for (int round = 0; round < 2; ++round) {
            front.seek((0.31 + round * 1.3) / speed); // nobody tells the rear one
            WAIT_FOR(isLevel() && front.currentTime() > 0.1 / speed);
            const double from = front.currentTime();
            front.play();
            rear.play();
            WAIT_FOR(front.currentTime() > from + 0.4 / speed);
            front.pause();
            rear.pause();
            WAIT_FOR(isLevel());
            front.stepFrame();
            WAIT_FOR(isLevel());
            front.stepFrame(VideoPlayer::FrameStep::Backward);
            front.stepFrame(VideoPlayer::FrameStep::Backward);
            WAIT_FOR(isLevel());
        }
    }

    void catchesUpUntilAPlayerGoes()
    {
        const SampleVideo& video = m_samples.good("sound");
        VideoPlayer front(VideoPlayer::AudioOutput::None);
        auto rear = std::make_unique<VideoPlayer>(VideoPlayer::AudioOutput::None);
        RearFollower follower;
        follower.setPlayers(&front, rear.get());
        front.replaceCurrentItem(item(video.path, 0.5));
        rear->replaceCurrentItem(item(video.path, 0.5));
        front.play();
        WAIT_FOR(front.currentTime() > 0.08);
        rear->play();
        WAIT_FOR(front.currentTime() > 1.2 && std::abs(rear->currentTime() - front.currentTime()) < 0.035);
        // Either may go while it plays.
        rear.reset();
        const double from = front.currentTime();
        WAIT_FOR(front.currentTime() > from + 0.2);
        front.pause();
        follower.setPlayers(&front, nullptr);
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::RearFollowerTest)
#include "RearFollowerTest.moc"
