#include "platform/video/VideoPlayer.h"

#include "platform/video/DecodingPolicy.h"
#include "platform/video/VideoAsset.h"
#include "platform/video/VideoComposition.h"
#include "platform/video/VideoItem.h"
#include "support/SampleVideos.h"
#include "support/Waiting.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace cardreel {

using namespace Qt::StringLiterals;
using Status = VideoPlayer::Status;

namespace {

std::unique_ptr<VideoPlayer> makePlayer()
{
    auto player = std::make_unique<VideoPlayer>(VideoPlayer::AudioOutput::None);
    player->setRenderSize(QSize(320, 180));
    return player;
}

void open(VideoPlayer& player, const QString& path)
{
    player.replaceCurrentItem(std::make_shared<VideoItem>(std::make_shared<VideoAsset>(path)));
}

/// The file without its sound, squeezed to play so many times as fast.
std::shared_ptr<VideoItem> scaledItem(const QString& path, double speed)
{
    VideoComposition composition;
    if (!composition.insertTimeRange(std::make_shared<VideoAsset>(path)))
        return nullptr;
    composition.removeAudioTracks();
    if (!composition.scaleTimeRange(composition.duration(), composition.duration() / speed))
        return nullptr;
    return std::make_shared<VideoItem>(composition);
}

} // namespace

#define WAIT_FOR_FRAME(number) WAIT_FOR(video.numberIn(player->currentFrame()) == (number))

class VideoPlayerTest : public QObject
{
    Q_OBJECT

    SampleVideos m_samples;

private Q_SLOTS:
    void initTestCase() { QVERIFY(!m_samples.good("sound").path.isEmpty()); }
    void cleanupTestCase() { VideoPlayer::waitForShutdown(); }

    void failsClearly_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const QByteArray& kind : SampleVideos::badKinds())
            QTest::newRow(kind.constData()) << kind;
    }
    void failsClearly()
    {
        QFETCH(QByteArray, kind);
        const QString path = m_samples.bad(kind);
        QVERIFY(!path.isEmpty());
        const auto player = makePlayer();
        QSignalSpy statuses(player.get(), &VideoPlayer::statusChanged);
        open(*player, path);
        QCOMPARE(player->status(), Status::Loading);
        player->play();
        WAIT_FOR(player->status() == Status::Failed);
        QCOMPARE(statuses.count(), 2);
        QCOMPARE(player->currentItem()->status(), VideoItem::Status::Failed);
        const QString error = player->currentItem()->errorText();
        const bool hasIndex = kind == "header-only" || kind == "garbage";
        const QString reason = kind == "audio-only" ? u"no video"_s : hasIndex ? u"decoded"_s : u"opened"_s;
        QVERIFY2(error.contains(reason) && error.contains(u"bad-"_s + QString::fromLatin1(kind)), qPrintable(error));
        QVERIFY(player->currentFrame().isNull());
        QVERIFY(player->rate() == 0);

        // A pane is used for the next file after a bad one.
        const SampleVideo& video = m_samples.good("h264");
        open(*player, video.path);
        WAIT_FOR_FRAME(0);
        QCOMPARE(player->currentItem()->errorText(), QString());
    }

    void opensPausedOnTheFirstFrame()
    {
        const SampleVideo& video = m_samples.good("sound");
        const auto player = makePlayer();
        open(*player, video.path);
        WAIT_FOR_FRAME(0);
        QCOMPARE(player->status(), Status::Ready);
        QVERIFY(player->rate() == 0);
        QCOMPARE(player->currentTime(), 0.0);
        WAIT_FOR(std::abs(player->currentItem()->duration() - video.duration) < 0.05);
        player->replaceCurrentItem(nullptr);
        QCOMPARE(player->status(), Status::Unknown);
        QVERIFY(player->currentFrame().isNull());
    }

    void seeksToTheFrameThatContainsTheTime_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const QByteArray& kind : SampleVideos::kinds())
            QTest::newRow(kind.constData()) << kind;
    }
    void seeksToTheFrameThatContainsTheTime()
    {
        QFETCH(QByteArray, kind);
        const SampleVideo& video = m_samples.good(kind);
        QVERIFY(!video.path.isEmpty());
        const auto player = makePlayer();
        if (video.rotation % 180 != 0)
            player->setRenderSize(QSize(180, 320));
        open(*player, video.path);
        WAIT_FOR_FRAME(0);
        QSignalSpy finished(player.get(), &VideoPlayer::seekFinished);
        int seeks = 0;
        // Starts, middles and ends of frames; around key frames (29, 30, 59…) and the pauses of a variable rate (9,
        // 10…).
        for (const int frame : {50, 29, 30, 31, 9, 10, 60, 59, 58, 1, 99, 98, 0, 89, 91}) {
            const auto index = static_cast<std::size_t>(frame);
            const double start = video.starts[index];
            const double end = index + 1 < video.starts.size() ? video.starts[index + 1] : video.duration;
            const double times[] = {start + 0.002, (start + end) / 2, end - 0.002};
            player->seek(times[seeks % 3]);
            QVERIFY(player->isSeeking());
            ++seeks;
            WAIT_FOR(finished.count() == seeks);
            WAIT_FOR_FRAME(frame);
            QCOMPARE(player->currentTime(), times[(seeks - 1) % 3]);
        }
        player->seek(1000); // past the end
        WAIT_FOR_FRAME(99);
        player->seek(-5);
        WAIT_FOR_FRAME(0);
        WAIT_FOR(!player->isSeeking());
        player->seek(qQNaN());
        QVERIFY(!player->isSeeking());
    }

    void scrubbingEndsOnTheNewestPosition()
    {
        const SampleVideo& video = m_samples.good("h264");
        const auto player = makePlayer();
        QSignalSpy finished(player.get(), &VideoPlayer::seekFinished);
        open(*player, video.path);
        // The first of them come while the file still loads.
        for (int i = 0; i < 300; ++i) {
            player->seek(i % 97 * 0.033);
            if (i % 10 == 0)
                QCoreApplication::processEvents();
        }
        player->seek(2.05);
        WAIT_FOR(player->status() == Status::Ready && !player->isSeeking());
        WAIT_FOR_FRAME(61);
        QVERIFY2(finished.count() < 100, qPrintable(QString::number(finished.count())));
    }

    void stepsByFrames()
    {
        const SampleVideo& video = m_samples.good("variable");
        const auto player = makePlayer();
        open(*player, video.path);
        WAIT_FOR_FRAME(0);
        player->seek(video.starts[28] + 0.01);
        WAIT_FOR_FRAME(28);
        for (const int frame : {29, 30, 31}) {
            player->stepFrame();
            WAIT_FOR_FRAME(frame);
            WAIT_FOR(std::abs(player->currentTime() - video.starts[static_cast<std::size_t>(frame)]) < 0.002);
        }
        for (const int frame : {30, 29, 28}) {
            player->stepFrame(VideoPlayer::FrameStep::Backward);
            WAIT_FOR_FRAME(frame);
            WAIT_FOR(!player->isSeeking());
        }
        QVERIFY(player->rate() == 0);
    }

    void staysInAFileWithoutALength()
    {
        const SampleVideo& video = m_samples.good("raw");
        const auto player = makePlayer();
        open(*player, video.path);
        WAIT_FOR_FRAME(0);
        for (const int frame : {1, 2}) {
            player->stepFrame();
            WAIT_FOR_FRAME(frame);
        }
        player->stepFrame(VideoPlayer::FrameStep::Backward);
        player->stepFrame();
        WAIT_FOR_FRAME(3);
        WAIT_FOR(!player->isSeeking());
        QCOMPARE(player->status(), Status::Ready);
    }

    void playsToTheEndAndReportsItOnce_data()
    {
        QTest::addColumn<bool>("isCut");
        QTest::newRow("whole") << false;
        QTest::newRow("cut") << true;
    }
    void playsToTheEndAndReportsItOnce()
    {
        QFETCH(bool, isCut);
        const SampleVideo& video = isCut ? m_samples.cut() : m_samples.good("sound");
        const auto player = makePlayer();
        QSignalSpy ends(player.get(), &VideoPlayer::itemDidPlayToEnd);
        int ticks = 0;
        player->addPeriodicTimeObserver(0.01, [&ticks](double) { ++ticks; });
        open(*player, video.path);
        WAIT_FOR_FRAME(0);
        player->seek(isCut ? 1.4 : 2.8);
        player->play();
        QVERIFY(player->rate() != 0);
        WAIT_FOR(player->status() == Status::Ended);
        QCOMPARE(ends.count(), 1);
        QVERIFY(player->rate() != 0);
        QVERIFY(ticks > 5);
        if (!isCut)
            WAIT_FOR_FRAME(99);

        // Sought back it plays on from there, and ends once more.
        player->seek(isCut ? 1.6 : 3.0);
        WAIT_FOR(ends.count() == 2);
        player->seek(0.2);
        player->pause();
        WAIT_FOR_FRAME(6);
        WAIT_FOR(player->status() == Status::Ready);
        QCOMPARE(ends.count(), 2);
    }

    void stopsOnTheFrameOfItsTime_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<double>("speed");
        QTest::newRow("half") << QByteArray("sound") << 0.5;
        QTest::newRow("with sound") << QByteArray("sound") << 1.0;
        QTest::newRow("variable") << QByteArray("variable") << 1.0;
        QTest::newRow("twice") << QByteArray("hevc") << 2.0;
        QTest::newRow("sixteen times") << QByteArray("h264") << 16.0;
    }
    void stopsOnTheFrameOfItsTime()
    {
        QFETCH(QByteArray, kind);
        QFETCH(double, speed);
        const SampleVideo& video = m_samples.good(kind);
        const auto player = makePlayer();
        if (speed == 1.0)
            open(*player, video.path);
        else
            player->replaceCurrentItem(scaledItem(video.path, speed));
        for (int stop = 0; stop < 5; ++stop) {
            // Not from a frame's start, and to where a tick happens to be.
            player->seek((0.12 + 0.37 * stop) / speed);
            WAIT_FOR(!player->isSeeking());
            const double from = player->currentTime();
            player->play();
            WAIT_FOR(player->currentTime() > from + 0.1 / speed);
            player->pause();
            WAIT_FOR(!player->isSeeking());
            // One more frame may be on its way, which takes the time along.
            WAIT_FOR_FRAME(video.frameAt(player->currentTime() * speed + 1e-6));
        }
    }

    void aScaledItemHasItsOwnTime()
    {
        const SampleVideo& video = m_samples.good("sound");
        const auto player = makePlayer();
        const std::shared_ptr<VideoItem> item = scaledItem(video.path, 4);
        QVERIFY(!item->hasAudio());
        QVERIFY(std::abs(item->duration() - video.duration / 4) < 0.02);
        player->replaceCurrentItem(item);
        player->seek(0.505); // asked for while it loads, it is where it starts
        WAIT_FOR_FRAME(60);
        QCOMPARE(item->status(), VideoItem::Status::ReadyToPlay);
        QCOMPARE(player->currentTime(), 0.505);
        QSignalSpy ends(player.get(), &VideoPlayer::itemDidPlayToEnd);
        player->play();
        WAIT_FOR(ends.count() == 1);
        QCOMPARE(ends.front().front().value<std::shared_ptr<VideoItem>>(), item);
        QVERIFY(std::abs(player->currentTime() - item->duration()) < 0.02);
    }

    void observersSeeTheTimeGoBy()
    {
        const SampleVideo& video = m_samples.good("sound");
        const auto player = makePlayer();
        std::vector<double> times;
        const int handle =
            player->addPeriodicTimeObserver(0.01, [&times](double seconds) { times.push_back(seconds); });
        open(*player, video.path);
        QVERIFY(times.empty());
        WAIT_FOR(times.size() == 1); // it is there
        QCOMPARE(times.back(), 0.0);
        player->seek(2.0);
        WAIT_FOR(times.back() == 2.0 && !player->isSeeking());
        times.clear();
        player->play();
        WAIT_FOR(player->currentTime() > 2.6);
        QVERIFY(std::is_sorted(times.begin(), times.end()));
        // Finer than the frames, of which there are eighteen in that time.
        QVERIFY2(times.size() > 27 && times.size() < 96, qPrintable(QString::number(times.size())));
        // Within the tolerance nothing happens, and a playing player doesn't go back by a frame.
        QSignalSpy finished(player.get(), &VideoPlayer::seekFinished);
        player->seek(player->currentTime() - 0.05, 0.1);
        QVERIFY(!player->isSeeking());
        player->seek(player->currentTime() - 0.5, 0.1);
        QVERIFY(player->isSeeking());
        player->removeTimeObserver(handle);
        const std::size_t seen = times.size();
        WAIT_FOR(player->status() == Status::Ended);
        QCOMPARE(times.size(), seen);
    }

    void anObserverMayDestroyThePlayer()
    {
        const SampleVideo& video = m_samples.good("h264");
        auto player = makePlayer();
        int ticks = 0;
        player->addPeriodicTimeObserver(0.01, [&](double) { player.reset(); });
        player->addPeriodicTimeObserver(0.01, [&](double) { ++ticks; });
        open(*player, video.path);
        WAIT_FOR(!player);
        QCOMPARE(ticks, 0);
    }

    void pausedAtTheEndNothingIsReportedUntilItPlays()
    {
        for (const char* kind : {"h264", "sound"}) {
            const SampleVideo& video = m_samples.good(kind);
            const auto player = std::make_unique<VideoPlayer>(); // whose sound ends when it does
            player->setRenderSize(QSize(320, 180));
            QSignalSpy ends(player.get(), &VideoPlayer::itemDidPlayToEnd);
            open(*player, video.path);
            for (int round = 1; round <= 2; ++round) {
                player->seek(100);
                WAIT_FOR_FRAME(99);
                WAIT_FOR(!player->isSeeking());
                QCOMPARE(ends.count(), round - 1);
                player->play();
                WAIT_FOR(ends.count() == round);
                player->pause();
                player->seek(1);
                WAIT_FOR_FRAME(30);
            }
        }
    }

    void drawsInTheSizeAskedFor()
    {
        const SampleVideo& video = m_samples.good("h264");
        const auto player = makePlayer();
        open(*player, video.path);
        WAIT_FOR_FRAME(0);
        QCOMPARE(player->currentFrame().format(), QImage::Format_RGB32);
        // A pane of another shape: black above and below, the picture between them.
        player->setRenderSize(QSize(641, 501));
        WAIT_FOR(player->currentFrame().size() == QSize(641, 501));
        const QImage picture = player->currentFrame();
        QCOMPARE(picture.pixelColor(320, 10), QColor(Qt::black));
        QVERIFY(picture.pixelColor(320, 200).lightness() > 60);
        QCOMPARE(picture.pixelColor(320, 490), QColor(Qt::black));
        player->setRenderSize(QSize());
        player->seek(1.01);
        WAIT_FOR(!player->isSeeking());
        player->setRenderSize(QSize(320, 180));
        WAIT_FOR_FRAME(30);
    }

    void drawsInAnySize()
    {
        for (const char* kind : {"h264", "rotated90"}) {
            const auto player = makePlayer();
            open(*player, m_samples.good(kind).path);
            WAIT_FOR(player->status() == Status::Ready);
            // A pane that is being dragged shut goes through all of these.
            for (const QSize size :
                 {QSize(1, 1), QSize(2, 300), QSize(300, 1), QSize(7, 5), QSize(1921, 3), QSize(333, 777)}) {
                player->setRenderSize(size);
                WAIT_FOR(player->currentFrame().size() == size);
            }
        }
    }

    void opensOneFileAfterAnother()
    {
        const SampleVideo& video = m_samples.good("sound");
        const auto player = makePlayer();
        const QStringList others{m_samples.good("hevc").path, m_samples.bad("missing"), m_samples.cut().path,
                                 m_samples.bad("garbage")};
        for (int i = 0; i < 40; ++i) {
            open(*player, others[i % others.size()]);
            player->play();
            player->seek(i * 0.05);
            if (i % 3 == 0)
                QCoreApplication::processEvents();
        }
        player->pause();
        open(*player, video.path);
        player->seek(1.51);
        WAIT_FOR_FRAME(45);
        QCOMPARE(player->status(), Status::Ready);
    }

    void survivesDamage()
    {
        QFile file(m_samples.good("h264").path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray whole = file.readAll();
        const auto player = makePlayer();
        quint32 noise = 3;
        int ready = 0;
        for (int round = 0; round < 30; ++round) {
            QByteArray bytes = whole;
            for (int hit = 0; hit < 30; ++hit) {
                noise = noise * 1664525 + 1013904223;
                const qsizetype span = hit % 3 != 0 ? bytes.size() : 4000;
                bytes[bytes.size() - 1 - static_cast<qsizetype>(noise >> 8) % span] = static_cast<char>(noise >> 3);
            }
            QFile damaged(m_samples.folder() + u"/damaged-%1.MP4"_s.arg(round));
            QVERIFY(damaged.open(QIODevice::WriteOnly) && damaged.write(bytes) == bytes.size());
            damaged.close();
            open(*player, damaged.fileName());
            player->seek(2.5);
            WAIT_FOR(player->status() != Status::Loading && !player->isSeeking());
            ready += player->status() != Status::Failed ? 1 : 0;
        }
        QVERIFY2(ready > 0 && ready < 30, qPrintable(QString::number(ready)));
    }

    void endsAtAnyMoment_data()
    {
        QTest::addColumn<QByteArray>("moment");
        for (const char* moment : {"idle", "loading", "ready", "seeking", "playing", "failing"})
            QTest::newRow(moment) << QByteArray(moment);
    }
    void endsAtAnyMoment()
    {
        QFETCH(QByteArray, moment);
        const SampleVideo& video = m_samples.good("sound");
        QImage kept;
        for (int round = 0; round < 4; ++round) {
            const auto player = makePlayer();
            QSignalSpy frames(player.get(), &VideoPlayer::frameReady);
            if (moment == "idle")
                continue;
            open(*player, moment == "failing" ? m_samples.bad("garbage") : video.path);
            for (int i = 0; i < round; ++i)
                QCoreApplication::processEvents();
            if (moment == "loading" || moment == "failing")
                continue;
            WAIT_FOR_FRAME(0);
            kept = player->currentFrame();
            if (moment == "seeking")
                player->seek(2.0 + round * 0.1);
            if (moment == "playing") {
                player->play();
                WAIT_FOR(frames.count() > 3);
            }
        }
        VideoPlayer::waitForShutdown();
        // A picture outlives its player.
        QVERIFY(kept.isNull() || video.numberIn(kept) == 0);
    }

    void isUnloadedWhileOnlyKeyFramesAreDecoded()
    {
        // From here on every speed above the recorder's own is too much for this process.
        DecodingPolicy::shared().fellBehind(Decoding::Full, 1, 1);
        DecodingPolicy::shared().fellBehind(Decoding::Coarse, 1, 1);
        const auto player = makePlayer();
        player->replaceCurrentItem(scaledItem(m_samples.good("h264").path, 2));
        player->play();
        WAIT_FOR(player->currentTime() > 0.2);
        player->replaceCurrentItem(nullptr);
        QCoreApplication::processEvents(); // what was queued finds nothing to load
        QCOMPARE(player->status(), Status::Unknown);
        QVERIFY(!player->isSeeking());
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::VideoPlayerTest)
#include "VideoPlayerTest.moc"
