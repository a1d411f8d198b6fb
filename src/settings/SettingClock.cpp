#include "settings/SettingClock.h"

#include "platform/text/DateText.h"

#include <QLocale>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace cardreel {

ClockReading localClockReading(Instant instant)
{
    // The locale brings its calendar; the figures are wanted as they are written everywhere.
    const DateText format =
        DateText::patterned(u"y M d H m s"_s, QLocale::system().name() + u"@numbers=latn"_s, TimeZone::Local);
    const QStringList figures = format.text(instant).split(u' ');
    if (figures.size() != 6)
        return {};
    return {figures[0].toInt(), figures[1].toInt(), figures[2].toInt(),
            figures[3].toInt(), figures[4].toInt(), figures[5].toInt()};
}

ClockReading currentClockReading()
{
    return localClockReading(now());
}

} // namespace cardreel
