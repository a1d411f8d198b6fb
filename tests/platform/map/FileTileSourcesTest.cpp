#include "platform/map/FolderTileSource.h"
#include "platform/map/MbtilesTileSource.h"
#include "platform/map/TileImage.h"
#include "platform/map/TileServer.h"
#include "support/CardBuilder.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QSqlQuery>
#include <QTest>
#include <QVariant>

#include <sys/stat.h>

namespace cardreel {

using namespace Qt::StringLiterals;
using test::CardBuilder;
using Status = TileSource::Status;

class FileTileSourcesTest : public QObject
{
    Q_OBJECT

    static Status statusOf(TileSource& source, const TileKey& key, QByteArray* bytes = nullptr)
    {
        std::optional<Status> result;
        source.fetch(key, [&](Status status, const QByteArray& answer) {
            result = status;
            if (bytes)
                *bytes = answer;
        });
        return result.value();
    }

    static std::unique_ptr<TileSource> sourceAt(const QString& path)
    {
        TileSettings settings;
        settings.location = path;
        return makeTileSource(settings);
    }

    /// An MBTiles file, made by statements; each "?" stands for a tile's bytes.
    static void makeMbtiles(const QString& path, const QStringList& statements)
    {
        {
            QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"maker"_s);
            database.setDatabaseName(path);
            if (!database.open())
                qFatal("cannot make the file");
            const QSqlQuery unsafeButFast(u"PRAGMA synchronous = OFF"_s, database);
            for (const QString& statement : statements) {
                QSqlQuery query(database);
                query.prepare(statement);
                if (statement.contains(u'?'))
                    query.addBindValue(test::tilePng());
                if (!query.exec())
                    qFatal("%s", qPrintable(statement));
            }
        }
        QSqlDatabase::removeDatabase(u"maker"_s);
    }
    static QStringList tables(const QStringList& more = {})
    {
        return QStringList{u"CREATE TABLE metadata (name TEXT, value TEXT)"_s,
                           u"CREATE TABLE tiles (zoom_level INT, tile_column INT, tile_row INT, tile_data BLOB)"_s} +
               more;
    }

    static QByteArray encoded(const QSize& size, const char* format, QImage::Format pixels = QImage::Format_RGB32)
    {
        QImage image(size, pixels);
        image.fill(Qt::transparent);
        QBuffer buffer;
        image.save(&buffer, format);
        return buffer.data();
    }

private Q_SLOTS:
    void pictures_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QImage::Format>("format"); // Invalid for what is refused
        const QByteArray png = test::tilePng();
        QTest::newRow("nothing") << QByteArray() << QImage::Format_Invalid;
        QTest::newRow("page") << QByteArray("<html><body>Please log in</body></html>") << QImage::Format_Invalid;
        QTest::newRow("drawing") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>")
                                 << QImage::Format_Invalid;
        QTest::newRow("cut") << png.left(png.size() / 2) << QImage::Format_Invalid;
        QTest::newRow("too wide") << encoded({1025, 1}, "PNG") << QImage::Format_Invalid;
        QTest::newRow("too high") << encoded({1, 1025}, "JPEG") << QImage::Format_Invalid;
        QTest::newRow("large") << encoded({1024, 1024}, "PNG") << QImage::Format_RGB32;
        QTest::newRow("see-through") << encoded({256, 256}, "PNG", QImage::Format_ARGB32)
                                     << QImage::Format_ARGB32_Premultiplied;
        QTest::newRow("jpeg") << encoded({256, 256}, "JPEG") << QImage::Format_RGB32;
    }
    void pictures()
    {
        QFETCH(QByteArray, bytes);
        QTEST(tileImage(bytes).format(), "format");
    }

    void folder()
    {
        CardBuilder files;
        files.file(u"3/1/2.png"_s, "png");
        files.file(u"3/1/3.jpeg"_s, "jpeg");
        files.file(u"12/0/0.jpg"_s, "jpg");
        files.file(u"12/0/1.png"_s, QByteArray(FolderTileSource::largestBytes + 1, 'x'));
        files.folder(u"12/0/2.png"_s);
        files.file(u"99/readme"_s);
        files.file(u"notes"_s);
        const auto source = sourceAt(files.root());
        QCOMPARE(source->maxZoom(), 12);
        QByteArray bytes;
        for (const auto& [key, expected] :
             {std::pair{TileKey{3, 1, 2}, "png"}, {{3, 1, 3}, "jpeg"}, {{12, 0, 0}, "jpg"}}) {
            QCOMPARE(statusOf(*source, key, &bytes), Status::Found);
            QCOMPARE(bytes, expected);
        }
        QCOMPARE(statusOf(*source, {3, 2, 1}), Status::Missing);
        QCOMPARE(statusOf(*source, {12, 0, 1}), Status::Failed);
        QCOMPARE(statusOf(*source, {12, 0, 2}), Status::Failed);
        files.mountAgainAs(u"elsewhere"_s);
        QCOMPARE(statusOf(*source, {3, 1, 2}), Status::Failed);
    }

    void mbtiles()
    {
        CardBuilder files;
        const QString path = files.path(u"50% näher?#.mbtiles"_s);
        makeMbtiles(
            path, tables({u"INSERT INTO metadata VALUES ('name', 'Roads'), ('maxzoom', '14'), "
                          "('attribution', '<script>x<y</script><a href=\"x\">&copy; Every&#111;ne</a> &#xD800;<b')"_s,
                          u"INSERT INTO tiles VALUES (3, 1, 7, ?)"_s,
                          u"INSERT INTO tiles VALUES (3, 2, 7, zeroblob(5000000))"_s,
                          u"INSERT INTO tiles VALUES (3, 3, 7, NULL)"_s}));
        const auto source = sourceAt(path);
        QVERIFY(source);
        QCOMPARE(source->maxZoom(), 14);
        QCOMPARE(source->attribution(), u"© Everyone &#xD800;<b"_s);
        QByteArray bytes;
        QCOMPARE(statusOf(*source, {3, 1, 0}, &bytes), Status::Found); // rows from the south
        QCOMPARE(bytes, test::tilePng());
        QCOMPARE(statusOf(*source, {3, 1, 7}), Status::Missing);
        QCOMPARE(statusOf(*source, {60, 1, 7}), Status::Missing);
        QCOMPARE(statusOf(*source, {3, 2, 0}), Status::Failed);
        QCOMPARE(statusOf(*source, {3, 3, 0}), Status::Failed);
        QVERIFY(QFile::remove(path));
        QCOMPARE(statusOf(*source, {3, 1, 0}), Status::Failed);
    }

    void noMbtiles_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("statements");
        const QString tile = u"INSERT INTO tiles VALUES (0, 0, 0, ?)"_s;
        QTest::newRow("empty file") << QByteArray() << QStringList();
        QTest::newRow("rubbish") << QByteArray(5000, 'x') << QStringList();
        QTest::newRow("head only") << QByteArray("SQLite format 3\0", 16) << QStringList();
        QTest::newRow("no tiles") << QByteArray() << tables();
        QTest::newRow("vectors") << QByteArray() << tables({u"INSERT INTO metadata VALUES ('format', 'pbf')"_s, tile});
    }
    void noMbtiles()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, statements);
        CardBuilder files;
        const QString path = files.file(u"a.mbtiles"_s, bytes);
        makeMbtiles(path, statements);
        QVERIFY(!sourceAt(path));
    }

    void nobodyWaitsAtAPipe()
    {
        CardBuilder files;
        QCOMPARE(mkfifo(files.path(u"a.mbtiles"_s).toUtf8(), 0600), 0);
        QVERIFY(!sourceAt(files.path(u"a.mbtiles"_s)));
    }

    void damageInsideIsNoCrash()
    {
        CardBuilder files;
        const QString path = files.path(u"a.mbtiles"_s);
        makeMbtiles(path, tables({u"WITH RECURSIVE n(x) AS (VALUES (0) UNION ALL SELECT x + 1 FROM n WHERE x < 63) "
                                  "INSERT INTO tiles SELECT 6, x, 63, ? FROM n"_s}));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        constexpr qint64 page = 4096;
        file.seek(3 * page);
        file.write(QByteArray(static_cast<int>(file.size() - 4 * page), '\xff'));
        file.close();
        const auto source = sourceAt(path);
        int failed = 0;
        for (int x = 0; source && x < 64; ++x)
            failed += statusOf(*source, {6, x, 0}) == Status::Failed;
        QVERIFY(!source || failed > 0);
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::FileTileSourcesTest)
#include "FileTileSourcesTest.moc"
