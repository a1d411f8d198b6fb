#include "telemetry/SentenceParser.h"

#include "names/ConstClass.h"

namespace cardreel {

namespace {

constexpr double METRES_PER_SECOND_PER_KNOT = 0.5144; // the recorder's own factor
constexpr std::size_t FIX_FIELDS = 13;
constexpr std::size_t SAMPLE_FIELDS = 4;
constexpr std::size_t LAST_DRIVE_SUPPORT_FIELD = 9; // the fields behind it aren't read

QString toText(std::string_view field)
{
    return QString::fromUtf8(field.data(), static_cast<qsizetype>(field.size()));
}

} // namespace

SentenceFields SentenceFields::split(std::string_view sentence)
{
    SentenceFields fields(sentence.data());
    for (const char& c : sentence) {
        if (c == ',')
            fields.addComma(&c);
    }
    fields.finish(sentence.data() + sentence.size());
    return fields;
}

std::string_view SentenceFields::operator[](std::size_t i) const
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    const char* first = m_commas[i] + 1;
    const char* end = endOf(i);
    while (first < end && isBlank(*first))
        ++first;
    while (end > first && isBlank(end[-1]))
        --end;
    return {first, static_cast<std::size_t>(end - first)};
}

std::string_view SentenceFields::text(std::size_t first, std::size_t last) const
{
    const char* begin = m_commas[first] + 1;
    return {begin, static_cast<std::size_t>(endOf(last) - begin)};
}

SentenceParser::SentenceParser(Telemetry& telemetry, std::size_t driveSupportLimit)
    : m_telemetry(telemetry)
    , m_lists(*telemetry.m_lists)
    , m_motions(m_lists.motions)
    , m_maxMotionABS(telemetry.m_maxMotionABS)
    , m_driveSupportLimit(driveSupportLimit)
{
    beginGroup();
}

void SentenceParser::beginGroup()
{
    m_group = {};
    m_group.firstMotion = static_cast<uint32_t>(m_motions.size());
    m_group.firstSupport = static_cast<uint32_t>(m_lists.driveSupports.size());
}

GOPRange SentenceParser::group() const
{
    GOPRange result = m_group;
    result.motionCount = static_cast<uint32_t>(m_motions.size()) - result.firstMotion;
    result.supportCount = static_cast<uint32_t>(m_lists.driveSupports.size()) - result.firstSupport;
    return result;
}

void SentenceParser::finish()
{
    m_telemetry.m_maxMotionABS = m_maxMotionABS;
}

void SentenceParser::parse(const SentenceFields& fields, Tag tag)
{
    const std::string_view name = fields[0];
    if (tag == Tag::CutOff) {
        if (name.empty())
            parseFix(fields);
    } else if (name == "$GSENS") {
        parseSample(fields);
    } else if (name == "$GPRMC") {
        parseFix(fields);
    } else if (name == "$QVDSA") {
        parseDriveSupport(fields);
    } else if (name == "$GTRIP") {
        parseTrip(fields);
    }
}

void SentenceParser::parseTrip(const SentenceFields& fields)
{
    if (fields.count() != 2 && fields.count() != 3)
        return;
    m_telemetry.m_tripID = toText(fields[1]);
    if (fields.count() == 3)
        m_telemetry.m_version = toText(fields[2]);
}

void SentenceParser::parseFix(const SentenceFields& fields)
{
    if (fields.count() != FIX_FIELDS)
        return;
    const std::string_view status = fields[2];
    const bool isValid = status == "A";
    if (!isValid && status != "V")
        return;

    CustomLocation fix = CustomLocation::placeholder();
    if (isValid) {
        fix.latitude = degrees(fields[3], fields[4]).value_or(CustomLocation::NO_COORDINATE);
        fix.longitude = degrees(fields[5], fields[6]).value_or(CustomLocation::NO_COORDINATE);
        fix.course = decimalNumber(fields[8]).value_or(CustomLocation::NO_COURSE);
        if (const std::optional<double> knots = decimalNumber(fields[7]))
            fix.speed = *knots * METRES_PER_SECOND_PER_KNOT;
        m_telemetry.m_maxSpeed = std::max(m_telemetry.m_maxSpeed, fix.speed);
    }
    fix.timestamp = m_dates.read(fields[9], fields[1]).value_or(Instant{});

    if (fix.hasSpeed())
        m_telemetry.m_lastValidSpeedLocation = fix;
    else if (fix.timestamp - m_telemetry.m_lastValidSpeedLocation.timestamp < SPEED_LIFETIME)
        fix.correctedSpeed = m_telemetry.m_lastValidSpeedLocation.speed;
    // A course, unlike a speed, is lent however old it is; before the first one that lends "not known".
    if (!fix.hasCourse())
        fix.correctedDirection = m_telemetry.m_lastValidHeadingLocation.course;
    else
        m_telemetry.m_lastValidHeadingLocation = fix;

    m_group.location = static_cast<uint32_t>(m_telemetry.m_totalLocations.size());
    m_telemetry.m_totalLocations.push_back(fix);
    if (isValid)
        m_telemetry.m_varidLocations.push_back(m_group.location);
}

void SentenceParser::parseSample(const SentenceFields& fields)
{
    // A sentence of another length still counts as a sample: positions in the file's list are positions in time.
    if (fields.count() == SAMPLE_FIELDS) {
        addSample(decimalNumber(fields[1]).value_or(0), decimalNumber(fields[2]).value_or(0),
                  decimalNumber(fields[3]).value_or(0));
    } else {
        addSample(0, 0, 0);
    }
}

void SentenceParser::parseDriveSupport(const SentenceFields& fields)
{
    const bool isOwnUnit = fields.count() == ConstClass::QVDSA_COUNT_QVCAM;
    if ((!isOwnUnit && fields.count() != ConstClass::QVDSA_COUNT_STRIX) ||
        m_lists.driveSupports.size() >= m_driveSupportLimit)
        return;
    // The external unit's records are all alike, for nothing of them is decoded.
    const std::string_view key = isOwnUnit ? fields.text(1, LAST_DRIVE_SUPPORT_FIELD) : std::string_view();
    auto known = m_recordOfText.find(key);
    if (known == m_recordOfText.end()) {
        std::array<std::string_view, SentenceFields::KEPT> components;
        for (std::size_t i = 0; i < fields.count(); ++i)
            components[i] = fields[i];
        known = m_recordOfText.emplace(std::string(key), static_cast<uint32_t>(m_lists.records.size())).first;
        m_lists.records.emplace_back(std::span<const std::string_view>(components.data(), fields.count()));
    }
    m_lists.driveSupports.push_back(known->second);
}

} // namespace cardreel
