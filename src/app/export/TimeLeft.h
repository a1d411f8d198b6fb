#pragma once

#include <QtGlobal>

#include <optional>

namespace cardreel {

/// How long a job is still going to take, judged by how long it took so far, and told so that the figure doesn't waver.
/// Times are milliseconds since the job began.
class TimeLeft
{
public:
    /// The job has come so far, 0 to 1.
    void jobDidReach(double fraction, qint64 nowMs);

    /// Whole minutes, 0 for less than one; nothing while it is too early to say, or when an item takes longer than the
    /// others let expect. What was told goes up only when it was clearly wrong.
    std::optional<int> minutes(qint64 nowMs);

private:
    std::optional<qint64> m_endMs; ///< where it will all be done
    std::optional<int> m_told;
};

} // namespace cardreel
