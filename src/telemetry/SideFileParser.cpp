#include "telemetry/SideFileParser.h"

#include "platform/files/Files.h"

#include <algorithm>
#include <array>
#include <cstring>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr std::string_view FIX_TAG = "$GPRMC";
constexpr std::string_view SAMPLE_BEGINNING = "$GSENS,";
/// At most so many bytes at the end can be the beginning of a tag or of a line end, and no part of the sentence.
constexpr std::size_t UNDECIDED = FIX_TAG.size() - 1;
constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

/// What the splitter looks at a byte for.
enum class ByteKind : unsigned char { Plain, Comma, LineEnd, Dollar, TwoByteEnd, ThreeByteEnd };

constexpr std::array<ByteKind, 256> byteKinds()
{
    std::array<ByteKind, 256> kinds{};
    kinds[','] = ByteKind::Comma;
    kinds['\n'] = ByteKind::LineEnd;
    kinds['\r'] = ByteKind::LineEnd;
    kinds['$'] = ByteKind::Dollar;
    kinds[0xC2] = ByteKind::TwoByteEnd;   // U+0085 is C2 85
    kinds[0xE2] = ByteKind::ThreeByteEnd; // U+2028 and U+2029 are E2 80 A8 and E2 80 A9
    return kinds;
}

constexpr std::array<ByteKind, 256> BYTE_KINDS = byteKinds();

bool beginsWith(const char* at, const char* end, std::string_view text)
{
    return static_cast<std::size_t>(end - at) >= text.size() && std::memcmp(at, text.data(), text.size()) == 0;
}

bool isThreeByteEnd(const char* at, const char* end)
{
    return beginsWith(at, end, "\xE2\x80\xA8") || beginsWith(at, end, "\xE2\x80\xA9");
}

} // namespace

/// Where a sentence ends, and how.
struct SideFileParser::Cut
{
    enum class Kind { Line, FixTag, EndOfFile, NotYet };

    Kind kind;
    const char* at;
    const char* next; ///< where the following sentence begins
    SentenceFields fields;
};

SideFileParser::SideFileParser(Telemetry& telemetry, const SideFileLimits& limits)
    : m_telemetry(telemetry)
    , m_sentences(telemetry, limits.driveSupports)
    , m_limits(limits)
    // Room for a chunk behind the longest sentence that may be waiting for its end, and for the mark behind both.
    , m_capacity(limits.chunkBytes + limits.sentenceBytes + UNDECIDED)
{
    m_buffer = std::make_unique_for_overwrite<char[]>(m_capacity + 1);
}

char* SideFileParser::space()
{
    return m_buffer.get() + m_end;
}

std::size_t SideFileParser::spaceBytes() const
{
    return std::min(m_limits.chunkBytes, m_capacity - m_end);
}

bool SideFileParser::take(std::size_t bytes)
{
    if (!m_utf8.check(space(), bytes))
        return false;
    m_end += bytes;
    m_taken += static_cast<qint64>(bytes);
    consume(Ending::More);
    return true;
}

bool SideFileParser::finish()
{
    if (!m_utf8.complete())
        return false;
    consume(Ending::Last);
    if (m_begun)
        m_telemetry.m_lists->GOPs.push_back(m_sentences.group());
    m_sentences.finish();
    return true;
}

bool SideFileParser::skipByteOrderMark(Ending ending)
{
    const std::string_view bytes(m_buffer.get(), m_end);
    if (bytes.size() < BYTE_ORDER_MARK.size() && ending == Ending::More && BYTE_ORDER_MARK.starts_with(bytes))
        return false;
    if (bytes.starts_with(BYTE_ORDER_MARK))
        m_begin = BYTE_ORDER_MARK.size();
    if (m_begin == m_end)
        return false;
    m_begun = true;
    m_afterTag = true;
    return true;
}

void SideFileParser::consume(Ending ending)
{
    if (!m_begun && !skipByteOrderMark(ending))
        return;
    // Stops the loops that look for the end of a number or a sentence.
    m_buffer[m_end] = '\n';
    const char* at = m_buffer.get() + m_begin;
    const char* const end = m_buffer.get() + m_end;
    for (;;) {
        if (!m_skipping)
            at = takeSamples(at);
        const Cut cut = findCut(at, ending);
        if (cut.kind == Cut::Kind::NotYet)
            break;
        if (!m_skipping && static_cast<std::size_t>(cut.at - at) <= m_limits.sentenceBytes) {
            const bool isCutOff = m_afterTag && (cut.at == at || *at != '$');
            m_sentences.parse(cut.fields, isCutOff ? SentenceParser::Tag::CutOff : SentenceParser::Tag::Written);
        }
        m_skipping = false;
        m_afterTag = false;
        at = cut.next;
        if (cut.kind == Cut::Kind::FixTag) {
            m_telemetry.m_lists->GOPs.push_back(m_sentences.group());
            m_sentences.beginGroup();
            m_afterTag = true;
        } else if (cut.kind == Cut::Kind::EndOfFile) {
            break;
        }
    }
    auto left = static_cast<std::size_t>(end - at);
    if (left > m_limits.sentenceBytes + UNDECIDED) {
        m_skipping = true;
        left = UNDECIDED;
    }
    std::memmove(m_buffer.get(), end - left, left);
    m_begin = 0;
    m_end = left;
}

SideFileParser::Cut SideFileParser::findCut(const char* from, Ending ending) const
{
    const char* const end = m_buffer.get() + m_end;
    Cut cut{Cut::Kind::Line, from, from, SentenceFields(from)};
    const auto cutAt = [&cut](Cut::Kind kind, const char* at, std::size_t length) {
        cut.kind = kind;
        cut.at = at;
        cut.next = at + length;
        cut.fields.finish(at);
    };
    const char* at = from;
    for (;; ++at) {
        // Spelled out, for the commonest kinds decide the pace.
        while (BYTE_KINDS[static_cast<unsigned char>(*at)] == ByteKind::Plain)
            ++at;
        if (*at == ',') {
            cut.fields.addComma(at);
            continue;
        }
        switch (BYTE_KINDS[static_cast<unsigned char>(*at)]) {
        case ByteKind::Plain:
        case ByteKind::Comma:
            break;
        case ByteKind::LineEnd:
            if (at == end)
                cutAt(ending == Ending::More ? Cut::Kind::NotYet : Cut::Kind::EndOfFile, at, 0);
            else
                cutAt(Cut::Kind::Line, at, beginsWith(at, end, "\r\n") ? 2 : 1);
            return cut;
        case ByteKind::Dollar:
            if (!beginsWith(at, end, FIX_TAG))
                break;
            cutAt(Cut::Kind::FixTag, at, FIX_TAG.size());
            return cut;
        case ByteKind::TwoByteEnd:
            if (!beginsWith(at, end, "\xC2\x85"))
                break;
            cutAt(Cut::Kind::Line, at, 2);
            return cut;
        case ByteKind::ThreeByteEnd:
            if (!isThreeByteEnd(at, end))
                break;
            cutAt(Cut::Kind::Line, at, 3);
            return cut;
        }
    }
}

/// Takes the run of well-formed samples at the beginning of a sentence: nearly the whole file is made of such runs, so
/// they are read in one go, without looking for the sentence's end and its fields first.
const char* SideFileParser::takeSamples(const char* from)
{
    const char* const end = m_buffer.get() + m_end;
    while (beginsWith(from, end, SAMPLE_BEGINNING)) {
        const char* at = from + SAMPLE_BEGINNING.size();
        double gx = 0;
        double gy = 0;
        double gz = 0;
        if (!scanShortDecimal(at, gx) || *at != ',' || !scanShortDecimal(++at, gy) || *at != ',' ||
            !scanShortDecimal(++at, gz) || at == end || (*at != '\r' && *at != '\n'))
            break;
        m_sentences.addSample(gx, gy, gz);
        m_afterTag = false;
        from = at + (beginsWith(at, end, "\r\n") ? 2 : 1);
    }
    return from;
}

void SideFileParser::reserveFor(qint64 fileBytes)
{
    if (m_taken == 0 || fileBytes <= m_taken)
        return;
    const double times = 1.01 * static_cast<double>(fileBytes) / static_cast<double>(m_taken);
    const auto reserve = [times](auto& list) {
        list.reserve(static_cast<std::size_t>(static_cast<double>(list.size()) * times));
    };
    reserve(m_telemetry.m_totalLocations);
    reserve(m_telemetry.m_varidLocations);
    reserve(m_telemetry.m_lists->GOPs);
    reserve(m_telemetry.m_lists->motions);
}

std::optional<SideFileProblem> parseSideFile(const QString& path, Telemetry& telemetry, const SideFileLimits& limits)
{
    QString error;
    const std::unique_ptr<QFile> file = files::openForReading(path, &error);
    if (!file)
        return SideFileProblem{SideFileProblem::Kind::Unreadable, error};
    const qint64 size = file->size();
    const QString tooLarge = u"larger than %1 bytes"_s.arg(limits.fileBytes);
    if (size > limits.fileBytes)
        return SideFileProblem{SideFileProblem::Kind::Unreadable, tooLarge};
    SideFileParser parser(telemetry, limits);
    qint64 taken = 0;
    for (;;) {
        const qint64 read = file->read(parser.space(), static_cast<qint64>(parser.spaceBytes()));
        if (read < 0)
            return SideFileProblem{SideFileProblem::Kind::Unreadable, file->errorString()};
        if (read == 0)
            break;
        // Asked again, for the size is only what the file had at the beginning.
        if (taken + read > limits.fileBytes)
            return SideFileProblem{SideFileProblem::Kind::Unreadable, tooLarge};
        if (!parser.take(static_cast<std::size_t>(read)))
            return SideFileProblem{SideFileProblem::Kind::NotText, u"not UTF-8"_s};
        if (taken == 0)
            parser.reserveFor(size);
        taken += read;
    }
    if (!parser.finish())
        return SideFileProblem{SideFileProblem::Kind::NotText, u"not UTF-8"_s};
    return std::nullopt;
}

} // namespace cardreel
