#include "settings/UnitSettingViewController.h"

#include "platform/text/Localization.h"
#include "settings/TimeZoneConverter.h"

#include <QCoreApplication>

#include <array>
#include <utility>

namespace cardreel {

namespace {

using Byte = quint8 SettingFileInfo::*;

struct NumberPair
{
    Byte inRecord;
    int UnitSettingViewModel::*inModel;
};
constexpr std::array<NumberPair, 8> numberPairs = {{
    {&SettingFileInfo::recordingTime, &UnitSettingViewModel::parkingRecordingTime},
    {&SettingFileInfo::sensitivityParking, &UnitSettingViewModel::sensitivityParking},
    {&SettingFileInfo::recordingStartTime, &UnitSettingViewModel::recordingStartTime},
    {&SettingFileInfo::recordingEndTime, &UnitSettingViewModel::recordingEndTime},
    {&SettingFileInfo::audioRecording, &UnitSettingViewModel::audioRecording},
    {&SettingFileInfo::sensitivityMovie, &UnitSettingViewModel::sensitivityMovie},
    {&SettingFileInfo::videoQuality, &UnitSettingViewModel::videoQuality},
    {&SettingFileInfo::notificationVolume, &UnitSettingViewModel::notificationVolume},
}};

struct SwitchPair
{
    Byte inRecord;
    bool UnitSettingViewModel::*inModel;
};
// A flag for resetting the password is 0xFF when read and 1 when set here; both are written as 0xFF.
constexpr std::array<SwitchPair, 4> switchPairs = {{
    {&SettingFileInfo::overwriteSaveParking, &UnitSettingViewModel::overwriteSaveParking},
    {&SettingFileInfo::overwriteSaveManual, &UnitSettingViewModel::overwriteSaveManual},
    {&SettingFileInfo::overwriteSaveEvent, &UnitSettingViewModel::overwriteSaveEvent},
    {&SettingFileInfo::passwordReset, &UnitSettingViewModel::isPasswordReset},
}};

} // namespace

UnitSettingViewController::UnitSettingViewController(AlertPresenter& presenter, Delegate* delegate,
                                                     const std::optional<SettingFileInfo>& settingFileInfo)
    : m_presenter(presenter)
    , m_delegate(delegate)
    , m_info(settingFileInfo.value_or(SettingFileInfo()))
    , m_hasLoadedInfo(settingFileInfo.has_value())
    , m_alive(std::make_shared<UnitSettingViewController*>(this))
{
}

void UnitSettingViewController::viewDidLoad()
{
    m_viewModel = UnitSettingViewModel();
    if (m_hasLoadedInfo)
        settingInfoApply();
    m_initialViewModel = m_viewModel;
}

void UnitSettingViewController::settingInfoApply()
{
    for (const NumberPair& pair : numberPairs)
        m_viewModel.*pair.inModel = m_info.*pair.inRecord;
    for (const SwitchPair& pair : switchPairs)
        m_viewModel.*pair.inModel = m_info.*pair.inRecord != 0;
    m_viewModel.timeZone = TimeZoneConverter::convertTimeDiffToTimeZoneSelection(m_info.timeZone);
    m_viewModel.reserve = m_info.reserve;
    m_viewModel.version = m_info.version.value_or(QString());
}

void UnitSettingViewController::currentSettingApplyToInfo()
{
    for (const NumberPair& pair : numberPairs)
        m_info.*pair.inRecord = static_cast<quint8>(m_viewModel.*pair.inModel);
    for (const SwitchPair& pair : switchPairs) {
        // Another byte than 1 that means "on" stays as the camera wrote it.
        quint8& byte = m_info.*pair.inRecord;
        if ((byte != 0) != m_viewModel.*pair.inModel)
            byte = m_viewModel.*pair.inModel ? 1 : 0;
    }
    m_info.timeZone = TimeZoneConverter::convertTimeZoneSelectionToTimeDiff(m_viewModel.timeZone);
    m_info.reserve = m_viewModel.reserve;
    if (m_viewModel.version == UnitSettingViewModel::unknownVersion())
        m_viewModel.version.clear();
    m_info.version = m_viewModel.version;
}

void UnitSettingViewController::settingFinish()
{
    ask(localizedText(QT_TRANSLATE_NOOP("Keys", "Save the settings?")), [this] {
        currentSettingApplyToInfo();
        if (m_delegate)
            m_delegate->settingFinished(*this);
    });
}

void UnitSettingViewController::settingCancel()
{
    if (m_delegate)
        m_delegate->settingCanceled(*this);
}

void UnitSettingViewController::settingReset()
{
    ask(localizedText(QT_TRANSLATE_NOOP("Keys", "Reset the setting to the initial value?")), [this] {
        m_viewModel.defaultSettingWithVersion(UnitSettingViewModel::Version::Keep);
        if (viewModelDidChange)
            viewModelDidChange();
    });
}

void UnitSettingViewController::ask(const QString& message, std::function<void()> agreed)
{
    Alert alert;
    alert.kind = Alert::Kind::Question;
    alert.message = message;
    alert.buttons = {localizedText(QT_TRANSLATE_NOOP("Keys", "OK")),
                     localizedText(QT_TRANSLATE_NOOP("Keys", "Cancel"))};
    m_presenter.show(alert,
                     [alive = std::weak_ptr(m_alive), agreed = std::move(agreed)](AlertPresenter::Answer answer) {
                         if (answer == AlertPresenter::Answer::FirstButton && !alive.expired())
                             agreed();
                     });
}

} // namespace cardreel
