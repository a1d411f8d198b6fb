#pragma once

#include "telemetry/FieldText.h"
#include "telemetry/Telemetry.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace cardreel {

/// The fields of one sentence. Looks at the sentence's own bytes.
class SentenceFields
{
public:
    /// More than any sentence has; further ones are only counted.
    static constexpr std::size_t KEPT = 28;

    explicit SentenceFields(const char* begin) { m_commas[0] = begin - 1; }
    static SentenceFields split(std::string_view sentence);

    void addComma(const char* comma)
    {
        if (m_count < KEPT)
            m_commas[m_count] = comma;
        else if (m_count == KEPT)
            m_end = comma;
        ++m_count;
    }
    void finish(const char* end)
    {
        if (m_count <= KEPT)
            m_end = end;
    }

    std::size_t count() const { return m_count; }
    /// Without spaces and tabs around it. The first field, at 0, is the tag; empty when it was cut off.
    std::string_view operator[](std::size_t i) const;
    /// What stands between two fields' outer ends, as it was written.
    std::string_view text(std::size_t first, std::size_t last) const;

private:
    const char* endOf(std::size_t i) const { return i + 1 < std::min(m_count, KEPT) ? m_commas[i + 1] : m_end; }

    std::array<const char*, KEPT> m_commas; ///< before each field; only the first m_count are set
    const char* m_end = nullptr;            ///< of the last field kept
    std::size_t m_count = 1;
};

/// Turns single sentences into fixes, samples and records, and keeps the maxima and the last valid fixes up to date.
/// Malformed sentences are passed over. Lives for one parse on the thread that does it.
class SentenceParser
{
public:
    /// Whether the sentence has its tag, or lost it where the text was cut: then it is a fix.
    enum class Tag { Written, CutOff };

    /// A speed is lent to fixes that are younger by less than this.
    static constexpr std::chrono::seconds SPEED_LIFETIME{15};

    /// Appends to the lists of `telemetry`, which nobody else sees yet; no more than `driveSupportLimit` records.
    SentenceParser(Telemetry& telemetry, std::size_t driveSupportLimit);

    void beginGroup();
    /// What came since the group began.
    GOPRange group() const;

    void parse(const SentenceFields& fields, Tag tag);
    void addSample(double gx, double gy, double gz)
    {
        m_maxMotionABS = std::max({m_maxMotionABS, std::abs(gx), std::abs(gy), std::abs(gz)});
        m_motions.emplace_back(gx, gy, gz);
    }
    /// Hands over what is kept aside for speed. To be called before the telemetry is used.
    void finish();

private:
    struct KeyHash
    {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
    };

    void parseTrip(const SentenceFields& fields);
    void parseFix(const SentenceFields& fields);
    void parseSample(const SentenceFields& fields);
    void parseDriveSupport(const SentenceFields& fields);

    Telemetry& m_telemetry;
    TelemetryLists& m_lists;
    std::vector<MotionData>& m_motions;
    double m_maxMotionABS;
    GOPRange m_group;
    FixDateReader m_dates;
    const std::size_t m_driveSupportLimit;
    /// Records of this parse by what they were decoded from.
    std::unordered_map<std::string, uint32_t, KeyHash, std::equal_to<>> m_recordOfText;
};

} // namespace cardreel
