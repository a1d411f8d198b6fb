#pragma once

#include "platform/Instant.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace cardreel {

/// The recorder's settings file as a plain record: one per file read or to be written. It carries bytes; what they mean
/// is for UnitSettingViewModel to say. Fields stand in the order of their names' table (SettingFields.h).
struct SettingFileInfo
{
    quint32 headerID = 0; ///< the file's signature; 0: the default one is written
    quint16 modelID = 0;  ///< the camera model, which decides what follows the head
    quint8 versionID = 0;
    std::optional<Instant> creationDate; ///< as read; what is written is the moment of writing
    quint8 dataEndAddress = 0;           ///< address of the last setting; 0: 43 is written
    quint8 noVerifyChecksum = 0;         ///< for the camera; never looked at here
    quint8 checksum = 0;                 ///< as read, unverified
    quint8 parkingRecording = 0;
    quint8 recordingTime = 0;
    quint8 overwriteSaveParking = 0;
    quint8 sensitivityParking = 0;
    quint8 recordingStartTime = 0;
    quint8 recordingEndTime = 0;
    quint8 audioRecording = 0;
    quint8 sensitivityMovie = 0;
    quint8 overwriteSaveManual = 0;
    quint8 overwriteSaveEvent = 0;
    quint8 overwriteSaveJunction = 0;
    quint8 videoQuality = 0;
    quint8 notificationVolume = 0;
    quint8 playbackVolume = 0;
    quint8 voiceGuidance = 0;
    quint8 horizontalCorrection = 0;
    qint16 timeZone = 0; ///< minutes east of UTC
    quint8 childLock = 0;
    quint8 batteryConnect = 0;
    quint8 passwordReset = 0;             ///< a flag: 0xFF when set by a file; no password is held
    std::optional<QString> version;       ///< the camera's; a byte that isn't text is kept as in paths (Files.h)
    QByteArray reserve;                   ///< kept as read; empty: zeros are written
    std::optional<QByteArray> diagnostic; ///< kept as read; nothing: zeros are written

    bool operator==(const SettingFileInfo&) const = default;
};

/// The camera models whose files are known.
namespace SettingModel {
constexpr quint16 model0D00 = 0x0D00;
constexpr quint16 model0E00 = 0x0E00;
constexpr quint16 model0F00 = 0x0F00;
constexpr quint16 model1000 = 0x1000;

constexpr bool isKnown(quint16 modelID)
{
    return modelID == model0D00 || modelID == model0E00 || modelID == model0F00 || modelID == model1000;
}
} // namespace SettingModel

} // namespace cardreel
