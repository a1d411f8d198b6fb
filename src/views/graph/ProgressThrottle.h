#pragma once

#include <optional>

namespace cardreel {

/// Thins out the position line's updates at every rate but the recorder's own, where the line would only flicker. A
/// value.
class ProgressThrottle
{
public:
    static constexpr double pauseSeconds = 0.1;

    /// Whether an update that comes now is applied; the time is any clock's that only goes forward.
    bool admits(double playbackRate, double nowSeconds)
    {
        if (playbackRate != 1 && m_lastApplied && nowSeconds - *m_lastApplied < pauseSeconds)
            return false;
        didApply(nowSeconds);
        return true;
    }
    /// An update that was held back has been applied after all.
    void didApply(double nowSeconds) { m_lastApplied = nowSeconds; }

private:
    std::optional<double> m_lastApplied;
};

} // namespace cardreel
