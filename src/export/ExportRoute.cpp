#include "export/ExportRoute.h"

#include "media/RouteColors.h"
#include "telemetry/SentenceParser.h"
#include "telemetry/Telemetry.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>

namespace cardreel {

namespace {

/// Recorders write a fix a second: after a longer silence nobody knows the way between.
constexpr std::chrono::seconds longestKnownStretch(10);

/// Whether time goes on from one fix to the next without a hole. Fixes without a date don't tell.
bool goesOn(const CustomLocation& fix, const CustomLocation& next)
{
    if (fix.timestamp == Instant{} || next.timestamp == Instant{})
        return true;
    const auto passed = next.timestamp - fix.timestamp;
    return passed >= Instant::duration::zero() && passed <= longestKnownStretch;
}

} // namespace

std::span<const CustomLocation> ExportDay::run(std::size_t index) const
{
    const std::size_t end = index + 1 < runStarts.size() ? runStarts[index + 1] : fixes.size();
    return std::span(fixes).subspan(runStarts[index], end - runStarts[index]);
}

void ExportRoute::addFix(const CustomLocation& fix, bool followsTheLast)
{
    ExportDay& day = m_days.back();
    if (day.fixes.empty() || !followsTheLast || !goesOn(day.fixes.back(), fix))
        day.runStarts.push_back(day.fixes.size());
    day.fixes.push_back(fix);
}

CustomLocation ExportRoute::withLentMotion(CustomLocation fix, std::span<const CustomLocation> before) const
{
    // Behind a value of the same file the parse has lent that one already.
    if (!fix.hasSpeed() && std::none_of(before.begin(), before.end(), std::mem_fn(&CustomLocation::hasSpeed))) {
        const bool isRecent =
            m_lastSpeed.hasSpeed() && fix.timestamp - m_lastSpeed.timestamp < SentenceParser::SPEED_LIFETIME;
        fix.correctedSpeed = isRecent ? m_lastSpeed.speed : 0;
    }
    if (!fix.hasCourse() && std::none_of(before.begin(), before.end(), std::mem_fn(&CustomLocation::hasCourse)))
        fix.correctedDirection = m_lastCourse.course;
    return fix;
}

void ExportRoute::add(const Telemetry& recording, const std::optional<QString>& eventName)
{
    addFixes(recording, eventName);
    if (recording.lastValidSpeedLocation().hasSpeed())
        m_lastSpeed = recording.lastValidSpeedLocation();
    if (recording.lastValidHeadingLocation().hasCourse())
        m_lastCourse = recording.lastValidHeadingLocation();
}

void ExportRoute::addFixes(const Telemetry& recording, const std::optional<QString>& eventName)
{
    const auto fixes = recording.varidLocations();
    const auto first =
        std::find_if(fixes.begin(), fixes.end(), [](const CustomLocation& fix) { return fix.isValid(); });
    if (first == fixes.end()) {
        // A drive without reception is a break; a recording without any telemetry says nothing of the next one.
        m_endedWithAFix = m_endedWithAFix && recording.totalLocations().empty();
        return;
    }
    if (m_days.empty() || shouldChangeRouteColor(first->timestamp, m_reference)) {
        m_days.emplace_back();
        m_reference = first->timestamp;
    }
    // Fixes that follow each other in the file have none between them that was void or unreadable.
    const CustomLocation* const all = recording.totalLocations().data();
    if (eventName)
        m_events.push_back({withLentMotion(*first, {all, &*first}), *eventName});
    std::optional<std::ptrdiff_t> next; // the place of the fix that would follow the last one added
    if (m_endedWithAFix)
        next = 0;
    for (const CustomLocation& fix : fixes) {
        if (!fix.isValid())
            continue;
        const std::ptrdiff_t place = &fix - all;
        addFix(fix, next == place);
        next = place + 1;
    }
    m_endedWithAFix = next == std::ssize(recording.totalLocations());
}

} // namespace cardreel
