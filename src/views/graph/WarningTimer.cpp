#include "views/graph/WarningTimer.h"

namespace cardreel {

std::optional<std::size_t> WarningTimer::update(std::optional<std::size_t> record, bool warns, bool isPlaying,
                                                double nowSeconds)
{
    if (!isPlaying) {
        m_shown = warns ? record : std::nullopt;
        m_until.reset();
    } else if (warns && record != m_remembered) {
        m_shown = record;
        m_until = nowSeconds + shownSeconds;
    } else if (m_shown && !m_until) {
        m_until = nowSeconds + shownSeconds; // it was seen during a pause that is over
    } else if (m_until && nowSeconds >= *m_until) {
        m_shown.reset();
        m_until.reset();
    }
    m_remembered = record;
    return m_shown;
}

} // namespace cardreel
