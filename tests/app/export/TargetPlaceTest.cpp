#include "app/export/TargetPlace.h"

#include "platform/files/Files.h"
#include "support/CardBuilder.h"

#include <QDir>
#include <QTest>

#include <sys/stat.h>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class TargetPlaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_card = std::make_unique<CardBuilder>();
        m_disk = std::make_unique<CardBuilder>(u"disk"_s);
        m_disk->file(u"file"_s);
        m_disk->file(u"full/file"_s);
        m_disk->folder(u"empty"_s);
        m_disk->link(u"to-card"_s, files::nativePath(m_card->root()));
        m_disk->link(u"to-card-folder"_s, files::nativePath(files::folderOf(m_card->root())));
        m_card->folder(u"NORMAL"_s);
        chmod(files::nativePath(m_disk->folder(u"locked"_s)).constData(), 0555);
        chmod(files::nativePath(m_disk->folder(u"secret"_s)).constData(), 0333);
    }

    void extensionsFollowTheFormat_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("kml");
        QTest::addColumn<QString>("gpx");
        QTest::newRow("nothing") << QString() << QString() << QString();
        QTest::newRow("none") << u"/a/route"_s << u"/a/route.kml"_s << u"/a/route.gpx"_s;
        QTest::newRow("another") << u"/a/b.txt"_s << u"/a/b.txt.kml"_s << u"/a/b.txt.gpx"_s;
        QTest::newRow("capitals") << u"/a/b.KML"_s << u"/a/b.KML"_s << u"/a/b.gpx"_s;
        QTest::newRow("only a point and") << u"/a/.kml"_s << u"/a/.kml.kml"_s << u"/a/.kml.gpx"_s;
        QTest::newRow("kmz") << u"/a/b.kmz"_s << u"/a/b.kml"_s << u"/a/b.gpx"_s;
        QTest::newRow("twice") << u"b.gpx.gpx"_s << u"b.gpx.kml"_s << u"b.gpx.gpx"_s;
    }
    void extensionsFollowTheFormat()
    {
        QFETCH(QString, path);
        QTEST(withExtension(path, ExportFormat::Kml), "kml");
        QTEST(withExtension(path, ExportFormat::Gpx), "gpx");
    }

    void readsWhatIsTyped()
    {
        for (const QString& same : {QString(), u"/a/~/b"_s})
            QCOMPARE(fullPath(same, u"/folder"_s), same);
        for (const QString& name : {u"b"_s, u"~b"_s})
            QCOMPARE(fullPath(name, u"/folder"_s), u"/folder/"_s + name);
        QCOMPARE(fullPath(u"~/b"_s, u"/folder"_s), QDir::homePath() + u"/b"_s);
    }

    void findsFreeNames()
    {
        QCOMPARE(freePath(m_disk->root(), u"new"_s, u".kml"_s), m_disk->path(u"new.kml"_s));
        QCOMPARE(freePath(m_disk->root(), u"full"_s, {}), m_disk->path(u"full 2"_s));
        m_disk->file(u"a.kmz"_s);
        m_disk->file(u"a 2.kmz"_s);
        QCOMPARE(freePath(m_disk->root(), u"a"_s, u".kmz"_s), m_disk->path(u"a 3.kmz"_s));
        QCOMPARE(asFileName(u"6/14/25, 10:05 \"a\\b\n"_s), u"6-14-25, 10-05 -a-b-"_s);
    }

    // On a disk that an ordinary user writes to.
    void saysWhatIsInTheWay_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("fileWord"); // in the sentence about it; empty when nothing is in the way
        QTest::addColumn<QString>("folderWord");
        const QString gone = u"no folder “gone”"_s;
        const QString locked = u"may not write to the folder “locked”"_s;
        QTest::newRow("free") << u"new"_s << QString() << QString();
        QTest::newRow("no such folder") << u"gone/new"_s << gone << gone;
        QTest::newRow("below a file") << u"file/new"_s << u"“file” is no folder"_s << u"“file” is no folder"_s;
        QTest::newRow("not writable") << u"locked/new"_s << locked << locked;
        QTest::newRow("not writable itself") << u"locked"_s << u"is a folder"_s << locked;
        QTest::newRow("on the card") << u"to-card/new"_s << u"on the card"_s << u"within each other"_s;
        QTest::newRow("deep on the card") << u"to-card/NORMAL/new"_s << u"on the card"_s << u"within each other"_s;
        QTest::newRow("the card") << u"to-card"_s << u"on the card"_s << u"within each other"_s;
        QTest::newRow("around the card") << u"to-card-folder"_s << u"is a folder"_s << u"within each other"_s;
        QTest::newRow("a file") << u"file"_s << QString() << u"file of the name “file”"_s;
        QTest::newRow("a folder") << u"empty"_s << u"is a folder"_s << QString();
        QTest::newRow("dots") << u"empty/.."_s << u"is a folder"_s << u"can't have this name"_s;
    }
    void saysWhatIsInTheWay()
    {
        QFETCH(QString, path);
        QFETCH(QString, fileWord);
        QFETCH(QString, folderWord);
        const OrdinaryPermissions ordinary;
        path = m_disk->path(path);
        const QString file = whyNoFileAt(path, m_card->root());
        const QString folder = whyNoBackUpAt(path, m_card->root());
        QVERIFY2(file.contains(fileWord), qPrintable(file));
        QCOMPARE(file.isEmpty(), fileWord.isEmpty());
        QVERIFY2(folder.contains(folderWord), qPrintable(folder));
        QCOMPARE(folder.isEmpty(), folderWord.isEmpty());
    }

    void knowsFilledFolders()
    {
        const OrdinaryPermissions ordinary;
        for (const QString& name : {u"full"_s, u"secret"_s, u"to-card"_s}) // who knows what is in the second
            QVERIFY2(isFilledFolder(m_disk->path(name)), qPrintable(name));
        for (const QString& name : {u"empty"_s, u"file"_s, u"gone"_s})
            QVERIFY2(!isFilledFolder(m_disk->path(name)), qPrintable(name));
    }

private:
    std::unique_ptr<CardBuilder> m_card;
    std::unique_ptr<CardBuilder> m_disk;
};

QTEST_GUILESS_MAIN(TargetPlaceTest)
#include "TargetPlaceTest.moc"
