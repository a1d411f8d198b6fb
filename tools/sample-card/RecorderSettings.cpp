#include "sample-card/RecorderSettings.h"

#include <cstdint>

namespace cardreel {

namespace {

constexpr qsizetype FILE_SIZE = 2304;
constexpr qsizetype CHECKSUM_AT = 15;
constexpr qsizetype CHECKED_FROM = 16;
constexpr qsizetype CHECKED_TO = 254;

char binaryCodedDecimal(int value)
{
    return static_cast<char>((value / 10) * 16 + value % 10);
}

} // namespace

QByteArray recorderSettings(const QDateTime& created)
{
    const QDate date = created.date();
    const QTime time = created.time();
    QByteArray bytes = QByteArray("SETD", 4);
    bytes += QByteArray::fromHex("0E00"); // camera model
    bytes += char(1);                     // format version
    for (const int part : {date.year() - 2000, date.month(), date.day(), time.hour(), time.minute(), time.second()})
        bytes += binaryCodedDecimal(part);
    bytes += char(43); // address of the last setting
    bytes += QByteArray(2, '\0');
    // From recording time to notification volume.
    for (const int setting : {1, 1, 2, 0, 0, 1, 3, 0, 0, 1, 3})
        bytes += static_cast<char>(setting);
    bytes += char(4); // playback volume
    bytes += QByteArray(9, '\0');
    bytes += QByteArray::fromHex("021C"); // time zone: 540 minutes
    bytes += QByteArray(128 - bytes.size(), '\0');
    bytes += "1.04";                                     // firmware
    bytes += QByteArray(FILE_SIZE - bytes.size(), '\0'); // reserved and diagnostic blocks

    char sum = 0;
    for (qsizetype at = CHECKED_FROM; at <= CHECKED_TO; ++at)
        sum = static_cast<char>(sum ^ bytes.at(at));
    bytes[CHECKSUM_AT] = sum;
    return bytes;
}

} // namespace cardreel
