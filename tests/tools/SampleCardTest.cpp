#include "sample-card/FrameNumber.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <exiv2/exiv2.hpp>

#include <cmath>
#include <numeric>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize FRAME_SIZE(320, 180);

struct Run
{
    int status = -1;
    QString errors;
};

Run runTool(const QStringList& arguments, const QString& path = qEnvironmentVariable("PATH"))
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, path);
    process.setProcessEnvironment(environment);
    process.start(qEnvironmentVariable("CARDREEL_SAMPLE_CARD_TOOL"), arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError())};
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Relative paths of all files below a folder, in order.
QStringList filesBelow(const QString& folder)
{
    QStringList files;
    QDirIterator walk(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files << QDir(folder).relativeFilePath(walk.next());
    files.sort();
    return files;
}

QList<QList<QByteArray>> sentences(const QByteArray& text, const QByteArray& tag)
{
    QList<QList<QByteArray>> found;
    for (const QByteArray& line : text.split('\n'))
        if (line.startsWith(tag + ','))
            found << line.trimmed().split(',');
    return found;
}

// The numbers of a video's frames in order, -1 for one that can't be read.
QList<int> frameNumbers(const QString& video)
{
    QProcess ffmpeg;
    ffmpeg.start(u"ffmpeg"_s,
                 {u"-v"_s, u"error"_s, u"-i"_s, video, u"-f"_s, u"rawvideo"_s, u"-pix_fmt"_s, u"rgb24"_s, u"pipe:1"_s});
    ffmpeg.waitForFinished(-1);
    const QByteArray pixels = ffmpeg.readAllStandardOutput();
    const qsizetype frameBytes = qsizetype{FRAME_SIZE.width()} * FRAME_SIZE.height() * 3;
    QList<int> numbers;
    for (qsizetype at = 0; at + frameBytes <= pixels.size(); at += frameBytes) {
        const QImage frame(reinterpret_cast<const uchar*>(pixels.constData() + at), FRAME_SIZE.width(),
                           FRAME_SIZE.height(), qsizetype{FRAME_SIZE.width()} * 3, QImage::Format_RGB888);
        numbers << readFrameNumber(frame).value_or(-1);
    }
    return numbers;
}

QList<int> upTo(int count)
{
    QList<int> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

QDateTime nameTime(const QString& path)
{
    QDateTime time = QDateTime::fromString(u"20"_s + QFileInfo(path).completeBaseName(), u"yyyyMMddHHmmss"_s);
    time.setTimeSpec(Qt::UTC);
    return time;
}

} // namespace

class SampleCardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // One small card with real videos serves most of the tests.
    void initTestCase()
    {
        QVERIFY(work.isValid());
        card = work.filePath(u"card"_s);
        const Run run =
            runTool({u"--recordings"_s, u"2"_s, u"--seconds"_s, u"2"_s, u"--size"_s, u"320x180"_s, u"--fps"_s, u"10"_s,
                     u"--rear-fps"_s, u"7.5"_s, u"--rear-seconds"_s, u"4"_s, u"--pictures"_s, u"2"_s, card});
        QVERIFY2(run.status == 0, qPrintable(run.errors));
    }

    void holdsWhatARecorderWrites()
    {
        const QStringList expected = {
            u"EVENT/250615082414.MP4"_s,
            u"EVENT/250615082414.NMEA"_s,
            u"NORMAL/250614080314.MP4"_s,
            u"PICTURE/250614080315.JPG"_s,
            u"PICTURE/250615082415.JPG"_s,
            u"REAR/EVENT/250615082414.MP4"_s,
            u"REAR/NORMAL/250614080314.MP4"_s,
            u"REAR/PICTURE/250614080315.JPG"_s,
            u"SYSTEM/NMEA/NORMAL/250614080314.NMEA"_s,
            u"SYSTEM/settings.bin"_s,
        };
        QCOMPARE(filesBelow(card), expected);
        QVERIFY(!QFileInfo::exists(card + u".partial"_s));
        QVERIFY(!(QFile::permissions(card + u"/EVENT/250615082414.MP4"_s) & QFileDevice::WriteOwner));
        QVERIFY(QFile::permissions(card + u"/NORMAL/250614080314.MP4"_s) & QFileDevice::WriteOwner);
    }

    void datesFilesByTheEndOfTheRecording_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("seconds");
        QTest::newRow("front") << u"NORMAL/250614080314.MP4"_s << 2;
        QTest::newRow("protected") << u"EVENT/250615082414.MP4"_s << 2;
        QTest::newRow("longer rear") << u"REAR/NORMAL/250614080314.MP4"_s << 4;
        QTest::newRow("side file") << u"SYSTEM/NMEA/NORMAL/250614080314.NMEA"_s << 2;
        QTest::newRow("picture") << u"PICTURE/250614080315.JPG"_s << 0;
        QTest::newRow("rear picture") << u"REAR/PICTURE/250614080315.JPG"_s << 0;
    }

    void datesFilesByTheEndOfTheRecording()
    {
        QFETCH(QString, file);
        QFETCH(int, seconds);
        QCOMPARE(QFileInfo(card + u'/' + file).lastModified().toUTC(), nameTime(file).addSecs(seconds));
    }

    void numbersEveryFrame()
    {
        QCOMPARE(frameNumbers(card + u"/NORMAL/250614080314.MP4"_s), upTo(20));
        QCOMPARE(frameNumbers(card + u"/REAR/EVENT/250615082414.MP4"_s), upTo(30));
    }

    void logsTheDriveBesideTheVideo_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("ordinary") << u"SYSTEM/NMEA/NORMAL/250614080314.NMEA"_s;
        QTest::newRow("event") << u"EVENT/250615082414.NMEA"_s;
    }

    void logsTheDriveBesideTheVideo()
    {
        QFETCH(QString, file);
        const QByteArray text = contents(card + u'/' + file);
        QVERIFY(text.startsWith("$GTRIP,"));
        QCOMPARE(sentences(text, "$GTRIP").size(), 1);
        QCOMPARE(sentences(text, "$GSENS").size(), 20);
        const auto fixes = sentences(text, "$GPRMC");
        QCOMPARE(fixes.size(), 2);
        for (qsizetype second = 0; second < fixes.size(); ++second) {
            const auto& fix = fixes[second];
            QCOMPARE(fix.size(), 13);
            const QDateTime moment = nameTime(file).addSecs(second);
            QCOMPARE(QString::fromLatin1(fix[1]), moment.toString(u"HHmmss'.00'"_s));
            QCOMPARE(QString::fromLatin1(fix[9]), moment.toString(u"ddMMyy"_s));
            const QByteArray sentence = fix.join(',');
            const qsizetype star = sentence.indexOf('*');
            int sum = 0;
            for (const char character : sentence.mid(1, star - 1))
                sum ^= character;
            QCOMPARE(sentence.mid(star + 1).toInt(nullptr, 16), sum);
        }
    }

    void marksTheEvent()
    {
        const QByteArray text = contents(card + u"/EVENT/250615082414.NMEA"_s);
        double peak = 0;
        for (const auto& sample : sentences(text, "$GSENS"))
            peak = std::max(peak, std::abs(sample.at(1).toDouble()));
        QVERIFY2(peak > 0.5, qPrintable(QString::number(peak)));
        int collisions = 0;
        int external = 0;
        for (const auto& warning : sentences(text, "$QVDSA")) {
            QVERIFY(warning.size() == 17 || warning.size() == 28);
            external += warning.size() == 28;
            collisions += warning.size() == 17 && !warning.at(7).isEmpty();
        }
        QCOMPARE(collisions, 1);
        QCOMPARE(external, 1);
    }

    void placesPicturesOnTheRoute()
    {
        const QString path = card + u"/PICTURE/250614080315.JPG"_s;
        QCOMPARE(QImage(path).size(), FRAME_SIZE);
        auto image = Exiv2::ImageFactory::open(QFile::encodeName(path).toStdString());
        image->readMetadata();
        const auto degrees = [&](const char* key) {
            const Exiv2::Exifdatum& value = image->exifData()[key];
            return static_cast<double>(value.toFloat(0)) + static_cast<double>(value.toFloat(1)) / 60 +
                   static_cast<double>(value.toFloat(2)) / 3600;
        };
        const auto fix = sentences(contents(card + u"/SYSTEM/NMEA/NORMAL/250614080314.NMEA"_s), "$GPRMC").at(1);
        QCOMPARE(image->exifData()["Exif.GPSInfo.GPSLatitudeRef"].toString(), std::string("N"));
        QCOMPARE(image->exifData()["Exif.GPSInfo.GPSLongitudeRef"].toString(), std::string("E"));
        // A side file rounds to a ten-thousandth of a minute.
        QVERIFY(std::abs(degrees("Exif.GPSInfo.GPSLatitude") - 35 - fix.at(3).mid(2).toDouble() / 60) < 3e-6);
        QVERIFY(std::abs(degrees("Exif.GPSInfo.GPSLongitude") - 139 - fix.at(5).mid(3).toDouble() / 60) < 3e-6);
    }

    void writesSettingsThatAddUp()
    {
        const QByteArray settings = contents(card + u"/SYSTEM/settings.bin"_s);
        QCOMPARE(settings.size(), 2304);
        QCOMPARE(settings.mid(4, 2), QByteArray::fromHex("0E00"));
        char sum = 0;
        for (const char byte : settings.mid(16, 239))
            sum = static_cast<char>(sum ^ byte);
        QCOMPARE(settings.at(15), sum);
    }

    // A long card without videos shows everything a drive can hold.
    void drivesPlausibly()
    {
        const QString folder = work.filePath(u"long"_s);
        QCOMPARE(runTool({u"--no-video"_s, u"--recordings"_s, u"12"_s, u"--seconds"_s, u"60"_s, folder}).status, 0);
        QSet<QString> days;
        int voids = 0;
        int stops = 0;
        double top = 0;
        for (const QString& file : filesBelow(folder)) {
            if (!file.endsWith(u".NMEA"_s) && !file.endsWith(u".CED"_s))
                continue;
            for (const auto& fix : sentences(contents(folder + u'/' + file), "$GPRMC")) {
                days.insert(QString::fromLatin1(fix.at(9)));
                if (fix.at(2) == "V") {
                    ++voids;
                    continue;
                }
                const double knots = fix.at(7).toDouble();
                stops += knots < 0.1;
                top = std::max(top, knots);
                QVERIFY(std::abs(fix.at(3).toDouble() - 3540) < 5);
                QVERIFY(std::abs(fix.at(5).toDouble() - 13945) < 5);
            }
        }
        QCOMPARE(days.size(), 2);
        QVERIFY(voids >= 15); // longer than a speed may be borrowed
        QVERIFY(stops > 0);
        QVERIFY(top > 20 && top < 40);
    }

    void isTheSameForTheSameSeed()
    {
        const auto make = [&](const QString& name, const QString& seed) {
            const QString folder = work.filePath(name);
            runTool({u"--no-video"_s, u"--recordings"_s, u"7"_s, u"--seconds"_s, u"3"_s, u"--size"_s, u"320x180"_s,
                     u"--seed"_s, seed, folder});
            QByteArray all;
            for (const QString& file : filesBelow(folder))
                all += file.toUtf8() + contents(folder + u'/' + file);
            return all;
        };
        const QByteArray first = make(u"first"_s, u"5"_s);
        QVERIFY(first.size() > 1000);
        QVERIFY(first == make(u"again"_s, u"5"_s));
        QVERIFY(first != make(u"other"_s, u"6"_s));
    }

    void copiesVideosForBigCards()
    {
        const QString folder = work.filePath(u"copies"_s);
        const Run run =
            runTool({u"--recordings"_s, u"3"_s, u"--seconds"_s, u"1"_s, u"--size"_s, u"160x90"_s, u"--fps"_s, u"4"_s,
                     u"--distinct-videos"_s, u"1"_s, u"--missing-rear"_s, u"1"_s, u"--pictures"_s, u"0"_s, folder});
        QVERIFY2(run.status == 0, qPrintable(run.errors));
        const QStringList videos = filesBelow(folder).filter(u".MP4"_s);
        QCOMPARE(videos.size(), 5);
        QSet<QByteArray> distinct;
        for (const QString& video : videos)
            distinct.insert(contents(folder + u'/' + video));
        QCOMPARE(distinct.size(), 2);
    }

    void writesOneBigSideFile()
    {
        const QString file = work.filePath(u"big.nmea"_s);
        QCOMPARE(runTool({u"--side-file"_s, file, u"--fixes"_s, u"130"_s, u"--samples"_s, u"1777"_s}).status, 0);
        const QByteArray text = contents(file);
        QCOMPARE(sentences(text, "$GPRMC").size(), 130);
        QCOMPARE(sentences(text, "$GSENS").size(), 1777);
    }

    void refusesWrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("nothing") << QStringList{};
        QTest::newRow("unknown option") << QStringList{u"--frobnicate"_s, u"x"_s};
        QTest::newRow("no number") << QStringList{u"--recordings"_s, u"many"_s, u"x"_s};
        QTest::newRow("odd size") << QStringList{u"--size"_s, u"321x180"_s, u"x"_s};
        QTest::newRow("no frames") << QStringList{u"--fps"_s, u"0"_s, u"x"_s};
        QTest::newRow("rate over nothing") << QStringList{u"--fps"_s, u"30/0"_s, u"x"_s};
        QTest::newRow("no such day") << QStringList{u"--start"_s, u"2025-02-30 00:00:00"_s, u"x"_s};
        QTest::newRow("more frames than numbers") << QStringList{u"--seconds"_s, u"3600"_s, u"x"_s};
        QTest::newRow("two folders") << QStringList{u"x"_s, u"y"_s};
        QTest::newRow("card and side file") << QStringList{u"--side-file"_s, u"x"_s, u"y"_s};
        QTest::newRow("samples on a card") << QStringList{u"--samples"_s, u"3"_s, u"x"_s};
    }

    void refusesWrongUsage()
    {
        QFETCH(QStringList, arguments);
        const Run run = runTool(arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.errors.count(u'\n'), 1);
    }

    void keepsItsHandsOffOtherFolders()
    {
        const QString folder = work.filePath(u"mine"_s);
        QVERIFY(QDir().mkpath(folder));
        QFile note(folder + u"/note"_s);
        QVERIFY(note.open(QIODevice::WriteOnly));
        note.close();
        QCOMPARE(runTool({u"--no-video"_s, folder}).status, 1);
        QCOMPARE(filesBelow(folder), QStringList{u"note"_s});

        QVERIFY(QDir().rename(folder, work.filePath(u"theirs.partial"_s)));
        QCOMPARE(runTool({u"--no-video"_s, work.filePath(u"theirs"_s)}).status, 1);
        QCOMPARE(filesBelow(work.filePath(u"theirs.partial"_s)), QStringList{u"note"_s});
    }

    void takesAnEmptyFolderAndARunCutShort()
    {
        const QString folder = work.filePath(u"empty"_s);
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(QDir().mkpath(folder + u".partial"_s));
        QFile mark(folder + u".partial/.sample-card"_s);
        QVERIFY(mark.open(QIODevice::WriteOnly));
        mark.close();
        QCOMPARE(runTool({u"--no-video"_s, u"--no-rear"_s, u"--recordings"_s, u"1"_s, u"--pictures"_s, u"0"_s, folder})
                     .status,
                 0);
        QCOMPARE(filesBelow(folder).size(), 3);
        QVERIFY(!QFileInfo::exists(folder + u".partial"_s));
    }

    void leavesNothingWhenEncodingFails_data()
    {
        QTest::addColumn<QByteArray>("encoder"); // a script in ffmpeg's place
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << QByteArray() << u"not installed"_s;
        QTest::newRow("gives up at once")
            << QByteArray("#!/bin/sh\necho 'x: No space left on device' >&2\nexit 1\n") << u"No space left on device"_s;
        QTest::newRow("gives up at the end")
            << QByteArray("#!/bin/sh\nwhile read -r line; do :; done\necho 'x: No space left on device' >&2\nexit 1\n")
            << u"No space left on device"_s;
        QTest::newRow("is killed") << QByteArray("#!/bin/sh\nkill -9 $$\n") << u"unexpectedly"_s;
    }

    void leavesNothingWhenEncodingFails()
    {
        QFETCH(QByteArray, encoder);
        QFETCH(QString, reason);
        QTemporaryDir programs;
        if (!encoder.isEmpty()) {
            QFile script(programs.filePath(u"ffmpeg"_s));
            QVERIFY(script.open(QIODevice::WriteOnly));
            script.write(encoder);
            script.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        }
        const QString folder = work.filePath(u"failed"_s);
        const Run run = runTool({u"--recordings"_s, u"3"_s, u"--seconds"_s, u"1"_s, u"--size"_s, u"160x90"_s, folder},
                                programs.path());
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.trimmed().split(u'\n').last().contains(reason), qPrintable(run.errors));
        QVERIFY(!QFileInfo::exists(folder));
        QVERIFY(!QFileInfo::exists(folder + u".partial"_s));
    }

private:
    QTemporaryDir work;
    QString card;
};

QTEST_GUILESS_MAIN(SampleCardTest)
#include "SampleCardTest.moc"
