#include "export/ExportDates.h"

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr qsizetype secondsPlace = 17; // in yyyy-MM-ddTHH:mm:ssZ

DateText whenFormat()
{
    // A locale whose digits and calendar are the standard's; in the user's it might be the year 2568, or ٢٠٢٥.
    return DateText::patterned(u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s, u"ja_JP"_s, TimeZone::Local);
}

QString longDateFullTime(Instant date)
{
    return DateText::styled(DateStyle::Long, DateStyle::Full, TimeZone::Local).text(date);
}

} // namespace

QString kmlFolderName(Instant date)
{
    return DateText::styled(DateStyle::Long, DateStyle::None, TimeZone::Local).text(date);
}

QString kmlWhenString(Instant date)
{
    return whenFormat().text(date);
}

QString kmlEventDescriptionString(Instant date)
{
    return longDateFullTime(date);
}

QString backUpDirectoryName(Instant date)
{
    return longDateFullTime(date);
}

QString captureImageFileName(Instant date)
{
    return longDateFullTime(date);
}

KmlWhenText::KmlWhenText()
    : m_format(whenFormat())
{
}

const QByteArray& KmlWhenText::text(Instant date)
{
    using namespace std::chrono;
    const auto minute = floor<minutes>(date);
    if (m_minuteText.isEmpty() || minute != m_minute) {
        m_minute = minute;
        m_minuteText = m_format.text(Instant(minute)).toLatin1();
    }
    // Zones of long ago are off by odd seconds, and a year of five digits moves everything.
    const bool isPlain = m_minuteText.size() == secondsPlace + 3 && m_minuteText.endsWith(":00Z");
    if (!isPlain) {
        m_text = m_format.text(date).toLatin1();
        return m_text;
    }
    const auto second = floor<seconds>(date - minute).count();
    m_text = m_minuteText;
    m_text[secondsPlace] = static_cast<char>('0' + second / 10);
    m_text[secondsPlace + 1] = static_cast<char>('0' + second % 10);
    return m_text;
}

} // namespace cardreel
