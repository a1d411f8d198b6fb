#include "platform/files/FileCopy.h"

#include "platform/files/Files.h"
#include "support/CardBuilder.h"
#include "support/FailingDevice.h"

#include <QFile>
#include <QTest>

#include <sys/stat.h>

#include <fcntl.h>
#include <functional>
#include <unistd.h>
#include <utility>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

using Code = FileError::Code;
using Step = FailingDevice::Step;

/// Larger than what is copied at once through a buffer, and not a multiple of it.
QByteArray manyBytes()
{
    QByteArray bytes(3'000'001, Qt::Uninitialized);
    unsigned state = 1;
    for (char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// Does something to the source when its copy is under way, or spoils what is read back.
class MeddledDevice : public FailingDevice
{
public:
    std::function<void()> meddle;
    bool spoilsWriting = false;

    MeddledDevice() { failsFrom[Step::CopyRange] = 1; }
    ssize_t write(int file, const char* bytes, size_t count) override
    {
        if (const auto call = std::exchange(meddle, {}))
            call();
        QByteArray written(bytes, static_cast<qsizetype>(count));
        if (spoilsWriting)
            written[written.size() - 1] = static_cast<char>(written.back() ^ 1);
        return FailingDevice::write(file, written.constData(), count);
    }
};

} // namespace

class FileCopyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<CardBuilder>();
        m_source = m_card->file(u"source"_s, manyBytes());
        m_card->folder(u"target"_s);
        m_target = m_card->path(u"target/copy"_s);
    }

    void theCopyIsTheSame_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("rangesFailFrom");
        for (const int from : {100, 3, 1}) {
            const char* how = from == 1 ? "by buffer" : from == 3 ? "half in ranges" : "in ranges";
            QTest::addRow("empty, %s", how) << QByteArray("") << from;
            QTest::addRow("a buffer, %s", how) << manyBytes().first(1 << 20) << from;
            QTest::addRow("many, %s", how) << manyBytes() << from;
        }
    }
    void theCopyIsTheSame()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, rangesFailFrom);
        m_source = m_card->file(u"source"_s, bytes);
        const struct timespec times[] = {{1'700'000'000, 1}, {1'749'902'400, 123'456'789}};
        QVERIFY(utimensat(AT_FDCWD, qPrintable(m_source), times, 0) == 0 && chmod(qPrintable(m_source), 0444) == 0);
        FailingDevice device;
        device.failsFrom[Step::CopyRange] = rangesFailFrom;
        const auto error = copyFile(m_source, m_target, device, ReadBack::Compare);
        QVERIFY2(!error, error ? qPrintable(error->text()) : "");
        QCOMPARE(bytesOf(m_target), bytes);
        struct stat found = {};
        QVERIFY(stat(qPrintable(m_target), &found) == 0);
        QCOMPARE(found.st_mtim.tv_sec, times[1].tv_sec);
        QCOMPARE(found.st_mtim.tv_nsec, times[1].tv_nsec);
        QCOMPARE(found.st_mode & 0777U, 0444U);
    }

    void whatCannotBeCopied_data()
    {
        using Do = std::function<void(FileCopyTest&)>;
        QTest::addColumn<Do>("prepare");
        QTest::addColumn<Code>("code");
        const auto row = [](const char* what, Code code, Do prepare) { QTest::newRow(what) << prepare << code; };
        row("no source", Code::NoSuchFile, [](FileCopyTest& t) { QFile::remove(t.m_source); });
        row("a folder", Code::CannotRead, [](FileCopyTest& t) { t.m_source = t.m_card->folder(u"folder"_s); });
        row("a pipe", Code::CannotRead, [](FileCopyTest& t) {
            t.m_source = t.m_card->path(u"pipe"_s);
            QVERIFY(mkfifo(qPrintable(t.m_source), 0600) == 0);
        });
        row("there already", Code::Exists, [](FileCopyTest& t) { t.m_card->file(u"target/copy"_s, "mine"); });
        row("a link there", Code::Exists, [](FileCopyTest& t) { t.m_card->link(u"target/copy"_s, "nowhere"); });
        row("no folder", Code::CannotWrite, [](FileCopyTest& t) { t.m_target = t.m_card->path(u"no/copy"_s); });
        row("full", Code::CannotWrite, [](FileCopyTest& t) { t.m_device.room = 2'000'000; });
        row("shrinks", Code::Changed,
            [](FileCopyTest& t) { t.m_device.meddle = [&t] { QFile::resize(t.m_source, 1'500'000); }; });
        row("grows", Code::Changed,
            [](FileCopyTest& t) { t.m_device.meddle = [&t] { QVERIFY(QFile::resize(t.m_source, 4'000'000)); }; });
        const auto fails = [&row](const char* what, Step step) {
            row(what, Code::CannotWrite, [step](FileCopyTest& t) { t.m_device.failsFrom[step] = 1; });
        };
        fails("doesn't reach the disk", Step::Sync);
        fails("can't be closed", Step::Close);
        fails("can't be named", Step::RenameToNew);
        row("reads back otherwise", Code::Differs, [](FileCopyTest& t) { t.m_device.spoilsWriting = true; });
        row("appears meanwhile", Code::Exists,
            [](FileCopyTest& t) { t.m_device.meddle = [&t] { t.m_card->file(u"target/copy"_s, "mine"); }; });
    }
    void whatCannotBeCopied()
    {
        QFETCH(std::function<void(FileCopyTest&)>, prepare);
        QFETCH(FileError::Code, code);
        m_device = MeddledDevice();
        prepare(*this);
        const size_t before = files::names(m_card->path(u"target"_s)).size();
        const bool appears = static_cast<bool>(m_device.meddle) && code == Code::Exists;
        const auto error = copyFile(m_source, m_target, m_device, ReadBack::Compare);
        QVERIFY(error);
        QVERIFY2(error->code == code, qPrintable(error->text()));
        QCOMPARE(files::names(m_card->path(u"target"_s)).size(), before + (appears ? 1 : 0));
        if (before > 0 || appears)
            QVERIFY(bytesOf(m_target) != manyBytes());
    }

    void aCopyUnderWayIsHidden()
    {
        std::vector<QString> names;
        m_device = MeddledDevice();
        m_device.meddle = [&] { names = files::names(m_card->path(u"target"_s)); };
        QVERIFY(!copyFile(m_source, m_target, m_device));
        QVERIFY(names.size() == 1 && names[0].startsWith(u'.'));
        QCOMPARE(files::names(m_card->path(u"target"_s)), std::vector{u"copy"_s});
    }

    void foldersAreOnlyMadeWhereTheirRootIs()
    {
        QStringList made;
        QVERIFY(!makeFolders(m_card->root(), u"target/a/b"_s, &made));
        QVERIFY(!makeFolders(m_card->root(), u"target/a/b"_s, &made));
        QCOMPARE(made, (QStringList{m_card->path(u"target/a"_s), m_card->path(u"target/a/b"_s)}));
        QVERIFY(files::isFolder(made.last()));
        QVERIFY(makeFolders(m_card->path(u"pulled"_s), u"a"_s));
        QVERIFY(!files::exists(m_card->path(u"pulled"_s)));
        QVERIFY(makeFolders(m_card->root(), u"source/a"_s));
        m_card->link(u"target/link"_s, files::nativePath(m_card->path(u"target/a"_s)));
        QVERIFY(makeFolders(m_card->root(), u"target/link/c"_s));
        QVERIFY(!files::exists(m_card->path(u"target/a/c"_s)));
    }

private:
    std::unique_ptr<CardBuilder> m_card;
    QString m_source;
    QString m_target;
    MeddledDevice m_device;
};

QTEST_GUILESS_MAIN(FileCopyTest)
#include "FileCopyTest.moc"
