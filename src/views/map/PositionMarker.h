#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace cardreel {

class DCFInfo;
struct CustomLocation;
struct CustomPointAnnotation;

// How the marker of the present position follows a drive. Plain rules, kept apart from the map; interface thread.

/// A fix further away, in seconds, says nothing about the moment shown.
inline constexpr double availableWithinSeconds = 3.0;

/// Seconds since 1970 of a moment `currentTime` seconds into a recording of `totalTime` seconds; 0 for a recording
/// without dates.
double timeOfDay(const DCFInfo& dcf, double currentTime, double totalTime);

/// The marker that takes the place of `previous`, which may be missing: at the fix, with its speed and course or, where
/// these are negative, the previous marker's. Nothing when the fix is missing or has no position to draw, or when the
/// previous marker says the same place and availability already.
std::optional<CustomPointAnnotation> movedMarker(const CustomLocation* fix, bool GPSEnable,
                                                 const CustomPointAnnotation* previous);

/// Lets something happen twice a second at most.
class Throttle
{
public:
    /// It doesn't jump when the computer's clock is set.
    using Clock = std::chrono::steady_clock;
    using Now = std::function<Clock::time_point()>;

    static constexpr std::chrono::milliseconds pause{500};

    explicit Throttle(Now now = &Clock::now);

    /// Whether it may happen now, which then counts as the last time.
    bool pass();

private:
    Now m_now;
    std::optional<Clock::time_point> m_lastUpdate;
};

} // namespace cardreel
