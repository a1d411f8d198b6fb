#pragma once

#include "platform/Instant.h"

#include <QString>

#include <memory>
#include <optional>

namespace cardreel {

enum class DateStyle { None, Short, Medium, Long, Full };

/// The zone in which a formatter reads and writes clock times.
enum class TimeZone { Utc, Jst, Local };

/// Turns instants into texts and back through ICU. Making one costs tens of microseconds, using it about one, so keep
/// it for a run of dates. Not shared between threads without a lock.
class DateText
{
public:
    /// Date and time in the user's locale, each in the given style.
    static DateText styled(DateStyle date, DateStyle time, TimeZone zone);

    /// The fields named by an ICU skeleton ("yMMMEd"), arranged as the user's locale arranges them.
    static DateText skeleton(const QString& fields, TimeZone zone);

    /// A fixed pattern of ICU's date pattern letters, in the given locale ("ja_JP", "en_US_POSIX"). Two-digit years
    /// fall between 80 years before and 20 years after the present, as ICU has it.
    static DateText patterned(const QString& pattern, const QString& locale, TimeZone zone);

    DateText(DateText&&) noexcept;
    DateText& operator=(DateText&&) noexcept;
    ~DateText();

    QString text(Instant instant) const;

    /// The instant that the whole text names; nothing when it doesn't fit the pattern or a field is out of its range.
    std::optional<Instant> instant(const QString& text) const;

    /// For a pattern with a two-digit year: the earliest moment that such a year can mean.
    Instant twoDigitYearStart() const;

private:
    struct Private;
    explicit DateText(std::unique_ptr<Private> made);
    std::unique_ptr<Private> d;
};

/// Whether the user's locale measures roads in miles (United States and United Kingdom systems).
bool localeUsesMiles();

} // namespace cardreel
