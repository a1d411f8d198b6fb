#include "app/ProgramRun.h"
#include "app/TestTerminal.h"
#include "app/cli/ProgressBar.h"
#include "platform/files/Files.h"
#include "platform/image/ImageProperties.h"
#include "support/CardBuilder.h"
#include "support/SampleVideos.h"
#include "support/TestHome.h"

#include <QTest>

#include <csignal>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const Instant noon = utc(2025, 6, 14, 12, 0);

/// Every file with its bytes and every folder.
QMap<QString, QByteArray> contentsOf(const QString& root)
{
    QMap<QString, QByteArray> result;
    files::walk(root, [&](const QString& path, bool isFolder) {
        const std::unique_ptr<QFile> file = isFolder ? nullptr : files::openForReading(files::join(root, path));
        result.insert(path, file ? file->readAll() : QByteArray("(folder)"));
    });
    return result;
}

QStringList words(const char* text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

/// What it printed and its status: "0" when all went well.
QByteArray outcome(const ProgramRun& run)
{
    return run.out + run.err + QByteArray::number(run.status);
}

/// Three recordings, the first two of them with a picture, in "card"; beside it a disk with something in "full".
class Cards : public CardBuilder
{
public:
    Cards()
        : CardBuilder(u"disks"_s)
    {
        recording(u"NORMAL/250614120000"_s, noon, 3);
        recording(u"EVENT/250614120100"_s, noon + 60s, 5);
        recording(u"NORMAL/250614120200"_s, noon + 120s, 7);
        file(u"card/REAR/NORMAL/250614120000.MP4"_s, "rear", noon + 60s);
        picture(u"card/PICTURE/250614120030.JPG"_s, noon + 30s);
        picture(u"card/PICTURE/250614120130.JPG"_s, noon + 90s);
        file(u"full/something"_s);
        folder(u"empty"_s);
        folder(u"no card"_s);
    }

    void recording(const QString& stem, Instant start, int fixes)
    {
        file(u"card/"_s + stem + u".MP4"_s, "film", start + 60s);
        file(u"card/"_s + stem + u".NMEA"_s, sideFile(start, fixes));
    }
};

} // namespace

class ExportCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesAndLeavesNothing_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        const auto row = [](const char* arguments, int status) {
            QTest::newRow(arguments) << words(arguments) << status;
        };
        row("export card", 2);
        row("export card out.txt", 2);
        row("export card out.kml --select 250614120000 250614129999", 2);
        row("export empty out.kml", 1);
        row("export card missing/out.kml", 1);
        row("export card card/out.gpx", 1);
        row("backup card new --pictures some", 2);
        row("backup card full", 1);
        row("backup card card/new", 1);
        row("backup card proc/new", 1);
        row("backup . new", 1);
        row("capture card 250614120000 --out a.jpg", 2);
        row("capture card 250614120000 --out a.jpg --at -1", 2);
        row("capture card 250614120000 --out a.jpg --at nan", 2);
        row("capture card 250614120000 --out a.tiff --at 1", 2);
        row("capture card 250614120100 --out a.jpg --at 1 --rear", 1);
        row("capture card 250614120000 --out a.jpg --at 1", 1); // that is no film
        row("capture card 250614120000 --out card/a.jpg --at 1", 1);
    }
    void refusesAndLeavesNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        Cards cards;
        cards.link(u"proc"_s, "/proc");
        const auto before = contentsOf(cards.root());
        const ProgramRun run = runProgram(cards.root(), arguments);
        QCOMPARE(run.status, status);
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.startsWith("cardreel: ") && run.err.endsWith('\n'), run.err.constData());
        QVERIFY2(run.err.count('\n') == 1, run.err.constData());
        QCOMPARE(contentsOf(cards.root()), before);
    }

    void refusesWhatDoesNotFit()
    {
        Cards cards;
        QFile huge(cards.file(u"card/NORMAL/250614120300.MP4"_s));
        QVERIFY(huge.resize(Q_INT64_C(1) << 43)); // without taking any room
        const ProgramRun run = runProgram(cards.root(), words("backup card new"));
        QCOMPARE(run.status, 1);
        QVERIFY(!files::exists(cards.path(u"new"_s)));
        QCOMPARE(runProgram(cards.root(), words("backup card new --pictures only")).status, 0);
    }

    void exports_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("reader"); // prints what was written
        QTest::addColumn<QByteArray>("fix"); // how it begins there
        QTest::addColumn<int>("fixes");
        const auto row = [](const char* arguments, const QString& reader, const char* fix, int fixes) {
            QTest::newRow(arguments) << words(arguments) << reader << QByteArray(fix) << fixes;
        };
        row("card out.kml", u"cat out.kml"_s, "<coord>", 15);
        row("card out.KMZ", u"unzip -p out.KMZ"_s, "<coord>", 15);
        row("card out.gpx", u"cat out.gpx"_s, "<trkpt ", 15);
        row("--select 250614120000 -- card out.kml", u"cat out.kml"_s, "<coord>", 3);
        row("card out.kml --select NORMAL/250614120200.MP4 250614120200 250614120100", u"cat out.kml"_s, "<coord>", 12);
    }
    void exports()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, reader);
        QFETCH(QByteArray, fix);
        QFETCH(int, fixes);
        Cards cards;
        const auto before = contentsOf(cards.path(u"card"_s));
        QCOMPARE(outcome(runProgram(cards.root(), QStringList{u"export"_s} + arguments)), QByteArray("0"));
        QCOMPARE(runIn(cards.root(), u"/bin/sh"_s, {u"-c"_s, reader}).out.count(fix), fixes);
        QCOMPARE(contentsOf(cards.path(u"card"_s)), before);
    }

    void backsUp_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("copied"); // nothing: all
        const QStringList second = words("EVENT/250614120100.MP4 EVENT/250614120100.NMEA");
        const QStringList pictures = words("PICTURE/250614120030.JPG PICTURE/250614120130.JPG");
        const auto row = [](const char* arguments, const QStringList& copied) {
            QTest::newRow(arguments) << words(arguments) << copied;
        };
        row("card new", {});
        row("--verify card empty --pictures all", {});
        row("card new/in/new --select 250614120100", second + pictures);
        row("card new --select 250614120100 --pictures none", second);
        row("card new --select 250614120100 --pictures only", pictures);
    }
    void backsUp()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, copied);
        Cards cards;
        auto expected = contentsOf(cards.path(u"card"_s));
        QCOMPARE(outcome(runProgram(cards.root(), QStringList{u"backup"_s} + arguments)), QByteArray("0"));
        auto copies = contentsOf(cards.path(arguments.filter(QRegularExpression(u"^(new|empty)"_s)).first()));
        copies.removeIf([](const auto& entry) { return entry.value() == "(folder)"; });
        expected.removeIf([&](const auto& entry) {
            return entry.value() == "(folder)" || !(copied.isEmpty() || copied.contains(entry.key()));
        });
        QCOMPARE(copies, expected);
    }

    void captures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<double>("seconds"); // of the file
        QTest::newRow("--at 15e-1") << words("--at 15e-1") << 1.5;
        QTest::newRow("the end") << QStringList{u"--at"_s, QString::number(front().duration, 'f', 6)}
                                 << front().duration;
        QTest::newRow("--at 1.5 --rear") << words("--at 1.5 --rear") << 1.5 * rear().duration / front().duration;
        QTest::newRow("--at 1.5 --mirror") << words("--at 1.5 --mirror") << 1.5;
    }
    void captures()
    {
        QFETCH(QStringList, arguments);
        QFETCH(double, seconds);
        Cards cards;
        putFilms(cards);
        const auto before = contentsOf(cards.path(u"card"_s));
        cards.file(u"it's.JPeG"_s, "former");
        const ProgramRun run =
            runProgram(cards.root(), words("capture card 250614120000 --out png.png --out it's.JPeG") + arguments);
        QCOMPARE(outcome(run), QByteArray("0"));
        QVERIFY(!files::exists(cards.path(u"png.png"_s)));
        QImage picture(cards.path(u"it's.JPeG"_s), "JPG");
        if (arguments.contains(u"--mirror"_s))
            picture = picture.mirrored(true, false);
        const SampleVideo& film = arguments.contains(u"--rear"_s) ? rear() : front();
        QCOMPARE(film.numberIn(picture), std::optional(film.frameAt(seconds)));
        QCOMPARE(contentsOf(cards.path(u"card"_s)), before);
    }

    void aCaptureSaysWhereAndWhen()
    {
        Cards cards;
        putFilms(cards);
        cards.recording(u"EVENT/250614120000"_s, noon, 3); // the path tells it from the other
        const auto capture = [&](const char* which) {
            return runProgram(cards.root(), words("capture card --out a.jpg --at 1.9") + words(which)).status;
        };
        QCOMPARE(capture("250614120000"), 2);
        QCOMPARE(capture("NORMAL/250614120000.MP4 --at 1e3"), 2); // is over by then
        QCOMPARE(capture("NORMAL/250614120000.MP4"), 0);
        const QVariantMap place =
            imageProperties(cards.path(u"a.jpg"_s)).value_or(QVariantMap()).value(u"{GPS}"_s).toMap();
        // The recording begins with its first fix; each second goes 0.005 minutes to the north.
        QVERIFY(qAbs(place[u"Latitude"_s].toDouble() - (35 + 2 * 0.005 / 60)) < 1e-6);
        const QDateTime moment = QDateTime::fromMSecsSinceEpoch((noon + 1s).time_since_epoch().count());
        QCOMPARE(place[u"DateStamp"_s].toString(), moment.toString(u"yyyy:MM:dd HH:mm:ss"_s));
    }

    void showsHowFarItIs()
    {
        Cards cards;
        TestTerminal terminal(36);
        QVERIFY(terminal.start(cards.root(), words("backup card new --pictures none")));
        const QByteArray shown = terminal.readToEnd();
        QCOMPARE(terminal.status(), 0);
        const QStringList lines = QString::fromUtf8(shown).split(u'\r');
        QVERIFY2(shown.contains("  0 % [--------------------] 1/3 25"), shown.constData());
        QVERIFY2(shown.contains("100 % [####################] 3/3 25"), shown.constData());
        for (const QString& line : lines)
            QCOMPARE(CommandLine::ProgressBar::cut(line, 35), line);
        QVERIFY(lines.last().isEmpty() && lines.at(lines.size() - 2).trimmed().isEmpty());
    }

    void cutsALine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown"); // of five columns
        QTest::newRow("fits") << u"abcde"_s << u"abcde"_s;
        QTest::newRow("too long") << u"abcdef"_s << u"abcde"_s;
        QTest::newRow("letters of two columns") << u"日本語"_s << u"日本"_s;
        QTest::newRow("moves the cursor") << u"a\r\n\u001b\tbc"_s << u"a????"_s;
        QTest::newRow("takes no column") << u"e\u0301bcdef"_s << u"e\u0301bcde"_s;
    }
    void cutsALine()
    {
        QFETCH(QString, text);
        QFETCH(QString, shown);
        QCOMPARE(CommandLine::ProgressBar::cut(text, 5), shown);
    }

    void isCancelled_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("signal");
        QTest::newRow("backup, Ctrl+C") << words("backup card new") << SIGINT;
        QTest::newRow("backup, told to end") << words("backup card new --verify") << SIGTERM;
        QTest::newRow("backup, the terminal is closed") << words("backup card new --pictures none") << SIGHUP;
        QTest::newRow("export") << words("export card new.kml") << SIGINT;
    }
    /// What the bar of so many items says doesn't fit into a terminal that nobody reads: having shown something, the
    /// program is surely in the middle.
    void isCancelled()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, signal);
        Cards cards;
        for (int i = 0; i < 1000; ++i)
            cards.file(u"card/NORMAL/2506142%1.MP4"_s.arg(100 * (i / 50) + i % 50, 5, 10, QLatin1Char('0')));
        const auto before = contentsOf(cards.root());
        TestTerminal terminal(200);
        QVERIFY(terminal.start(cards.root(), arguments));
        QByteArray shown = terminal.read();
        QVERIFY(shown.startsWith("\r  "));
        for (QByteArray more = shown; !more.isEmpty(); more = terminal.read()) {
            terminal.send(signal); // again and again, also while it cleans up
            shown += more;
        }
        QCOMPARE(terminal.status(), 130);
        QVERIFY(!shown.contains("100 %") && shown.endsWith(" \r") && !shown.contains('\n'));
        QCOMPARE(contentsOf(cards.root()), before);
    }

private:
    const SampleVideo& front() { return m_videos.good("h264"); }
    const SampleVideo& rear() { return m_videos.good("shorter"); }

    /// The first recording is one that can be played, and begins with its first fix.
    void putFilms(Cards& cards)
    {
        const auto length = std::chrono::milliseconds(std::llround(front().duration * 1000));
        cards.file(u"card/NORMAL/250614120000.MP4"_s, contentOf(front().path), noon + length);
        cards.file(u"card/REAR/NORMAL/250614120000.MP4"_s, contentOf(rear().path), noon + length);
    }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    TestHome m_home;
    SampleVideos m_videos;
};

QTEST_MAIN(ExportCommandsTest)
#include "ExportCommandsTest.moc"
