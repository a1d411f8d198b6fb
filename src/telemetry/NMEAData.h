#pragma once

#include "platform/Instant.h"
#include "telemetry/GOPData.h"
#include "telemetry/Telemetry.h"

#include <QString>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace cardreel {

/// The telemetry of one recording. Owned by the recording and guards itself: a background job parses while the views
/// read snapshots, which never change under them. Every operation may be called from any thread.
class NMEAData
{
public:
    /// Doesn't touch the file.
    explicit NMEAData(const QString& filePath);
    NMEAData(const NMEAData&) = delete;
    NMEAData& operator=(const NMEAData&) = delete;

    QString filePath() const;
    /// The card came back under another path: parses from now on read there. What was read stays.
    void setFilePath(const QString& filePath);

    /// Reads and parses the file on the calling thread, and publishes a new snapshot. Returns at once when another
    /// thread is at it, or when the file was read before and told its trip: a file without a trip is read again at each
    /// call, and then its driver-assistance records are appended to the former ones. A file that can't be read, or
    /// isn't UTF-8 throughout, gives empty lists; trip, version, driver-assistance records and the last valid fixes
    /// stay.
    void setup();

    bool isParsing() const;
    /// Whether a parse has ended at least once, whatever it found.
    bool wasParsed() const;
    /// Waits for the parse that another thread is at; returns at once when there is none. Not for the interface thread.
    void waitUntilParsed() const;

    /// What the file holds, parsed by this thread, by another, or long ago; never null. What held nothing is read
    /// again: perhaps it was not there at the time. Not for the interface thread.
    std::shared_ptr<const Telemetry> parsedSnapshot();

    /// What is known now; never null. Empty lists before the first parse. Keep the pointer for as long as anything
    /// taken from it is looked at: another thread may publish the next one at any moment.
    std::shared_ptr<const Telemetry> snapshot() const;

    /// Lends the fixes before the first speed or course of this file the last ones of the recording before it: the
    /// speed only to fixes less than 15 s younger, the course without a limit. Fixes without speed or course lend
    /// nothing. Repeating it changes nothing; a parse undoes it.
    void carryOver(const CustomLocation& speedLocation, const CustomLocation& headingLocation);

    /// Runs every line of the text through the line parser as one group, which is returned but not added to the groups;
    /// lists, maxima and last valid fixes are updated.
    ParsedGOP parseNMEALinesWithLines(const QString& lines);

    /// The UTC instant that the text names in ICU's date pattern, in locale "ja_JP"; nothing when it doesn't fit.
    static std::optional<Instant> convertToDateWithDateString(const QString& dateString,
                                                              const QString& dateFormatString);

private:
    static std::shared_ptr<const Telemetry> parsed(const QString& path, const Telemetry& earlier);
    /// Publishes what `change` makes of the present snapshot; starts over when another was published meanwhile.
    void update(const std::function<std::shared_ptr<const Telemetry>(const Telemetry&)>& change);

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_parseEnded;
    QString m_filePath;
    bool m_isParsing = false;
    bool m_wasParsed = false;
    std::shared_ptr<const Telemetry> m_snapshot;
};

} // namespace cardreel
