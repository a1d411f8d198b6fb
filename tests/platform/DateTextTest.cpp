#include "platform/text/DateText.h"

#include "support/CardBuilder.h"

#include <QTest>

using namespace cardreel;
using namespace Qt::StringLiterals;

class DateTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsOnlyWholeDates_data();
    void readsOnlyWholeDates();
    void twoDigitYearsFallAroundThePresent();
    void zonesShiftTheClock();
};

void DateTextTest::readsOnlyWholeDates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::optional<Instant>>("expected");
    const std::optional<Instant> none;

    QTest::newRow("empty") << QString() << none;
    QTest::newRow("day 32") << u"320120 123456.00"_s << none;
    QTest::newRow("30 February") << u"300220 123456.00"_s << none;
    QTest::newRow("second 60") << u"010120 123460.00"_s << none;
    QTest::newRow("no fraction") << u"010120 123456"_s << none;
    QTest::newRow("letters behind") << u"010120 123456.00Z"_s << none;
    QTest::newRow("letters") << u"ddMMyy HHmmss.SS"_s << none;
    QTest::newRow("ordinary") << u"010120 123456.00"_s << std::optional(test::utc(2020, 1, 1, 12, 34, 56));
    QTest::newRow("hundredths") << u"010120 123456.25"_s << std::optional(test::utc(2020, 1, 1, 12, 34, 56, 250));
    QTest::newRow("tenths") << u"010120 123456.5"_s << std::optional(test::utc(2020, 1, 1, 12, 34, 56, 500));
    QTest::newRow("leap day") << u"290220 000000.00"_s << std::optional(test::utc(2020, 2, 29, 0, 0));
}

void DateTextTest::readsOnlyWholeDates()
{
    QFETCH(QString, text);
    const DateText format = DateText::patterned(u"ddMMyy HHmmss.SS"_s, u"ja_JP"_s, TimeZone::Utc);
    QTEST(format.instant(text), "expected");
}

void DateTextTest::twoDigitYearsFallAroundThePresent()
{
    const DateText format = DateText::patterned(u"ddMMyy"_s, u"ja_JP"_s, TimeZone::Utc);
    const auto years = [](Instant from, Instant to) {
        return std::chrono::duration<double>(to - from).count() / 31556952;
    };
    const double back = years(format.twoDigitYearStart(), now());
    QVERIFY2(back > 79.9 && back < 80.1, QByteArray::number(back));
    // Every year of the century that begins there reads back as itself.
    const int first = static_cast<int>(
        std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(format.twoDigitYearStart())).year());
    for (int year = first + 1; year < first + 100; ++year)
        QCOMPARE(format.instant(u"1506%1"_s.arg(year % 100, 2, 10, QLatin1Char('0'))),
                 std::optional(test::utc(year, 6, 15, 0, 0)));
}

void DateTextTest::zonesShiftTheClock()
{
    const Instant noon = test::utc(2020, 1, 1, 12, 0);
    const auto clock = [&](TimeZone zone) {
        return DateText::patterned(u"HH:mm"_s, u"en_US_POSIX"_s, zone).text(noon);
    };
    QCOMPARE(clock(TimeZone::Utc), u"12:00"_s);
    QCOMPARE(clock(TimeZone::Jst), u"21:00"_s);
    const QString local = qgetenv("TZ") == "Asia/Tokyo" ? u"21:00"_s : u"07:00"_s;
    QCOMPARE(clock(TimeZone::Local), local);
}

QTEST_GUILESS_MAIN(DateTextTest)
#include "DateTextTest.moc"
