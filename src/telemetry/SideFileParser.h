#pragma once

#include "telemetry/SentenceParser.h"
#include "telemetry/Telemetry.h"
#include "telemetry/Utf8Check.h"

#include <QString>

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace cardreel {

/// What a parse may cost. The defaults are far beyond what a recorder writes; tests make them small.
struct SideFileLimits
{
    qint64 fileBytes = 268'435'456;
    std::size_t chunkBytes = 262'144;
    std::size_t sentenceBytes = 65'536;    ///< longer sentences are passed over
    std::size_t driveSupports = 1'000'000; ///< further records are passed over
};

/// Cuts the bytes of a side file into groups and sentences as they come, in pieces of any size. Lives for one parse on
/// the thread that does it.
///
/// A group begins at every "$GPRMC", wherever it stands, even within a line; what precedes the first one is a group
/// too. What stands between two tags and doesn't itself begin with "$" belongs to a fix.
class SideFileParser
{
public:
    /// The lists of `telemetry` are appended to.
    SideFileParser(Telemetry& telemetry, const SideFileLimits& limits);
    SideFileParser(const SideFileParser&) = delete;
    SideFileParser& operator=(const SideFileParser&) = delete;

    /// Where to put the next bytes, and how many at most.
    char* space();
    std::size_t spaceBytes() const;
    /// Takes that many bytes from the space; false when they aren't UTF-8, which ends the parse.
    bool take(std::size_t bytes);
    /// The file has ended; false when it ended within a character.
    bool finish();

    /// Room for the whole file's lists, going by what was read so far; keeps them from being moved about as they grow.
    void reserveFor(qint64 fileBytes);

private:
    enum class Ending { More, Last };
    struct Cut;

    void consume(Ending ending);
    bool skipByteOrderMark(Ending ending);
    Cut findCut(const char* from, Ending ending) const;
    const char* takeSamples(const char* from);

    Telemetry& m_telemetry;
    SentenceParser m_sentences;
    Utf8Check m_utf8;
    const SideFileLimits m_limits;
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_begin = 0;    ///< of what isn't consumed yet
    std::size_t m_end = 0;      ///< of the bytes taken
    std::size_t m_capacity = 0; ///< without the mark behind the end
    qint64 m_taken = 0;         ///< bytes since the beginning
    bool m_begun = false;       ///< there is text, and so a first group
    bool m_afterTag = false;    ///< the sentence at the beginning follows a cut, its tag left out
    bool m_skipping = false;    ///< the sentence at the beginning is too long
};

/// Why a side file gave nothing.
struct SideFileProblem
{
    enum class Kind {
        Unreadable, ///< not opened, not read to its end, or larger than any side file
        NotText,    ///< read, but not UTF-8 throughout
    };
    Kind kind = Kind::Unreadable;
    QString text;
};

/// Reads and parses the whole file into the lists of `telemetry`, which are to be thrown away when there was a problem.
std::optional<SideFileProblem> parseSideFile(const QString& path, Telemetry& telemetry,
                                             const SideFileLimits& limits = {});

} // namespace cardreel
