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

    MeddledDevice() { copiesRanges = false; }
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
        QTest::addColumn<bool>("copiesRanges");
        for (const bool ranges : {true, false}) {
            const char* how = ranges ? "in ranges" : "by buffer";
            QTest::addRow("empty, %s", how) << QByteArray("") << ranges;
            QTest::addRow("a buffer, %s", how) << manyBytes().first(1 << 20) << ranges;
            QTest::addRow("many, %s", how) << manyBytes() << ranges;
        }
    }
    void theCopyIsTheSame()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, copiesRanges);
        m_source = m_card->file(u"source"_s, bytes);
        const struct timespec times[] = {{1'700'000'000, 1}, {1'749'902'400, 123'456'789}};
        QVERIFY(utimensat(AT_FDCWD, qPrintable(m_source), times, 0) == 0 && chmod(qPrintable(m_source), 0444) == 0);
        FailingDevice device;
        device.copiesRanges = copiesRanges;
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

    void foldersAreOnlyMadeWhereTheirRootIs()
    {
        QVERIFY(!makeFolders(m_card->root(), u"target/a/b"_s));
        QVERIFY(!makeFolders(m_card->root(), u"target/a/b"_s));
        QVERIFY(files::isFolder(m_card->path(u"target/a/b"_s)));
        QVERIFY(makeFolders(m_card->path(u"pulled"_s), u"a"_s));
        QVERIFY(!files::exists(m_card->path(u"pulled"_s)));
        QVERIFY(makeFolders(m_card->root(), u"source/a"_s));
    }

private:
    std::unique_ptr<CardBuilder> m_card;
    QString m_source;
    QString m_target;
    MeddledDevice m_device;
};

QTEST_GUILESS_MAIN(FileCopyTest)
#include "FileCopyTest.moc"
