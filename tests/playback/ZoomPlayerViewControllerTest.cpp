#include "playback/ZoomPlayerViewController.h"

#include "platform/video/VideoAsset.h"
#include "platform/video/VideoItem.h"
#include "playback/RateStringTransformer.h"
#include "playback/TestPane.h"
#include "support/SampleVideos.h"

#include <QAction>
#include <QSignalSpy>

#include <memory>

namespace cardreel {

using namespace Qt::StringLiterals;
using namespace test;

#define WAIT_FOR_FRAME(video, number) WAIT_FOR((video).numberIn(pane.shown()) == (number))

class ZoomPlayerViewControllerTest : public QObject
{
    Q_OBJECT

    SampleVideos m_samples;

    QString picture(const QString& name, Qt::GlobalColor color)
    {
        const QString path = m_samples.folder() + u'/' + name;
        QImage image(160, 90, QImage::Format_RGB32);
        image.fill(color);
        return image.save(path, "JPG") ? path : QString();
    }

    /// Another pane has played: by then anything late would have come.
    bool anotherPlays()
    {
        Pane other;
        other.open(m_samples.good("h264").path);
        other.play();
        return QTest::qWaitFor([&other] { return other.ticks > 5; }, patienceMs);
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(!m_samples.good("sound").path.isEmpty()); }
    void cleanupTestCase() { VideoPlayer::waitForShutdown(); }

    void rateLabel()
    {
        const auto label = [](double rate) { return RateStringTransformer::transformedValue(rate).value(); };
        QCOMPARE(label(0), u"x0"_s);
        QCOMPARE(label(0.25), u"x0.25"_s);
        QCOMPARE(label(0.5), u"x1/2"_s);
        QCOMPARE(label(16), u"x16"_s);
        QVERIFY(!RateStringTransformer::transformedValue(std::nullopt));
    }

    void playsAFileToItsEnd()
    {
        const SampleVideo& video = m_samples.good("h264");
        Pane pane;
        QVERIFY(!pane.isActive() && !pane.isEnabled());
        pane.open(video.path);
        QVERIFY(pane.isActive());
        pane.play();
        QVERIFY(!pane.isPlaying()); // not before the file is read
        WAIT_FOR(pane.ticks > 20 && pane.isPlaying());
        QCOMPARE(pane.starts, 2); // with the item, and with the player's being ready
        QVERIFY(pane.progress() > 0);
        QVERIFY(std::abs(pane.originalTotalTime() - video.duration) < 0.05);
        QCOMPARE(pane.totalTime(), pane.originalTotalTime());
        pane.setCurrentProgress(0.9);
        WAIT_FOR(pane.ends == 1);
        WAIT_FOR_FRAME(video, 99);
        // The same item ends once, however often one goes back.
        QSignalSpy itemEnds(pane.player(), &VideoPlayer::itemDidPlayToEnd);
        pane.setCurrentProgress(0.9);
        WAIT_FOR(itemEnds.count() == 1);
        QCOMPARE(pane.ends, 1);
        QVERIFY(pane.rateChangeButton()->isEnabled());
        QVERIFY(pane.opens(m_samples.good("hevc").path));
        QCOMPARE(pane.starts, 3); // the player was ready already
    }

    void keepsWhatIsAskedForWhileReading()
    {
        const SampleVideo& video = m_samples.good("sound");
        for (const double rate : {1.0, 16.0}) {
            Pane pane;
            pane.open(video.path);
            pane.setCurrentProgress(0.9);
            pane.setCurrentProgress(0.505);
            pane.updatePlaybackRate(rate);
            pane.play();
            pane.pause();
            QCOMPARE(pane.totalTime(), 0.0);
            WAIT_FOR(pane.starts > 0);
            QCOMPARE(pane.progress(), 0.505);
            QCOMPARE(pane.currentItem()->speed(), rate);
            QCOMPARE(pane.currentItem()->hasAudio(), rate == 1);
            WAIT_FOR_FRAME(video, video.frameAt(0.505 * pane.originalTotalTime()));
            QVERIFY(!pane.isPlaying());
        }
    }

    void aRateKeepsThePosition()
    {
        const SampleVideo& video = m_samples.good("sound");
        Pane pane;
        QVERIFY(pane.opens(video.path));
        const double whole = pane.originalTotalTime();
        pane.setCurrentProgress(0.505);
        QCOMPARE(pane.originalCurrentTime(), 0.505 * whole);
        for (const double rate : {2.0, 0.5, 16.0, 1.0}) {
            pane.updatePlaybackRate(rate);
            QCOMPARE(pane.playbackRate(), rate);
            QVERIFY(!pane.isLoading()); // the file isn't read again
            QVERIFY(std::abs(pane.totalTime() - whole / rate) < 1e-6);
            QVERIFY(pane.isNearTo(0.505 * whole) && !pane.isPlaying());
            WAIT_FOR(pane.standsAt(0.505 * whole));
            WAIT_FOR_FRAME(video, video.frameAt(0.505 * whole));
        }
        // Playing goes on; what stands still at rate 0 isn't touched.
        pane.setCurrentProgress(0.8);
        pane.play();
        const std::shared_ptr<VideoItem> item = pane.currentItem();
        pane.updatePlaybackRate(0);
        QCOMPARE(pane.currentItem(), item);
        QCOMPARE(pane.rateChangeButton()->text(), u"x0"_s);
        pane.updatePlaybackRate(2);
        QVERIFY(pane.currentItem() != item);
        QVERIFY(pane.isPlaying());
        WAIT_FOR(pane.ends == 1);
    }

    void ratesGoRoundByTheButtonAndStopByTheKeys()
    {
        Pane pane;
        pane.rateChangeButton()->trigger(); // nothing is there to be faster
        QCOMPARE(pane.playbackRate(), 1.0);
        QVERIFY(pane.opens(m_samples.good("h264").path));
        for (const bool synchronized : {false, true}) {
            pane.setSynchronizedPlay(synchronized);
            pane.updatePlaybackRate(0);
            const QList<double> alone = {1, 2, 4, 8, 16, 0.5, 1};
            for (const double rate : synchronized ? QList<double>{1, 2, 4, 8, 0.5, 1} : alone) {
                pane.rateChangeButton()->trigger();
                QCOMPARE(pane.playbackRate(), rate);
            }
            for (int i = 0; i < 6; ++i)
                pane.raisePlaybackRate();
            QCOMPARE(pane.playbackRate(), synchronized ? 8 : 16);
            for (int i = 0; i < 7; ++i)
                pane.decrementPlaybackRate();
            QCOMPARE(pane.playbackRate(), 0.5);
        }
    }

    void nothingRunsWithoutAFile()
    {
        for (const QString& path : {QString(), m_samples.bad("missing")}) {
            Pane pane;
            pane.open(m_samples.good("h264").path);
            pane.play();
            WAIT_FOR(pane.isPlaying());
            pane.starts = pane.ticks = pane.ends = 0;
            pane.open(path);
            pane.setCurrentProgress(0.5);
            pane.play();
            WAIT_FOR(!pane.isLoading());
            pane.play();
            pane.updatePlaybackRate(2);
            QVERIFY(!pane.isActive() && !pane.isEnabled() && !pane.isLoading() && !pane.isPlaying());
            QVERIFY(!pane.currentItem());
            QCOMPARE(pane.originalTotalTime(), 0.0);
            QVERIFY(anotherPlays());
            QCOMPARE(pane.starts + pane.ticks + pane.ends, 0);
        }
    }

    void saysWhatIsWrongAndGoesOn()
    {
        for (const char* kind : {"text", "audio-only", "garbage"}) {
            Pane pane;
            QVERIFY(pane.opens(m_samples.good("h264").path));
            pane.setVolume(0.3);
            pane.audioMuteEnable(true);
            pane.mirrorButton()->trigger();
            pane.playerScrollView()->setMagnification(4, {320, 0});
            const QPointer<VideoPlayer> first = pane.player();
            for (int i = 0; i < 2; ++i) {
                pane.open(m_samples.bad(kind));
                pane.play();
                WAIT_FOR(pane.playerIsError() && !pane.currentItem()->errorText().isEmpty());
                QVERIFY(!pane.isPlaying() && !pane.isMirror() && !pane.isEnabled());
                QCOMPARE(pane.magnification(), 1.0);
                QVERIFY(!pane.playerScrollView()->scrollingEnabled());
            }
            QVERIFY(pane.opens(m_samples.good("h264").path));
            QVERIFY(!first); // another one took its place
            QVERIFY(!pane.playerIsError() && pane.isEnabled() && pane.isMirror());
            QCOMPARE(pane.magnification(), 4.0);
            QCOMPARE(pane.origin(), QPointF(240, 135));
            QCOMPARE(pane.player()->volume(), 0.3);
            QVERIFY(pane.player()->isMuted());
        }
    }

    void onlyTheNewestFileSpeaks()
    {
        const SampleVideo& video = m_samples.good("sound");
        Pane pane;
        int stale = 0;
        bool isWatched = true;
        const auto count = [&stale, &isWatched] { stale += isWatched; };
        pane.playWithPath(m_samples.good("h264").path, {}, {}, {});
        WAIT_FOR(pane.isReady());
        pane.setCurrentProgress(0.95);
        pane.play();
        // Right before its end, and a rate later, others are chosen as fast as keys repeat.
        for (int i = 0; i < 10; ++i) {
            pane.playWithPath(m_samples.good(i % 2 ? "h264" : "hevc").path, count, count, count);
            pane.updatePlaybackRate(i % 2 ? 2 : 1);
            QVERIFY(!pane.isPlaying());
        }
        pane.open(video.path);
        pane.pause();
        // The former item stirs once more before it is replaced.
        pane.player()->seek(0.1);
        pane.player()->play();
        pane.player()->pause();
        WAIT_FOR(pane.starts > 0);
        QCOMPARE(pane.early, 0);
        QCOMPARE(stale, 0);
        isWatched = false;
        QCOMPARE(pane.currentItem()->asset()->path(), video.path);
        WAIT_FOR_FRAME(video, 0);
        QCOMPARE(pane.ends, 0);
    }

    void changeingAssetKeepsTicksAndRatesOut()
    {
        Pane pane;
        int early = 0, late = 0;
        pane.setIsChangeingAsset(true);
        const auto tick = [&] { ++(pane.isChangeingAsset() ? early : late); };
        pane.playWithPath(m_samples.good("h264").path, {}, tick, {});
        pane.play();
        pane.updatePlaybackRate(2);
        QCOMPARE(pane.playbackRate(), 1.0);
        WAIT_FOR(late > 0);
        QCOMPARE(early, 0);
        pane.updatePlaybackRate(2);
        QCOMPARE(pane.playbackRate(), 2.0);
    }

    void zoomChoices()
    {
        Pane pane;
        pane.segmentDidChange(3); // inactive
        QCOMPARE(pane.lastSelectedSegment(), 1);
        QVERIFY(pane.opens(m_samples.good("h264").path));
        const auto shows = [&pane](int segment, double magnification) {
            bool isRight = pane.lastSelectedSegment() == segment && pane.magnification() == magnification;
            for (int i = 1; i <= 6; ++i)
                isRight = isRight && pane.segmentAction(i)->isChecked() == (i == segment);
            return isRight && pane.isInitialPosition() == (magnification == 1);
        };
        for (const int segment : {3, 6, 1, 2, 5}) {
            pane.segmentAction(segment)->trigger();
            WAIT_FOR(!pane.scrollBySegment());
            QVERIFY(shows(segment, segment == 1 ? 1 : 2));
        }
        pane.segmentDidChange(0);
        QVERIFY(shows(5, 2));
        // Chosen again it stays chosen, also where it only scrolls back.
        pane.playerScrollView()->scrollToPoint({10, 10});
        QVERIFY(shows(0, 2));
        for (int i = 0; i < 2; ++i) {
            pane.segmentAction(2)->trigger();
            QCOMPARE(pane.origin(), QPointF(80, 45));
            QVERIFY(shows(2, 2));
        }
        // A resize leaves the choice alone, and the next file what is seen.
        pane.resize(640, 360);
        QVERIFY(shows(2, 2));
        QVERIFY(pane.opens(m_samples.good("hevc").path));
        QCOMPARE(pane.origin(), QPointF(160, 90));
        // Nearly whole is whole.
        pane.playerScrollView()->setMagnification(1.04, {});
        QVERIFY(shows(1, 1));
        pane.zoomIn();
        pane.zoomIn();
        QVERIFY(shows(0, 1.5625));
        pane.zoomOut();
        pane.resetZoom();
        WAIT_FOR(!pane.scrollBySegment());
        QVERIFY(shows(1, 1));
    }

    void dragsScrollAndClicksPlayAndMute()
    {
        Pane pane;
        QVERIFY(pane.opens(m_samples.good("h264").path));
        QSignalSpy bar(&pane, &ZoomPlayerViewController::bottomBarRequested);
        PlayerScrollView* view = pane.playerScrollView();
        const auto drag = [view](QPoint way) {
            QTest::mousePress(view, Qt::LeftButton, {}, {160, 90});
            QMouseEvent move(QEvent::MouseMove, QPointF(160, 90) + way, view->mapToGlobal(QPointF(160, 90) + way),
                             Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(view, &move);
            const bool isDown = view->mouseIsDown();
            QTest::mouseRelease(view, Qt::LeftButton, {}, QPoint(160, 90) + way);
            return isDown && !view->mouseIsDown();
        };
        QVERIFY(drag({0, -40})); // up
        QCOMPARE(bar.takeFirst(), QVariantList{true});
        QVERIFY(drag({0, 40}));
        QCOMPARE(bar.takeFirst(), QVariantList{false});
        QVERIFY(drag({40, 40}));
        QVERIFY(bar.isEmpty());
        QCOMPARE(pane.lastSelectedSegment(), 1);
        view->setMagnification(2, {160, 90});
        QVERIFY(drag({30, 20}));
        QCOMPARE(pane.origin(), QPointF(65, 55));
        // Clicks play and mute.
        view->setMagnification(1, {});
        QSignalSpy triples(&pane, &ZoomPlayerViewController::tripleTapDetected);
        QSignalSpy muted(&pane, &ZoomPlayerViewController::muteDidChange);
        QTest::mouseClick(view, Qt::LeftButton, {}, {160, 90});
        QTest::mouseDClick(view, Qt::LeftButton, {}, {160, 90});
        QTest::mouseRelease(view, Qt::LeftButton, {}, {160, 90});
        QVERIFY(!pane.isPlaying());
        WAIT_FOR(pane.isPlaying());
        QTest::keyClick(view, Qt::Key_Escape);
        QCOMPARE(triples.count(), 1);
        for (const bool mutes : {true, false}) {
            QTest::mousePress(view, Qt::MiddleButton);
            QCOMPARE(muted.takeFirst(), QVariantList{mutes});
            QCOMPARE(pane.player()->isMuted(), mutes);
        }
        pane.audioMuteEnable(true);
        QTest::mousePress(view, Qt::MiddleButton);
        QVERIFY(!pane.isMuted());
    }

    void picturesCoverTheVideo()
    {
        const SampleVideo& video = m_samples.good("h264");
        const QString red = picture(u"red.JPG"_s, Qt::red);
        const QString blue = picture(u"blue.JPG"_s, Qt::blue);
        QVERIFY(!red.isEmpty() && !blue.isEmpty());
        Pane pane;
        const auto isShown = [&pane](const QColor& color) {
            const QColor middle = pane.shown().pixelColor(160, 90);
            return std::abs(middle.red() - color.red()) + std::abs(middle.blue() - color.blue()) < 20;
        };
        // As the clock does it: the file first, the picture at once after it.
        pane.open(video.path);
        pane.showImageWithPath(red);
        QVERIFY(isShown(Qt::black));
        QVERIFY(!pane.rateChangeButton()->isEnabled());
        WAIT_FOR(isShown(Qt::red) && pane.isReady());
        QVERIFY(pane.isEnabled());
        QVERIFY(!pane.rateChangeButton()->isEnabled());
        // Only the newest is shown, however many were asked for.
        for (int i = 0; i < 10; ++i)
            pane.showImageWithPath(i % 2 ? red : m_samples.bad("text"));
        pane.showImageWithPath(blue);
        WAIT_FOR(!isShown(Qt::black));
        QVERIFY(isShown(Qt::blue));
        QVERIFY(pane.isActive());
        // A file that isn't there takes nothing from the picture that was asked for after it.
        pane.open(m_samples.bad("missing"));
        pane.showImageWithPath(red);
        WAIT_FOR(isShown(Qt::red) && !pane.isLoading());
        QVERIFY(pane.isActive());
        pane.open(video.path);
        WAIT_FOR_FRAME(video, 0);
        QVERIFY(pane.rateChangeButton()->isEnabled());
    }

    void unreadablePictures()
    {
        Pane pane;
        for (const QByteArray& kind : QList<QByteArray>{"", "missing", "text", "folder", "pipe"}) {
            pane.open(m_samples.good("h264").path);
            QVERIFY(pane.isEnabled());
            pane.showImageWithPath(kind.isEmpty() ? QString() : m_samples.bad(kind));
            WAIT_FOR(!pane.isActive());
            QVERIFY(!pane.isEnabled() && !pane.playerScrollView()->scrollingEnabled());
        }
    }

    void endsInAnyState_data()
    {
        QTest::addColumn<QByteArray>("state");
        for (const char* state : {"reading", "loading", "playing", "failed", "disposed"})
            QTest::newRow(state) << QByteArray(state);
    }
    void endsInAnyState()
    {
        QFETCH(QByteArray, state);
        int late = 0;
        bool isOver = false;
        const auto count = [&late, &isOver] { late += isOver; };
        auto pane = std::make_unique<Pane>();
        const bool fails = state == "failed";
        const QString path = fails ? m_samples.bad("garbage") : m_samples.good("sound").path;
        pane->playWithPath(path, count, count, count);
        pane->play();
        if (state != "reading")
            WAIT_FOR(!pane->isLoading());
        if (fails)
            WAIT_FOR(pane->playerIsError());
        else if (state != "reading" && state != "loading")
            WAIT_FOR(pane->isReady() && pane->progress() > 0);
        if (state == "playing") {
            pane->updatePlaybackRate(8);
            pane->setCurrentProgress(0.8);
            pane->showImageWithPath(picture(u"green.JPG"_s, Qt::green));
            pane->segmentDidChange(4);
        }
        isOver = true;
        if (state == "disposed") {
            pane->dispose();
            pane->play();
            pane->setCurrentProgress(0.5);
            pane->updatePlaybackRate(2);
            QVERIFY(!pane->player() && !pane->isPlaying());
        } else {
            pane.reset();
        }
        QVERIFY(anotherPlays());
        QCOMPARE(late, 0);
    }
};

} // namespace cardreel

QTEST_MAIN(cardreel::ZoomPlayerViewControllerTest)
#include "ZoomPlayerViewControllerTest.moc"
