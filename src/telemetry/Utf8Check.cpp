#include "telemetry/Utf8Check.h"

#include <cstdint>
#include <cstring>

namespace cardreel {

namespace {

/// How many bytes at the beginning are ASCII, rounded down to whole blocks.
std::size_t asciiBlocks(const char* bytes, std::size_t size)
{
    constexpr std::size_t BLOCK = 64;
    std::size_t at = 0;
    for (; at + BLOCK <= size; at += BLOCK) {
        uint64_t all = 0;
        for (std::size_t i = 0; i < BLOCK; i += sizeof(uint64_t)) {
            uint64_t word = 0;
            std::memcpy(&word, bytes + at + i, sizeof(word));
            all |= word;
        }
        if (all & 0x8080808080808080U)
            break;
    }
    return at;
}

} // namespace

bool Utf8Check::check(const char* bytes, std::size_t size)
{
    std::size_t at = 0;
    while (at < size) {
        if (m_missing == 0) {
            at += asciiBlocks(bytes + at, size - at);
            // At most one block byte by byte, so that a text full of other letters isn't looked at twice throughout.
            const std::size_t blockEnd = size - at > 64 ? at + 64 : size;
            for (; at < blockEnd; ++at) {
                if (!step(static_cast<unsigned char>(bytes[at])))
                    return false;
            }
        } else if (!step(static_cast<unsigned char>(bytes[at++]))) {
            return false;
        }
    }
    return true;
}

bool Utf8Check::step(unsigned char byte)
{
    if (m_missing > 0) {
        if (byte < m_lowest || byte > m_highest)
            return false;
        m_lowest = 0x80;
        m_highest = 0xBF;
        --m_missing;
        return true;
    }
    if (byte < 0x80)
        return true;
    if (byte < 0xC2 || byte > 0xF4)
        return false;
    m_missing = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
    if (byte == 0xE0)
        m_lowest = 0xA0; // shorter forms exist below
    else if (byte == 0xED)
        m_highest = 0x9F; // surrogates above
    else if (byte == 0xF0)
        m_lowest = 0x90;
    else if (byte == 0xF4)
        m_highest = 0x8F; // beyond U+10FFFF above
    return true;
}

} // namespace cardreel
