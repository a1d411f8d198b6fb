#include "settings/SettingStore.h"

#include "platform/files/Files.h"
#include "settings/SettingRecords.h"
#include "support/CardBuilder.h"

#include <QFile>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <unistd.h>
#include <utility>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

const QString bin = u"SYSTEM/settings.bin"_s;
const QString old = u"SYSTEM/settings.old"_s;

QStringList namesIn(const QString& folder)
{
    QStringList result;
    for (const QString& name : files::names(folder))
        result += name;
    result.sort();
    return result;
}

void changeMode(const QString& path, mode_t mode)
{
    QVERIFY(chmod(files::nativePath(path).constData(), mode) == 0);
}

void makePipe(CardBuilder& card)
{
    card.folder(u"SYSTEM"_s);
    QVERIFY(mkfifo(files::nativePath(card.path(bin)).constData(), 0600) == 0);
}

/// The system's steps, one of which fails: everything before it is really done.
class FailingSteps : public FileSteps
{
public:
    QString failing;
    int reason = ENOSPC;
    QStringList done;

    int create(const QByteArray& path) override { return fails(u"create"_s) ? -1 : FileSteps::create(path); }
    ssize_t write(int file, const char* bytes, size_t count) override
    {
        // In two pieces with an interruption between, as a slow card may do it.
        ++m_writes;
        if (m_writes == 2) {
            errno = EINTR;
            return -1;
        }
        if (m_writes > 2 && fails(u"write"_s))
            return reason == 0 ? 0 : -1;
        return FileSteps::write(file, bytes, m_writes == 1 ? count / 2 : count);
    }
    int sync(int file) override { return fails(u"sync"_s) ? -1 : FileSteps::sync(file); }
    int close(int file) override
    {
        const int result = FileSteps::close(file);
        return fails(u"close"_s) ? -1 : result;
    }
    int rename(const QByteArray& from, const QByteArray& to) override
    {
        return fails(u"rename"_s) ? -1 : FileSteps::rename(from, to);
    }
    int remove(const QByteArray& path) override { return fails(u"remove"_s) ? -1 : FileSteps::remove(path); }
    int syncFolder(const QByteArray& path) override
    {
        return fails(u"syncFolder"_s) ? -1 : FileSteps::syncFolder(path);
    }

private:
    bool fails(const QString& step)
    {
        done += step;
        errno = reason;
        return step == failing;
    }

    int m_writes = 0;
};

} // namespace

class SettingStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cardIsLoaded_data()
    {
        QTest::addColumn<QByteArray>("binBytes"); // empty: no file; "folder", "pipe"
        QTest::addColumn<QByteArray>("oldBytes");
        QTest::addColumn<QString>("source");
        QTest::addColumn<int>("model"); // -1: fails
        const QByteArray first = fileOf(numberedRecord(0x0D00));
        const QByteArray second = fileOf(numberedRecord(0x0E00));
        const auto row = [](const char* what, const QByteArray& b, const QByteArray& o, const QString& source,
                            int model) { QTest::newRow(what) << b << o << source << model; };
        row("no file", {}, {}, {}, -1);
        row("a folder", "folder", {}, bin, -1);
        row("a pipe", "pipe", {}, bin, -1);
        row("too short", first.chopped(1), {}, bin, -1);
        row("larger than any", second + QByteArray(65537 - second.size(), 'x'), {}, bin, -1);
        row("a broken backup comes first, too", first, second.chopped(1), old, -1);
        row("a folder as backup comes first, too", first, "folder", old, -1);
        row("as large as may be", second + QByteArray(65536 - second.size(), 'x'), {}, bin, 0x0E00);
        row("ordinary", first, {}, bin, 0x0D00);
        row("backup only", {}, second, old, 0x0E00);
        row("backup before the other", first, second, old, 0x0E00);
        row("backup before what can't be read", "folder", second, old, 0x0E00);
    }

    void cardIsLoaded()
    {
        QFETCH(QByteArray, binBytes);
        QFETCH(QByteArray, oldBytes);
        QFETCH(QString, source);
        QFETCH(int, model);
        CardBuilder card;
        card.folder(u"SYSTEM"_s);
        const auto make = [&card](const QString& delta, const QByteArray& bytes) {
            if (bytes == "folder")
                card.folder(delta);
            else if (bytes == "pipe")
                makePipe(card);
            else if (!bytes.isEmpty())
                card.file(delta, bytes);
        };
        make(bin, binBytes);
        make(old, oldBytes);
        const SettingLoad load = SettingStore::load(card.root());
        QCOMPARE(load.info ? load.info->modelID : -1, model);
        QCOMPARE(load.source, source.isEmpty() ? QString() : card.path(source));
        QCOMPARE(load.error.isEmpty(), load.info.has_value());
        SettingFileInfo info;
        QCOMPARE(SettingStore::importUnitSettingInfo(info, card.root() + u'/'), model >= 0);
        QVERIFY(info == load.info.value_or(SettingFileInfo()));
    }

    void unreadableFileFails()
    {
        CardBuilder card;
        changeMode(card.file(bin, fileOf(numberedRecord(0x0D00))), 0);
        const OrdinaryPermissions ordinary;
        QVERIFY(!SettingStore::load(card.root()).info);
        QVERIFY(!SettingStore::load(card.path(u"nowhere"_s)).info);
    }

    void savingReplacesBoth()
    {
        CardBuilder card;
        const QString path = card.file(bin, "former");
        card.file(old, "backup");
        changeMode(path, 0640);
        FailingSteps steps;
        const SettingFileInfo info = numberedRecord(0x0E00);
        QVERIFY(!SettingStore::save(info, card.root(), {stillClock, &steps}));
        QCOMPARE(steps.done.join(u' '), u"create write sync close rename syncFolder remove syncFolder"_s);
        QCOMPARE(contentOf(path), fileOf(info));
        QCOMPARE(namesIn(card.path(u"SYSTEM"_s)), QStringList{u"settings.bin"_s});
        QVERIFY(QFile::permissions(path).testFlags(QFile::ReadOwner | QFile::ReadGroup));
        QVERIFY(!QFile::permissions(path).testFlag(QFile::ReadOther));
    }

    void failedStepLeavesTheOldOrTheNew_data()
    {
        QTest::addColumn<int>("reason");
        QTest::addColumn<bool>("isNew");
        QTest::newRow("create") << int(EROFS) << false;
        QTest::newRow("write") << int(ENOSPC) << false;
        QTest::newRow("write ") << 0 << false; // takes nothing any more
        QTest::newRow("sync") << int(EIO) << false;
        QTest::newRow("close") << int(ENOSPC) << false;
        QTest::newRow("rename") << int(EIO) << false;
        QTest::newRow("syncFolder") << int(EIO) << true;
    }

    void failedStepLeavesTheOldOrTheNew()
    {
        QFETCH(int, reason);
        QFETCH(bool, isNew);
        CardBuilder card;
        card.file(bin, "former");
        card.file(old, "backup");
        FailingSteps steps;
        steps.failing = QString::fromLatin1(QTest::currentDataTag()).trimmed();
        steps.reason = reason;
        const SettingFileInfo info = numberedRecord(0x0E00);
        QVERIFY(SettingStore::save(info, card.root(), {stillClock, &steps}).has_value());
        QCOMPARE(contentOf(card.path(bin)), isNew ? fileOf(info) : "former"_ba);
        QCOMPARE(namesIn(card.path(u"SYSTEM"_s)), (QStringList{u"settings.bin"_s, u"settings.old"_s}));
    }

    void fullCardKeepsTheOld()
    {
        CardBuilder card;
        card.file(bin, "former");
        rlimit former{};
        getrlimit(RLIMIT_FSIZE, &former);
        const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{1000, former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        const bool isWritten = SettingStore::exportUnitSettingInfo(numberedRecord(0x0E00), card.root());
        setrlimit(RLIMIT_FSIZE, &former);
        std::signal(SIGXFSZ, formerHandler);
        QVERIFY(!isWritten);
        QCOMPARE(contentOf(card.path(bin)), "former"_ba);
        QCOMPARE(namesIn(card.path(u"SYSTEM"_s)), QStringList{u"settings.bin"_s});
    }

    void oddPlaceIsRefused_data()
    {
        QTest::addColumn<std::function<void(CardBuilder&)>>("prepare");
        const auto row = [](const char* what, const std::function<void(CardBuilder&)>& prepare) {
            QTest::newRow(what) << prepare;
        };
        row("card is gone", [](CardBuilder& card) { rmdir(files::nativePath(card.root()).constData()); });
        row("no folder SYSTEM", [](CardBuilder&) {});
        row("SYSTEM is a file", [](CardBuilder& card) { card.file(u"SYSTEM"_s); });
        row("SYSTEM leads out of the card", [](CardBuilder& card) {
            card.folder(u"../outside"_s);
            card.link(u"SYSTEM"_s, "../outside");
        });
        row("a link out of the card", [](CardBuilder& card) {
            card.file(u"../outside"_s);
            card.link(bin, "../../outside");
        });
        row("a folder", [](CardBuilder& card) { card.folder(bin); });
        row("a link to nowhere", [](CardBuilder& card) { card.link(bin, "nowhere"); });
        row("a pipe", makePipe);
        row("locked", [](CardBuilder& card) { changeMode(card.file(bin), 0444); });
    }

    void oddPlaceIsRefused()
    {
        QFETCH(std::function<void(CardBuilder&)>, prepare);
        CardBuilder card;
        prepare(card);
        const QStringList before = namesIn(card.path(u"SYSTEM"_s));
        const SettingCardState state = SettingStore::state(card.root());
        FailingSteps steps;
        QVERIFY(SettingStore::save(numberedRecord(0x0D00), card.root(), {stillClock, &steps}).has_value());
        QVERIFY(std::count(steps.done.begin(), steps.done.end(), u"rename"_s) == 0);
        QCOMPARE(namesIn(card.path(u"SYSTEM"_s)), before);
        QVERIFY(SettingStore::state(card.root()) == state);
    }

    void linkStays()
    {
        CardBuilder card;
        const QString real = card.file(u"kept/here.bin"_s, "former");
        card.link(bin, "../kept/here.bin");
        QVERIFY(SettingStore::exportUnitSettingInfo(numberedRecord(0x0D00), card.root()));
        QCOMPARE(files::status(real).size, 256U);
        QVERIFY(QFile::symLinkTarget(card.path(bin)).endsWith(u"kept/here.bin"));
        QCOMPARE(namesIn(card.path(u"kept"_s)), QStringList{u"here.bin"_s});
        QVERIFY(SettingStore::load(card.root()).info.has_value());
    }

    void backupThatStaysIsNoFailure()
    {
        CardBuilder card;
        card.folder(old);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"settings\\.old: Is a directory$"_s));
        QVERIFY(SettingStore::exportUnitSettingInfo(numberedRecord(0x0D00), card.root()));
        QVERIFY(files::isFolder(card.path(old)));
    }

    void stateTellsChanges()
    {
        CardBuilder card;
        card.file(bin, "bytes");
        SettingCardState before = SettingStore::state(card.root());
        const auto isSame = [&] {
            return SettingStore::state(card.root()) == std::exchange(before, SettingStore::state(card.root()));
        };
        QVERIFY(isSame());
        card.file(bin, "bytes", utc(2026, 1, 1, 0, 0)); // another time, nothing else
        QVERIFY(isSame());
        card.file(bin, "bytEs", utc(2026, 1, 1, 0, 0)); // same size and time
        QVERIFY(!isSame());
        card.file(old, "backup");
        QVERIFY(!isSame());
        QFile::remove(card.path(bin));
        QVERIFY(!isSame());
        card.folder(bin);
        QVERIFY(!isSame());
        QVERIFY(isSame());
    }
};

QTEST_GUILESS_MAIN(SettingStoreTest)
#include "SettingStoreTest.moc"
