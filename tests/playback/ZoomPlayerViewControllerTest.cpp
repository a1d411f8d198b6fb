#include "playback/ZoomPlayerViewController.h"

#include "platform/video/VideoAsset.h"
#include "platform/video/VideoItem.h"
#include "playback/RateStringTransformer.h"
#include "support/SampleVideos.h"

#include <QAction>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>
#include <thread>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

// Sanitized builds decode many times slower; a failure is the only thing that takes this long.
constexpr int patienceMs = 20'000;

struct Pane : ZoomPlayerViewController
{
    int starts = 0, ticks = 0, ends = 0, early = 0;

    Pane()
        : ZoomPlayerViewController(u"Front"_s, VideoPlayer::AudioOutput::None)
    {
        resize(320, 180);
        becomePrimaryPlayer();
        show();
    }
    void open(const QString& path)
    {
        const auto count = [this](int& counter) {
            ++counter;
            early += isLoading();
        };
        playWithPath(
            path, [this, count] { count(starts); }, [this, count] { count(ticks); }, [this, count] { count(ends); });
    }
    bool isReady() const
    {
        return !isLoading() && currentItem() && currentItem()->status() == VideoItem::Status::ReadyToPlay;
    }
    QImage shown() const { return playerScrollView()->grab().toImage(); }
    bool isNearTo(double seconds) const { return std::abs(originalCurrentTime() - seconds) < 0.05; }
    bool isEnabled() const { return segmentAction(1)->isEnabled() && mirrorButton()->isEnabled(); }
    QPointF origin() const { return playerScrollView()->geometryNow().origin; }
    double magnification() const { return playerScrollView()->magnification(); }
};

/// Whether this process has the file open.
bool isOpen(const QString& path)
{
    const QFileInfoList files = QDir(u"/proc/self/fd"_s).entryInfoList(QDir::Files | QDir::System);
    return std::any_of(files.begin(), files.end(),
                       [&path](const QFileInfo& file) { return file.symLinkTarget() == path; });
}

} // namespace

#define WAIT_FOR(expression) QTRY_VERIFY_WITH_TIMEOUT(expression, patienceMs)
#define WAIT_FOR_FRAME(video, number)                                                                                  \
    QTRY_COMPARE_WITH_TIMEOUT((video).numberIn(pane->shown()).value_or(-1), number, patienceMs)

class ZoomPlayerViewControllerTest : public QObject
{
    Q_OBJECT

    SampleVideos m_samples;

    QString picture(const QString& name, Qt::GlobalColor color, QSize size = {160, 90})
    {
        const QString path = m_samples.folder() + u'/' + name;
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        return image.save(path, "JPG") ? path : QString();
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(!m_samples.good("sound").path.isEmpty()); }
    void cleanupTestCase() { VideoPlayer::waitForShutdown(); }

    void rateLabel_data()
    {
        QTest::addColumn<double>("rate");
        QTest::addColumn<QString>("text");
        QTest::newRow("half") << 0.5 << u"x1/2"_s;
        QTest::newRow("none") << 0.0 << u"x0"_s;
        QTest::newRow("one") << 1.0 << u"x1"_s;
        QTest::newRow("sixteen") << 16.0 << u"x16"_s;
        QTest::newRow("fraction") << 0.25 << u"x0.25"_s;
    }
    void rateLabel()
    {
        QFETCH(double, rate);
        QTEST(RateStringTransformer::transformedValue(rate).value(), "text");
        QVERIFY(!RateStringTransformer::transformedValue(std::nullopt));
    }

    void playsAFileToItsEnd()
    {
        const SampleVideo& video = m_samples.good("h264");
        const auto pane = std::make_unique<Pane>();
        QVERIFY(!pane->isActive());
        QVERIFY(!pane->isEnabled());
        pane->open(video.path);
        QVERIFY(pane->isActive());
        pane->play();
        QVERIFY(!pane->isPlaying()); // not before the file is read
        WAIT_FOR(pane->isPlaying());
        QVERIFY(pane->starts >= 1);
        WAIT_FOR(pane->ticks > 20);
        QCOMPARE(pane->starts, 2); // with the item, and with the player's being ready
        QVERIFY(pane->progress() > 0);
        QVERIFY(std::abs(pane->originalTotalTime() - video.duration) < 0.05);
        QCOMPARE(pane->totalTime(), pane->originalTotalTime());
        WAIT_FOR(pane->ends == 1);
        WAIT_FOR_FRAME(video, 99);
        // The same item ends once, however often one goes back.
        QSignalSpy itemEnds(pane->player(), &VideoPlayer::itemDidPlayToEnd);
        pane->setCurrentProgress(0.9);
        WAIT_FOR(itemEnds.count() == 1);
        QCOMPARE(pane->ends, 1);
        QVERIFY(pane->rateChangeButton()->isEnabled());
        pane->open(m_samples.good("hevc").path);
        WAIT_FOR(pane->isReady());
        QCOMPARE(pane->starts, 3); // the player was ready already
    }

    void keepsWhatIsAskedForWhileReading_data()
    {
        QTest::addColumn<double>("rate");
        QTest::newRow("x1") << 1.0;
        QTest::newRow("x2") << 2.0;
        QTest::newRow("x16") << 16.0;
    }
    void keepsWhatIsAskedForWhileReading()
    {
        QFETCH(double, rate);
        const SampleVideo& video = m_samples.good("sound");
        const auto pane = std::make_unique<Pane>();
        pane->open(video.path);
        pane->setCurrentProgress(0.9);
        pane->setCurrentProgress(0.505);
        pane->updatePlaybackRate(rate);
        pane->play();
        pane->pause();
        QCOMPARE(pane->totalTime(), 0.0);
        WAIT_FOR(pane->starts > 0);
        QCOMPARE(pane->progress(), 0.505);
        QCOMPARE(pane->currentItem()->speed(), rate);
        QCOMPARE(pane->currentItem()->hasAudio(), rate == 1);
        WAIT_FOR_FRAME(video, video.frameAt(0.505 * pane->originalTotalTime()));
        QVERIFY(!pane->isPlaying());
    }

    void aRateKeepsThePosition()
    {
        const SampleVideo& video = m_samples.good("sound");
        const auto pane = std::make_unique<Pane>();
        pane->open(video.path);
        WAIT_FOR(pane->isReady());
        const double whole = pane->originalTotalTime();
        pane->setCurrentProgress(0.505);
        QCOMPARE(pane->originalCurrentTime(), 0.505 * whole);
        for (const double rate : {2.0, 0.5, 16.0, 1.0}) {
            pane->updatePlaybackRate(rate);
            QCOMPARE(pane->playbackRate(), rate);
            QVERIFY(!pane->isLoading()); // the file isn't read again
            QVERIFY(std::abs(pane->totalTime() - whole / rate) < 1e-6);
            QVERIFY(pane->isNearTo(0.505 * whole));
            QVERIFY(!pane->isPlaying());
            WAIT_FOR(pane->isReady() && !pane->player()->isSeeking());
            QVERIFY(pane->isNearTo(0.505 * whole));
            WAIT_FOR_FRAME(video, video.frameAt(0.505 * whole));
        }
        // Playing goes on; what stands still at rate 0 isn't touched.
        pane->setCurrentProgress(0);
        pane->play();
        const std::shared_ptr<VideoItem> item = pane->currentItem();
        pane->updatePlaybackRate(0);
        QCOMPARE(pane->currentItem(), item);
        QCOMPARE(pane->rateChangeButton()->text(), u"x0"_s);
        pane->updatePlaybackRate(2);
        QVERIFY(pane->currentItem() != item);
        QVERIFY(pane->isPlaying());
        WAIT_FOR(pane->ends == 1);
    }

    void rateButtonGoesRound_data()
    {
        QTest::addColumn<bool>("synchronized");
        QTest::addColumn<QList<double>>("rates");
        QTest::newRow("alone") << false << QList<double>{2, 4, 8, 16, 0.5, 1, 2};
        QTest::newRow("with others") << true << QList<double>{2, 4, 8, 0.5, 1, 2};
    }
    void rateButtonGoesRound()
    {
        QFETCH(bool, synchronized);
        QFETCH(QList<double>, rates);
        const auto pane = std::make_unique<Pane>();
        pane->setSynchronizedPlay(synchronized);
        pane->incrementPlaybackRate(); // nothing is there to be faster
        QCOMPARE(pane->playbackRate(), 1.0);
        pane->open(m_samples.good("h264").path);
        WAIT_FOR(pane->isReady());
        for (const double rate : rates) {
            pane->rateChangeButton()->trigger();
            QCOMPARE(pane->playbackRate(), rate);
        }
        pane->updatePlaybackRate(0);
        pane->incrementPlaybackRate();
        QCOMPARE(pane->playbackRate(), 1.0);
        // The keys stop at the ends.
        for (int i = 0; i < 6; ++i)
            pane->raisePlaybackRate();
        QCOMPARE(pane->playbackRate(), pane->rateLimit());
        for (int i = 0; i < 7; ++i)
            pane->decrementPlaybackRate();
        QCOMPARE(pane->playbackRate(), 0.5);
        WAIT_FOR(pane->isReady());
    }

    void nothingRunsWithoutAFile_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("no path") << QString();
        QTest::newRow("missing") << m_samples.bad("missing");
    }
    void nothingRunsWithoutAFile()
    {
        QFETCH(QString, path);
        const auto pane = std::make_unique<Pane>();
        pane->open(m_samples.good("h264").path);
        pane->play();
        WAIT_FOR(pane->isPlaying());
        pane->starts = pane->ticks = pane->ends = 0;
        pane->open(path);
        pane->setCurrentProgress(0.5);
        pane->play();
        WAIT_FOR(!pane->isLoading());
        QVERIFY(!pane->isActive());
        QVERIFY(!pane->isEnabled());
        QVERIFY(!pane->currentItem());
        QVERIFY(!pane->isPlaying());
        pane->play();
        QVERIFY(!pane->isPlaying());
        QCOMPARE(pane->originalTotalTime(), 0.0);
        pane->updatePlaybackRate(2);
        QVERIFY(!pane->isLoading());

        // Another pane has played by the time anything could have come.
        const auto other = std::make_unique<Pane>();
        other->open(m_samples.good("h264").path);
        other->play();
        WAIT_FOR(other->ticks > 5);
        QCOMPARE(pane->starts + pane->ticks + pane->ends, 0);
    }

    void saysWhatIsWrongAndGoesOn_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const QByteArray& kind : SampleVideos::badKinds()) {
            if (kind != "missing")
                QTest::newRow(kind.constData()) << kind;
        }
    }
    void saysWhatIsWrongAndGoesOn()
    {
        QFETCH(QByteArray, kind);
        const SampleVideo& video = m_samples.good("h264");
        const auto pane = std::make_unique<Pane>();
        pane->open(video.path);
        WAIT_FOR(pane->isReady());
        pane->setVolume(0.3);
        pane->audioMuteEnable(true);
        pane->mirrorButton()->trigger();
        pane->playerScrollView()->setMagnification(4, {320, 0});
        const VideoPlayer* first = pane->player();

        for (int i = 0; i < 2; ++i) {
            pane->open(m_samples.bad(kind));
            pane->play();
            WAIT_FOR(pane->playerIsError());
            WAIT_FOR(!pane->currentItem()->errorText().isEmpty());
            QVERIFY(!pane->isPlaying());
            QVERIFY(!pane->isMirror());
            QVERIFY(!pane->isEnabled());
            QCOMPARE(pane->magnification(), 1.0);
            QVERIFY(!pane->playerScrollView()->scrollingEnabled());
            QVERIFY(pane->shown() != QImage());
        }
        pane->open(video.path);
        WAIT_FOR(pane->isReady());
        QVERIFY(pane->player() != first);
        QVERIFY(!pane->playerIsError());
        QVERIFY(pane->isEnabled());
        QVERIFY(pane->isMirror());
        QCOMPARE(pane->magnification(), 4.0);
        QCOMPARE(pane->origin(), QPointF(240, 135));
        QCOMPARE(pane->player()->volume(), 0.3);
        QVERIFY(pane->player()->isMuted());
        pane->mirrorButton()->trigger();
        pane->segmentDidChange(1);
        WAIT_FOR_FRAME(video, 0);
    }

    void aCutFileEnds()
    {
        const auto pane = std::make_unique<Pane>();
        pane->open(m_samples.cut().path);
        pane->updatePlaybackRate(4);
        pane->play();
        WAIT_FOR(pane->ends == 1 || pane->playerIsError());
    }

    void onlyTheNewestFileSpeaks()
    {
        const SampleVideo& video = m_samples.good("sound");
        const auto pane = std::make_unique<Pane>();
        int stale = 0;
        bool isWatched = true;
        const auto count = [&stale, &isWatched] { stale += isWatched; };
        pane->playWithPath(m_samples.good("h264").path, {}, {}, {});
        WAIT_FOR(pane->isReady());
        pane->setCurrentProgress(0.95);
        pane->play();
        // Right before its end, and a rate later, others are chosen as fast as keys repeat.
        for (int i = 0; i < 10; ++i) {
            pane->playWithPath(m_samples.good(i % 2 ? "h264" : "hevc").path, count, count, count);
            pane->updatePlaybackRate(i % 2 ? 2 : 1);
            QVERIFY(!pane->isPlaying());
        }
        pane->open(video.path);
        pane->pause();
        // The former item stirs once more before it is replaced.
        pane->player()->seek(0.1);
        pane->player()->play();
        pane->player()->pause();
        WAIT_FOR(pane->starts > 0);
        QCOMPARE(pane->early, 0);
        QCOMPARE(stale, 0);
        isWatched = false;
        QCOMPARE(pane->currentItem()->asset()->path(), video.path);
        WAIT_FOR_FRAME(video, 0);
        // Rates as fast as keys repeat.
        for (int i = 0; i < 20; ++i)
            pane->incrementPlaybackRate();
        pane->setCurrentProgress(0.505);
        WAIT_FOR(pane->isReady() && !pane->player()->isSeeking());
        WAIT_FOR_FRAME(video, video.frameAt(0.505 * pane->originalTotalTime()));
        QCOMPARE(pane->ends, 0);
    }

    void changeingAssetKeepsTicksAndRatesOut()
    {
        const auto pane = std::make_unique<Pane>();
        pane->setIsChangeingAsset(true);
        pane->open(m_samples.good("h264").path);
        pane->play();
        pane->updatePlaybackRate(2);
        QCOMPARE(pane->playbackRate(), 1.0);
        WAIT_FOR(pane->isReady());
        QVERIFY(pane->isChangeingAsset());
        QCOMPARE(pane->ticks, 0);
        WAIT_FOR(!pane->isChangeingAsset());
        WAIT_FOR(pane->ticks > 0);
        pane->updatePlaybackRate(2);
        QCOMPARE(pane->playbackRate(), 2.0);
    }

    void zoomChoices()
    {
        const auto pane = std::make_unique<Pane>();
        pane->segmentDidChange(3); // inactive
        QCOMPARE(pane->lastSelectedSegment(), 1);
        pane->open(m_samples.good("h264").path);
        WAIT_FOR(pane->isReady());
        const QList<QPointF> origins = {{0, 0}, {80, 45}, {0, 90}, {160, 90}, {0, 0}, {160, 0}};
        for (const int segment : {3, 2, 4, 6, 5, 1, 2, 5}) {
            pane->segmentAction(segment)->trigger();
            QCOMPARE(pane->lastSelectedSegment(), segment);
            WAIT_FOR(!pane->scrollBySegment());
            QCOMPARE(pane->magnification(), segment == 1 ? 1.0 : 2.0);
            QCOMPARE(pane->origin(), origins.at(segment - 1));
            QCOMPARE(pane->isInitialPosition(), segment == 1);
            for (int i = 1; i <= 6; ++i)
                QCOMPARE(pane->segmentAction(i)->isChecked(), i == segment);
        }
        pane->segmentDidChange(0);
        QCOMPARE(pane->lastSelectedSegment(), 5);
        QCOMPARE(pane->magnification(), 2.0);
        // Chosen again it stays chosen, also where it only scrolls back.
        pane->segmentAction(2)->trigger();
        pane->playerScrollView()->scrollToPoint({10, 10});
        QCOMPARE(pane->lastSelectedSegment(), 0);
        for (int i = 1; i <= 6; ++i)
            QVERIFY(!pane->segmentAction(i)->isChecked());
        pane->segmentAction(2)->trigger();
        QCOMPARE(pane->origin(), QPointF(80, 45));
        pane->segmentAction(2)->trigger();
        QVERIFY(pane->segmentAction(2)->isChecked());
        // The next file and a resize leave the choice alone.
        pane->open(m_samples.good("hevc").path);
        WAIT_FOR(pane->isReady());
        pane->resize(640, 360);
        QCOMPARE(pane->lastSelectedSegment(), 2);
        QCOMPARE(pane->origin(), QPointF(160, 90));
        // Nearly whole is whole.
        pane->playerScrollView()->setMagnification(1.04, {});
        QCOMPARE(pane->magnification(), 1.0);
        QCOMPARE(pane->lastSelectedSegment(), 1);
        pane->zoomIn();
        pane->zoomIn();
        QCOMPARE(pane->magnification(), 1.5625);
        QCOMPARE(pane->lastSelectedSegment(), 0);
        pane->zoomOut();
        pane->resetZoom();
        WAIT_FOR(!pane->scrollBySegment());
        QCOMPARE(pane->magnification(), 1.0);
        QCOMPARE(pane->lastSelectedSegment(), 1);
    }

    void dragsScrollAndAskForTheBar()
    {
        const auto pane = std::make_unique<Pane>();
        pane->open(m_samples.good("h264").path);
        WAIT_FOR(pane->isReady());
        QSignalSpy bar(pane.get(), &ZoomPlayerViewController::bottomBarRequested);
        PlayerScrollView* view = pane->playerScrollView();
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
        QCOMPARE(pane->lastSelectedSegment(), 1);
        view->setMagnification(2, {160, 90});
        QVERIFY(drag({30, 20}));
        QCOMPARE(pane->origin(), QPointF(65, 55));
    }

    void clicksPlayAndMute()
    {
        const auto pane = std::make_unique<Pane>();
        pane->open(m_samples.good("h264").path);
        WAIT_FOR(pane->isReady());
        QSignalSpy triples(pane.get(), &ZoomPlayerViewController::tripleTapDetected);
        QSignalSpy mutes(pane.get(), &ZoomPlayerViewController::muteDidChange);
        PlayerScrollView* view = pane->playerScrollView();
        QTest::mouseClick(view, Qt::LeftButton, {}, {160, 90});
        QTest::mouseDClick(view, Qt::LeftButton, {}, {160, 90});
        QTest::mouseRelease(view, Qt::LeftButton, {}, {160, 90});
        QVERIFY(!pane->isPlaying());
        WAIT_FOR(pane->isPlaying());
        QTest::keyClick(view, Qt::Key_Escape);
        QCOMPARE(triples.count(), 1);
        QTest::mousePress(view, Qt::MiddleButton);
        QCOMPARE(mutes.takeFirst(), QVariantList{true});
        QVERIFY(pane->player()->isMuted());
        pane->audioMuteEnable(false);
        QTest::mousePress(view, Qt::MiddleButton);
        QVERIFY(pane->isMuted());
    }

    void picturesCoverTheVideo()
    {
        const SampleVideo& video = m_samples.good("h264");
        const QString red = picture(u"red.JPG"_s, Qt::red);
        const QString blue = picture(u"blue.JPG"_s, Qt::blue);
        QVERIFY(!red.isEmpty() && !blue.isEmpty());
        const auto pane = std::make_unique<Pane>();
        const auto isShown = [&pane](const QColor& color) {
            const QColor middle = pane->shown().pixelColor(160, 90);
            return std::abs(middle.red() - color.red()) + std::abs(middle.blue() - color.blue()) < 20;
        };
        // As the clock does it: the file first, the picture at once after it.
        pane->open(video.path);
        pane->showImageWithPath(red);
        QVERIFY(isShown(Qt::black));
        QVERIFY(!pane->rateChangeButton()->isEnabled());
        WAIT_FOR(isShown(Qt::red) && pane->isReady());
        QVERIFY(pane->isEnabled());
        QVERIFY(!pane->rateChangeButton()->isEnabled());
        // Only the newest is shown, however many were asked for.
        for (int i = 0; i < 10; ++i)
            pane->showImageWithPath(i % 2 ? red : m_samples.bad("text"));
        pane->showImageWithPath(blue);
        WAIT_FOR(!isShown(Qt::black));
        QVERIFY(isShown(Qt::blue));
        QVERIFY(pane->isActive());
        // ... also when another is in the middle of being read.
        const QString large = picture(u"large-red.JPG"_s, Qt::red, {8000, 4500});
        const QString largeBlue = picture(u"large-blue.JPG"_s, Qt::blue, {8000, 4500});
        pane->showImageWithPath(large);
        QElapsedTimer waited;
        waited.start();
        while (!isOpen(large) && waited.elapsed() < patienceMs)
            std::this_thread::yield();
        pane->showImageWithPath(largeBlue);
        WAIT_FOR(!isShown(Qt::black));
        QVERIFY(isShown(Qt::blue));
        // A file that isn't there takes nothing from the picture that was asked for after it.
        pane->open(m_samples.bad("missing"));
        pane->showImageWithPath(red);
        WAIT_FOR(isShown(Qt::red) && !pane->isLoading());
        QVERIFY(pane->isActive());
        pane->open(video.path);
        WAIT_FOR_FRAME(video, 0);
        QVERIFY(pane->rateChangeButton()->isEnabled());
    }

    void unreadablePictures_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("no path") << QString();
        QTest::newRow("missing") << m_samples.bad("missing");
        QTest::newRow("no picture") << m_samples.bad("text");
        QTest::newRow("folder") << m_samples.bad("folder");
        QTest::newRow("pipe") << m_samples.bad("pipe");
    }
    void unreadablePictures()
    {
        QFETCH(QString, path);
        const auto pane = std::make_unique<Pane>();
        pane->open(m_samples.good("h264").path);
        WAIT_FOR(pane->isReady());
        pane->showImageWithPath(path);
        WAIT_FOR(!pane->isActive());
        QVERIFY(!pane->isEnabled());
        QVERIFY(!pane->playerScrollView()->scrollingEnabled());
        pane->open(m_samples.good("h264").path);
        QVERIFY(pane->isEnabled());
    }

    void endsInAnyState_data()
    {
        QTest::addColumn<int>("state");
        QTest::newRow("reading") << 0;
        QTest::newRow("loading") << 1;
        QTest::newRow("playing") << 2;
        QTest::newRow("seeking") << 3;
        QTest::newRow("another rate") << 4;
        QTest::newRow("failed") << 5;
        QTest::newRow("moving") << 6;
        QTest::newRow("disposed") << 7;
    }
    void endsInAnyState()
    {
        QFETCH(int, state);
        int late = 0;
        bool isOver = false;
        const auto count = [&late, &isOver] { late += isOver; };
        auto pane = std::make_unique<Pane>();
        const QString path = state == 5 ? m_samples.bad("garbage") : m_samples.good("sound").path;
        pane->playWithPath(path, count, count, count);
        pane->play();
        if (state > 0)
            WAIT_FOR(!pane->isLoading());
        if (state > 1 && state != 5)
            WAIT_FOR(pane->isReady() && pane->progress() > 0);
        if (state == 3)
            pane->setCurrentProgress(0.8);
        if (state == 4)
            pane->updatePlaybackRate(8);
        if (state == 5)
            WAIT_FOR(pane->playerIsError());
        if (state == 6) {
            pane->showImageWithPath(picture(u"green.JPG"_s, Qt::green));
            pane->segmentDidChange(4);
        }
        isOver = true;
        if (state == 7) {
            pane->dispose();
            QVERIFY(!pane->player());
            QVERIFY(!pane->isPlaying());
            pane->play();
            pane->setCurrentProgress(0.5);
            pane->updatePlaybackRate(2);
        } else {
            pane.reset();
        }
        const auto other = std::make_unique<Pane>();
        other->open(m_samples.good("h264").path);
        other->play();
        WAIT_FOR(other->ticks > 5);
        QCOMPARE(late, 0);
    }

    void aVanishedFileDoesNoHarm()
    {
        const QString path = m_samples.folder() + u"/vanishing.MP4"_s;
        QVERIFY(QFile::copy(m_samples.good("sound").path, path));
        const auto pane = std::make_unique<Pane>();
        pane->open(path);
        pane->play();
        WAIT_FOR(pane->isPlaying() && pane->progress() > 0.05);
        QVERIFY(QFile::remove(path));
        pane->updatePlaybackRate(2); // has to be opened anew
        WAIT_FOR(pane->playerIsError());
        WAIT_FOR(!pane->currentItem()->errorText().isEmpty());
        QVERIFY(!pane->isPlaying());
        QVERIFY(!pane->isEnabled());
    }
};

} // namespace cardreel

QTEST_MAIN(cardreel::ZoomPlayerViewControllerTest)
#include "ZoomPlayerViewControllerTest.moc"
