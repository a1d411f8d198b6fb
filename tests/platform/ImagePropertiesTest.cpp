#include "platform/image/ImageProperties.h"

#include "support/CardBuilder.h"

#include <QFile>
#include <QTest>

#include <unistd.h>

using namespace cardreel;
using namespace Qt::StringLiterals;

class ImagePropertiesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsSizeAndPosition();
    void whatIsNoPictureIsEmpty_data();
    void whatIsNoPictureIsEmpty();
    void aPictureWithoutEndIsLeftSoon();
    void whatCannotBeOpenedIsNothing();
};

void ImagePropertiesTest::readsSizeAndPosition()
{
    test::CardBuilder card;
    const auto properties = imageProperties(card.pictureAt(u"a.JPG"_s, 35.5, "N", 139.75, "W"));
    QVERIFY(properties);
    QCOMPARE(properties->value(u"PixelWidth"_s).toInt(), 32);
    QCOMPARE(properties->value(u"PixelHeight"_s).toInt(), 18);
    const QVariantMap gps = properties->value(u"{GPS}"_s).toMap();
    QCOMPARE(gps.value(u"Latitude"_s).toDouble(), 35.5);
    QCOMPARE(gps.value(u"Longitude"_s).toDouble(), 139.75);
    QCOMPARE(gps.value(u"LongitudeRef"_s).toString(), u"W"_s);
}

void ImagePropertiesTest::whatIsNoPictureIsEmpty_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no bytes") << QByteArray();
    QTest::newRow("text") << QByteArray("hello");
    QTest::newRow("a marker only") << QByteArray("\xFF\xD8\xFF");
    QTest::newRow("a block that claims too much") << QByteArray("\xFF\xD8\xFF\xE1\xFF\xFF"
                                                                "Exif\0\0MM\0*\xFF\xFF\xFF\xFF",
                                                                20);
}

void ImagePropertiesTest::whatIsNoPictureIsEmpty()
{
    QFETCH(QByteArray, bytes);
    test::CardBuilder card;
    const auto properties = imageProperties(card.file(u"a.JPG"_s, bytes));
    QVERIFY(properties);
    QVERIFY(properties->isEmpty());
}

void ImagePropertiesTest::aPictureWithoutEndIsLeftSoon()
{
    // Sparse: ten gigabytes of zeros behind the first marker, which take minutes to look through.
    test::CardBuilder card;
    const QString path = card.file(u"a.JPG"_s, "\xFF\xD8");
    QVERIFY(QFile::resize(path, qint64(10) << 30));
    QVERIFY(imageProperties(path));
}

void ImagePropertiesTest::whatCannotBeOpenedIsNothing()
{
    test::CardBuilder card;
    QVERIFY(!imageProperties(card.path(u"missing.JPG"_s)));
    QVERIFY(!imageProperties(card.folder(u"folder.JPG"_s)));
    QCOMPARE(symlink("nowhere", card.path(u"dangling.JPG"_s).toUtf8()), 0);
    QVERIFY(!imageProperties(card.path(u"dangling.JPG"_s)));
}

QTEST_GUILESS_MAIN(ImagePropertiesTest)
#include "ImagePropertiesTest.moc"
