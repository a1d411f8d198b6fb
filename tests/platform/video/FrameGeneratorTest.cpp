#include "platform/video/FrameGenerator.h"

#include "support/SampleVideos.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QtEndian>

namespace cardreel {

using namespace Qt::StringLiterals;

class FrameGeneratorTest : public QObject
{
    Q_OBJECT

    SampleVideos m_samples;

private Q_SLOTS:
    void saysWhatFailed_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<FrameError>("opening");
        QTest::addColumn<FrameError>("frame");
        QTest::newRow("missing") << QByteArray("missing") << FrameError::CannotOpen << FrameError::CannotOpen;
        QTest::newRow("empty") << QByteArray("empty") << FrameError::CannotOpen << FrameError::CannotOpen;
        QTest::newRow("text") << QByteArray("text") << FrameError::CannotOpen << FrameError::CannotOpen;
        QTest::newRow("no moov") << QByteArray("no-moov") << FrameError::CannotOpen << FrameError::CannotOpen;
        QTest::newRow("playlist") << QByteArray("playlist") << FrameError::CannotOpen << FrameError::CannotOpen;
        QTest::newRow("folder") << QByteArray("folder") << FrameError::CannotOpen << FrameError::CannotOpen;
        QTest::newRow("pipe") << QByteArray("pipe") << FrameError::CannotOpen << FrameError::CannotOpen;
        QTest::newRow("audio only") << QByteArray("audio-only") << FrameError::NoVideoTrack << FrameError::NoVideoTrack;
        QTest::newRow("header only") << QByteArray("header-only") << FrameError::None << FrameError::NoFrame;
        QTest::newRow("garbage") << QByteArray("garbage") << FrameError::None << FrameError::NoFrame;
    }
    void saysWhatFailed()
    {
        QFETCH(QByteArray, kind);
        QFETCH(FrameError, opening);
        QFETCH(FrameError, frame);
        const QString path = m_samples.bad(kind);
        QVERIFY(!path.isEmpty());
        FrameGenerator generator(path);
        QCOMPARE(generator.error(), opening);
        QCOMPARE(generator.errorText().isEmpty(), opening == FrameError::None);
        const VideoFrame result = generator.frame(1.0);
        QCOMPARE(result.error, frame);
        QVERIFY(result.image.isNull());
        QVERIFY2(result.errorText.contains(u"bad-"_s + QString::fromLatin1(kind)), qPrintable(result.errorText));
    }

    void givesTheFrameThatContainsTheTime_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const QByteArray& kind : SampleVideos::kinds())
            QTest::newRow(kind.constData()) << kind;
    }
    void givesTheFrameThatContainsTheTime()
    {
        QFETCH(QByteArray, kind);
        const SampleVideo& video = m_samples.good(kind);
        QVERIFY(!video.path.isEmpty());
        FrameGenerator generator(video.path);
        QCOMPARE(generator.errorText(), QString());

        std::vector<double> times{-1, 0, video.duration, video.duration + 100, 1e300};
        for (std::size_t i = 0; i < video.starts.size(); i += 1) {
            const double end = i + 1 < video.starts.size() ? video.starts[i + 1] : video.duration;
            // Containers round times to a millisecond, so the edges are probed from a little inside.
            times.push_back(video.starts[i] + 0.002);
            times.push_back((video.starts[i] + end) / 2);
            times.push_back(end - 0.002);
        }
        for (const double time : times) {
            const VideoFrame result = generator.frame(time);
            QVERIFY2(result.error == FrameError::None, qPrintable(result.errorText));
            const int expected = video.frameAt(time);
            QVERIFY2(video.numberIn(result.image) == expected,
                     qPrintable(u"at %1: frame %2 instead of %3"_s.arg(time)
                                    .arg(video.numberIn(result.image).value_or(-1))
                                    .arg(expected)));
            QVERIFY(std::abs(result.seconds - video.starts[static_cast<std::size_t>(expected)]) < 0.002);
        }
    }

    void givesTheFrameAtItsVeryStart()
    {
        const SampleVideo& video = m_samples.good("h264");
        FrameGenerator generator(video.path);
        for (std::size_t i = 0; i < video.starts.size(); ++i)
            QCOMPARE(video.numberIn(generator.frame(video.starts[i]).image).value_or(-1), static_cast<int>(i));
    }

    void describesTheTrack_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("rate");
        QTest::newRow("plain") << QByteArray("h264") << QSize(320, 180) << 30.0;
        QTest::newRow("upright") << QByteArray("rotated90") << QSize(180, 320) << 30.0;
        QTest::newRow("upside down") << QByteArray("rotated180") << QSize(320, 180) << 30.0;
        QTest::newRow("without an MP4's header") << QByteArray("transport") << QSize(320, 180) << 30.0;
    }
    void describesTheTrack()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QSize, size);
        QFETCH(double, rate);
        const SampleVideo& video = m_samples.good(kind);
        FrameGenerator generator(video.path);
        QCOMPARE(generator.naturalSize(), size);
        QVERIFY2(std::abs(generator.frameRate() - rate) < 0.5, qPrintable(QString::number(generator.frameRate())));
        QVERIFY2(std::abs(generator.duration() - video.duration) < 0.05,
                 qPrintable(QString::number(generator.duration())));
    }

    void shrinksToFitAndNeverEnlarges_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<QSize>("maximum");
        QTest::addColumn<QSize>("expected");
        QTest::newRow("natural") << QByteArray("h264") << QSize() << QSize(320, 180);
        QTest::newRow("wider than needed") << QByteArray("h264") << QSize(1000, 90) << QSize(160, 90);
        QTest::newRow("higher than needed") << QByteArray("h264") << QSize(240, 1000) << QSize(240, 135);
        QTest::newRow("larger") << QByteArray("h264") << QSize(1000, 1000) << QSize(320, 180);
        QTest::newRow("upright") << QByteArray("rotated90") << QSize(1000, 160) << QSize(90, 160);
        QTest::newRow("odd") << QByteArray("h264") << QSize(131, 131) << QSize(131, 74);
    }
    void shrinksToFitAndNeverEnlarges()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QSize, maximum);
        QFETCH(QSize, expected);
        const SampleVideo& video = m_samples.good(kind);
        const VideoFrame result = FrameGenerator::frame(video.path, 1.0, maximum);
        QCOMPARE(result.image.size(), expected);
        QCOMPARE(result.image.format(), QImage::Format_RGB32);
        if (expected.width() >= 120)
            QCOMPARE(video.numberIn(result.image).value_or(-1), 30);
    }

    void keepsColours()
    {
        const SampleVideo& video = m_samples.good("h264");
        const QColor shown = FrameGenerator::frame(video.path, 0, {}).image.pixelColor(160, 60);
        const QColor painted = QColor::fromHsv(0, 120, 160);
        QVERIFY(std::abs(shown.red() - painted.red()) < 12);
        QVERIFY(std::abs(shown.green() - painted.green()) < 12);
        QVERIFY(std::abs(shown.blue() - painted.blue()) < 12);
    }

    void fallsBackToTheLastWholeFrameOfACutFile()
    {
        const SampleVideo& video = m_samples.cut();
        QVERIFY(!video.path.isEmpty());
        FrameGenerator generator(video.path);
        QVERIFY(std::abs(generator.duration() - video.duration) < 0.05);
        const int last = video.numberIn(generator.frame(1e9).image).value_or(-1);
        QVERIFY2(last > 30 && last < 80, qPrintable(QString::number(last)));
        for (const double time : {0.5, 1.0, video.starts[static_cast<std::size_t>(last)] + 0.01})
            QCOMPARE(video.numberIn(generator.frame(time).image).value_or(-1), video.frameAt(time));
        QCOMPARE(video.numberIn(generator.frame(video.duration - 0.5).image).value_or(-1), last);
    }

    void refusesAbsurdSizes()
    {
        // The picture's size stands twice in an MP4: in the sample description and in the coded stream. The first is
        // what memory would be reserved for.
        QFile file(m_samples.good("h264").path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray bytes = file.readAll();
        const qsizetype entry = bytes.indexOf("avc1", bytes.indexOf("stsd"));
        QVERIFY(entry > 0);
        qToBigEndian<quint16>(40'000, bytes.data() + entry + 28);
        qToBigEndian<quint16>(40'000, bytes.data() + entry + 30);
        QFile huge(m_samples.folder() + u"/huge.MP4"_s);
        QVERIFY(huge.open(QIODevice::WriteOnly) && huge.write(bytes) == bytes.size());
        huge.close();
        const VideoFrame result = FrameGenerator::frame(huge.fileName(), 1.0, QSize(240, 135));
        QCOMPARE(result.error, FrameError::CannotDecode);
    }

    void survivesDamageAnywhere()
    {
        QFile file(m_samples.good("h264").path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray whole = file.readAll();
        QFile damaged(m_samples.folder() + u"/damaged.MP4"_s);
        quint32 noise = 7;
        int pictures = 0;
        for (int round = 0; round < 150; ++round) {
            QByteArray bytes = whole;
            for (int hit = 0; hit < 40; ++hit) {
                noise = noise * 1664525 + 1013904223;
                // Mostly in the index at the end, where a wrong number does the most harm.
                const qsizetype span = hit % 4 == 0 ? bytes.size() : 4000;
                bytes[bytes.size() - 1 - static_cast<qsizetype>(noise >> 8) % span] = static_cast<char>(noise >> 3);
            }
            QVERIFY(damaged.open(QIODevice::WriteOnly | QIODevice::Truncate) && damaged.write(bytes) == bytes.size());
            damaged.close();
            const VideoFrame result = FrameGenerator::frame(damaged.fileName(), 2.5, QSize(240, 135));
            QCOMPARE(result.image.isNull(), result.error != FrameError::None);
            pictures += result.image.isNull() ? 0 : 1;
        }
        // Damage that always, or never, hits the vital parts would test nothing.
        QVERIFY2(pictures > 0 && pictures < 150, qPrintable(QString::number(pictures)));
    }

    void stopsWhenCancelled()
    {
        std::atomic<bool> cancel = false;
        FrameGenerator generator(m_samples.good("h264").path, &cancel);
        QCOMPARE(generator.frame(1.0).error, FrameError::None);
        cancel = true;
        const VideoFrame result = generator.frame(2.0);
        QCOMPARE(result.error, FrameError::Cancelled);
        QVERIFY(result.image.isNull());
        QCOMPARE(FrameGenerator(m_samples.good("h264").path, &cancel).error(), FrameError::Cancelled);
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::FrameGeneratorTest)
#include "FrameGeneratorTest.moc"
