#include "settings/TimeZoneConverter.h"

#include "platform/text/DateText.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int utcSelection = 23;

constexpr std::array<qint16, 38> selectionMinutes = {
    840, 780, 765, 720, 660, 630, 600,  570,  540,  525,  480,  420,  390,  3600, 345,  330,  300,  270,  240,
    210, 180, 120, 60,  0,   -60, -120, -180, -210, -240, -300, -360, -420, -480, -540, -570, -600, -660, -720};

constexpr std::array<double, 38> selectionHours = {14, 13,   12.75, 12, 11,  10.5, 10,  9.5, 9,    8.75, 8,   7,  6.5,
                                                   6,  5.75, 5.5,   5,  4.5, 4,    3.5, 3,   2,    1,    0,   -1, -2,
                                                   -3, -3.5, -4,    -5, -6,  -7,   -8,  -9,  -9.5, -10,  -11, -12};

int selectionOfHours(double hours)
{
    const auto* const found = std::find(selectionHours.begin(), selectionHours.end(), hours);
    return found == selectionHours.end() ? utcSelection : static_cast<int>(found - selectionHours.begin());
}

} // namespace

int TimeZoneConverter::convertTimeDiffToTimeZoneSelection(qint16 timeDiff)
{
    return selectionOfHours(timeDiff / 60.0);
}

qint16 TimeZoneConverter::convertTimeZoneSelectionToTimeDiff(int selection)
{
    if (selection < 0 || selection >= static_cast<int>(selectionMinutes.size()))
        return 0;
    return selectionMinutes[static_cast<std::size_t>(selection)];
}

int TimeZoneConverter::getDefaultTimeZoneSelection(Instant present)
{
    const auto format = [](TimeZone zone) {
        return DateText::patterned(u"MMM d, y, h:mm:ss a"_s, u"en_US_POSIX"_s, zone);
    };
    const auto asUtc = format(TimeZone::Utc).instant(format(TimeZone::Local).text(present));
    if (!asUtc)
        return selectionOfHours(0);
    // The text has whole seconds only; rounding up makes good for the fraction it lost.
    const double hours = (secondsSince1970(*asUtc) - secondsSince1970(present)) / 3600;
    return selectionOfHours(std::ceil(hours * 100) / 100);
}

} // namespace cardreel
