#include "telemetry/FieldText.h"

#include "telemetry/Utf8Check.h"

#include <QTest>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <string>

using namespace cardreel;
using namespace std::chrono_literals;

namespace {

std::string_view view(const QByteArray& text)
{
    return {text.constData(), static_cast<std::size_t>(text.size())};
}

} // namespace

class FieldTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsNumbers_data();
    void readsNumbers();
    void roundsNumbersCorrectly();
    void readsDegrees_data();
    void readsDegrees();
    void readsDates_data();
    void readsDates();
    void agreesWithTheDateFormatter();
    void checksUtf8InAnyPieces();
};

void FieldTextTest::readsNumbers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isNumber");
    QTest::addColumn<double>("value");
    for (const char* text :
         {"",   "-",    "+",     ".",    "-.",  "+-5", "-+5",  "--5",      "1,5", "12a", "a12", "1 2",   " 1",
          "1 ", "1..2", "1.2.3", "0x10", "nan", "inf", "-inf", "infinity", "1e",  "e5",  "1e+", "1e999", "１"})
        QTest::addRow("no number: \"%s\"", text) << QByteArray(text) << false << 0.0;
    QTest::newRow("with NUL") << QByteArray("1\0", 2) << false << 0.0;
    const auto row = [](const char* text, double value) {
        QTest::addRow("%s", text) << QByteArray(text) << true << value;
    };
    row("0", 0);
    row("-0.50", -0.5);
    row("+7", 7);
    row("5.", 5);
    row(".5", 0.5);
    row("007", 7);
    row("1e3", 1000);
    row("-2.5E-2", -0.025);
    row("123456789012345", 123456789012345.0);
    row("123456789012345678901234567890", 123456789012345678901234567890.0);
    row("0.1000000000000000055511151231257827", 0.1);
    row("00000000000000000000000001.5", 1.5);
    row("9007199254740993", 9007199254740992.0);
    row("1.7976931348623157e308", std::numeric_limits<double>::max());
}

void FieldTextTest::readsNumbers()
{
    QFETCH(QByteArray, text);
    QFETCH(double, value);
    const std::optional<double> read = decimalNumber(view(text));
    QTEST(read.has_value(), "isNumber");
    QCOMPARE(read.value_or(0), value);
}

void FieldTextTest::roundsNumbersCorrectly()
{
    std::mt19937_64 random(1);
    for (int i = 0; i < 100'000; ++i) {
        // A few digits or many, with the point anywhere.
        QByteArray text = QByteArray::number(random() >> (random() % 60));
        text.insert(static_cast<qsizetype>(random() % static_cast<std::size_t>(text.size() + 1)), '.');
        if (random() % 2)
            text.prepend('-');
        const std::optional<double> read = decimalNumber(view(text));
        bool ok = false;
        const double expected = text.toDouble(&ok);
        QVERIFY2(ok && read && std::bit_cast<quint64>(*read) == std::bit_cast<quint64>(expected), text.constData());
    }
    const std::optional<double> zero = decimalNumber("-0.0000");
    QVERIFY(zero && std::signbit(*zero));
}

void FieldTextTest::readsDegrees_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("hemisphere");
    QTest::addColumn<bool>("isKnown");
    QTest::addColumn<double>("expected");
    const auto row = [](const char* value, const char* hemisphere, bool known, double expected) {
        QTest::addRow("%s %s", value, hemisphere) << QByteArray(value) << QByteArray(hemisphere) << known << expected;
    };
    row("", "N", false, 0);
    row("3540.6620", "", false, 0);
    row("3540.6620", "n", false, 0);
    row("3540.6620", "NE", false, 0);
    row("35x0.6620", "N", false, 0);
    row("3540.6620", "N", true, 35 + (3540.6620 - 3500) / 60);
    row("13945.2880", "W", true, -(139 + (13945.2880 - 13900) / 60));
    row("3540.6620", "S", true, -(35 + (3540.6620 - 3500) / 60));
    row("3540.6620", "E", true, 35 + (3540.6620 - 3500) / 60); // one routine for both axes
    row("59.9", "N", true, 59.9 / 60);
    row("-130.5", "S", true, 1 + 30.5 / 60);
    row("99999", "E", true, 999 + 99.0 / 60); // ranges aren't its business
}

void FieldTextTest::readsDegrees()
{
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, hemisphere);
    QFETCH(double, expected);
    const std::optional<double> read = degrees(view(value), view(hemisphere));
    QTEST(read.has_value(), "isKnown");
    QCOMPARE(read.value_or(0), expected);
}

void FieldTextTest::readsDates_data()
{
    QTest::addColumn<QByteArray>("date");
    QTest::addColumn<QByteArray>("time");
    QTest::addColumn<qint64>("milliseconds"); // -1: none
    const auto row = [](const char* date, const char* time, qint64 milliseconds) {
        QTest::addRow("%s %s", date, time) << QByteArray(date) << QByteArray(time) << milliseconds;
    };
    row("", "", -1);
    row("140625", "", -1);
    row("", "080314.00", -1);
    row("140625", "080314", -1); // the fraction isn't optional
    row("310625", "080314.00", -1);
    row("290225", "080314.00", -1);
    row("140025", "080314.00", -1);
    row("140625", "240000.00", -1);
    row("140625", "236000.00", -1);
    row("140625", "235960.00", -1);
    row("140625", "080314.00x", -1);
    row("140625", "080314.00", 1749888194000);
    row("140625", "080314.5", 1749888194500);
    row("140625", "080314.05", 1749888194050);
    row("140625", "080314.123", 1749888194123);
    row("290224", "235959.99", 1709251199990);
    row("010100", "000000.00", 946684800000);
    row("290200", "000000.00", 951782400000); // a leap day in 2000, but not in 1900
}

void FieldTextTest::readsDates()
{
    QFETCH(QByteArray, date);
    QFETCH(QByteArray, time);
    FixDateReader reader;
    const std::optional<Instant> read = reader.read(view(date), view(time));
    // All of the good ones are of the common form.
    QVERIFY(FixDateReader::readDirectly(view(date), view(time)) == read);
    QTEST(read ? static_cast<qint64>(read->time_since_epoch().count()) : -1, "milliseconds");
}

void FieldTextTest::agreesWithTheDateFormatter()
{
    const DateText formatter = DateText::patterned(QString::fromUtf16(FixDateReader::PATTERN),
                                                   QString::fromUtf16(FixDateReader::LOCALE), TimeZone::Utc);
    std::mt19937 random(2);
    int direct = 0;
    for (int i = 0; i < 20'000; ++i) {
        const auto below = [&random](unsigned end) { return static_cast<int>(random() % end); };
        // A little beyond every range; leap days and the turns of months come up often enough.
        const QByteArray date = QString::asprintf("%02d%02d%02d", below(33), below(14), i % 100).toLatin1();
        QByteArray time =
            QString::asprintf("%02d%02d%02d.%03d", below(25), below(61), below(61), below(1000)).toLatin1();
        time.truncate(8 + below(3));
        const std::optional<Instant> expected =
            formatter.instant(QString::fromLatin1(date) + u' ' + QString::fromLatin1(time));
        const std::optional<Instant> computed = FixDateReader::readDirectly(view(date), view(time));
        QVERIFY2(computed == expected, (date + ' ' + time).constData());
        direct += computed ? 1 : 0;
    }
    QVERIFY(direct > 5000);
}

void FieldTextTest::checksUtf8InAnyPieces()
{
    const QByteArrayList bits = {"a",
                                 "\xC2\x85",
                                 "\xDF\xBF",
                                 "\xE0\xA0\x80",
                                 "\xE2\x80\xA8",
                                 "\xED\x9F\xBF",
                                 "\xEF\xBF\xBF",
                                 "\xF0\x90\x80\x80",
                                 "\xF4\x8F\xBF\xBF",
                                 QByteArray(70, 'x'),
                                 QByteArray("\0", 1)};
    const QByteArrayList faults = {"\x80",         "\xC0\x80",         "\xC1\xBF",         "\xE0\x9F\xBF",
                                   "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5",
                                   "\xFF\xFE",     "\xE2\x80",         "\xF0\x90\x80"};
    std::mt19937 random(3);
    const auto pick = [&random](const QByteArrayList& texts) {
        return texts[static_cast<qsizetype>(random() % static_cast<std::size_t>(texts.size()))];
    };
    int valid = 0;
    for (int i = 0; i < 20'000; ++i) {
        QByteArray text;
        for (auto n = random() % 12; n > 0; --n)
            text += random() % 20 == 0 ? pick(faults) : pick(bits);
        Utf8Check check;
        bool ok = true;
        for (std::string_view rest = view(text); !rest.empty() && ok;) {
            const std::size_t size = std::min<std::size_t>(rest.size(), 1 + random() % 100);
            ok = check.check(rest.data(), size);
            rest.remove_prefix(size);
        }
        const bool expected = QUtf8StringView(text).isValidUtf8();
        QVERIFY2((ok && check.complete()) == expected, text.toHex().constData());
        valid += expected ? 1 : 0;
    }
    QVERIFY(valid > 2000 && valid < 18'000);
}

QTEST_GUILESS_MAIN(FieldTextTest)
#include "FieldTextTest.moc"
