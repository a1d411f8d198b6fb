#include "settings/SettingFileBuilder.h"

#include "platform/files/Files.h"

#include <algorithm>
#include <utility>

namespace cardreel {

namespace {

constexpr quint8 defaultDataEndAddress = 43;
constexpr qsizetype checksumOffset = 15;
constexpr qsizetype firstChecked = 16;
constexpr qsizetype lastChecked = 254; // the camera's own range: the last byte of a short file isn't in it

void storeChecksum(QByteArray& bytes)
{
    quint8 sum = 0;
    const qsizetype end = std::min(lastChecked + 1, bytes.size());
    for (qsizetype i = firstChecked; i < end; ++i)
        sum ^= static_cast<quint8>(bytes.at(i));
    bytes[checksumOffset] = static_cast<char>(sum);
}

} // namespace

SettingFileBuilder::SettingFileBuilder(SettingFileInfo info, SettingClock clock)
    : m_info(std::move(info))
    , m_clock(std::move(clock))
{
}

QByteArray SettingFileBuilder::build()
{
    m_bytes.clear();
    appendHead();
    switch (m_info.modelID) {
    case SettingModel::model0D00:
        appendTail0D00();
        break;
    case SettingModel::model0E00:
    case SettingModel::model0F00:
        appendTail0E00();
        break;
    case SettingModel::model1000:
        appendTail1000();
        break;
    default:
        return m_bytes;
    }
    storeChecksum(m_bytes);
    return m_bytes;
}

void SettingFileBuilder::appendHead()
{
    if (m_info.headerID == 0) {
        m_bytes += "SETD";
    } else {
        appendUInt16(static_cast<quint16>(m_info.headerID >> 16));
        appendUInt16(static_cast<quint16>(m_info.headerID & 0xFFFF));
    }
    appendUInt16(m_info.modelID);
    append(m_info.versionID);
    appendDate();
    if (m_info.dataEndAddress == 0)
        m_info.dataEndAddress = defaultDataEndAddress;
    for (const quint8 byte :
         {m_info.dataEndAddress, m_info.noVerifyChecksum, m_info.checksum, m_info.recordingTime,
          m_info.overwriteSaveParking, m_info.sensitivityParking, m_info.recordingStartTime, m_info.recordingEndTime,
          m_info.audioRecording, m_info.sensitivityMovie, m_info.overwriteSaveManual, m_info.overwriteSaveEvent,
          m_info.videoQuality, m_info.notificationVolume})
        append(byte);
}

void SettingFileBuilder::appendDate()
{
    // Plain binary, in the user's own calendar and zone, although the camera writes decimal digits and its dates are
    // read so. From 16 on a figure reads back as another; cameras have never been given anything else.
    const ClockReading present = m_clock();
    for (const int figure :
         {present.year - 2000, present.month, present.day, present.hour, present.minute, present.second})
        append(static_cast<quint8>(figure & 0xFF));
}

void SettingFileBuilder::appendTail0D00()
{
    append(m_info.playbackVolume);
    append(m_info.childLock);
    append(m_info.batteryConnect);
    appendZeros(98);
    appendVersion();
    appendReserve(28);
    appendDiagnostic(96);
}

void SettingFileBuilder::appendTail0E00()
{
    appendZeros(1 + 9 + 2 + 4); // also for the playback volume and the time zone, which are never written
    append(m_info.passwordReset != 0 ? 0xFF : 0x00);
    appendZeros(84);
    appendVersion();
    appendReserve(124);
    appendDiagnostic(2048);
}

void SettingFileBuilder::appendTail1000()
{
    // Not what is read of this model: gaps of other lengths, and the reserved block isn't kept. Cameras have never been
    // given anything else.
    appendZeros(3);
    append(m_info.voiceGuidance);
    if (m_info.horizontalCorrection != 0) // a run of as many bytes as its value, which is 0 or 1
        append(1);
    append(m_info.parkingRecording);
    append(m_info.overwriteSaveJunction);
    appendZeros(3);
    append(m_info.passwordReset != 0 ? 0xFF : 0x00);
    appendZeros(84);
    appendVersion();
    appendZeros(124);
    appendDiagnostic(2048);
}

void SettingFileBuilder::appendVersion()
{
    if (!m_info.version)
        return;
    if (m_info.version->isEmpty())
        appendZeros(4);
    else
        m_bytes += files::nativePath(*m_info.version);
}

void SettingFileBuilder::appendReserve(qsizetype size)
{
    if (m_info.reserve.isEmpty())
        appendZeros(size);
    else
        m_bytes += m_info.reserve;
}

void SettingFileBuilder::appendDiagnostic(qsizetype size)
{
    if (m_info.diagnostic)
        m_bytes += *m_info.diagnostic;
    else
        appendZeros(size);
}

void SettingFileBuilder::appendZeros(qsizetype count)
{
    m_bytes.append(count, '\0');
}

void SettingFileBuilder::appendUInt16(quint16 number)
{
    append(static_cast<quint8>(number >> 8));
    append(static_cast<quint8>(number & 0xFF));
}

void SettingFileBuilder::append(quint8 byte)
{
    m_bytes += static_cast<char>(byte);
}

} // namespace cardreel
