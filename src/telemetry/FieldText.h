#pragma once

#include "platform/Instant.h"
#include "platform/text/DateText.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

// How the texts of a sentence's fields become values. Fields come trimmed. Any thread.
namespace cardreel {

/// The number that the whole text names in plain decimal notation: an optional sign, digits with an optional point, an
/// optional exponent. Correctly rounded. Nothing for everything else: an empty text, a letter behind the digits,
/// "nan", "inf", hexadecimal, and what a double can't hold.
std::optional<double> decimalNumber(std::string_view text);

/// Degrees from a receiver's degrees and minutes run together ("3540.6620") and its hemisphere ("N", "E", "S", "W"; the
/// last two negative). Ranges aren't checked. Nothing when either doesn't convert.
std::optional<double> degrees(std::string_view value, std::string_view hemisphere);

/// Reads the moments of fixes. Nearly all come in one form, which is computed directly; whatever else the recorder's
/// pattern admits is left to the date formatter, with the same result.
class FixDateReader
{
public:
    static constexpr const char16_t* PATTERN = u"ddMMyy HHmmss.SS";
    static constexpr const char16_t* LOCALE = u"ja_JP";

    /// The UTC instant of a date "ddmmyy" and a time "hhmmss.ss"; nothing when it doesn't fit.
    std::optional<Instant> read(std::string_view date, std::string_view time);

    /// The direct way alone; nothing when the texts have another form or a field is out of its range.
    static std::optional<Instant> readDirectly(std::string_view date, std::string_view time);

private:
    std::optional<DateText> m_formatter; ///< made at the first need
};

/// Reads a number such as "-0.1234" that begins at `text`, and moves `text` behind it. At most fifteen digits and no
/// exponent; false, with `text` anywhere, for what isn't that. The bytes must end in something that is no digit.
inline bool scanShortDecimal(const char*& text, double& value)
{
    static constexpr std::array<double, 16> POWERS = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                      1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char* at = text;
    const bool isNegative = *at == '-';
    at += isNegative;
    uint64_t digits = 0;
    const char* const first = at;
    unsigned digit = 0;
    for (; (digit = static_cast<unsigned>(*at - '0')) < 10; ++at)
        digits = digits * 10 + digit;
    auto count = at - first;
    std::size_t decimals = 0;
    if (*at == '.') {
        const char* const point = at;
        for (++at; (digit = static_cast<unsigned>(*at - '0')) < 10; ++at)
            digits = digits * 10 + digit;
        decimals = static_cast<std::size_t>(at - point - 1);
        count = at - first - 1;
    }
    text = at;
    // Both numbers are exact, so their quotient is the double nearest to the text.
    if (count == 0 || count > 15)
        return false;
    const double magnitude = static_cast<double>(digits) / POWERS[decimals];
    value = isNegative ? -magnitude : magnitude;
    return true;
}

} // namespace cardreel
