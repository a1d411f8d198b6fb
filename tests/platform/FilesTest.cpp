#include "platform/files/Files.h"

#include "support/CardBuilder.h"

#include <QTest>

#include <sys/stat.h>

#include <algorithm>
#include <unistd.h>

using namespace cardreel;
using namespace Qt::StringLiterals;

class FilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pathsSurviveStrayBytes_data();
    void pathsSurviveStrayBytes();
    void walkMeetsFoldersBeforeTheirContents();
    void walkEndsAtLinksInCircles();
    void filesWithStrayNamesOpen();
    void onlyRegularFilesOpen();
    void lockedWithoutAnyWritePermission();
    void absolutePathsGoWhereTheyLead();
    void partsOfPaths_data();
    void partsOfPaths();
};

void FilesTest::pathsSurviveStrayBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("shown");
    const QString mark(QChar::ReplacementCharacter);
    QTest::newRow("ASCII") << QByteArray("a/b") << u"a/b"_s;
    QTest::newRow("Japanese") << QByteArray("記録") << u"記録"_s;
    QTest::newRow("outside the basic plane") << QByteArray("\xF0\x9F\x9A\x97") << u"\U0001F697"_s;
    QTest::newRow("Latin-1") << QByteArray("caf\xE9") << u"caf"_s + mark;
    QTest::newRow("cut sequence") << QByteArray("\xE8\xA8") << mark + mark;
    QTest::newRow("stray byte behind a surrogate pair")
        << QByteArray("\xF0\x9F\x9A\x97\xFFx") << u"\U0001F697"_s + mark + u'x';
    QTest::newRow("encoded surrogate") << QByteArray("\xED\xB3\xBF") << mark + mark + mark;
    QTest::newRow("overlong") << QByteArray("\xC0\xAF") << mark + mark;
}

void FilesTest::pathsSurviveStrayBytes()
{
    QFETCH(QByteArray, bytes);
    const QString path = files::fromNativePath(bytes);
    QCOMPARE(files::nativePath(path), bytes);
    QTEST(files::displayPath(path), "shown");
}

void FilesTest::walkMeetsFoldersBeforeTheirContents()
{
    test::CardBuilder card;
    card.file(u"a/1"_s);
    card.file(u"a/b/2"_s);
    card.file(u"3"_s);
    std::vector<QString> met;
    files::walk(card.root(), [&](const QString& path, bool isFolder) {
        const QString folder = files::folderOf(path);
        QVERIFY2(folder.isEmpty() || std::find(met.begin(), met.end(), folder + u'/') != met.end(), qPrintable(path));
        met.push_back(isFolder ? path + u'/' : path);
    });
    std::sort(met.begin(), met.end());
    QCOMPARE(met, (std::vector<QString>{u"3"_s, u"a/"_s, u"a/1"_s, u"a/b/"_s, u"a/b/2"_s}));
}

void FilesTest::walkEndsAtLinksInCircles()
{
    test::CardBuilder card;
    card.file(u"a/1"_s);
    QCOMPARE(symlink(card.root().toUtf8(), card.path(u"a/up"_s).toUtf8()), 0);
    QCOMPARE(symlink("self", card.path(u"self"_s).toUtf8()), 0);
    std::vector<QString> folders;
    std::vector<QString> others;
    files::walk(card.root(),
                [&](const QString& path, bool isFolder) { (isFolder ? folders : others).push_back(path); });
    std::sort(folders.begin(), folders.end());
    std::sort(others.begin(), others.end());
    QCOMPARE(folders, (std::vector<QString>{u"a"_s}));
    QCOMPARE(others, (std::vector<QString>{u"a/1"_s, u"self"_s}));
}

void FilesTest::filesWithStrayNamesOpen()
{
    test::CardBuilder card;
    const QByteArray native = card.root().toUtf8() + "/caf\xE9";
    FILE* made = fopen(native.constData(), "w");
    QVERIFY(made);
    fputs("content", made);
    fclose(made);
    const std::vector<QString> names = files::names(card.root());
    QCOMPARE(names.size(), size_t(1));
    const QString path = files::join(card.root(), names.front());
    QCOMPARE(files::status(path).size, quint64(7));
    const auto file = files::openForReading(path);
    QVERIFY(file);
    QCOMPARE(file->readAll(), QByteArray("content"));
}

void FilesTest::onlyRegularFilesOpen()
{
    test::CardBuilder card;
    const QString pipe = card.path(u"pipe"_s);
    QCOMPARE(mkfifo(pipe.toUtf8(), 0600), 0);
    for (const QString& path : {card.root(), pipe, card.path(u"missing"_s), u"/dev/null"_s}) {
        QString error;
        QVERIFY2(!files::openForReading(path, &error), qPrintable(path));
        QVERIFY(!error.isEmpty());
    }
}

void FilesTest::lockedWithoutAnyWritePermission()
{
    test::CardBuilder card;
    const QString path = card.file(u"a"_s);
    QVERIFY(!files::isLocked(path));
    QCOMPARE(chmod(path.toUtf8(), 0444), 0);
    QVERIFY(files::isLocked(path));
    QCOMPARE(chmod(path.toUtf8(), 0464), 0);
    QVERIFY(!files::isLocked(path));
    QVERIFY(!files::isLocked(card.path(u"missing"_s)));
}

void FilesTest::absolutePathsGoWhereTheyLead()
{
    test::CardBuilder card;
    card.folder(u"a/b"_s);
    QCOMPARE(symlink("a/b", card.path(u"link"_s).toUtf8()), 0);
    QCOMPARE(files::absolutePath(card.root() + u"//a/./b/"_s), card.path(u"a/b"_s));
    QCOMPARE(files::absolutePath(card.path(u"link/.."_s)), card.path(u"a"_s));
    QCOMPARE(files::absolutePath(card.path(u"missing/.."_s)), card.path(u"missing/.."_s));
    QVERIFY(files::isSameFile(card.path(u"link"_s), card.path(u"a/b"_s)));
    QVERIFY(!files::isSameFile(card.path(u"a"_s), card.path(u"a/b"_s)));
    QVERIFY(!files::isSameFile(card.path(u"missing"_s), card.path(u"missing"_s)));
}

void FilesTest::partsOfPaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("stem");
    QTest::newRow("empty") << u""_s << u""_s << u""_s << u""_s;
    QTest::newRow("no folder") << u"a.b"_s << u""_s << u"a.b"_s << u"a"_s;
    QTest::newRow("no extension") << u"/x/y"_s << u"/x"_s << u"y"_s << u"y"_s;
    QTest::newRow("two extensions") << u"x/a.b.c"_s << u"x"_s << u"a.b.c"_s << u"a.b"_s;
    QTest::newRow("hidden") << u"x/.a"_s << u"x"_s << u".a"_s << u".a"_s;
    QTest::newRow("dot in the folder") << u"x.y/a"_s << u"x.y"_s << u"a"_s << u"a"_s;
}

void FilesTest::partsOfPaths()
{
    QFETCH(QString, path);
    QTEST(files::folderOf(path), "folder");
    QTEST(files::nameOf(path), "name");
    QTEST(files::stemOf(path), "stem");
}

QTEST_GUILESS_MAIN(FilesTest)
#include "FilesTest.moc"
