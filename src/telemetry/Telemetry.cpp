#include "telemetry/Telemetry.h"

namespace cardreel {

void Telemetry::shrink()
{
    const auto shrinkList = [](auto& list) {
        // A few percent aren't worth moving the list for.
        if (list.capacity() - list.size() > list.size() / 32)
            list.shrink_to_fit();
    };
    shrinkList(m_totalLocations);
    shrinkList(m_varidLocations);
    shrinkList(m_lists->GOPs);
    shrinkList(m_lists->motions);
    shrinkList(m_lists->driveSupports);
    shrinkList(m_lists->records);
}

} // namespace cardreel
