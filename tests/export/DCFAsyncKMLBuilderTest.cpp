#include "export/DCFAsyncKMLBuilder.h"

#include "export/TaskWrapper.h"
#include "media/DCFAsyncParser.h"
#include "media/DCFInfo.h"
#include "media/ThumbnailCache.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/files/Files.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"
#include "support/Waiting.h"

#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>
#include <QThread>

#include <sys/resource.h>

#include <cmath>
#include <csignal>
#include <cstdio>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int fixCount = 20; // of each recording

} // namespace

class DCFAsyncKMLBuilderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void tellsProgressAndWrites();
    void otherProgramsReadIt_data();
    void otherProgramsReadIt();
    void anyNameIsWritten_data();
    void anyNameIsWritten();
    void aSecondStartDoesNothing();
    void cancelLeavesNothing_data();
    void cancelLeavesNothing();
    void whatCannotBeWritten_data();
    void whatCannotBeWritten();

private:
    std::shared_ptr<DCFAsyncKMLBuilder> start(const QString& target);
    QString target(const QString& name) const { return files::join(m_out->path(), name); }
    QByteArray bytesOf(const QString& path) const;
    static void writeFormer(const QString& path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("former") == 6);
    }
    static bool poolIsIdle() { return BackgroundQueue::waitForDone(0); }

    TestHome m_home;
    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<QTemporaryDir> m_out;
    DCFAsyncKMLBuilder::DCFList m_recordings; // four, two a day, the last one an event
    QList<double> m_fractions;
    int m_finished = 0;
    std::function<void()> m_atProgress;
};

void DCFAsyncKMLBuilderTest::init()
{
    m_card = std::make_unique<CardBuilder>();
    m_out = std::make_unique<QTemporaryDir>();
    m_recordings.clear();
    for (unsigned i = 0; i < 4; ++i) {
        const QString stem = (i == 3 ? u"EVENT/25061412000%1"_s : u"NORMAL/25061412000%1"_s).arg(i);
        m_card->file(stem + u".MP4"_s);
        m_card->file(stem + u".NMEA"_s, sideFile(utc(2025, 6, 14 + i / 2, 12, static_cast<int>(i)), fixCount));
        m_recordings.push_back(std::make_shared<DCFInfo>(m_card->root(), stem + u".MP4"_s));
    }
    m_fractions.clear();
    m_finished = 0;
    m_atProgress = {};
}

void DCFAsyncKMLBuilderTest::cleanup()
{
    InterfaceThread::open();
    QVERIFY(QTest::qWaitFor(poolIsIdle));
}

/// Notes in the test what the builder reports.
std::shared_ptr<DCFAsyncKMLBuilder> DCFAsyncKMLBuilderTest::start(const QString& target)
{
    auto builder = std::make_shared<DCFAsyncKMLBuilder>();
    builder->kmlBuildAsync(
        m_recordings, target,
        [this](const std::shared_ptr<DCFInfo>& info, double fraction) {
            QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
            QCOMPARE(info, m_recordings[static_cast<size_t>(m_fractions.size())]);
            m_fractions.push_back(fraction);
            if (m_atProgress)
                m_atProgress();
        },
        [this](const std::optional<QString>& error) {
            QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
            QVERIFY(!error);
            ++m_finished;
        });
    return builder;
}

QByteArray DCFAsyncKMLBuilderTest::bytesOf(const QString& path) const
{
    const std::unique_ptr<QFile> file = files::openForReading(path);
    return file ? file->readAll() : QByteArray();
}

/// Also while the card is still being parsed.
void DCFAsyncKMLBuilderTest::tellsProgressAndWrites()
{
    const QString path = target(u"drive.kml"_s);
    const auto parser = std::make_shared<DCFAsyncParser>(1);
    bool isParsed = false;
    parser->setUpDCFAsync(m_recordings, 2, {}, [&isParsed] { isParsed = true; });
    const auto builder = start(path);
    WAIT_FOR(m_finished == 1 && isParsed);
    QCOMPARE(m_fractions, (QList<double>{0.25, 0.5, 0.75, 0.99}));
    QVERIFY(builder->isRunning && !builder->outputError());
    QCOMPARE(bytesOf(path).count("<coord>"), 4 * fixCount);
}

void DCFAsyncKMLBuilderTest::otherProgramsReadIt_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("command"); // %1: the file
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QStringList>("expected"); // all that the pattern captures, in order
    QStringList line;                          // of a recording, as KML's readers print it
    QStringList rows;                          // of all fixes
    for (int i = 0; i < 4 * fixCount; ++i) {
        const double latitude = 35 + (i % fixCount) * 0.005 / 60;
        if (i < fixCount)
            line += u"139 %1 0"_s.arg(std::round(latitude * 1e6) / 1e6, 0, 'g', 15);
        rows += QString::asprintf("%d,%.6f,139.000000,2025/06/%d,12:%02d:%02d", i + 1, latitude,
                                  14 + i / (2 * fixCount), i / fixCount, i % fixCount);
    }
    const QString day = (line + line).join(u',');
    const QString table = u"^(\\d.*)$"_s;
    QTest::newRow("lines, event") << u"kml"_s << u"ogrinfo -ro -al %1"_s << u" Z \\((.*)\\)"_s
                                  << QStringList{day, day, line.front()};
    QTest::newRow("looks") << u"kml"_s << u"ogrinfo -ro -al %1"_s << u"Style = (.*)|Name \\(String\\) = (.*)"_s
                           << u"@tracks0,@tracks1,EVENT RECORD,@Events0"_s.split(u',');
    QTest::newRow("archive") << u"kmz"_s << u"unzip -l %1"_s << u":\\d\\d +(.*)|(\\d+) file"_s
                             << QStringList{u"route.kml"_s, u"1"_s};
    QTest::newRow("tracks") << u"gpx"_s << u"gpsbabel -t -i gpx -f %1 -o unicsv,utc=0 -F -"_s << table << rows;
    QTest::newRow("waypoints") << u"gpx"_s << u"gpsbabel -w -i gpx -f %1 -o unicsv,utc=0 -F -"_s << table
                               << QStringList{u"1,35.000000,139.000000,\"EVENT RECORD\",2025/06/15,12:03:00"_s};
}

void DCFAsyncKMLBuilderTest::otherProgramsReadIt()
{
    QFETCH(QString, extension);
    QFETCH(QString, command);
    QFETCH(QString, pattern);
    const QString path = target(u"drive."_s + extension);
    const auto builder = start(path);
    WAIT_FOR(m_finished == 1);
    // Not through QProcess, whose way of starting programs clang's thread sanitizer can't follow.
    const QStringList args = TaskWrapper::argsWithCommandLineString(command.arg(quotedForCShell(path)));
    QString output = QString::fromUtf8(TaskWrapper::syncProcessWithArguments(args).value_or(QByteArray()));
    output.remove(u'\r').replace(u".0 "_s, u" "_s); // as some print whole numbers
    QStringList found;
    for (const auto& match : QRegularExpression(pattern, QRegularExpression::MultilineOption).globalMatch(output))
        found += match.captured(match.lastCapturedIndex());
    QTEST(found, "expected");
}

void DCFAsyncKMLBuilderTest::anyNameIsWritten_data()
{
    QTest::addColumn<QString>("name");
    const std::pair<const char*, QString> stems[] = {
        {"apostrophes", u"it's '"_s},
        {"exclamation marks", u"a!b !! \\!"_s},
        {"commands", u"$HOME `touch x` $(touch x); touch x"_s},
        {"line feeds", u"line\nfeed'\n!\n"_s},
        {"Japanese", u"表ソ 記録"_s},
        {"like an option", u"-r"_s},
        {"no text", files::fromNativePath("a\xff")},
        {"long", QString(250, u'x')},
    };
    for (const QString& extension : {u".kmz"_s, u".KMZ"_s, u".kml"_s, u".gpx"_s, u""_s}) {
        for (const auto& [label, stem] : stems)
            QTest::addRow("%s%s", label, qPrintable(extension)) << stem + extension;
    }
}

void DCFAsyncKMLBuilderTest::anyNameIsWritten()
{
    QFETCH(QString, name);
    m_out = std::make_unique<QTemporaryDir>(QDir::tempPath() + u"/cardreel '!$x\n"_s);
    m_recordings.resize(1);
    const auto builder = start(target(name));
    WAIT_FOR(m_finished == 1);
    QVERIFY2(!builder->outputError(), qPrintable(builder->outputError().value_or(QString())));
    QCOMPARE(files::names(m_out->path()), std::vector<QString>{name});
    QVERIFY(bytesOf(target(name)).startsWith(name.endsWith(u".kmz"_s, Qt::CaseInsensitive) ? "PK\3\4" : "<?xml"));
    if (name.endsWith(u".kmz"_s))
        QVERIFY(files::exists(files::join(ThumbnailCache::cachesDirectoryPath(), u"route.kml"_s)));
    QCOMPARE(std::remove(files::nativePath(target(name)).constData()), 0); // Qt can't name each of them
}

void DCFAsyncKMLBuilderTest::aSecondStartDoesNothing()
{
    const auto builder = start(target(u"drive.kml"_s));
    builder->kmlBuildAsync(m_recordings, target(u"second.kml"_s), {}, {});
    WAIT_FOR(m_finished == 1 && poolIsIdle());
    m_recordings.clear();
    QVERIFY(start(target(u"nothing.kml"_s))->isRunning);
    QVERIFY(poolIsIdle());
    QCOMPARE(files::names(m_out->path()), std::vector<QString>{u"drive.kml"_s});
}

void DCFAsyncKMLBuilderTest::cancelLeavesNothing_data()
{
    QTest::addColumn<int>("after"); // reports of progress
    QTest::addColumn<QString>("how");
    QTest::addColumn<QString>("name");
    for (const QString& name : {u"drive.kml"_s, u"drive.kmz"_s, u"drive.gpx"_s}) {
        for (const QString& how : {u"cancelled"_s, u"dropped"_s, u"closed"_s}) {
            for (int after = 0; after <= 4; ++after)
                QTest::addRow("%s %s after %d", qPrintable(name), qPrintable(how), after) << after << how << name;
        }
    }
}

void DCFAsyncKMLBuilderTest::cancelLeavesNothing()
{
    QFETCH(int, after);
    QFETCH(QString, how);
    QFETCH(QString, name);
    writeFormer(target(name));
    std::shared_ptr<DCFAsyncKMLBuilder> builder;
    m_atProgress = [&] {
        if (m_fractions.size() != after)
            return;
        if (how == u"cancelled")
            builder->cancelFlag = true;
        else if (how == u"dropped")
            builder.reset();
        else
            InterfaceThread::close(); // as the end of the application does
    };
    builder = start(target(name));
    m_atProgress();
    QVERIFY(QTest::qWaitFor(poolIsIdle));
    QCOMPARE(m_fractions.size(), after);
    QCOMPARE(m_finished, 0);
    QCOMPARE(files::names(m_out->path()), std::vector<QString>{name});
    QCOMPARE(bytesOf(target(name)), QByteArray("former"));
}

void DCFAsyncKMLBuilderTest::whatCannotBeWritten_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("name");
    for (const QString& extension : {u"kml"_s, u"kmz"_s, u"gpx"_s}) {
        for (const QString& what : {u"full"_s, u"unwritable"_s, u"vanished"_s, u"a folder"_s, u"on the card"_s})
            QTest::addRow("%s, %s", qPrintable(what), qPrintable(extension)) << what << u"drive."_s + extension;
    }
    QTest::newRow("no zip") << u"no zip"_s << u"drive.kmz"_s;
}

void DCFAsyncKMLBuilderTest::whatCannotBeWritten()
{
    QFETCH(QString, what);
    QFETCH(QString, name);
    const auto namesBefore = files::names(m_card->path(u"NORMAL"_s));
    QString path = target(name);
    if (what == u"a folder")
        QVERIFY(QDir(m_out->path()).mkpath(name));
    else
        writeFormer(path);
    if (what == u"on the card")
        path = m_card->path(u"NORMAL/"_s + name);
    else if (what == u"vanished")
        path = target(u"gone/"_s + name);
    else if (what == u"unwritable")
        path = u"/sys/"_s + name; // not even for the administrator
    const QByteArray programs = qgetenv("PATH");
    if (what == u"no zip")
        qputenv("PATH", m_out->path().toLocal8Bit());
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const rlimit full{1000, unlimited.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN); // writing beyond it fails
    setrlimit(RLIMIT_FSIZE, what == u"full" ? &full : &unlimited);
    const auto former = qScopeGuard([&] {
        setrlimit(RLIMIT_FSIZE, &unlimited);
        qputenv("PATH", programs);
    });
    const auto builder = start(path);
    WAIT_FOR(m_finished == 1);
    const QString error = builder->outputError().value_or(QString());
    QVERIFY2(!error.isEmpty() && !error.contains(u'%'), qPrintable(error));
    QCOMPARE(error == u"The program zip is not installed", what == u"no zip");
    QCOMPARE(files::names(m_out->path()), std::vector<QString>{name});
    QCOMPARE(files::names(m_card->path(u"NORMAL"_s)), namesBefore);
    QCOMPARE(bytesOf(target(name)), what == u"a folder" ? QByteArray() : QByteArray("former"));
}

QTEST_GUILESS_MAIN(DCFAsyncKMLBuilderTest)
#include "DCFAsyncKMLBuilderTest.moc"
