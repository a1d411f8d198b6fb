#include "settings/SettingFileParser.h"

#include "platform/files/Files.h"

#include <array>
#include <utility>

namespace cardreel {

namespace {

/// As calendars reckon: month 13 is the next January, day 0 the last of the month before.
Instant carriedOver(int year, int month, int day, int hour, int minute, int second)
{
    using namespace std::chrono;
    const year_month first = std::chrono::year(year) / January + months(month - 1);
    return sys_days(first / 1) + days(day - 1) + hours(hour) + minutes(minute) + seconds(second);
}

} // namespace

SettingFileParser::SettingFileParser(QByteArray bytes)
    : m_reader(std::move(bytes))
{
}

bool SettingFileParser::parse()
{
    return parseHead() && parseTail();
}

bool SettingFileParser::parseHead()
{
    const auto headerID = getUInt32();
    m_info.headerID = headerID.value_or(0);
    const auto modelID = getUInt16();
    m_info.modelID = modelID.value_or(0);
    if (!headerID || !modelID || !readInto({&SettingFileInfo::versionID}))
        return false;
    m_info.creationDate = getDateValue();
    return m_info.creationDate &&
           readInto({&SettingFileInfo::dataEndAddress, &SettingFileInfo::noVerifyChecksum, &SettingFileInfo::checksum,
                     &SettingFileInfo::recordingTime, &SettingFileInfo::overwriteSaveParking,
                     &SettingFileInfo::sensitivityParking, &SettingFileInfo::recordingStartTime,
                     &SettingFileInfo::recordingEndTime, &SettingFileInfo::audioRecording,
                     &SettingFileInfo::sensitivityMovie, &SettingFileInfo::overwriteSaveManual,
                     &SettingFileInfo::overwriteSaveEvent, &SettingFileInfo::videoQuality,
                     &SettingFileInfo::notificationVolume});
}

bool SettingFileParser::parseTail()
{
    switch (m_info.modelID) {
    case SettingModel::model0D00:
        return parseTail0D00();
    case SettingModel::model0E00:
    case SettingModel::model0F00:
        return parseTail0E00();
    case SettingModel::model1000:
        return parseTail1000();
    default:
        return true;
    }
}

bool SettingFileParser::parseTail0D00()
{
    return readInto(
               {&SettingFileInfo::playbackVolume, &SettingFileInfo::childLock, &SettingFileInfo::batteryConnect}) &&
           skip(98) && parseVersionAndBlocks(28, 96);
}

bool SettingFileParser::parseTail0E00()
{
    if (!readInto({&SettingFileInfo::playbackVolume}) || !skip(9))
        return false;
    const auto timeZone = getInt16();
    m_info.timeZone = timeZone.value_or(0);
    return timeZone && skip(4) && readInto({&SettingFileInfo::passwordReset}) && skip(84) &&
           parseVersionAndBlocks(124, 2048);
}

bool SettingFileParser::parseTail1000()
{
    return skip(3) &&
           readInto({&SettingFileInfo::voiceGuidance, &SettingFileInfo::horizontalCorrection,
                     &SettingFileInfo::parkingRecording, &SettingFileInfo::overwriteSaveJunction}) &&
           skip(9) && readInto({&SettingFileInfo::passwordReset}) && skip(84) && parseVersionAndBlocks(124, 2048);
}

bool SettingFileParser::parseVersionAndBlocks(qsizetype reserveSize, qsizetype diagnosticSize)
{
    m_info.version = getStringValue(4);
    if (!m_info.version)
        return false;
    const auto reserve = block(reserveSize);
    if (!reserve)
        return false;
    m_info.reserve = *reserve;
    m_info.diagnostic = block(diagnosticSize);
    return m_info.diagnostic.has_value();
}

bool SettingFileParser::readInto(std::initializer_list<Byte> fields)
{
    for (const Byte field : fields) {
        if (!m_reader.readByte(m_info.*field))
            return false;
    }
    return true;
}

bool SettingFileParser::skip(int count)
{
    quint8 ignored = 0;
    for (int i = 0; i < count; ++i) {
        if (!m_reader.readByte(ignored))
            return false;
    }
    return true;
}

std::optional<QByteArray> SettingFileParser::block(qsizetype size)
{
    QByteArray bytes;
    for (quint8 byte = 0; bytes.size() < size; bytes += static_cast<char>(byte)) {
        if (!m_reader.readByte(byte))
            return std::nullopt;
    }
    return bytes;
}

std::optional<quint16> SettingFileParser::getUInt16()
{
    std::array<quint8, 2> bytes{};
    if (m_reader.readWithBuffer(bytes.data(), 2, 2) != 2)
        return std::nullopt;
    return static_cast<quint16>(bytes[0] << 8 | bytes[1]);
}

std::optional<qint16> SettingFileParser::getInt16()
{
    const auto number = getUInt16();
    return number ? std::optional(static_cast<qint16>(*number)) : std::nullopt;
}

std::optional<quint32> SettingFileParser::getUInt32()
{
    std::array<quint8, 4> bytes{};
    if (m_reader.readWithBuffer(bytes.data(), 4, 4) != 4)
        return std::nullopt;
    return quint32(bytes[0]) << 24 | quint32(bytes[1]) << 16 | quint32(bytes[2]) << 8 | quint32(bytes[3]);
}

std::optional<QString> SettingFileParser::getStringValue(qsizetype maxLength)
{
    const auto bytes = block(maxLength);
    if (!bytes)
        return std::nullopt;
    const qsizetype end = bytes->indexOf('\0');
    // Any byte comes back as it was when the text is written again.
    return files::fromNativePath(end < 0 ? *bytes : bytes->first(end));
}

std::optional<Instant> SettingFileParser::getDateValue()
{
    std::array<quint8, 6> bytes{};
    if (m_reader.readWithBuffer(bytes.data(), 6, 6) != 6)
        return std::nullopt;
    return carriedOver(2000 + valueFromBCD(bytes[0]), valueFromBCD(bytes[1]), valueFromBCD(bytes[2]),
                       valueFromBCD(bytes[3]), valueFromBCD(bytes[4]), valueFromBCD(bytes[5]));
}

int SettingFileParser::valueFromBCD(quint8 byte)
{
    return (byte & 0x0F) + 10 * (byte >> 4);
}

} // namespace cardreel
