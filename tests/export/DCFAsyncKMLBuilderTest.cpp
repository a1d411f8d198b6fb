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
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int fixCount = 20; // of each recording

QString namesIn(const QString& folder)
{
    std::vector<QString> names = files::names(folder);
    std::sort(names.begin(), names.end());
    return QStringList(names.begin(), names.end()).join(u' ');
}

/// Has a script run in the place of zip while this lives; no zip at all when it is empty.
class OtherZip
{
public:
    explicit OtherZip(const QByteArray& script)
    {
        QFile program(m_folder.filePath(u"zip"_s));
        if (script.isEmpty() || !program.open(QIODevice::WriteOnly)) {
            qputenv("PATH", m_folder.path().toLocal8Bit());
            return;
        }
        program.write("#!/bin/sh\nexport PATH='" + m_path + "'\n" + script + '\n');
        program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", m_folder.path().toLocal8Bit() + ':' + m_path);
    }
    ~OtherZip() { qputenv("PATH", m_path); }

private:
    QByteArray m_path = qgetenv("PATH");
    QTemporaryDir m_folder;
};

} // namespace

class DCFAsyncKMLBuilderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qputenv("XDG_CACHE_HOME", m_caches.path().toLocal8Bit());
        QDir(ThumbnailCache::cachesDirectoryPath()).removeRecursively();
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

    void cleanup()
    {
        InterfaceThread::open();
        QVERIFY(QTest::qWaitFor(poolIsIdle));
    }

    /// Also while the card is still being parsed, and when it is pulled once all was read. One worn file must not keep
    /// the rest of a card from being exported.
    void tellsProgressAndWrites()
    {
        const QString path = target(u"drive.kml"_s);
        m_card->file(u"NORMAL/250614120001.NMEA"_s, "\xff\n");
        QVERIFY(QFile::remove(m_card->path(u"NORMAL/250614120002.NMEA"_s)));
        const auto parser = std::make_shared<DCFAsyncParser>(1);
        bool isParsed = false;
        parser->setUpDCFAsync(m_recordings, 2, {}, [&isParsed] { isParsed = true; });
        m_atProgress = [&] {
            if (m_fractions.size() == 4)
                m_card->mountAgainAs(u"elsewhere"_s);
        };
        const auto builder = start(path);
        WAIT_FOR(m_finished == 1 && isParsed);
        QCOMPARE(m_fractions, (QList<double>{0.25, 0.5, 0.75, 0.99}));
        QVERIFY(builder->isRunning && !builder->outputError());
        QCOMPARE(bytesOf(path).count("<coord>"), 2 * fixCount);
    }

    void otherProgramsReadIt_data()
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
        QTest::newRow("archive") << u"kmz"_s << u"unzip -l %1"_s << u":\\d\\d +(.*)|(\\d+) file"_s
                                 << QStringList{u"route.kml"_s, u"1"_s};
        QTest::newRow("tracks") << u"gpx"_s << u"gpsbabel -t -i gpx -f %1 -o unicsv,utc=0 -F -"_s << table << rows;
        QTest::newRow("waypoints") << u"gpx"_s << u"gpsbabel -w -i gpx -f %1 -o unicsv,utc=0 -F -"_s << table
                                   << QStringList{u"1,35.000000,139.000000,\"EVENT RECORD\",2025/06/15,12:03:00"_s};
    }
    void otherProgramsReadIt()
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

    void anyNameIsWritten_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("beginning");
        QTest::newRow("no text") << files::fromNativePath("a\xff.KMZ") << QByteArray("PK\3\4");
        QTest::newRow("long") << QString(251, u'x') + u".kmz"_s << QByteArray("PK\3\4");
        for (const QString& name : {u"route"_s, u"route.txt"_s, u".kmz"_s, u"route.kmz."_s})
            QTest::newRow(qPrintable(name)) << name << QByteArray("<?xm");
    }
    void anyNameIsWritten()
    {
        QFETCH(QString, name);
        const auto builder = start(target(name));
        WAIT_FOR(m_finished == 1);
        QVERIFY2(!builder->outputError(), qPrintable(builder->outputError().value_or(QString())));
        QCOMPARE(files::names(m_out->path()), std::vector<QString>{name});
        QTEST(bytesOf(target(name)).first(4), "beginning");
        QCOMPARE(std::remove(files::nativePath(target(name)).constData()), 0); // Qt can't name each of them
    }

    void aSecondStartDoesNothing()
    {
        const auto builder = start(target(u"drive.kml"_s));
        builder->kmlBuildAsync(m_recordings, target(u"second.kml"_s), {}, {});
        WAIT_FOR(m_finished == 1 && poolIsIdle());
        m_recordings.clear();
        QVERIFY(start(target(u"nothing.kml"_s))->isRunning);
        QVERIFY(poolIsIdle());
        QCOMPARE(files::names(m_out->path()), std::vector<QString>{u"drive.kml"_s});
    }

    /// A link stays one, and a document is for whom the former was.
    void replacesWhatALinkLeadsTo()
    {
        const QString former = target(u"former"_s);
        writeFormer(former);
        chmod(files::nativePath(former).constData(), 0604);
        QVERIFY(QFile::link(former, target(u"drive.kml"_s)));
        const auto builder = start(target(u"drive.kml"_s));
        WAIT_FOR(m_finished == 1);
        QCOMPARE(QFile::symLinkTarget(target(u"drive.kml"_s)), former);
        QVERIFY(bytesOf(former).startsWith("<?xml"));
        struct stat found
        {
        };
        QCOMPARE(stat(files::nativePath(former).constData(), &found), 0);
        QCOMPARE(found.st_mode & 0777, 0604U);
    }

    /// Whatever another process does while the archive is made.
    void exportsDoNotMeet_data()
    {
        QTest::addColumn<bool>("isCancelled");
        QTest::addColumn<QString>("outcome"); // the target's files, the caches' files
        QTest::newRow("finished") << false << u"drive.kmz|route.kml"_s;
        QTest::newRow("cancelled") << true << u"|route.kml"_s;
    }
    void exportsDoNotMeet()
    {
        QFETCH(bool, isCancelled);
        const QTemporaryDir folder;
        const QByteArray gate = files::nativePath(folder.filePath(u"gate"_s));
        QCOMPARE(mkfifo(gate.constData(), 0600), 0);
        const OtherZip held("read line <'" + gate + "'; exec zip \"$@\"");
        const QString kept = files::join(ThumbnailCache::cachesDirectoryPath(), u"route.kml"_s);
        const auto builder = start(target(u"drive.kmz"_s));
        int opened = -1; // once zip is there to read from it
        WAIT_FOR((opened = open(gate.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC)) >= 0);
        writeFormer(kept); // the other's
        builder->cancelFlag = isCancelled;
        close(opened);
        WAIT_FOR(poolIsIdle());
        QTEST(namesIn(m_out->path()) + u'|' + namesIn(files::folderOf(kept)), "outcome");
        QCOMPARE(bytesOf(kept) == "former", isCancelled);
        const QString line = u"unzip -p "_s + quotedForCShell(target(u"drive.kmz"_s));
        if (!isCancelled)
            QCOMPARE(TaskWrapper::syncProcessWithArguments(TaskWrapper::argsWithCommandLineString(line)),
                     bytesOf(kept));
    }

    void cancelLeavesNothing_data()
    {
        QTest::addColumn<int>("after"); // reports of progress
        QTest::addColumn<QString>("how");
        for (const QString& how : {u"cancelled"_s, u"dropped"_s, u"closed"_s}) {
            for (int after = 0; after <= 4; ++after)
                QTest::addRow("%s after %d", qPrintable(how), after) << after << how;
        }
    }
    void cancelLeavesNothing()
    {
        QFETCH(int, after);
        QFETCH(QString, how);
        const QString name = u"drive.kml"_s;
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
        QCOMPARE(namesIn(m_out->path()), name);
        QCOMPARE(bytesOf(target(name)), QByteArray("former"));
    }

    void whatCannotBeWritten_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("zip"); // a script in its place
        const auto row = [](const QString& what, const QString& name = u"drive.kml"_s, const QByteArray& zip = {}) {
            QTest::addRow("%s, %s, %s", qPrintable(what), qPrintable(name), zip.constData()) << what << name << zip;
        };
        for (const QString& what :
             {u"full"_s, u"unwritable"_s, u"a folder"_s, u"a pipe"_s, u"on the card"_s, u"The card is gone"_s})
            row(what);
        const QString archive = u"drive.kmz"_s;
        row(u"full"_s, archive);
        row(u"The program zip is not installed"_s, archive, "");
        row(u"The archive can't be made: No space"_s, archive,
            "echo x >$(dirname \"$2\")/zipx; echo I/O error: No space");
        // Beyond the room that there is for the target.
        row(u"room for the document alone"_s, archive, "ulimit -f unlimited; head -c 1000000 /dev/zero >\"$2\"");
    }
    void whatCannotBeWritten()
    {
        QFETCH(QString, what);
        QFETCH(QString, name);
        QFETCH(QByteArray, zip);
        const QString namesBefore = namesIn(m_card->path(u"NORMAL"_s));
        QString path = target(name);
        if (what == u"a folder")
            QVERIFY(QDir(m_out->path()).mkpath(name));
        else if (what == u"a pipe")
            QCOMPARE(mkfifo(files::nativePath(path).constData(), 0600), 0);
        else
            writeFormer(path);
        if (what == u"on the card")
            path = m_card->path(u"NORMAL/"_s + name);
        else if (what == u"unwritable")
            path = u"/sys/"_s + name; // not even for the administrator
        m_atProgress = [&] {
            if (what == u"The card is gone" && m_fractions.size() == 2)
                m_card->mountAgainAs(u"elsewhere"_s);
        };
        const auto other = zip.isNull() ? nullptr : std::make_unique<OtherZip>(zip);
        rlimit unlimited{};
        getrlimit(RLIMIT_FSIZE, &unlimited);
        const rlimit full{what == u"full" ? 1000U : 100'000U, unlimited.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN); // writing beyond it fails
        setrlimit(RLIMIT_FSIZE, &full);
        const auto former = qScopeGuard([&] { setrlimit(RLIMIT_FSIZE, &unlimited); });
        const auto builder = start(path);
        WAIT_FOR(m_finished == 1);
        const QString error = builder->outputError().value_or(QString());
        QVERIFY2(!error.isEmpty() && !error.contains(u'%'), qPrintable(error));
        if (what.startsWith(u"The "))
            QCOMPARE(error, what);
        QCOMPARE(namesIn(m_out->path()), name);
        QCOMPARE(namesIn(ThumbnailCache::cachesDirectoryPath()), QString());
        QCOMPARE(namesIn(m_card->path(u"NORMAL"_s)), namesBefore);
        if (!what.startsWith(u"a "))
            QCOMPARE(bytesOf(target(name)), QByteArray("former"));
    }

private:
    /// Notes in the test what the builder reports.
    std::shared_ptr<DCFAsyncKMLBuilder> start(const QString& target)
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

    QString target(const QString& name) const { return files::join(m_out->path(), name); }
    QByteArray bytesOf(const QString& path) const
    {
        const std::unique_ptr<QFile> file = files::openForReading(path);
        return file ? file->readAll() : QByteArray();
    }

    static void writeFormer(const QString& path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("former") == 6);
    }
    static bool poolIsIdle() { return BackgroundQueue::waitForDone(0); }

    TestHome m_home;
    QTemporaryDir m_caches{QDir::tempPath() + u"/cardreel's '!$x `x` \n"_s}; // named on the C shell's command line
    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<QTemporaryDir> m_out;
    DCFAsyncKMLBuilder::DCFList m_recordings; // four, two a day, the last one an event
    QList<double> m_fractions;
    int m_finished = 0;
    std::function<void()> m_atProgress;
};

QTEST_GUILESS_MAIN(DCFAsyncKMLBuilderTest)
#include "DCFAsyncKMLBuilderTest.moc"
