#pragma once

#include <QString>

#include <memory>

namespace cardreel {

/// A compiled regular expression in ICU's syntax, kept for many matches. Used by one thread at a time.
class Pattern
{
public:
    /// Never fails; a pattern that doesn't compile matches nothing.
    explicit Pattern(const QString& pattern);
    Pattern(Pattern&&) noexcept;
    Pattern& operator=(Pattern&&) noexcept;
    ~Pattern();

    /// Whether the pattern is found exactly once in the target and that one match covers the whole of it.
    bool matchesWhole(const QString& target);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace cardreel
