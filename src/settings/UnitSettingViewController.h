#pragma once

#include "settings/AlertPresenter.h"
#include "settings/SettingFileInfo.h"
#include "settings/UnitSettingViewModel.h"

#include <functional>
#include <memory>
#include <optional>

namespace cardreel {

/// The editor of one record, without its sheet: copies it to the model and back and asks before it saves or resets. The
/// sheet edits viewModel() and calls the three operations of its buttons. Owned by SettingSession; interface thread.
class UnitSettingViewController
{
public:
    class Delegate
    {
    public:
        virtual ~Delegate() = default;
        /// The record holds what is to be saved.
        virtual void settingFinished(UnitSettingViewController&) {}
        virtual void settingCanceled(UnitSettingViewController&) {}
    };

    /// `presenter` and `delegate` outlive it; without a delegate saving and cancelling lead nowhere. Without a record
    /// it edits an empty one.
    UnitSettingViewController(AlertPresenter& presenter, Delegate* delegate,
                              const std::optional<SettingFileInfo>& settingFileInfo);

    /// Makes a fresh model and fills it with the record, when one was given. To be called once, before the others.
    void viewDidLoad();

    const SettingFileInfo& settingFileInfo() const { return m_info; }
    UnitSettingViewModel& viewModel() { return m_viewModel; }
    const UnitSettingViewModel& viewModel() const { return m_viewModel; }
    /// The model as it was at viewDidLoad(), to mark what has changed.
    const UnitSettingViewModel& initialViewModel() const { return m_initialViewModel; }

    /// Called whenever this, not the sheet, has changed the model.
    std::function<void()> viewModelDidChange;

    /// From the record to the model.
    void settingInfoApply();
    /// From the model to the record.
    void currentSettingApplyToInfo();

    /// The button that saves: asks first.
    void settingFinish();
    /// The button that cancels: doesn't ask.
    void settingCancel();
    /// The button that goes back to the factory's settings: asks first. Nothing is saved by it.
    void settingReset();

private:
    /// Asks for OK or Cancel; `agreed` isn't called once this is gone.
    void ask(const QString& message, std::function<void()> agreed);

    AlertPresenter& m_presenter;
    Delegate* m_delegate;
    SettingFileInfo m_info;
    bool m_hasLoadedInfo;
    UnitSettingViewModel m_viewModel;
    UnitSettingViewModel m_initialViewModel;
    std::shared_ptr<UnitSettingViewController*> m_alive; ///< expires for those who are answered too late
};

} // namespace cardreel
