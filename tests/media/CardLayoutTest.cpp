#include "media/CardLayout.h"

#include "names/ConstClass.h"
#include "platform/text/DateText.h"
#include "support/CardBuilder.h"

#include <QDateTime>
#include <QTest>

#include <sys/stat.h>

#include <algorithm>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class CardLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void matchesOnceAndWhole_data();
    void matchesOnceAndWhole();
    void recognizesCards_data();
    void recognizesCards();
    void anUnreadableFolderIsNoCard();
    void tellsKindsByFolder_data();
    void tellsKindsByFolder();
    void readsRecorderDates_data();
    void readsRecorderDates();
    void showsTheRecordersClockUnchanged();
    void showsThePresentForNamesWithoutDate();
    void readsJapaneseDates_data();
    void readsJapaneseDates();
    void showsDatesInTheLocalZone();
    void readsWholeNumbers_data();
    void readsWholeNumbers();
    void listsFolders();
};

void CardLayoutTest::matchesOnceAndWhole_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("matches");
    QTest::newRow("no pattern at all") << u"("_s << u"("_s << false;
    QTest::newRow("only a part") << u"NORMAL2"_s << u"NORMAL"_s << false;
    QTest::newRow("twice") << u"aa"_s << u"a"_s << false;
    QTest::newRow("an empty match behind the whole") << u"ab"_s << u"ab|"_s << false;
    QTest::newRow("whole") << u"ab"_s << u"a."_s << true;
    QTest::newRow("nothing in nothing") << u""_s << u"a?"_s << true;
}

void CardLayoutTest::matchesOnceAndWhole()
{
    QFETCH(QString, target);
    QFETCH(QString, pattern);
    QTEST(CardLayout::fullMatchResultWithTarget(target, pattern), "matches");
}

void CardLayoutTest::recognizesCards_data()
{
    QTest::addColumn<QString>("entry"); // a file, or with a slash at its end a folder
    QTest::addColumn<bool>("isRecorders");
    QTest::addColumn<bool>("isAvailable");
    QTest::newRow("nothing") << u""_s << false << false;
    QTest::newRow("DCF") << u"DCIM/100ABCDE/ABCD0001.MP4"_s << false << false;
    QTest::newRow("other case") << u"normal/"_s << false << false;
    QTest::newRow("longer name") << u"NORMAL2/"_s << false << false;
    QTest::newRow("one level too deep") << u"card/NORMAL/"_s << false << false;
    QTest::newRow("only the recorder's own folder") << u"SYSTEM/"_s << false << false;
    QTest::newRow("only the rear camera") << u"REAR/"_s << false << true;
    QTest::newRow("pictures") << u"PICTURE/"_s << true << true;
    QTest::newRow("parking") << u"PARKING/"_s << true << true;
    QTest::newRow("a file of that name") << u"EVENT"_s << true << true;
}

void CardLayoutTest::recognizesCards()
{
    QFETCH(QString, entry);
    CardBuilder card;
    if (entry.endsWith(u'/'))
        card.folder(entry);
    else if (!entry.isEmpty())
        card.file(entry);
    QTEST(CardLayout::mediaIsLM90(card.root()), "isRecorders");
    QTEST(CardLayout::mediaIsAlter(card.root()), "isAvailable");
    QTEST(CardLayout::mediaIsAvailable(card.root()), "isAvailable");
    QVERIFY(!CardLayout::mediaIsDCF(card.root()));
}

void CardLayoutTest::anUnreadableFolderIsNoCard()
{
    CardBuilder card;
    card.folder(u"NORMAL"_s);
    QCOMPARE(chmod(card.root().toUtf8(), 0111), 0);
    const OrdinaryPermissions ordinary;
    QVERIFY(!CardLayout::mediaIsAvailable(card.root()));
    QVERIFY(!CardLayout::mediaIsAvailable(card.path(u"missing"_s)));
}

void CardLayoutTest::tellsKindsByFolder_data()
{
    QTest::addColumn<QString>("kind");
    const auto rows = [](const QString& kind, std::initializer_list<const char*> folders) {
        for (const char* folder : folders)
            QTest::newRow(folder) << kind;
    };
    rows(ConstClass::DCF_EVENTNAME_NORMAL, {"NORMAL", "100_NORM", "Event", "EVENT2", "PICTURE", ""});
    rows(ConstClass::DCF_EVENTNAME_EVENT, {"EVENT", "200_SHOC", "200_EVNT"});
    rows(ConstClass::DCF_EVENTNAME_MANUAL, {"MANUAL", "300_MANU"});
    rows(ConstClass::DCF_EVENTNAME_PARKING, {"PARKING", "400_PARK"});
}

void CardLayoutTest::tellsKindsByFolder()
{
    QTEST(eventNameOfFolder(QString::fromLatin1(QTest::currentDataTag())), "kind");
}

void CardLayoutTest::readsRecorderDates_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isDate");
    QTest::addColumn<qint64>("seconds");
    const auto none = [](const char* what, const QString& path) { QTest::newRow(what) << path << false << qint64(0); };
    none("eleven digits", u"20010112345.MP4"_s);
    none("month 0", u"200001123456.MP4"_s);
    none("month 13", u"201301123456.MP4"_s);
    none("29 February of a common year", u"210229123456.MP4"_s);
    none("31 April", u"200431123456.MP4"_s);
    none("hour 24", u"200101240000.MP4"_s);
    none("minute 60", u"200101236000.MP4"_s);
    none("second 60", u"200101235960.MP4"_s);
    none("letters", u"2001O1123456.MP4"_s);
    none("wide digits", u"２００１０１１２３４５６.MP4"_s);
    none("a date only in the folder", u"200101123456/x.MP4"_s);
    const auto date = [](const char* what, const QString& path, Instant instant) {
        QTest::newRow(what) << path << true << qint64(instant.time_since_epoch().count() / 1000);
    };
    date("end of a day", u"NORMAL/200101235959.MP4"_s, utc(2020, 1, 1, 23, 59, 59));
    date("leap day", u"200229000000.MP4"_s, utc(2020, 2, 29, 0, 0));
    date("year 00", u"000101000000.MP4"_s, utc(2000, 1, 1, 0, 0));
    date("year 99", u"991231235959.MP4"_s, utc(2099, 12, 31, 23, 59, 59));
    date("more behind it", u"200101123456_2.x.MP4"_s, utc(2020, 1, 1, 12, 34, 56));
}

void CardLayoutTest::readsRecorderDates()
{
    QFETCH(QString, path);
    QFETCH(qint64, seconds);
    const std::optional<Instant> date = recorderDate(path);
    QTEST(date.has_value(), "isDate");
    if (date)
        QCOMPARE(date->time_since_epoch().count(), seconds * 1000);
}

void CardLayoutTest::showsTheRecordersClockUnchanged()
{
    const QString text = recordingDateText(u"EVENT/200101235959.MP4"_s);
    if (qgetenv("LC_ALL").startsWith("ja"))
        QCOMPARE(text, u"2020/01/01 23:59:59"_s);
    else
        QVERIFY2(text.contains(u"2020") && text.contains(u"11:59:59"), qPrintable(text));
}

void CardLayoutTest::showsThePresentForNamesWithoutDate()
{
    const DateText format = DateText::styled(DateStyle::Medium, DateStyle::Medium, TimeZone::Utc);
    const QString before = format.text(now());
    const QString text = recordingDateText(u"200101240000.MP4"_s);
    QVERIFY2(text == before || text == format.text(now()), qPrintable(text));
}

void CardLayoutTest::readsJapaneseDates_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isDate");
    QTest::newRow("empty") << u""_s << false;
    QTest::newRow("short") << u"2001010134.MP4"_s << false;
    QTest::newRow("words") << u"holiday.MP4"_s << false;
    QTest::newRow("name") << u"200101013456"_s << true;
    QTest::newRow("path") << u"/card/NORMAL/200101013456.MP4"_s << true;
    QTest::newRow("cut at the first dot") << u"200101013456.old.MP4"_s << true;
}

void CardLayoutTest::readsJapaneseDates()
{
    QFETCH(QString, name);
    const std::optional<Instant> date = CardLayout::dateFromJSTFileNameString(name);
    QTEST(date.has_value(), "isDate");
    if (date)
        QVERIFY(*date == utc(2019, 12, 31, 16, 34, 56));
}

void CardLayoutTest::showsDatesInTheLocalZone()
{
    const Instant moment = utc(2025, 6, 14, 15, 34, 56);
    const QTime local = QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count()).time();
    const QString text = CardLayout::dateString(moment);
    const bool is24Hours = text.contains(local.toString(u"H:mm:ss"));
    QVERIFY2(is24Hours || text.contains(local.toString(u"h:mm:ss AP").section(u' ', 0, 0)), qPrintable(text));
}

void CardLayoutTest::readsWholeNumbers_data()
{
    QTest::addColumn<bool>("isNumber");
    QTest::addColumn<qint64>("number");
    for (const char* bad : {"", " 1", "1 ", "12a", "NORMAL", "1.5", "9223372036854775808"})
        QTest::newRow(bad) << false << qint64(0);
    QTest::newRow("007") << true << qint64(7);
    QTest::newRow("200101123456") << true << Q_INT64_C(200101123456);
    QTest::newRow("-5") << true << qint64(-5);
}

void CardLayoutTest::readsWholeNumbers()
{
    QFETCH(qint64, number);
    const std::optional<qint64> value = decimalInteger(QString::fromLatin1(QTest::currentDataTag()));
    QTEST(value.has_value(), "isNumber");
    QCOMPARE(value.value_or(0), number);
}

void CardLayoutTest::listsFolders()
{
    CardBuilder card;
    card.file(u"a/b/1"_s);
    card.file(u"2"_s);
    const auto sorted = [](std::vector<QString> paths) {
        std::sort(paths.begin(), paths.end());
        return paths;
    };
    using Paths = std::vector<QString>;
    QCOMPARE(sorted(CardLayout::pathsAtDirectory(card.root())), (Paths{u"2"_s, u"a"_s}));
    QCOMPARE(sorted(CardLayout::fullPathsAtDirectory(card.root())), (Paths{card.path(u"2"_s), card.path(u"a"_s)}));
    QCOMPARE(sorted(CardLayout::getFilesInDirectory(card.root())),
             (Paths{card.path(u"2"_s), card.path(u"a"_s), card.path(u"a/b"_s), card.path(u"a/b/1"_s)}));
    QVERIFY(CardLayout::pathIsDirectory(card.path(u"a"_s)));
    QVERIFY(!CardLayout::pathIsDirectory(card.path(u"2"_s)));
    QVERIFY(!CardLayout::pathIsDirectory(card.path(u"3"_s)));
}

QTEST_GUILESS_MAIN(CardLayoutTest)
#include "CardLayoutTest.moc"
