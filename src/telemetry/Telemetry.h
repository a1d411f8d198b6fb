#pragma once

#include "telemetry/CustomLocation.h"
#include "telemetry/DriveSupportData.h"
#include "telemetry/GOPData.h"
#include "telemetry/IndexedList.h"
#include "telemetry/MotionData.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <vector>

namespace cardreel {

/// Where a group's parts stand in the file's lists.
struct GOPRange
{
    static constexpr uint32_t NO_LOCATION = std::numeric_limits<uint32_t>::max();

    uint32_t location = NO_LOCATION; ///< index into the fixes
    uint32_t firstMotion = 0;
    uint32_t motionCount = 0;
    uint32_t firstSupport = 0;
    uint32_t supportCount = 0;
};

/// The lists that hang on each other by index, each stored once for the whole file.
struct TelemetryLists
{
    std::vector<GOPRange> GOPs;
    std::vector<MotionData> motions;
    std::vector<uint32_t> driveSupports; ///< indices into `records`
    std::vector<DriveSupportData> records;
};

/// Everything that was read from a side file. Filled by the parser, then published and never changed again, so that any
/// thread may read it without a lock for as long as it holds the shared pointer.
class Telemetry
{
public:
    const QString& tripID() const { return m_tripID; }
    const QString& version() const { return m_version; }
    double maxSpeed() const { return m_maxSpeed; }         ///< metres per second; 0 when no fix has a speed
    double maxMotionABS() const { return m_maxMotionABS; } ///< G, over all three axes

    GOPList GOPs() const { return GOPList(*this); }
    /// Every fix, those without a position too.
    std::span<const CustomLocation> totalLocations() const { return m_totalLocations; }
    /// The fixes that the receiver called valid.
    IndexedList<CustomLocation> varidLocations() const { return {m_varidLocations, m_totalLocations}; }
    /// Every sample of the file: the groups' samples one after another.
    std::span<const MotionData> motions() const { return m_lists->motions; }
    IndexedList<DriveSupportData> driveSupports() const { return {m_lists->driveSupports, m_lists->records}; }

    /// The last fix that had a speed, or the placeholder fix.
    const CustomLocation& lastValidSpeedLocation() const { return m_lastValidSpeedLocation; }
    /// The last fix that had a course, or the placeholder fix.
    const CustomLocation& lastValidHeadingLocation() const { return m_lastValidHeadingLocation; }

private:
    friend class GOPList;
    friend class NMEAData;
    friend class SentenceParser;
    friend class SideFileParser;

    /// Gives back what the lists took for growing.
    void shrink();

    QString m_tripID;
    QString m_version;
    double m_maxSpeed = 0;
    double m_maxMotionABS = 0;
    CustomLocation m_lastValidSpeedLocation = CustomLocation::placeholder();
    CustomLocation m_lastValidHeadingLocation = CustomLocation::placeholder();
    std::vector<CustomLocation> m_totalLocations;
    std::vector<uint32_t> m_varidLocations; ///< indices into the former
    /// Shared between snapshots that differ in their fixes only.
    std::shared_ptr<TelemetryLists> m_lists = std::make_shared<TelemetryLists>();
};

} // namespace cardreel
