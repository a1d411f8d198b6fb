#include "export/DCFAsyncBackUp.h"

#include "app/ProgramRun.h"
#include "export/BackUpOptions.h"
#include "media/DCFInfo.h"
#include "media/MediaLibrary.h"
#include "media/PictureInfo.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/files/Files.h"
#include "support/CardBuilder.h"
#include "support/FailingDevice.h"
#include "support/TestHome.h"
#include "support/Waiting.h"
#include "telemetry/NMEAData.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

using Code = FileError::Code;
using Contents = QMap<QString, QByteArray>;

/// Every file below a folder with its bytes, and the folders.
Contents contentsOf(const QString& root)
{
    Contents result;
    files::walk(root, [&](const QString& path, bool isFolder) {
        const std::unique_ptr<QFile> file = isFolder ? nullptr : files::openForReading(files::join(root, path));
        result.insert(path, file ? file->readAll() : QByteArray("(folder)"));
    });
    return result;
}

const QStringList layout =
    u"EVENT MANUAL NORMAL PARKING PICTURE REAR REAR/EVENT REAR/MANUAL REAR/NORMAL REAR/PARKING REAR/PICTURE SYSTEM "
    "SYSTEM/NMEA SYSTEM/NMEA/EVENT SYSTEM/NMEA/MANUAL SYSTEM/NMEA/NORMAL SYSTEM/NMEA/PARKING"_s.split(u' ');

Contents filesOf(const QString& root)
{
    Contents result = contentsOf(root);
    result.removeIf([](const auto& entry) { return entry.value() == "(folder)"; });
    return result;
}

/// What a whole backup of a card holds.
Contents withLayout(Contents contents)
{
    for (const QString& folder : layout)
        contents.insert(folder, "(folder)");
    return contents;
}

} // namespace

class DCFAsyncBackUpTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<CardBuilder>();
        m_disk = std::make_unique<CardBuilder>(u"disk"_s);
        m_disk->folder(u"of the user"_s);
        m_diskBefore = contentsOf(m_disk->root());
        m_target = m_disk->path(u"2025年 it's $HOME!\n/backup"_s);
        const Instant taken = utc(2025, 6, 14, 12, 0, 20, 123);
        m_card->file(u"NORMAL/20250614120000.MP4"_s, QByteArray(5000, 'f'), taken);
        m_card->file(u"NORMAL/20250614120000.NMEA"_s, sideFile(utc(2025, 6, 14, 12, 0), 20));
        m_card->file(u"REAR/NORMAL/20250614120000.MP4"_s, QByteArray(4000, 'r'), taken);
        m_card->file(u"EVENT/20250614120100.MP4"_s, QByteArray(3000, 'e'), taken);
        const QString stray = files::fromNativePath("PARKING/it's \xFF.MP4");
        m_card->file(stray, QByteArray(2000, 'p'), taken);
        m_card->picture(u"PICTURE/20250614120010.JPG"_s, taken);
        m_card->file(u"REAR/PICTURE/20250614120010.JPG"_s, "rear");
        m_items = {std::make_shared<PictureInfo>(m_card->root(), u"PICTURE/20250614120010.JPG"_s),
                   record(u"NORMAL/20250614120000.MP4"_s), record(u"EVENT/20250614120100.MP4"_s), record(stray)};
        m_before = contentsOf(m_card->root());
        m_device = {};
        m_told.clear();
        m_atTold = {};
        m_finished = 0;
        m_error.reset();
    }

    void cleanup()
    {
        InterfaceThread::open();
        WAIT_FOR(poolIsIdle());
    }

    void theCardIsRebuilt()
    {
        m_items.insert(m_items.begin() + 1, BackUpItem()); // neither recording nor picture
        const auto backUp = start(m_target);
        WAIT_FOR(m_finished == 1);
        QVERIFY2(!m_error, m_error ? qPrintable(m_error->text()) : "");
        QCOMPARE(contentsOf(m_target), withLayout(m_before));
        QCOMPARE(contentsOf(m_card->root()), m_before);
        for (const QString& delta : {u"NORMAL/20250614120000.MP4"_s, u"PICTURE/20250614120010.JPG"_s})
            QCOMPARE(files::status(files::join(m_target, delta)).modified, files::status(m_card->path(delta)).modified);
        QCOMPARE(m_told.first(8).join(u','),
                 u"start 0 20250614120010.JPG,end 0.2 20250614120010.JPG,start 0.2 ,end 0.4 ,"
                 "start 0.4 20250614120000.MP4,end 0.6 20250614120000.MP4,"
                 "start 0.6 20250614120100.MP4,end 0.8 20250614120100.MP4"_s);
        m_told.clear();
        backUp->backUpAsync(m_items, m_target, {}, {}, {}); // an object does one backup
        WAIT_FOR(poolIsIdle());
        QVERIFY(m_told.isEmpty() && m_finished == 1);
        const auto second = start(m_target);
        WAIT_FOR(m_finished == 2);
        QVERIFY(m_error && m_error->code == Code::Exists);
        QVERIFY(m_told.size() == 1 && !files::exists(m_target));
    }

    void aBackUpOpensLikeItsCard()
    {
        QTemporaryDir folder;
        const QString card = folder.filePath(u"card"_s);
        QCOMPARE(QProcess::execute(qEnvironmentVariable("CARDREEL_SAMPLE_CARD_TOOL"),
                                   {u"--recordings"_s, u"8"_s, u"--seconds"_s, u"1"_s, u"--size"_s, u"160x90"_s,
                                    u"--pictures"_s, u"4"_s, card}),
                 0);
        MediaLibrary library;
        QVERIFY(library.mediaTreeSyncAtRootPath(card));
        m_items = selectedObjectsForOptionState({true, false, false}, library.mediaTree(), library.mediaTree());
        const auto backUp = start(m_target);
        WAIT_FOR(m_finished == 1);
        QVERIFY(!m_error);
        // A side file is looked for beside its video first; that is where a backup has it.
        static const QRegularExpression sideFile(u"\"infoFilePath\":\"[^\"]*\""_s);
        const auto listed = [&folder](const QString& root) {
            const QByteArray json = runProgram(folder.path(), {u"list"_s, u"--json"_s, root}).out;
            return QString::fromUtf8(json).replace(root, u"ROOT"_s).remove(sideFile);
        };
        // A line feed in the path would be written otherwise in JSON.
        const QString plain = folder.filePath(u"copy"_s);
        QVERIFY(QDir().rename(m_target, plain));
        const QString expected = listed(card);
        QVERIFY(expected.count(u"ROOT"_s) >= 12);
        QCOMPARE(listed(plain), expected);
        // Side files of every kind get the same name.
        for (const std::shared_ptr<DCFInfo>& recording : library.mediaTree())
            QCOMPARE(fixesOf(DCFInfo(plain, recording->deltaPath)), fixesOf(*recording));
        const auto isCed = [](const auto& recording) {
            return recording->infoFilePath.endsWith(u".CED"_s) && fixesOf(*recording) > 0;
        };
        QVERIFY(std::any_of(library.mediaTree().begin(), library.mediaTree().end(), isCed));
    }

    void missingFiles_data()
    {
        QTest::addColumn<QStringList>("missing");
        QTest::addColumn<QStringList>("leftOut"); // none in a backup that fails
        QTest::addColumn<bool>("fails");
        const QString video = u"NORMAL/20250614120000.MP4"_s;
        const QString side = u"NORMAL/20250614120000.NMEA"_s;
        const QString picture = u"PICTURE/20250614120010.JPG"_s;
        QTest::newRow("side file") << QStringList{side} << QStringList() << false;
        QTest::newRow("rear files") << QStringList{u"REAR/"_s + video, u"REAR/"_s + picture} << QStringList() << false;
        QTest::newRow("front files") << QStringList{video, picture} << QStringList{picture, video} << false;
        QTest::newRow("the whole recording")
            << QStringList{video, u"REAR/"_s + video, side} << QStringList{video} << false;
        QTest::newRow("picture without a rear one") << QStringList{picture, u"alone"_s} << QStringList() << true;
    }

    void missingFiles()
    {
        QFETCH(QStringList, missing);
        if (missing.removeAll(u"alone"_s) > 0) {
            QFile::remove(m_card->path(u"REAR/PICTURE/20250614120010.JPG"_s));
            m_items[0] = std::make_shared<PictureInfo>(m_card->root(), u"PICTURE/20250614120010.JPG"_s);
        }
        for (const QString& delta : missing)
            QVERIFY(QFile::remove(m_card->path(delta)));
        const auto backUp = start(m_target);
        WAIT_FOR(m_finished == 1);
        QTEST(m_error.has_value(), "fails");
        QTEST(QStringList(backUp->leftOut()).replaceInStrings(m_card->path({}), QString()), "leftOut");
        QCOMPARE(backUp->leftOutText().isEmpty(), backUp->leftOut().isEmpty());
        if (m_error)
            QVERIFY(m_error->code == Code::NoSuchFile && !files::exists(m_target));
        else
            QCOMPARE(contentsOf(m_target), withLayout(contentsOf(m_card->root())));
        // One by one they come to the same.
        const QString single = m_disk->folder(u"single"_s);
        const auto& picture = *std::get<std::shared_ptr<PictureInfo>>(m_items[0]);
        QTEST(backUp->backUpPictureInfo(picture, single).has_value(), "fails");
        for (size_t i = 1; i < m_items.size(); ++i)
            QVERIFY(!backUp->backUpInfo(*std::get<std::shared_ptr<DCFInfo>>(m_items[i]), single));
        QCOMPARE(filesOf(single), filesOf(m_card->root()));
    }

    void theCommandTellsWhatIsLeftOut()
    {
        CardBuilder card;
        card.file(u"NORMAL/250614120000.MP4"_s);
        card.link(u"NORMAL/250614120100.MP4"_s, "nowhere");
        const ProgramRun run = runProgram(m_disk->root(), {u"backup"_s, card.root(), u"new"_s});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.startsWith("cardreel: new: ") && run.err.count('\n') == 1, run.err.constData());
        QCOMPARE(filesOf(m_disk->path(u"new"_s)), (Contents{{u"NORMAL/250614120000.MP4"_s, "x"}}));
    }

    void aFailureRemovesTheTarget_data()
    {
        QTest::addColumn<int>("room");
        QTest::addColumn<bool>("throughLink");
        for (const int room : {0, 1, 700, 6000, 9999, 13000})
            QTest::addRow("%d bytes", room) << room << false;
        QTest::newRow("in the place a link leads to") << 6000 << true;
        QTest::newRow("when all is written") << -1 << false;
    }

    void aFailureRemovesTheTarget()
    {
        QFETCH(int, room);
        QFETCH(bool, throughLink);
        if (room >= 0)
            m_device.room = static_cast<size_t>(room);
        m_device.failsFrom[FailingDevice::Step::SyncDisk] = 1;
        if (throughLink) {
            m_target = m_disk->path(u"of the user"_s);
            m_diskBefore.clear();
        }
        const auto backUp = start(throughLink ? m_disk->link(u"../link"_s, files::nativePath(m_target)) : m_target);
        WAIT_FOR(m_finished == 1);
        QVERIFY(m_error && m_error->code == Code::CannotWrite);
        QVERIFY(backUp->error && backUp->error->path == m_error->path);
        QCOMPARE(contentsOf(m_disk->root()), m_diskBefore);
        QCOMPARE(contentsOf(m_card->root()), m_before);
        QVERIFY(m_told.last().startsWith(room < 0 ? u"end 1"_s : u"start"_s));
    }

    void whatCameIntoAFolderAboveStays()
    {
        m_device.room = 0;
        QString theirs;
        m_atTold = [&] { theirs = m_disk->file(files::folderOf(m_target).mid(m_disk->root().size() + 1) + u"/a"_s); };
        const auto backUp = start(m_target);
        WAIT_FOR(m_finished == 1);
        QVERIFY(m_error && !files::exists(m_target) && files::exists(theirs));
    }

    void aFolderInUseIsRefused()
    {
        std::shared_ptr<DCFAsyncBackUp> second;
        m_atTold = [&] {
            if (m_told.size() > 1)
                return;
            second = std::make_shared<DCFAsyncBackUp>();
            second->backUpAsync(m_items, files::join(m_target, u"NORMAL/deeper"_s), {}, {},
                                [this](const std::optional<FileError>& error) {
                                    QVERIFY(error && error->code == Code::Overlaps);
                                    ++m_finished;
                                });
        };
        const auto first = start(m_target);
        WAIT_FOR(m_finished == 2);
        QVERIFY(!first->error);
        QCOMPARE(contentsOf(m_target), withLayout(m_before));
    }

    void placesThatAreRefused_data()
    {
        QTest::addColumn<QString>("place"); // added to the card's path
        QTest::addColumn<bool>("overlaps");
        QTest::newRow("in the card, by a link") << u"/../link/backup"_s << true;
        QTest::newRow("in a folder of the card") << u"/NORMAL/new/deep"_s << true;
        QTest::newRow("around the card") << u"/.."_s << true;
        QTest::newRow("beside the card, under a file") << u"/../file/backup"_s << false;
    }

    void placesThatAreRefused()
    {
        QFETCH(QString, place);
        QFETCH(bool, overlaps);
        const QString beside = m_card->file(u"../file"_s);
        m_card->link(u"../link"_s, files::nativePath(m_card->root()));
        const auto backUp = start(m_card->root() + place);
        WAIT_FOR(m_finished == 1);
        QVERIFY(m_error && m_error->code == (overlaps ? Code::Overlaps : Code::CannotWrite));
        QVERIFY(contentsOf(m_card->root()) == m_before && files::exists(beside));
    }

    void cancelledAtEveryItem_data()
    {
        QTest::addColumn<int>("after");
        QTest::addColumn<bool>("drops");
        for (int after = 0; after <= 8; ++after) {
            QTest::addRow("after %d reports", after) << after << false;
            QTest::addRow("dropped after %d reports", after) << after << true;
        }
    }

    void cancelledAtEveryItem()
    {
        QFETCH(int, after);
        QFETCH(bool, drops);
        std::shared_ptr<DCFAsyncBackUp> backUp;
        m_atTold = [&] {
            if (m_told.size() != after)
                return;
            backUp->cancelFlag = !drops;
            if (drops)
                backUp.reset();
        };
        backUp = start(m_target);
        m_atTold();
        WAIT_FOR(poolIsIdle());
        QVERIFY(m_told.size() == after && m_finished == 0);
        QCOMPARE(contentsOf(m_disk->root()), m_diskBefore);
        QCOMPARE(contentsOf(m_card->root()), m_before);
    }

    void aCardThatIsPulled()
    {
        const QString former = m_card->root();
        m_atTold = [&] {
            if (m_told.size() == 3)
                m_card->mountAgainAs(u"elsewhere"_s);
        };
        const auto backUp = start(m_target);
        WAIT_FOR(m_finished == 1);
        QVERIFY(m_error && m_error->code == Code::CannotRead && !files::exists(m_target));
        QCOMPARE(m_error->path, former);
    }

    void theClosingApplicationCancelsIt()
    {
        const auto backUp = start(m_target);
        InterfaceThread::close();
        QVERIFY(BackgroundQueue::waitForDone(30'000)); // without any event being handled
        QVERIFY(m_told.isEmpty() && m_finished == 0 && !files::exists(m_target));
    }

private:
    std::shared_ptr<DCFInfo> record(const QString& delta) { return std::make_shared<DCFInfo>(m_card->root(), delta); }

    /// Notes in the test what the job tells.
    std::shared_ptr<DCFAsyncBackUp> start(const QString& target)
    {
        auto backUp = std::make_shared<DCFAsyncBackUp>(ReadBack::Compare, &m_device);
        const auto note = [this](const char* what) {
            return [this, what](float fraction, const QString& path) {
                QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
                m_told += u"%1 %2 %3"_s.arg(QLatin1StringView(what)).arg(double(fraction)).arg(files::nameOf(path));
                if (m_atTold)
                    m_atTold();
            };
        };
        backUp->backUpAsync(m_items, target, note("start"), note("end"), [this](const std::optional<FileError>& error) {
            QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
            ++m_finished;
            m_error = error;
        });
        return backUp;
    }

    static size_t fixesOf(const DCFInfo& recording)
    {
        recording.nmea->setup();
        return recording.nmea->snapshot()->varidLocations().size();
    }

    static bool poolIsIdle() { return BackgroundQueue::waitForDone(0); }

    TestHome m_home;
    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<CardBuilder> m_disk;
    QString m_target;
    BackUpList m_items; // four: a picture, a recording of everything, one of a video only, one with a stray name
    Contents m_before;
    Contents m_diskBefore;
    FailingDevice m_device;
    QStringList m_told;
    std::function<void()> m_atTold;
    int m_finished = 0;
    std::optional<FileError> m_error;
};

QTEST_GUILESS_MAIN(DCFAsyncBackUpTest)
#include "DCFAsyncBackUpTest.moc"
