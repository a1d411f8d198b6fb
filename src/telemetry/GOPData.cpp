#include "telemetry/GOPData.h"

#include "telemetry/Telemetry.h"

namespace cardreel {

std::size_t GOPList::size() const
{
    return m_telemetry->m_lists->GOPs.size();
}

GOPData GOPList::operator[](std::size_t i) const
{
    const TelemetryLists& lists = *m_telemetry->m_lists;
    const GOPRange& range = lists.GOPs[i];
    const CustomLocation& location = range.location == GOPRange::NO_LOCATION
                                         ? CustomLocation::placeholder()
                                         : m_telemetry->m_totalLocations[range.location];
    return {location, m_telemetry->motions().subspan(range.firstMotion, range.motionCount),
            IndexedList<DriveSupportData>(
                std::span(lists.driveSupports).subspan(range.firstSupport, range.supportCount), lists.records)};
}

} // namespace cardreel
