#pragma once

#include <cstddef>

namespace cardreel {

/// Tells whether bytes that come in pieces are well-formed UTF-8 (no overlong forms, no surrogates, nothing above
/// U+10FFFF). A character may stand across two pieces. Lives on one thread.
class Utf8Check
{
public:
    /// False as soon as the bytes so far can't be the beginning of such a text; the check is over then.
    bool check(const char* bytes, std::size_t size);
    /// Whether the text may end here.
    bool complete() const { return m_missing == 0; }

private:
    bool step(unsigned char byte);

    int m_missing = 0; ///< bytes until the character is whole
    // What the next byte of an unfinished character may be: the first one after the lead has its own range.
    unsigned char m_lowest = 0x80;
    unsigned char m_highest = 0xBF;
};

} // namespace cardreel
