#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace cardreel {

/// The recorder's settings as the editor shows them: a value for each, and the lists to choose from, in which a value
/// is the index. A value may lie outside its list: it came so from the card and stays until it is changed. What may be
/// edited, and in which range, SettingFields.h tells. Interface thread, since its texts are translated.
class UnitSettingViewModel
{
public:
    /// With the factory's settings.
    UnitSettingViewModel();

    enum class Version { Keep, Clear /**< it becomes unknownVersion() */ };
    /// Back to the factory's settings; what isn't named there stays.
    void defaultSettingWithVersion(Version version);
    /// The version shown while none is known.
    static QString unknownVersion();

    QStringList recordingTimeChoises; ///< for parkingRecordingTime
    QStringList recordingStartTimeChoises;
    QStringList recordingEndTimeChoises;
    QStringList videoQualityChoises;
    QStringList audioRecordingChoises;
    QStringList timeZoneChoises;
    bool parkingRecording = true;
    bool parkingRecordingPlus = true;
    int parkingRecordingTime = 0; ///< the file's `recordingTime`
    bool overwriteSaveParking = true;
    int sensitivityParking = 0;
    int recordingStartTime = 0;
    int recordingEndTime = 0;
    int audioRecording = 0;
    int sensitivityMovie = 0;
    bool overwriteSaveManual = true;
    bool overwriteSaveEvent = true;
    bool overwriteSaveJunction = true;
    int videoQuality = 0;
    int notificationVolume = 0;
    int playbackVolume = 0;
    bool childLock = false;
    bool batteryConnect = false;
    int timeZone = 0;
    bool isPasswordReset = false;
    QByteArray reserve;
    QString version;

    bool operator==(const UnitSettingViewModel&) const = default;
};

} // namespace cardreel
