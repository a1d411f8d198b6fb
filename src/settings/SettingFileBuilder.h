#pragma once

#include "settings/SettingClock.h"
#include "settings/SettingFileInfo.h"

namespace cardreel {

/// Makes the bytes of a settings file from a record. Not the exact reverse of SettingFileParser: where they differ, the
/// camera expects them to. Made for one file; one thread at a time.
class SettingFileBuilder
{
public:
    explicit SettingFileBuilder(SettingFileInfo info, SettingClock clock = currentClockReading);

    /// The whole file; of an unknown model only the head, whose checksum is the record's own.
    QByteArray build();
    /// The record held, in which build() has put the default of `dataEndAddress`.
    const SettingFileInfo& info() const { return m_info; }

private:
    void appendHead();
    void appendDate();
    void appendTail0D00();
    void appendTail0E00();
    void appendTail1000();
    void appendVersion();
    void appendReserve(qsizetype size);
    void appendDiagnostic(qsizetype size);
    void appendZeros(qsizetype count);
    void appendUInt16(quint16 number);
    void append(quint8 byte);

    SettingFileInfo m_info;
    SettingClock m_clock;
    QByteArray m_bytes;
};

} // namespace cardreel
