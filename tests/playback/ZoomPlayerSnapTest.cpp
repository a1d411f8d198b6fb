#include "platform/video/VideoAsset.h"
#include "playback/TestPane.h"
#include "support/SampleVideos.h"

#include <QAction>
#include <QFile>
#include <QTemporaryDir>

#include <optional>

using namespace Qt::StringLiterals;

namespace cardreel {

using namespace test;

/// The camera of a pane.
class ZoomPlayerSnapTest : public QObject
{
    Q_OBJECT

    using SnapRequest = ZoomPlayerViewController::SnapRequest;

    SampleVideos m_samples;

    /// What pressing the camera asks for; nothing when it asks for nothing.
    static std::optional<SnapRequest> pressed(Pane& pane)
    {
        std::optional<SnapRequest> result;
        const auto connection = connect(&pane, &ZoomPlayerViewController::snapRequested, &pane,
                                        [&result](const SnapRequest& request) { result = request; });
        pane.snapButton()->trigger();
        disconnect(connection);
        return result;
    }

private Q_SLOTS:
    void cleanupTestCase() { VideoPlayer::waitForShutdown(); }

    void theFrameShownIsTaken_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<double>("rate");
        QTest::addColumn<bool>("mirrors");
        QTest::newRow("plain") << QByteArray("h264") << 1.0 << false;
        QTest::newRow("mirrored") << QByteArray("h264") << 1.0 << true;
        QTest::newRow("squeezed") << QByteArray("hevc") << 4.0 << false;
        QTest::newRow("turned") << QByteArray("rotated90") << 0.5 << false;
        QTest::newRow("begins late") << QByteArray("late-start") << 1.0 << false;
        QTest::newRow("uneven frames") << QByteArray("variable") << 1.0 << false;
    }
    void theFrameShownIsTaken()
    {
        QFETCH(QByteArray, kind);
        QFETCH(double, rate);
        QFETCH(bool, mirrors);
        const SampleVideo& video = m_samples.good(kind);
        Pane pane;
        QVERIFY(pane.opens(video.path));
        pane.resize(2 * pane.currentItem()->asset()->trackSize());
        pane.updatePlaybackRate(rate);
        const auto numberIn = [&](const QImage& image) {
            return video.numberIn(mirrors ? image.mirrored(true, false) : image);
        };
        pane.mirrorButton()->setChecked(mirrors);
        pane.play();
        WAIT_FOR(pane.progress() > 0.2);
        const std::optional<SnapRequest> request = pressed(pane);
        QVERIFY(request && !pane.isPlaying());
        QCOMPARE(request->item, pane.currentItem());
        QCOMPARE(request->frameSize, request->item->asset()->trackSize());
        // Once the picture stands, that one is taken.
        WAIT_FOR(pane.isReady() && !pane.player()->isSeeking() && numberIn(pane.shown()));
        WAIT_FOR(numberIn(pane.shown()) == video.frameAt(pane.originalCurrentTime()));
        const QImage taken = pane.snapshot(*request)();
        QCOMPARE(taken.size(), request->frameSize);
        QCOMPARE(numberIn(taken), numberIn(pane.shown()));
        // Elsewhere meanwhile: the frame of the press.
        const double pressTime = request->requestTime * request->item->speed();
        pane.setCurrentProgress(0.95);
        QCOMPARE(numberIn(pane.snapshot(*request)()), std::optional(video.frameAt(pressTime)));
    }

    void theFrameIsDecodedWhileTheFileIsNamed()
    {
        const SampleVideo& video = m_samples.good("h264");
        QTemporaryDir folder;
        const QString path = folder.filePath(u"pulled.mp4"_s);
        QVERIFY(QFile::copy(video.path, path));
        Pane pane;
        QVERIFY(pane.opens(path));
        const std::optional<SnapRequest> request = pressed(pane);
        QVERIFY(request);
        WAIT_FOR(pane.isSnapReady());
        QVERIFY(QFile::remove(path));
        QCOMPARE(video.numberIn(pane.snapshot(*request)()), std::optional(0));
        pane.forgetSnap();
        QVERIFY(pane.snapshot(*request)().isNull());
    }

    void magnifiedItIsWhatIsSeen_data()
    {
        QTest::addColumn<bool>("mirrors");
        QTest::newRow("as it is") << false;
        QTest::newRow("mirrored") << true;
    }
    void magnifiedItIsWhatIsSeen()
    {
        QFETCH(bool, mirrors);
        Pane pane;
        QVERIFY(pane.opens(m_samples.good("h264").path));
        pane.mirrorButton()->setChecked(mirrors);
        WAIT_FOR(!pane.playerScrollView()->visibleImage().isNull());
        const QImage whole = pane.shown();
        pane.playerScrollView()->setMagnification(3, {40, 30});
        pane.playerScrollView()->setFocus();
        const std::optional<SnapRequest> request = pressed(pane);
        QVERIFY(request);
        const QImage taken = pane.snapshot(*request)();
        pane.playerScrollView()->clearFocus(); // its frame is none of the picture
        QCOMPARE(taken, pane.shown());
        QCOMPARE(taken.size(), pane.size() * pane.devicePixelRatio());
        QVERIFY(taken != whole);
    }

    void nothingWithoutAFrame_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const char* kind : {"missing", "text", "audio-only"})
            QTest::newRow(kind) << QByteArray(kind);
    }
    void nothingWithoutAFrame()
    {
        QFETCH(QByteArray, kind);
        Pane pane;
        QVERIFY(!pane.snapButton()->isEnabled());
        QVERIFY(pane.opens(m_samples.good("h264").path));
        QVERIFY(pane.snapButton()->isEnabled());
        const std::optional<SnapRequest> former = pressed(pane);
        pane.open(m_samples.bad(kind));
        QVERIFY(!pane.snapButton()->isEnabled()); // what stands there is the former file's
        WAIT_FOR(!pane.isLoading() && (!pane.currentItem() || pane.playerIsError()));
        QVERIFY(!pane.snapButton()->isEnabled());
        QVERIFY(!pressed(pane));
        QVERIFY(former && !pane.snapshot(*former)().isNull());
        pane.dispose();
        pane.snapButtonPressed();
    }
};

} // namespace cardreel

QTEST_MAIN(cardreel::ZoomPlayerSnapTest)
#include "ZoomPlayerSnapTest.moc"
