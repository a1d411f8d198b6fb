#include "platform/text/Pattern.h"

#include <unicode/regex.h>

namespace cardreel {

struct Pattern::Private
{
    std::unique_ptr<icu::RegexMatcher> matcher;
};

Pattern::Pattern(const QString& pattern)
    : d(std::make_unique<Private>())
{
    UErrorCode error = U_ZERO_ERROR;
    const icu::UnicodeString source(reinterpret_cast<const char16_t*>(pattern.utf16()),
                                    static_cast<int32_t>(pattern.size()));
    auto matcher = std::make_unique<icu::RegexMatcher>(source, 0, error);
    if (U_SUCCESS(error))
        d->matcher = std::move(matcher);
}

Pattern::Pattern(Pattern&&) noexcept = default;
Pattern& Pattern::operator=(Pattern&&) noexcept = default;
Pattern::~Pattern() = default;

bool Pattern::matchesWhole(const QString& target)
{
    if (!d->matcher)
        return false;
    // Aliases the target's characters, which outlive the match.
    const icu::UnicodeString text(false, reinterpret_cast<const char16_t*>(target.utf16()),
                                  static_cast<int32_t>(target.size()));
    icu::RegexMatcher& matcher = *d->matcher;
    matcher.reset(text);
    UErrorCode error = U_ZERO_ERROR;
    const bool whole = matcher.find() && matcher.start(error) == 0 && matcher.end(error) == text.length();
    // A second match, even an empty one behind the first, spoils it.
    const bool result = whole && U_SUCCESS(error) && !matcher.find();
    static const icu::UnicodeString nothing;
    matcher.reset(nothing);
    return result;
}

} // namespace cardreel
