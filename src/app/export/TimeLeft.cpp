#include "app/export/TimeLeft.h"

#include <algorithm>

namespace cardreel {

namespace {

constexpr qint64 earliestMs = 1500; // the first items say little
constexpr double minuteMs = 60'000;

} // namespace

void TimeLeft::jobDidReach(double fraction, qint64 nowMs)
{
    if (fraction > 0)
        m_endMs = qRound64(static_cast<double>(nowMs) / std::min(fraction, 1.0));
}

std::optional<int> TimeLeft::minutes(qint64 nowMs)
{
    if (!m_endMs || nowMs < earliestMs || nowMs > *m_endMs)
        return std::nullopt;
    const double left = static_cast<double>(*m_endMs - nowMs) / minuteMs;
    // A minute and three quarters are about two, but three quarters are less than one.
    const int minutes = left < 1 ? 0 : qRound(left);
    if (!m_told || minutes < *m_told || left > *m_told + 1.5)
        m_told = minutes;
    return m_told;
}

} // namespace cardreel
