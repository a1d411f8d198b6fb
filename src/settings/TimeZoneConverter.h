#pragma once

#include "platform/Instant.h"

#include <QtGlobal>

namespace cardreel {

/// Between a time zone as the settings file has it (minutes east of UTC) and the index of its entry in
/// UnitSettingViewModel::timeZoneChoises. Any thread.
class TimeZoneConverter
{
public:
    /// The entry of exactly this offset; that of UTC when there is none.
    static int convertTimeDiffToTimeZoneSelection(qint16 timeDiff);

    /// Minutes; 0 for a selection that isn't one. "UTC+06:00" gives 3600, as the cameras have always been given.
    static qint16 convertTimeZoneSelectionToTimeDiff(int selection);

    /// The entry of this computer's zone at the given moment.
    static int getDefaultTimeZoneSelection(Instant present = now());
};

} // namespace cardreel
