#include "platform/video/PlayClock.h"

#include <algorithm>

namespace cardreel {

namespace {

constexpr double usualFrameSeconds = 1.0 / 30;
// Frames farther apart than this aren't neighbours: the file was sought between them.
constexpr double largestSpanSeconds = 5;
constexpr double longestGuessSeconds = 0.5;

} // namespace

void PlayClock::reset(double frameSeconds)
{
    m_frameSeconds = frameSeconds > 0 ? frameSeconds : usualFrameSeconds;
    m_spanSeconds = m_frameSeconds;
    jump(0);
}

void PlayClock::setSpeed(double speed, Moment now)
{
    m_base = time(now);
    m_since = now;
    m_speed = speed;
}

void PlayClock::setRunning(bool running, Moment now)
{
    m_base = time(now);
    m_since = now;
    m_isRunning = running;
}

void PlayClock::jump(double seconds)
{
    m_base = m_latest = seconds;
    m_reported = -1;
}

void PlayClock::jumpOnTheRun(double seconds, Moment now)
{
    jump(seconds);
    m_since = now;
    m_latest = seconds + longestGuessSeconds * m_speed;
}

void PlayClock::report(double seconds, Moment now)
{
    // Where only key frames are decoded a picture stays as long as the way to the next one.
    const double span = m_reported >= 0 ? seconds - m_reported : 0;
    m_spanSeconds = span > m_frameSeconds && span < largestSpanSeconds ? span : m_frameSeconds;
    m_base = seconds;
    m_latest = seconds + m_spanSeconds;
    m_reported = seconds;
    m_since = now;
}

void PlayClock::finish()
{
    if (m_reported >= 0)
        jump(m_reported + m_spanSeconds);
}

double PlayClock::time(Moment now) const
{
    if (!m_isRunning)
        return m_base;
    const double gone = std::chrono::duration<double>(now - m_since).count() * m_speed;
    return std::clamp(m_base + std::max(gone, 0.0), m_base, std::max(m_latest, m_base));
}

} // namespace cardreel
