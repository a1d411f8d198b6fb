#pragma once

#include "platform/Instant.h"

#include <functional>

namespace cardreel {

/// A moment as a clock on the wall shows it: plain numbers, the month from 1.
struct ClockReading
{
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// The present moment as it is written into a settings file.
using SettingClock = std::function<ClockReading()>;

/// The moment in the user's zone and calendar (a Thai user's year is Buddhist). Any thread.
ClockReading localClockReading(Instant instant);
/// The present moment so. Any thread.
ClockReading currentClockReading();

} // namespace cardreel
