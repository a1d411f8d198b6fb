#include "telemetry/FieldText.h"

#include <QString>

#include <charconv>
#include <chrono>
#include <cmath>

namespace cardreel {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

unsigned twoDigits(const char* at)
{
    return static_cast<unsigned>((at[0] - '0') * 10 + (at[1] - '0'));
}

bool areDigits(std::string_view text)
{
    for (const char c : text) {
        if (!isDigit(c))
            return false;
    }
    return true;
}

/// The earliest moment that a two-digit year can mean. One for the life of the program, as a formatter has one for its
/// own.
Instant centuryStart()
{
    static const Instant start = DateText::patterned(QString::fromUtf16(FixDateReader::PATTERN),
                                                     QString::fromUtf16(FixDateReader::LOCALE), TimeZone::Utc)
                                     .twoDigitYearStart();
    return start;
}

} // namespace

std::optional<double> decimalNumber(std::string_view text)
{
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-')
            return std::nullopt;
    }
    const char* at = text.data();
    const char* const end = at + text.size();
    double value = 0;
    // Digits enough for any receiver, copied so that they end in something that is no digit.
    constexpr std::size_t SHORT = 18;
    if (text.size() < SHORT) {
        std::array<char, SHORT> copy{};
        text.copy(copy.data(), SHORT - 1);
        const char* behind = copy.data();
        if (scanShortDecimal(behind, value) && behind == copy.data() + text.size())
            return value;
    }
    // from_chars would take "nan" and "inf".
    const char* const first = at != end && *at == '-' ? at + 1 : at;
    if (first == end || !(isDigit(*first) || *first == '.'))
        return std::nullopt;
    const auto [behind, error] = std::from_chars(at, end, value, std::chars_format::general);
    if (error != std::errc() || behind != end)
        return std::nullopt;
    return value;
}

std::optional<double> degrees(std::string_view value, std::string_view hemisphere)
{
    const bool isPositive = hemisphere == "N" || hemisphere == "E";
    if (!isPositive && hemisphere != "S" && hemisphere != "W")
        return std::nullopt;
    const std::optional<double> number = decimalNumber(value);
    if (!number)
        return std::nullopt;
    const double whole = std::trunc(*number / 100);
    const double result = whole + (*number - 100 * whole) / 60;
    return isPositive ? result : -result;
}

std::optional<Instant> FixDateReader::read(std::string_view date, std::string_view time)
{
    if (const std::optional<Instant> direct = readDirectly(date, time))
        return direct;
    // A receiver that was just switched on knows neither, for minutes.
    if (date.empty() && time.empty())
        return std::nullopt;
    if (!m_formatter) {
        m_formatter.emplace(
            DateText::patterned(QString::fromUtf16(PATTERN), QString::fromUtf16(LOCALE), TimeZone::Utc));
    }
    return m_formatter->instant(QString::fromUtf8(date.data(), static_cast<qsizetype>(date.size())) + u' ' +
                                QString::fromUtf8(time.data(), static_cast<qsizetype>(time.size())));
}

std::optional<Instant> FixDateReader::readDirectly(std::string_view date, std::string_view time)
{
    using namespace std::chrono;
    if (date.size() != 6 || time.size() < 8 || time.size() > 10 || time[6] != '.' || !areDigits(date) ||
        !areDigits(time.substr(0, 6)) || !areDigits(time.substr(7)))
        return std::nullopt;
    const hours hour(twoDigits(time.data()));
    const minutes minute(twoDigits(time.data() + 2));
    const seconds second(twoDigits(time.data() + 4));
    if (hour.count() > 23 || minute.count() > 59 || second.count() > 59)
        return std::nullopt;
    int thousandths = 0; // one digit means tenths
    for (std::size_t i = 7; i < 10; ++i)
        thousandths = thousandths * 10 + (i < time.size() ? time[i] - '0' : 0);

    const Instant start = centuryStart();
    const int startYear = static_cast<int>(year_month_day(floor<days>(start)).year());
    const auto at = [&](int wholeYear) -> std::optional<Instant> {
        const year_month_day day(year(wholeYear), month(twoDigits(date.data() + 2)),
                                 std::chrono::day(twoDigits(date.data())));
        if (!day.ok())
            return std::nullopt;
        return sys_days(day) + hour + minute + second + milliseconds(thousandths);
    };
    const int inCentury = startYear - startYear % 100 + static_cast<int>(twoDigits(date.data() + 4));
    const bool isEarlier = inCentury < startYear;
    const std::optional<Instant> first = at(isEarlier ? inCentury + 100 : inCentury);
    // Within the year in which the hundred years begin, the day decides.
    return first && *first < start ? at(inCentury + 100) : first;
}

} // namespace cardreel
