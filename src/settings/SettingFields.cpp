#include "settings/SettingFields.h"

#include "settings/SettingTransformers.h"

#include <algorithm>
#include <array>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

using Model = UnitSettingViewModel;
using Kind = SettingField::Kind;
using Reach = SettingField::Reach;

constexpr int highestSensitivity = 4;
constexpr int highestVolume = 5;

// What happens to a setting when a card of some model is saved.

Reach always(quint16)
{
    return Reach::Saved;
}

Reach never(quint16)
{
    return Reach::Missing;
}

Reach exceptInUnknownAnd0D00(quint16 modelID)
{
    return SettingModel::isKnown(modelID) && modelID != SettingModel::model0D00 ? Reach::Saved : Reach::Missing;
}

Reach keptIn0D00(quint16 modelID)
{
    return modelID == SettingModel::model0D00 ? Reach::NotSaved : Reach::Missing;
}

Reach keptIn1000(quint16 modelID)
{
    return modelID == SettingModel::model1000 ? Reach::NotSaved : Reach::Missing;
}

Reach onlyInEditor(quint16)
{
    return Reach::Dropped;
}

Reach ofPlaybackVolume(quint16 modelID)
{
    return SettingModel::isKnown(modelID) && modelID != SettingModel::model1000 ? Reach::NotSaved : Reach::Missing;
}

Reach inKnownModels(quint16 modelID)
{
    return SettingModel::isKnown(modelID) ? Reach::NotSaved : Reach::Missing;
}

std::optional<QString> sensitivityText(int value)
{
    const auto step = SensitivityTypeValueTransformer::transformedValue(value);
    return step ? std::optional(QString::number(*step)) : std::nullopt;
}

std::optional<QString> volumeText(int value)
{
    return value <= highestVolume ? VolumeValueTransformer::transformedValue(value) : std::nullopt;
}

SettingField switchField(const char* name, bool Model::*member, Reach (*reach)(quint16))
{
    return {name, Kind::Switch, member, 1, nullptr, nullptr, reach};
}

SettingField choiceField(const char* name, int Model::*member, QStringList Model::*choices, Reach (*reach)(quint16))
{
    return {name, Kind::Choice, member, 0, choices, nullptr, reach};
}

SettingField stepField(const char* name, int Model::*member, int highest, std::optional<QString> (*text)(int),
                       Reach (*reach)(quint16))
{
    return {name, Kind::Step, member, highest, nullptr, text, reach};
}

const std::vector<SettingField>& fields()
{
    static const std::vector<SettingField> all = {
        switchField("parkingRecording", &Model::parkingRecording, keptIn1000),
        switchField("parkingRecordingPlus", &Model::parkingRecordingPlus, never),
        choiceField("parkingRecordingTime", &Model::parkingRecordingTime, &Model::recordingTimeChoises, always),
        switchField("overwriteSaveParking", &Model::overwriteSaveParking, always),
        stepField("sensitivityParking", &Model::sensitivityParking, highestSensitivity, sensitivityText, always),
        choiceField("recordingStartTime", &Model::recordingStartTime, &Model::recordingStartTimeChoises, always),
        choiceField("recordingEndTime", &Model::recordingEndTime, &Model::recordingEndTimeChoises, always),
        choiceField("audioRecording", &Model::audioRecording, &Model::audioRecordingChoises, always),
        stepField("sensitivityMovie", &Model::sensitivityMovie, highestSensitivity, sensitivityText, always),
        switchField("overwriteSaveManual", &Model::overwriteSaveManual, always),
        switchField("overwriteSaveEvent", &Model::overwriteSaveEvent, always),
        switchField("overwriteSaveJunction", &Model::overwriteSaveJunction, keptIn1000),
        choiceField("videoQuality", &Model::videoQuality, &Model::videoQualityChoises, always),
        stepField("notificationVolume", &Model::notificationVolume, highestVolume, volumeText, always),
        stepField("playbackVolume", &Model::playbackVolume, highestVolume, volumeText, ofPlaybackVolume),
        switchField("childLock", &Model::childLock, keptIn0D00),
        switchField("batteryConnect", &Model::batteryConnect, keptIn0D00),
        choiceField("timeZone", &Model::timeZone, &Model::timeZoneChoises, onlyInEditor),
        switchField("isPasswordReset", &Model::isPasswordReset, exceptInUnknownAnd0D00),
        {"version", Kind::Text, &Model::version, 0, nullptr, nullptr, inKnownModels},
    };
    return all;
}

} // namespace

int SettingField::value(const UnitSettingViewModel& model) const
{
    if (const auto* const number = std::get_if<int Model::*>(&member))
        return model.**number;
    if (const auto* const flag = std::get_if<bool Model::*>(&member))
        return model.**flag ? 1 : 0;
    return 0;
}

bool SettingField::setValue(UnitSettingViewModel& model, int value) const
{
    if (!isInRange(model, value))
        return false;
    if (const auto* const number = std::get_if<int Model::*>(&member))
        model.** number = value;
    else if (const auto* const flag = std::get_if<bool Model::*>(&member))
        model.** flag = value != 0;
    return true;
}

bool SettingField::isInRange(const UnitSettingViewModel& model, int value) const
{
    return isEditable() && value >= 0 && value <= highestValue(model);
}

int SettingField::highestValue(const UnitSettingViewModel& model) const
{
    return choices ? static_cast<int>((model.*choices).size()) - 1 : highest;
}

std::optional<QString> SettingField::text(const UnitSettingViewModel& model) const
{
    if (const auto* const text = std::get_if<QString Model::*>(&member))
        return model.**text;
    return textOf(model, value(model));
}

std::optional<QString> SettingField::textOf(const UnitSettingViewModel& model, int value) const
{
    if (!isInRange(model, value))
        return std::nullopt;
    if (choices)
        return (model.*choices).at(value);
    if (stepText)
        return stepText(value);
    return model.audioRecordingChoises.at(value); // off and on
}

std::optional<int> SettingField::valueFromText(const UnitSettingViewModel& model, const QString& text) const
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber)
        return isInRange(model, number) ? std::optional(number) : std::nullopt;
    const auto is = [&text](const QString& other) { return text.compare(other, Qt::CaseInsensitive) == 0; };
    if (kind == Kind::Switch && (is(u"true"_s) || is(u"on"_s)))
        return 1;
    if (kind == Kind::Switch && (is(u"false"_s) || is(u"off"_s)))
        return 0;
    for (int candidate = 0; choices && candidate <= highestValue(model); ++candidate) {
        if (is((model.*choices).at(candidate)))
            return candidate;
    }
    return std::nullopt;
}

bool SettingField::differs(const UnitSettingViewModel& a, const UnitSettingViewModel& b) const
{
    return std::visit([&](auto m) { return a.*m != b.*m; }, member);
}

std::span<const SettingField> settingFields()
{
    return fields();
}

const SettingField* settingField(QStringView name)
{
    const auto found = std::find_if(fields().begin(), fields().end(), [name](const SettingField& field) {
        return name == QLatin1StringView(field.name);
    });
    return found == fields().end() ? nullptr : &*found;
}

std::vector<const SettingField*> changedSettingFields(const UnitSettingViewModel& before,
                                                      const UnitSettingViewModel& after)
{
    std::vector<const SettingField*> changed;
    for (const SettingField& field : fields()) {
        if (field.isEditable() && field.differs(before, after))
            changed.push_back(&field);
    }
    return changed;
}

std::span<const SettingInfoField> settingInfoFields()
{
    using Info = SettingFileInfo;
    static const std::vector<SettingInfoField> all = {
        {"headerID", &Info::headerID},
        {"modelID", &Info::modelID},
        {"versionID", &Info::versionID},
        {"creationDate", &Info::creationDate},
        {"dataEndAddress", &Info::dataEndAddress},
        {"noVerifyChecksum", &Info::noVerifyChecksum},
        {"checksum", &Info::checksum},
        {"parkingRecording", &Info::parkingRecording},
        {"recordingTime", &Info::recordingTime},
        {"overwriteSaveParking", &Info::overwriteSaveParking},
        {"sensitivityParking", &Info::sensitivityParking},
        {"recordingStartTime", &Info::recordingStartTime},
        {"recordingEndTime", &Info::recordingEndTime},
        {"audioRecording", &Info::audioRecording},
        {"sensitivityMovie", &Info::sensitivityMovie},
        {"overwriteSaveManual", &Info::overwriteSaveManual},
        {"overwriteSaveEvent", &Info::overwriteSaveEvent},
        {"overwriteSaveJunction", &Info::overwriteSaveJunction},
        {"videoQuality", &Info::videoQuality},
        {"notificationVolume", &Info::notificationVolume},
        {"playbackVolume", &Info::playbackVolume},
        {"voiceGuidance", &Info::voiceGuidance},
        {"horizontalCorrection", &Info::horizontalCorrection},
        {"timeZone", &Info::timeZone},
        {"childLock", &Info::childLock},
        {"batteryConnect", &Info::batteryConnect},
        {"passwordReset", &Info::passwordReset},
        {"version", &Info::version},
        {"reserve", &Info::reserve},
        {"diagnostic", &Info::diagnostic},
    };
    return all;
}

} // namespace cardreel
