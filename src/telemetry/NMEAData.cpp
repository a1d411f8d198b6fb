#include "telemetry/NMEAData.h"

#include "platform/files/Files.h"
#include "platform/text/DateText.h"
#include "telemetry/SentenceParser.h"
#include "telemetry/SideFileParser.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QStringView>

#include <chrono>
#include <functional>
#include <new>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

Q_LOGGING_CATEGORY(logTelemetry, "cardreel.telemetry", QtInfoMsg)

bool endsLine(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar(0x85) || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

/// Lends to the fixes before the first that has a value of its own; `lend` says whether it changed the fix.
template<typename HasOwn, typename Lend>
bool lendToLeading(std::vector<CustomLocation>& fixes, HasOwn hasOwn, Lend lend)
{
    bool changed = false;
    for (auto fix = fixes.begin(); fix != fixes.end() && !hasOwn(*fix); ++fix)
        changed = lend(*fix) || changed;
    return changed;
}

} // namespace

NMEAData::NMEAData(const QString& filePath)
    : m_filePath(filePath)
    , m_snapshot(std::make_shared<const Telemetry>())
{
}

QString NMEAData::filePath() const
{
    const std::lock_guard lock(m_mutex);
    return m_filePath;
}

void NMEAData::setFilePath(const QString& filePath)
{
    const std::lock_guard lock(m_mutex);
    m_filePath = filePath;
}

bool NMEAData::isParsing() const
{
    const std::lock_guard lock(m_mutex);
    return m_isParsing;
}

bool NMEAData::wasParsed() const
{
    const std::lock_guard lock(m_mutex);
    return m_wasParsed;
}

void NMEAData::waitUntilParsed() const
{
    std::unique_lock lock(m_mutex);
    m_parseEnded.wait(lock, [this] { return !m_isParsing; });
}

std::shared_ptr<const Telemetry> NMEAData::snapshot() const
{
    const std::lock_guard lock(m_mutex);
    return m_snapshot;
}

std::shared_ptr<const Telemetry> NMEAData::parsed(const QString& path, const Telemetry& earlier)
{
    const auto fresh = [&earlier] {
        auto telemetry = std::make_shared<Telemetry>();
        telemetry->m_tripID = earlier.m_tripID;
        telemetry->m_version = earlier.m_version;
        telemetry->m_lastValidSpeedLocation = earlier.m_lastValidSpeedLocation;
        telemetry->m_lastValidHeadingLocation = earlier.m_lastValidHeadingLocation;
        telemetry->m_lists->driveSupports = earlier.m_lists->driveSupports;
        telemetry->m_lists->records = earlier.m_lists->records;
        return telemetry;
    };
    std::shared_ptr<Telemetry> telemetry = fresh();
    std::optional<SideFileProblem> problem;
    try {
        problem = parseSideFile(path, *telemetry);
        if (!problem)
            telemetry->shrink();
    } catch (const std::bad_alloc&) {
        problem = {SideFileProblem::Kind::Unreadable, u"not enough memory"_s};
    }
    if (problem) {
        telemetry = fresh();
        // Recordings without a side file are common.
        if (files::exists(path))
            qCWarning(logTelemetry).noquote() << "not read:" << files::displayPath(path) << problem->text;
    }
    return telemetry;
}

void NMEAData::setup()
{
    QString path;
    std::shared_ptr<const Telemetry> earlier;
    {
        const std::lock_guard lock(m_mutex);
        if (m_isParsing || !m_snapshot->tripID().isEmpty())
            return;
        m_isParsing = true;
        path = m_filePath;
        earlier = m_snapshot;
    }
    std::shared_ptr<const Telemetry> result = parsed(path, *earlier);
    {
        const std::lock_guard lock(m_mutex);
        m_snapshot = std::move(result);
        m_isParsing = false;
        m_wasParsed = true;
    }
    m_parseEnded.notify_all();
}

std::shared_ptr<const Telemetry> NMEAData::parsedSnapshot()
{
    // A parser that was cancelled may still be at it, where the card was before it came back under another path.
    waitUntilParsed();
    if (snapshot()->GOPs().empty()) {
        setup();
        waitUntilParsed();
    }
    return snapshot();
}

void NMEAData::update(const std::function<std::shared_ptr<const Telemetry>(const Telemetry&)>& change)
{
    for (;;) {
        const std::shared_ptr<const Telemetry> before = snapshot();
        std::shared_ptr<const Telemetry> after = change(*before);
        const std::lock_guard lock(m_mutex);
        if (m_snapshot == before) {
            if (after)
                m_snapshot = std::move(after);
            return;
        }
    }
}

void NMEAData::carryOver(const CustomLocation& speedLocation, const CustomLocation& headingLocation)
{
    const auto lendSpeed = [&speedLocation](CustomLocation& fix) {
        // Not what the parse left there: that depends on what was read before.
        const bool isRecent = fix.timestamp - speedLocation.timestamp < SentenceParser::SPEED_LIFETIME;
        const double lent = isRecent ? speedLocation.speed : 0;
        return std::exchange(fix.correctedSpeed, lent) != lent;
    };
    const auto lendCourse = [&headingLocation](CustomLocation& fix) {
        return std::exchange(fix.correctedDirection, headingLocation.course) != headingLocation.course;
    };
    update([&](const Telemetry& before) -> std::shared_ptr<const Telemetry> {
        const std::vector<CustomLocation>& fixes = before.m_totalLocations;
        // Nearly every recording begins with a fix that has both, and isn't copied for nothing.
        if (fixes.empty() || (fixes.front().hasSpeed() && fixes.front().hasCourse()))
            return nullptr;
        auto after = std::make_shared<Telemetry>(before);
        bool changed = false;
        if (speedLocation.hasSpeed())
            changed = lendToLeading(after->m_totalLocations, std::mem_fn(&CustomLocation::hasSpeed), lendSpeed);
        if (headingLocation.hasCourse()) {
            changed =
                lendToLeading(after->m_totalLocations, std::mem_fn(&CustomLocation::hasCourse), lendCourse) || changed;
        }
        return changed ? after : nullptr;
    });
}

ParsedGOP NMEAData::parseNMEALinesWithLines(const QString& lines)
{
    ParsedGOP group;
    update([&](const Telemetry& before) -> std::shared_ptr<const Telemetry> {
        auto after = std::make_shared<Telemetry>(before);
        after->m_lists = std::make_shared<TelemetryLists>(*before.m_lists);
        SentenceParser parser(*after, SideFileLimits().driveSupports);
        qsizetype begin = 0;
        for (qsizetype at = 0; at <= lines.size(); ++at) {
            if (at < lines.size() && !endsLine(lines[at]))
                continue;
            const QByteArray line = QStringView(lines).sliced(begin, at - begin).toUtf8();
            parser.parse(SentenceFields::split({line.constData(), static_cast<std::size_t>(line.size())}),
                         SentenceParser::Tag::Written);
            begin = at + 1;
        }
        parser.finish();
        // The placeholder stands for a group without a fix, as in any group of the file.
        const GOPRange range = parser.group();
        after->m_lists->GOPs.push_back(range);
        const GOPData view = after->GOPs().back();
        group.location = view.location();
        group.motions.assign(view.motions().begin(), view.motions().end());
        group.driveSupportInfos.assign(view.driveSupportInfos().begin(), view.driveSupportInfos().end());
        after->m_lists->GOPs.pop_back();
        return after;
    });
    return group;
}

std::optional<Instant> NMEAData::convertToDateWithDateString(const QString& dateString, const QString& dateFormatString)
{
    return DateText::patterned(dateFormatString, QString::fromUtf16(FixDateReader::LOCALE), TimeZone::Utc)
        .instant(dateString);
}

} // namespace cardreel
