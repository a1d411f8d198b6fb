#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <vector>

namespace cardreel {

/// Records that are stored once and listed by their places, in file order: the valid fixes among all, or the
/// driver-assistance records, nearly all of which say the same nothing. A view: it lives as long as the snapshot that
/// handed it out.
template<typename Record>
class IndexedList
{
public:
    class Iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Record;
        using difference_type = std::ptrdiff_t;
        using pointer = const Record*;
        using reference = const Record&;

        Iterator() = default;
        Iterator(const uint32_t* index, const Record* records)
            : m_index(index)
            , m_records(records)
        {
        }

        reference operator*() const { return m_records[*m_index]; }
        pointer operator->() const { return m_records + *m_index; }
        Iterator& operator++()
        {
            ++m_index;
            return *this;
        }
        Iterator operator++(int)
        {
            Iterator before = *this;
            ++m_index;
            return before;
        }
        bool operator==(const Iterator& other) const { return m_index == other.m_index; }

    private:
        const uint32_t* m_index = nullptr;
        const Record* m_records = nullptr;
    };

    IndexedList() = default;
    IndexedList(std::span<const uint32_t> indices, const std::vector<Record>& records)
        : m_indices(indices)
        , m_records(records.data())
    {
    }

    std::size_t size() const { return m_indices.size(); }
    bool empty() const { return m_indices.empty(); }
    const Record& operator[](std::size_t i) const { return m_records[m_indices[i]]; }
    const Record& front() const { return operator[](0); }
    const Record& back() const { return operator[](size() - 1); }
    Iterator begin() const { return {m_indices.data(), m_records}; }
    Iterator end() const { return {m_indices.data() + m_indices.size(), m_records}; }

private:
    std::span<const uint32_t> m_indices;
    const Record* m_records = nullptr;
};

} // namespace cardreel
