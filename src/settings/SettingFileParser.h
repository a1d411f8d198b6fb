#pragma once

#include "settings/BinaryReader.h"
#include "settings/SettingFileInfo.h"

#include <initializer_list>
#include <optional>

namespace cardreel {

/// Reads the bytes of a settings file into a record. Numbers are big-endian. Made for one file; one thread at a time.
class SettingFileParser
{
public:
    explicit SettingFileParser(QByteArray bytes);

    /// Fills info(). False as soon as the file is too short for its model; what was read until then stays. Of an
    /// unknown model only the head is read. Signature, format version and checksum are not judged. To be called once.
    bool parse();
    const SettingFileInfo& info() const { return m_info; }

    // The field readers: each takes its bytes, or gives nothing when too few are left.
    std::optional<quint16> getUInt16();
    std::optional<qint16> getInt16();
    std::optional<quint32> getUInt32();
    /// Exactly `maxLength` bytes, of which those before the first zero are the text.
    std::optional<QString> getStringValue(qsizetype maxLength);
    /// Six bytes: year of the century, month, day, hour, minute, second, as UTC. Figures beyond a field's range carry
    /// over into the next larger one.
    std::optional<Instant> getDateValue();
    static int valueFromBCD(quint8 byte);

private:
    using Byte = quint8 SettingFileInfo::*;

    bool parseHead();
    bool parseTail();
    bool parseTail0D00();
    bool parseTail0E00();
    bool parseTail1000();
    bool parseVersionAndBlocks(qsizetype reserveSize, qsizetype diagnosticSize);
    bool readInto(std::initializer_list<Byte> fields);
    bool skip(int count);
    std::optional<QByteArray> block(qsizetype size);

    BinaryReader m_reader;
    SettingFileInfo m_info;
};

} // namespace cardreel
