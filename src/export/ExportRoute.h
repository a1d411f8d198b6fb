#pragma once

#include "platform/Instant.h"
#include "telemetry/CustomLocation.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace cardreel {

class Telemetry;

/// The fixes of one day's recordings, in order. Never without a fix.
struct ExportDay
{
    std::vector<CustomLocation> fixes;
    std::vector<std::size_t> runStarts; ///< where in `fixes` each unbroken run begins, from 0 on

    std::size_t runCount() const { return runStarts.size(); }
    std::span<const CustomLocation> run(std::size_t index) const;
};

/// An event recording with a position.
struct ExportEvent
{
    CustomLocation fix; ///< the recording's first, with the speed and course that it borrows from earlier recordings
    QString eventName;  ///< one of ConstClass::DCF_EVENTNAME_…
};

/// What an export draws: the route, day by day, and the events. Filled recording by recording; one thread at a time.
/// Fixes without a readable position are left out. An event that begins before its recording's first speed or course
/// has the last known one of the recordings added before: the speed for 15 s, the course without a limit. What the
/// window shows borrows from the recording before on the card instead, so nothing of it is taken or changed.
class ExportRoute
{
public:
    /// The recording's fixes begin a new day when the first is from a later calendar day, in the local zone, than the
    /// first of the present day. A recording of an earlier day never does. Without fixes nothing is drawn of it.
    void add(const Telemetry& recording, const std::optional<QString>& eventName);

    const std::vector<ExportDay>& days() const { return m_days; }
    const std::vector<ExportEvent>& events() const { return m_events; }

private:
    void addFixes(const Telemetry& recording, const std::optional<QString>& eventName);
    void addFix(const CustomLocation& fix, bool followsTheLast);
    CustomLocation withLentMotion(CustomLocation fix, std::span<const CustomLocation> before) const;

    std::vector<ExportDay> m_days;
    std::vector<ExportEvent> m_events;
    Instant m_reference{}; ///< the first fix of the present day; meaningful when there is a day
    CustomLocation m_lastSpeed = CustomLocation::placeholder();  ///< the last fix that had a speed
    CustomLocation m_lastCourse = CustomLocation::placeholder(); ///< the last fix that had a course
    bool m_endedWithAFix = false; ///< whether the last recording's last fix was one that can be drawn
};

} // namespace cardreel
