#include "app/export/ProgressSheet.h"

#include "JobParts.h"
#include "media/DCFInfo.h"
#include "platform/files/Files.h"
#include "playback/MediaController.h"

#include <QLocale>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

/// The sheet of a real backup of three recordings.
class ProgressSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysHowItWent_data()
    {
        QTest::addColumn<QString>("gone");   // from the card meanwhile
        QTest::addColumn<QString>("folder"); // in its place
        QTest::addColumn<int>("shown");      // items of three
        QTest::addColumn<bool>("isMade");
        QTest::addColumn<bool>("isWhole");
        const QString second = u"NORMAL/200101120001.MP4"_s;
        QTest::newRow("whole") << QString() << QString() << 3 << true << true;
        QTest::newRow("a recording is gone") << second << QString() << 3 << true << false;
        QTest::newRow("the second fails") << second << second << 2 << false << false;
    }
    void saysHowItWent()
    {
        QFETCH(QString, gone);
        QFETCH(QString, folder);
        QFETCH(int, shown);
        QFETCH(bool, isMade);
        CardBuilder card;
        CardBuilder disk(u"disk"_s);
        for (int i = 0; i < 3; ++i)
            card.file(u"NORMAL/20010112000%1.MP4"_s.arg(i));
        MediaController controller;
        QVERIFY(controller.mediaTreeSyncAtRootPath(card.root()));
        if (!gone.isEmpty())
            QVERIFY(QFile::remove(card.path(gone)));
        if (!folder.isEmpty())
            card.folder(folder);
        ProgressSheet sheet(u"title"_s, 3, nullptr);
        sheet.setAttribute(Qt::WA_DeleteOnClose, false);
        const BackUpList items(controller.mediaTree().begin(), controller.mediaTree().end());
        controller.backUpSelectedInfos(items, disk.path(u"backup"_s), ReadBack::No, &sheet);
        WAIT_FOR(!controller.isJobRunning());
        const auto number = [](int count) { return QLocale().toString(count); };
        QCOMPARE(sheet.countText(), ProgressSheet::tr("%1 of %2", "items").arg(number(shown), number(3)));
        QTEST(sheet.problemText().isEmpty(), "isWhole");
        QCOMPARE(sheet.infoText().isEmpty(), false);
        QCOMPARE(files::exists(disk.path(u"backup"_s)), isMade);
        controller.closeProgress();
        WAIT_FOR(BackgroundQueue::waitForDone(0));
    }
};

int main(int argc, char* argv[])
{
    return runWithWindows<ProgressSheetTest>(argc, argv);
}

#include "ProgressSheetTest.moc"
