#include "platform/text/UnitText.h"

#include <unicode/measunit.h>
#include <unicode/numberformatter.h>

#include <array>

namespace cardreel {

QString dataSizeText(quint64 bytes)
{
    struct Unit
    {
        double bytes;
        icu::MeasureUnit unit;
        int decimals;
    };
    static const std::array<Unit, 5> units = {{{1, icu::MeasureUnit::getByte(), 0},
                                               {1e3, icu::MeasureUnit::getKilobyte(), 1},
                                               {1e6, icu::MeasureUnit::getMegabyte(), 1},
                                               {1e9, icu::MeasureUnit::getGigabyte(), 1},
                                               {1e12, icu::MeasureUnit::getTerabyte(), 1}}};
    const auto value = static_cast<double>(bytes);
    size_t fitting = 0;
    while (fitting + 1 < units.size() && value >= units[fitting + 1].bytes)
        ++fitting;
    const Unit& unit = units[fitting];

    UErrorCode error = U_ZERO_ERROR;
    const icu::UnicodeString text = icu::number::NumberFormatter::withLocale(icu::Locale::getDefault())
                                        .unit(unit.unit)
                                        .unitWidth(UNUM_UNIT_WIDTH_SHORT)
                                        .precision(icu::number::Precision::fixedFraction(unit.decimals))
                                        .formatDouble(value / unit.bytes, error)
                                        .toString(error);
    return QString(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
}

} // namespace cardreel
