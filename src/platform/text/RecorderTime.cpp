#include "platform/text/RecorderTime.h"

#include "platform/text/DateText.h"

namespace cardreel {

// The recorder's clock knows no zone: it is read as UTC and shown in UTC everywhere, so the figures stay its own.

QString recorderDayText(Instant recorderTime)
{
    static const DateText format = DateText::skeleton(QStringLiteral("yMMMEd"), TimeZone::Utc);
    return format.text(recorderTime);
}

QString recorderTimeText(Instant recorderTime)
{
    static const DateText format = DateText::styled(DateStyle::None, DateStyle::Medium, TimeZone::Utc);
    return format.text(recorderTime);
}

QString recorderDateTimeText(Instant recorderTime)
{
    static const DateText format = DateText::styled(DateStyle::Medium, DateStyle::Medium, TimeZone::Utc);
    return format.text(recorderTime);
}

} // namespace cardreel
