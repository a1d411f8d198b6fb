#pragma once

#include "settings/SettingStore.h"
#include "settings/UnitSettingViewController.h"

#include <functional>
#include <memory>

namespace cardreel {

/// One visit to a card's settings, from loading them to the last alert: what the window does around the editor's sheet.
/// The card is read and written in the background. Destroying it ends the visit; a write under way is still completed.
/// Owned by whoever shows the sheet; interface thread. The sheet itself is shown in Callbacks::openEditor and closed in
/// Callbacks::closeEditor.
class SettingSession final : private UnitSettingViewController::Delegate
{
public:
    enum class Outcome { Saved, WriteFailed, Cancelled };
    struct Callbacks
    {
        /// The settings were loaded, or the user was told that they weren't: show the sheet on controller(),
        /// editorDelayMs after the one that chose the card was closed.
        std::function<void(UnitSettingViewController&)> openEditor;
        /// The sheet is done. More alerts may follow.
        std::function<void()> closeEditor;
        /// All is done and told. The session may be destroyed from within.
        std::function<void(Outcome)> finished;
        /// Whether the card is being read or written: the sheet is disabled meanwhile.
        std::function<void(bool isBusy)> busyDidChange;
    };
    /// How the work on the card is done: runs `work` somewhere, then what that returns on the interface thread.
    using Answer = std::function<void()>;
    using Work = std::function<Answer()>;
    using Runner = std::function<void(Work work)>;
    /// Everything at once, for programs without windows. Otherwise a thread of its own is used.
    static Runner inlineRunner();

    static constexpr int editorDelayMs = 100;

    /// `presenter` outlives it.
    SettingSession(QString rootPath, AlertPresenter& presenter, Callbacks callbacks);
    SettingSession(QString rootPath, AlertPresenter& presenter, Callbacks callbacks, Runner runner,
                   SettingStore::Surroundings surroundings = {});
    ~SettingSession() override;
    SettingSession(const SettingSession&) = delete;
    SettingSession& operator=(const SettingSession&) = delete;

    /// Loads and opens the editor. To be called once.
    void open();

    /// Nothing until the editor is opened.
    UnitSettingViewController* controller() { return m_controller.get(); }
    const QString& rootPath() const { return m_rootPath; }
    bool isBusy() const { return m_isBusy; }
    /// Where the settings came from (`source`) and, when loading failed, why.
    const SettingLoad& loaded() const { return m_load; }
    /// Why the last writing failed; empty when it didn't.
    const QString& writeError() const { return m_writeError; }

private:
    void settingFinished(UnitSettingViewController& controller) override;
    void settingCanceled(UnitSettingViewController& controller) override;

    void didLoad(const SettingLoad& load);
    void openEditor();
    /// Writes unless the card's files are others than `m_load.state`.
    void write();
    void askWhetherToOverwrite(const SettingCardState& found);
    void didWrite(const std::optional<QString>& error);
    void closeAndTell(Outcome outcome);
    void setBusy(bool isBusy);
    /// Runs work on the card while busy; its answer is dropped when the session is gone.
    void run(Work work);
    /// Shows an alert whose answer is dropped when the session is gone.
    void show(const Alert& alert, AlertPresenter::Answered answered);

    QString m_rootPath;
    AlertPresenter& m_presenter;
    Callbacks m_callbacks;
    Runner m_runner;
    SettingStore::Surroundings m_surroundings;
    SettingLoad m_load;
    QString m_writeError;
    bool m_isBusy = false;
    std::unique_ptr<UnitSettingViewController> m_controller;
    std::shared_ptr<SettingSession*> m_alive; ///< expires for those who answer too late
};

} // namespace cardreel
