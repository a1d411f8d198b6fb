#pragma once

#include <chrono>

namespace cardreel {

/// The time of a playing file between its frames. A decoder tells a file's time once a frame; this clock goes on from
/// there, never past the end of that frame. Owned by VideoPlayer; interface thread.
class PlayClock
{
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// A frame lasts so many seconds of the file; 0 when unknown. The clock starts anew at 0.
    void reset(double frameSeconds);
    /// Seconds of the file that go by in one of the clock's own while it runs.
    void setSpeed(double speed, Moment now);
    void setRunning(bool running, Moment now);

    /// Stands at a time until the next report.
    void jump(double seconds);
    /// Goes on from a time for half a second at most, until the next report.
    void jumpOnTheRun(double seconds, Moment now);
    /// A frame that starts at a time of the file came on.
    void report(double seconds, Moment now);

    /// The last frame has been shown for as long as it lasts.
    void finish();

    /// Seconds of the file.
    double time(Moment now) const;

private:
    double m_frameSeconds = 0;
    double m_spanSeconds = 0; ///< how long the present frame stays
    double m_base = 0;
    double m_latest = 0; ///< the clock goes no further before the next report
    double m_reported = -1;
    double m_speed = 1;
    Moment m_since;
    bool m_isRunning = false;
};

} // namespace cardreel
