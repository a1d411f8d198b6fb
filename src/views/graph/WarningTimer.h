#pragma once

#include <cstddef>
#include <optional>

namespace cardreel {

/// Which driver-assistance warning is to be seen. While playing, a new one stays for two seconds, however short its
/// record: records that say nothing come after it and don't cut its time. While not playing it is the one of the moment
/// or none, and no time goes by. A value.
class WarningTimer
{
public:
    static constexpr double shownSeconds = 2.0;

    /// The record of the moment, by its place in the recording, and whether it warns of anything; the time is any
    /// clock's that only goes forward. The record whose warning is to be seen, or none.
    std::optional<std::size_t> update(std::optional<std::size_t> record, bool warns, bool isPlaying, double nowSeconds);
    /// Another recording: nothing is seen and nothing remembered.
    void reset() { *this = {}; }

private:
    std::optional<std::size_t> m_remembered; ///< the record of the last update
    std::optional<std::size_t> m_shown;
    std::optional<double> m_until; ///< none while no time goes by
};

} // namespace cardreel
