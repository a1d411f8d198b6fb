#include "settings/UnitSettingViewModel.h"

#include "platform/text/Localization.h"

#include <QCoreApplication>

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

QStringList localizedTexts(std::initializer_list<const char*> keys)
{
    QStringList texts;
    for (const char* key : keys)
        texts += localizedText(key);
    return texts;
}

} // namespace

UnitSettingViewModel::UnitSettingViewModel()
    : recordingTimeChoises(localizedTexts({QT_TRANSLATE_NOOP("Keys", "OFF"), QT_TRANSLATE_NOOP("Keys", "15秒間"),
                                           QT_TRANSLATE_NOOP("Keys", "30秒間"), QT_TRANSLATE_NOOP("Keys", "1分間")}))
    , recordingStartTimeChoises(
          localizedTexts({QT_TRANSLATE_NOOP("Keys", "OFF"), QT_TRANSLATE_NOOP("Keys", "30秒後"),
                          QT_TRANSLATE_NOOP("Keys", "1分後"), QT_TRANSLATE_NOOP("Keys", "3分後")}))
    , recordingEndTimeChoises(localizedTexts({QT_TRANSLATE_NOOP("Keys", "OFF"), QT_TRANSLATE_NOOP("Keys", "30秒前"),
                                              QT_TRANSLATE_NOOP("Keys", "1分前"), QT_TRANSLATE_NOOP("Keys", "3分前")}))
    , videoQualityChoises(
          localizedTexts({QT_TRANSLATE_NOOP("Keys", "標準画質"), QT_TRANSLATE_NOOP("Keys", "長時間画質")}))
    , audioRecordingChoises(localizedTexts({QT_TRANSLATE_NOOP("Keys", "OFF"), QT_TRANSLATE_NOOP("Keys", "ON")}))
    // Read the same in every language.
    , timeZoneChoises({u"UTC+14:00"_s, u"UTC+13:00"_s, u"UTC+12:45"_s, u"UTC+12:00"_s, u"UTC+11:00"_s, u"UTC+10:30"_s,
                       u"UTC+10:00"_s, u"UTC+09:30"_s, u"UTC+09:00"_s, u"UTC+08:45"_s, u"UTC+08:00"_s, u"UTC+07:00"_s,
                       u"UTC+06:30"_s, u"UTC+06:00"_s, u"UTC+05:45"_s, u"UTC+05:30"_s, u"UTC+05:00"_s, u"UTC+04:30"_s,
                       u"UTC+04:00"_s, u"UTC+03:30"_s, u"UTC+03:00"_s, u"UTC+02:00"_s, u"UTC+01:00"_s, u"UTC 00:00"_s,
                       u"UTC-01:00"_s, u"UTC-02:00"_s, u"UTC-03:00"_s, u"UTC-03:30"_s, u"UTC-04:00"_s, u"UTC-05:00"_s,
                       u"UTC-06:00"_s, u"UTC-07:00"_s, u"UTC-08:00"_s, u"UTC-09:00"_s, u"UTC-09:30"_s, u"UTC-10:00"_s,
                       u"UTC-11:00"_s, u"UTC-12:00"_s})
{
    defaultSettingWithVersion(Version::Clear);
}

void UnitSettingViewModel::defaultSettingWithVersion(Version versionHandling)
{
    parkingRecording = true;
    parkingRecordingPlus = true;
    recordingEndTime = 2; // the factory's list has it twice; the later one counts
    overwriteSaveParking = true;
    recordingStartTime = 1;
    recordingEndTime = 1;
    sensitivityParking = 3;
    videoQuality = 2; // outside its list, and the factory's setting all the same
    overwriteSaveManual = true;
    overwriteSaveEvent = true;
    overwriteSaveJunction = true;
    audioRecording = 1;
    sensitivityMovie = 3;
    notificationVolume = 2;
    isPasswordReset = false;
    if (versionHandling == Version::Clear)
        version = unknownVersion();
}

QString UnitSettingViewModel::unknownVersion()
{
    return u"----"_s;
}

} // namespace cardreel
