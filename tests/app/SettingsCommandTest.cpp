#include "app/ProgramRun.h"
#include "platform/files/Files.h"
#include "settings/SettingRecords.h"
#include "settings/SettingStore.h"
#include "support/CardBuilder.h"
#include "support/TestHome.h"

#include <QJsonArray>
#include <QTest>

#include <sys/stat.h>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

using Result = ProgramRun;

Result run(const QString& card, const QStringList& arguments)
{
    return runProgram(files::folderOf(card), QStringList{u"settings"_s, card} + arguments);
}

SettingFileInfo sampleInfo(quint16 modelID = SettingModel::model0E00)
{
    SettingFileInfo info;
    info.modelID = modelID;
    info.recordingTime = 1;
    info.overwriteSaveEvent = 1;
    info.sensitivityMovie = 4;
    info.audioRecording = 9; // no such choice
    info.notificationVolume = 5;
    info.passwordReset = 1;
    info.version = u"1.23"_s;
    info.reserve = QByteArray(124, 'r');
    info.diagnostic = QByteArray(modelID == SettingModel::model0D00 ? 96 : 2048, 'd');
    return info;
}

class Card : public CardBuilder
{
public:
    explicit Card(const SettingFileInfo& info = sampleInfo()) { file(u"SYSTEM/settings.bin"_s, fileOf(info)); }

    QByteArray bin() const { return contentOf(SettingStore::binPath(root())); }
    SettingFileInfo info() const { return SettingStore::load(root()).info.value_or(SettingFileInfo()); }
};

} // namespace

class SettingsCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWithoutWriting_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("named"); // what the line must tell
        const auto row = [](const char* what, const QStringList& arguments, const QByteArray& named) {
            QTest::newRow(what) << arguments << named;
        };
        row("nothing to set", {u"--set"_s}, "--set");
        row("no value", {u"--set"_s, u"videoQuality"_s}, "--set");
        row("unknown option", {u"--all"_s}, "--all");
        row("two cards", {u"--set"_s, u"videoQuality=1"_s, u"./a=b"_s}, "CARD");
        row("unknown name", {u"--set"_s, u"videoQualty=1"_s}, "videoQualty");
        row("the record's name", {u"--set"_s, u"recordingTime=1"_s}, "recordingTime");
        row("the version", {u"--set"_s, u"version=9.99"_s}, "version");
        row("empty value", {u"--set"_s, u"videoQuality="_s}, "videoQuality");
        row("too large", {u"--set"_s, u"videoQuality=2"_s}, "videoQuality takes 0 to 1");
        row("negative", {u"--set"_s, u"sensitivityMovie=-1"_s}, "sensitivityMovie takes 0 to 4");
        row("too large for a byte", {u"--set"_s, u"notificationVolume=256"_s}, "notificationVolume takes 0 to 5");
        row("no number", {u"--set"_s, u"overwriteSaveEvent=perhaps"_s}, "overwriteSaveEvent takes 0 to 1");
        row("one good, one bad", {u"--set"_s, u"videoQuality=1"_s, u"timeZone=38"_s}, "timeZone takes 0 to 37");
        row("with a reset", {u"--reset"_s, u"--set"_s, u"bogus=1"_s}, "bogus");
        row("nothing to try", {u"--dry-run"_s}, "--dry-run");
    }
    void refusesWithoutWriting()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, named);
        const Card card;
        const QByteArray before = card.bin();
        const Result result = run(card.root(), arguments);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.out, QByteArray());
        QVERIFY2(result.err.contains(named) && result.err.count('\n') == 1, result.err.constData());
        QCOMPARE(card.bin(), before);
    }

    void printsTheRecord()
    {
        const Card card;
        const QJsonObject json = run(card.root(), {u"--json"_s}).json();
        QCOMPARE(json[u"source"], QJsonValue(card.path(u"SYSTEM/settings.bin"_s)));
        QCOMPARE(json[u"diagnostic"], QJsonValue(QString::fromLatin1(QByteArray(2048, 'd').toHex())));
        QCOMPARE(json[u"reserve"], QJsonValue(QString::fromLatin1(QByteArray(124, 'r').toHex())));
        QCOMPARE(json[u"headerID"], QJsonValue(0x53455444));
        QCOMPARE(json[u"creationDate"], QJsonValue(u"2020-07-19T10:05:41.000Z"_s));
        QCOMPARE(json[u"audioRecording"], QJsonValue(9));
        QCOMPARE(json[u"passwordReset"], QJsonValue(255));
        QCOMPARE(json[u"version"], QJsonValue(u"1.23"_s));
        const QJsonObject ofHead = run(Card(sampleInfo(0x0E01)).root(), {u"--json"_s}).json(); // an unknown model
        QVERIFY(ofHead[u"version"].isNull() && ofHead[u"diagnostic"].isNull() && ofHead[u"reserve"].isString());
        const QByteArray table = run(card.root(), {}).out;
        QVERIFY(table.contains("0x0e00") && table.contains("2020-07-19T10:05:41Z") &&
                table.contains(QByteArray(2048, 'd').toHex()) && table.contains("isPasswordReset"));
    }

    void edits_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("changes"); // name:before:after
        const auto row = [](const char* what, const QStringList& arguments, const QStringList& changes) {
            QTest::newRow(what) << arguments << changes;
        };
        row("nothing new", {u"--set"_s, u"sensitivityMovie=4"_s}, {});
        row("several", {u"--set"_s, u"videoQuality=1"_s, u"sensitivityMovie=0"_s},
            {u"sensitivityMovie:4:0"_s, u"videoQuality:0:1"_s});
        row("one after the other", {u"--set"_s, u"videoQuality=1"_s, u"--set"_s, u"videoQuality=0"_s}, {});
        row("switches", {u"--set"_s, u"overwriteSaveManual=on"_s, u"isPasswordReset=false"_s},
            {u"overwriteSaveManual:false:true"_s, u"isPasswordReset:true:false"_s});
        row("by its text", {u"--set"_s, u"audioRecording=off"_s}, {u"audioRecording:9:0"_s});
        const QString factory =
            u"overwriteSaveParking:false:true sensitivityParking:0:3 recordingStartTime:0:1 recordingEndTime:0:1 "
            "audioRecording:9:1 sensitivityMovie:4:3 overwriteSaveManual:false:true videoQuality:0:2 "
            "notificationVolume:5:2 isPasswordReset:true:false"_s;
        row("reset", {u"--reset"_s}, factory.split(u' '));
        row("set after the reset", {u"--set"_s, u"notificationVolume=5"_s, u"--reset"_s},
            QString(factory).remove(u"notificationVolume:5:2 "_s).split(u' '));
    }
    void edits()
    {
        QFETCH(QStringList, arguments);
        const Card card;
        const QByteArray before = card.bin();
        const Result tried = run(card.root(), arguments + QStringList{u"--json"_s, u"--dry-run"_s});
        QCOMPARE(tried.status, 0);
        QCOMPARE(card.bin(), before);
        const Result done = run(card.root(), arguments + QStringList{u"--json"_s});
        QCOMPARE(done.status, 0);
        QCOMPARE(done.err, QByteArray());
        QVERIFY(card.bin() != before); // its date, at least
        QCOMPARE(tried.json()[u"saved"], QJsonValue(false));
        QCOMPARE(done.json()[u"saved"], QJsonValue(true));
        QCOMPARE(done.json()[u"changes"], tried.json()[u"changes"]);
        QStringList changes;
        for (const auto& change : done.json()[u"changes"].toArray()) {
            QCOMPARE(change[u"reachesCard"], QJsonValue(true));
            changes += change[u"name"].toString() + u':' + change[u"before"].toVariant().toString() + u':' +
                       change[u"after"].toVariant().toString();
        }
        QTEST(changes, "changes");
        // And so it is on the card, with everything else as it was.
        QVERIFY(run(card.root(), arguments + QStringList{u"--json"_s, u"--dry-run"_s})
                    .json()[u"changes"]
                    .toArray()
                    .isEmpty());
        QCOMPARE(card.info().version, u"1.23"_s);
        QCOMPARE(card.info().reserve, QByteArray(124, 'r'));
        QCOMPARE(card.info().diagnostic, QByteArray(2048, 'd'));
    }

    void saysWhatTheCardDoesNotKeep()
    {
        const Card card;
        const Result result = run(card.root(), {u"--set"_s, u"timeZone=8"_s, u"videoQuality=1"_s, u"--json"_s});
        QCOMPARE(result.status, 0);
        QVERIFY(result.err.contains("timeZone") && result.err.count('\n') == 1);
        QCOMPARE(result.json()[u"changes"][1][u"name"], QJsonValue(u"timeZone"_s));
        QCOMPARE(result.json()[u"changes"][1][u"reachesCard"], QJsonValue(false));
        QCOMPARE(card.info().timeZone, qint16(0));
        QCOMPARE(card.info().videoQuality, quint8(1));
        const Result ofHead = run(Card(sampleInfo(0x0E01)).root(), {u"--set"_s, u"videoQuality=1"_s, u"--dry-run"_s});
        QVERIFY(ofHead.status == 0 && ofHead.err.contains("rest of the file") && ofHead.err.count('\n') == 1);
    }

    void takesTheBackup()
    {
        Card card;
        SettingFileInfo old = sampleInfo();
        old.videoQuality = 1;
        const QString path = card.file(u"SYSTEM/settings.old"_s, fileOf(old));
        QCOMPARE(run(card.root(), {u"--json"_s}).json()[u"source"], QJsonValue(path));
        const Result result = run(card.root(), {u"--set"_s, u"audioRecording=1"_s, u"--json"_s});
        QCOMPARE(result.json()[u"source"], QJsonValue(path));
        QCOMPARE(result.json()[u"target"], QJsonValue(SettingStore::binPath(card.root())));
        QVERIFY(!files::exists(path));
        QCOMPARE(card.info().videoQuality, quint8(1));
    }

    void failsWithOneLine_data()
    {
        QTest::addColumn<QByteArray>("bin"); // null: there is none
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char* what, const QByteArray& bin, const QStringList& arguments, int status,
                            const QByteArray& after) { QTest::newRow(what) << bin << arguments << status << after; };
        const QByteArray cut = fileOf(sampleInfo()).first(2303);
        const QStringList set = {u"--set"_s, u"videoQuality=1"_s};
        row("no file", {}, {}, 1, {});
        row("no file, JSON", {}, {u"--json"_s}, 1, {});
        row("no file to edit", {}, set, 1, {});
        row("cut short", cut, {}, 1, cut);
        row("cut short, to edit", cut, set, 1, cut);
        row("cut short, to try", cut, set + QStringList{u"--dry-run"_s}, 1, cut);
        row("cut short, to try to reset", cut, {u"--reset"_s, u"--dry-run"_s}, 0, cut);
        const QByteArray head = QByteArray::fromHex("53455444000000 2b0000 0001030101010301010202"); // no date
        row("cut short, reset", cut, {u"--reset"_s}, 0, head);
        row("no file, reset", {}, {u"--reset"_s}, 0, head);
        row("no file, reset and set", {}, {u"--reset"_s, u"--set"_s, u"videoQuality=1"_s}, 0,
            QByteArray(head).replace(head.size() - 2, 1, "\1"));
    }
    void failsWithOneLine()
    {
        QFETCH(QByteArray, bin);
        QFETCH(QStringList, arguments);
        CardBuilder card;
        card.folder(u"SYSTEM"_s);
        if (!bin.isNull())
            card.file(u"SYSTEM/settings.bin"_s, bin);
        const Result result = run(card.root(), arguments);
        QTEST(result.status, "status");
        QVERIFY2(result.err.startsWith("cardreel: ") && result.err.count('\n') == 1, result.err.constData());
        QVERIFY(result.err.contains(card.root().toUtf8()));
        QCOMPARE(result.out.isEmpty(), result.status != 0);
        QByteArray after = contentOf(SettingStore::binPath(card.root()));
        if (after.size() == 27)
            after.remove(7, 6); // the moment of writing
        QTEST(after, "after");
    }

    void failsToWrite()
    {
        for (const bool isReadable : {true, false}) {
            Card card;
            const QByteArray before = card.bin();
            if (!isReadable)
                QCOMPARE(chmod(SettingStore::binPath(card.root()).toUtf8(), 0), 0);
            QCOMPARE(chmod(card.folder(u"SYSTEM"_s).toUtf8(), 0555), 0);
            QStringList arguments = {u"--set"_s, u"videoQuality=1"_s};
            if (!isReadable)
                arguments += u"--reset"_s;
            const Result result = run(card.root(), arguments);
            QCOMPARE(result.status, 1);
            QCOMPARE(result.out, QByteArray());
            QVERIFY2(result.err.count('\n') == 1 && result.err.contains("SYSTEM/settings.bin: "),
                     result.err.constData());
            QCOMPARE(chmod(SettingStore::binPath(card.root()).toUtf8(), 0644), 0);
            QCOMPARE(card.bin(), before);
            QCOMPARE(chmod(card.folder(u"SYSTEM"_s).toUtf8(), 0755), 0);
        }
    }

private:
    TestHome m_home;
};

QTEST_GUILESS_MAIN(SettingsCommandTest)
#include "SettingsCommandTest.moc"
