#pragma once

#include <chrono>

namespace cardreel {

/// A moment in time: whole milliseconds since 1970-01-01 00:00:00 UTC. Every stored date of the program is one; zones
/// enter only where a text is made or read (platform/text/DateText.h).
using Instant = std::chrono::sys_time<std::chrono::milliseconds>;

/// The present moment, cut to milliseconds.
inline Instant now()
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

/// Seconds since 1970 with a fraction.
inline double secondsSince1970(Instant instant)
{
    return std::chrono::duration<double>(instant.time_since_epoch()).count();
}

} // namespace cardreel
