#include "platform/text/DateText.h"

#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/ulocdata.h>

namespace cardreel {

struct DateText::Private
{
    std::unique_ptr<icu::DateFormat> format;
};

namespace {

icu::UnicodeString toIcu(const QString& text)
{
    return icu::UnicodeString(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int32_t>(text.size()));
}

icu::DateFormat::EStyle toIcu(DateStyle style)
{
    switch (style) {
    case DateStyle::None:
        return icu::DateFormat::kNone;
    case DateStyle::Short:
        return icu::DateFormat::kShort;
    case DateStyle::Medium:
        return icu::DateFormat::kMedium;
    case DateStyle::Long:
        return icu::DateFormat::kLong;
    case DateStyle::Full:
        break;
    }
    return icu::DateFormat::kFull;
}

icu::TimeZone* makeZone(TimeZone zone)
{
    switch (zone) {
    case TimeZone::Utc:
        return icu::TimeZone::getGMT()->clone();
    case TimeZone::Jst:
        return icu::TimeZone::createTimeZone("Asia/Tokyo");
    case TimeZone::Local:
        break;
    }
    return icu::TimeZone::createDefault();
}

UDate toIcu(Instant instant)
{
    return static_cast<UDate>(instant.time_since_epoch().count());
}

Instant fromIcu(UDate date)
{
    return Instant(std::chrono::milliseconds(static_cast<int64_t>(date)));
}

} // namespace

DateText::DateText(std::unique_ptr<Private> made)
    : d(std::move(made))
{
}

DateText::DateText(DateText&&) noexcept = default;
DateText& DateText::operator=(DateText&&) noexcept = default;
DateText::~DateText() = default;

DateText DateText::styled(DateStyle date, DateStyle time, TimeZone zone)
{
    auto made = std::make_unique<Private>();
    made->format.reset(icu::DateFormat::createDateTimeInstance(toIcu(date), toIcu(time), icu::Locale::getDefault()));
    if (made->format)
        made->format->adoptTimeZone(makeZone(zone));
    return DateText(std::move(made));
}

DateText DateText::skeleton(const QString& fields, TimeZone zone)
{
    UErrorCode error = U_ZERO_ERROR;
    auto made = std::make_unique<Private>();
    made->format.reset(icu::DateFormat::createInstanceForSkeleton(toIcu(fields), error));
    if (made->format)
        made->format->adoptTimeZone(makeZone(zone));
    return DateText(std::move(made));
}

DateText DateText::patterned(const QString& pattern, const QString& locale, TimeZone zone)
{
    UErrorCode error = U_ZERO_ERROR;
    auto made = std::make_unique<Private>();
    auto format =
        std::make_unique<icu::SimpleDateFormat>(toIcu(pattern), icu::Locale(locale.toLatin1().constData()), error);
    if (U_SUCCESS(error)) {
        format->adoptTimeZone(makeZone(zone));
        format->setLenient(false);
        made->format = std::move(format);
    }
    return DateText(std::move(made));
}

QString DateText::text(Instant instant) const
{
    if (!d->format)
        return {};
    icu::UnicodeString result;
    d->format->format(toIcu(instant), result);
    return QString(reinterpret_cast<const QChar*>(result.getBuffer()), result.length());
}

std::optional<Instant> DateText::instant(const QString& text) const
{
    if (!d->format)
        return std::nullopt;
    icu::ParsePosition position(0);
    const UDate date = d->format->parse(toIcu(text), position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != text.size())
        return std::nullopt;
    return fromIcu(date);
}

Instant DateText::twoDigitYearStart() const
{
    UErrorCode error = U_ZERO_ERROR;
    const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(d->format.get());
    return simple ? fromIcu(simple->get2DigitYearStart(error)) : Instant{};
}

bool localeUsesMiles()
{
    UErrorCode error = U_ZERO_ERROR;
    const UMeasurementSystem system = ulocdata_getMeasurementSystem(icu::Locale::getDefault().getName(), &error);
    return U_SUCCESS(error) && (system == UMS_US || system == UMS_UK);
}

} // namespace cardreel
