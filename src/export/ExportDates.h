#pragma once

#include "platform/Instant.h"
#include "platform/text/DateText.h"

#include <QByteArray>
#include <QString>

/// A date as exports, backups and captures write it, in the local time zone. Any thread; each call makes a formatter of
/// its own.
namespace cardreel {

/// The user's long date ("June 14, 2025"): the name of a day's folder.
QString kmlFolderName(Instant date);
/// The local clock with a "Z" behind it, though it isn't UTC: readers that show the text as it stands show the clock
/// that the driver saw.
QString kmlWhenString(Instant date);

// The user's long date and full time, zone included.
QString kmlEventDescriptionString(Instant date);
QString backUpDirectoryName(Instant date);
QString captureImageFileName(Instant date);

/// kmlWhenString for a run of dates: keeps its formatter and the last minute's text. One thread at a time.
class KmlWhenText
{
public:
    KmlWhenText();

    /// Valid until the next call.
    const QByteArray& text(Instant date);

private:
    DateText m_format;
    std::chrono::sys_time<std::chrono::minutes> m_minute{};
    QByteArray m_minuteText; ///< of m_minute; empty before the first date
    QByteArray m_text;
};

} // namespace cardreel
