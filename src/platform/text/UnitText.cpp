#include "platform/text/UnitText.h"

#include <unicode/locid.h>
#include <unicode/measunit.h>
#include <unicode/numberformatter.h>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

struct Unit
{
    double bytes;
    icu::number::LocalizedNumberFormatter format;
};

std::array<Unit, 5> unitsIn(const icu::Locale& locale)
{
    const auto made = [&](double bytes, const icu::MeasureUnit& unit, int decimals) {
        return Unit{bytes, icu::number::NumberFormatter::withLocale(locale)
                               .unit(unit)
                               .unitWidth(UNUM_UNIT_WIDTH_SHORT)
                               .precision(icu::number::Precision::fixedFraction(decimals))};
    };
    return {made(1, icu::MeasureUnit::getByte(), 0), made(1e3, icu::MeasureUnit::getKilobyte(), 1),
            made(1e6, icu::MeasureUnit::getMegabyte(), 1), made(1e9, icu::MeasureUnit::getGigabyte(), 1),
            made(1e12, icu::MeasureUnit::getTerabyte(), 1)};
}

} // namespace

QString dataSizeText(quint64 bytes)
{
    // Reading a unit's names from the locale's data costs fifty times as much as using them.
    thread_local icu::Locale locale = icu::Locale::getDefault();
    thread_local std::array<Unit, 5> units = unitsIn(locale);
    if (locale != icu::Locale::getDefault()) {
        locale = icu::Locale::getDefault();
        units = unitsIn(locale);
    }
    const auto value = static_cast<double>(bytes);
    size_t fitting = 0;
    while (fitting + 1 < units.size() && value >= units[fitting + 1].bytes)
        ++fitting;
    const Unit& unit = units[fitting];

    UErrorCode error = U_ZERO_ERROR;
    const icu::UnicodeString text = unit.format.formatDouble(value / unit.bytes, error).toString(error);
    return QString(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
}

QString playTimeText(double seconds)
{
    const qint64 whole = std::isfinite(seconds) && seconds > 0 ? static_cast<qint64>(seconds) : 0;
    const QString minutesAndSeconds = u"%1:%2"_s.arg(whole / 60 % 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
    return whole < 3600 ? minutesAndSeconds
                        : u"%1:%2:%3"_s.arg(whole / 3600)
                              .arg(whole / 60 % 60, 2, 10, QLatin1Char('0'))
                              .arg(whole % 60, 2, 10, QLatin1Char('0'));
}

} // namespace cardreel
