#pragma once

#include "telemetry/CustomLocation.h"
#include "telemetry/DriveSupportData.h"
#include "telemetry/IndexedList.h"
#include "telemetry/MotionData.h"

#include <cstddef>
#include <iterator>
#include <span>
#include <vector>

namespace cardreel {

class Telemetry;

/// One group of pictures: the fix that opens it, and the samples and warnings logged until the next. A view into the
/// snapshot that handed it out, and valid as long as that; cheap to copy.
class GOPData
{
public:
    /// An empty group.
    GOPData()
        : m_location(&CustomLocation::placeholder())
    {
    }
    GOPData(const CustomLocation& location, std::span<const MotionData> motions,
            IndexedList<DriveSupportData> driveSupportInfos)
        : m_location(&location)
        , m_motions(motions)
        , m_driveSupportInfos(driveSupportInfos)
    {
    }

    /// The placeholder fix when the group has no fix of its own.
    const CustomLocation& location() const { return *m_location; }
    std::span<const MotionData> motions() const { return m_motions; }
    IndexedList<DriveSupportData> driveSupportInfos() const { return m_driveSupportInfos; }

private:
    const CustomLocation* m_location;
    std::span<const MotionData> m_motions;
    IndexedList<DriveSupportData> m_driveSupportInfos;
};

/// A group that owns what it holds.
struct ParsedGOP
{
    CustomLocation location = CustomLocation::placeholder();
    std::vector<MotionData> motions;
    std::vector<DriveSupportData> driveSupportInfos;
};

/// The groups of a file, in file order. A view, valid as long as the snapshot that handed it out.
class GOPList
{
public:
    class Iterator
    {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = GOPData;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = GOPData;

        Iterator(const GOPList* list, std::size_t at)
            : m_list(list)
            , m_at(at)
        {
        }

        GOPData operator*() const { return (*m_list)[m_at]; }
        Iterator& operator++()
        {
            ++m_at;
            return *this;
        }
        bool operator==(const Iterator& other) const { return m_at == other.m_at; }

    private:
        const GOPList* m_list;
        std::size_t m_at;
    };

    explicit GOPList(const Telemetry& telemetry)
        : m_telemetry(&telemetry)
    {
    }

    std::size_t size() const;
    bool empty() const { return size() == 0; }
    GOPData operator[](std::size_t i) const;
    GOPData front() const { return operator[](0); }
    GOPData back() const { return operator[](size() - 1); }
    Iterator begin() const { return {this, 0}; }
    Iterator end() const { return {this, size()}; }

private:
    const Telemetry* m_telemetry;
};

} // namespace cardreel
