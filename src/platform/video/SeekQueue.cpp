#include "platform/video/SeekQueue.h"

#include <utility>

namespace cardreel {

std::optional<SeekQueue::Target> SeekQueue::request(Target target)
{
    if (m_isBusy) {
        m_next = target;
        return std::nullopt;
    }
    m_isBusy = true;
    return target;
}

std::optional<SeekQueue::Target> SeekQueue::finished()
{
    m_isBusy = m_next.has_value();
    return std::exchange(m_next, std::nullopt);
}

void SeekQueue::hold()
{
    m_isBusy = true;
    m_next.reset();
}

void SeekQueue::clear()
{
    m_isBusy = false;
    m_next.reset();
}

} // namespace cardreel
