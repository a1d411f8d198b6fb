#pragma once

#include "settings/SettingFileBuilder.h"

#include <QFile>

namespace cardreel::test {

/// 25 July 2026, 16:05:59, wherever the test runs.
inline ClockReading stillClock()
{
    return {2026, 7, 25, 16, 5, 59};
}

/// A record whose every byte tells which field it is: the eleven settings of the head count from 1 on, what follows
/// them from 12 on.
inline SettingFileInfo numberedRecord(quint16 modelID)
{
    SettingFileInfo info;
    info.headerID = 0xA1B2C3D4;
    info.modelID = modelID;
    info.versionID = 3;
    info.dataEndAddress = 60;
    info.noVerifyChecksum = 7;
    info.checksum = 0x99;
    quint8 next = 1;
    using Info = SettingFileInfo;
    for (const auto field :
         {&Info::recordingTime, &Info::overwriteSaveParking, &Info::sensitivityParking, &Info::recordingStartTime,
          &Info::recordingEndTime, &Info::audioRecording, &Info::sensitivityMovie, &Info::overwriteSaveManual,
          &Info::overwriteSaveEvent, &Info::videoQuality, &Info::notificationVolume, &Info::playbackVolume,
          &Info::childLock, &Info::batteryConnect, &Info::voiceGuidance, &Info::parkingRecording,
          &Info::overwriteSaveJunction})
        info.*field = next++;
    info.horizontalCorrection = 1;
    info.timeZone = -570;
    info.passwordReset = 1;
    info.version = QStringLiteral("1.04");
    const bool isShort = modelID == SettingModel::model0D00;
    info.reserve = QByteArray(isShort ? 28 : 124, 'r');
    info.diagnostic = QByteArray(isShort ? 96 : 2048, 'd');
    return info;
}

inline QByteArray fileOf(const SettingFileInfo& info)
{
    return SettingFileBuilder(info, stillClock).build();
}

/// Empty when there is none to read.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace cardreel::test
