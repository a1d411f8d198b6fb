#include "settings/SettingSession.h"

#include "platform/BackgroundThread.h"
#include "platform/files/Files.h"
#include "platform/text/Localization.h"

#include <QCoreApplication>

#include <utility>

namespace cardreel {

namespace {

QString okText()
{
    return localizedText(QT_TRANSLATE_NOOP("Keys", "OK"));
}

/// Not a job that a newer one replaces: once begun, writing isn't dropped, whoever goes away meanwhile.
void runInBackground(SettingSession::Work work)
{
    BackgroundThread::run([work = std::move(work)] {
        SettingSession::Answer answer = work();
        if (QCoreApplication* const application = QCoreApplication::instance())
            QMetaObject::invokeMethod(application, std::move(answer), Qt::QueuedConnection);
    });
}

/// Whether the card is still there with the folder that its settings are in.
bool isThere(const QString& root)
{
    return files::isFolder(files::folderOf(SettingStore::binPath(root)));
}

} // namespace

SettingSession::Runner SettingSession::inlineRunner()
{
    return [](const Work& work) { work()(); };
}

SettingSession::SettingSession(QString rootPath, AlertPresenter& presenter, Callbacks callbacks)
    : SettingSession(std::move(rootPath), presenter, std::move(callbacks), runInBackground)
{
}

SettingSession::SettingSession(QString rootPath, AlertPresenter& presenter, Callbacks callbacks, Runner runner,
                               SettingStore::Surroundings surroundings)
    : m_rootPath(std::move(rootPath))
    , m_presenter(presenter)
    , m_callbacks(std::move(callbacks))
    , m_runner(std::move(runner))
    , m_surroundings(std::move(surroundings))
    , m_alive(std::make_shared<SettingSession*>(this))
{
}

SettingSession::~SettingSession() = default;

void SettingSession::open()
{
    run([this, root = m_rootPath] { return [this, load = SettingStore::load(root)] { didLoad(load); }; });
}

void SettingSession::didLoad(const SettingLoad& load)
{
    m_load = load;
    if (m_load.info)
        return openEditor();
    Alert alert;
    alert.kind = Alert::Kind::Critical;
    alert.message = localizedText(QT_TRANSLATE_NOOP("Keys", "Failed to load configuration file"));
    alert.informativeText = localizedText(QT_TRANSLATE_NOOP("Keys", "Apply the default settings"));
    alert.buttons = {okText()};
    show(alert, [this](AlertPresenter::Answer) { openEditor(); });
}

void SettingSession::openEditor()
{
    UnitSettingViewController::Delegate* const delegate = this;
    m_controller = std::make_unique<UnitSettingViewController>(m_presenter, delegate, m_load.info);
    m_controller->viewDidLoad();
    if (m_callbacks.openEditor)
        m_callbacks.openEditor(*m_controller);
}

void SettingSession::settingFinished(UnitSettingViewController&)
{
    if (!m_isBusy)
        write();
}

void SettingSession::settingCanceled(UnitSettingViewController&)
{
    if (m_isBusy)
        return;
    const auto finished = m_callbacks.finished; // closing the editor may end the session
    if (m_callbacks.closeEditor)
        m_callbacks.closeEditor();
    if (finished)
        finished(Outcome::Cancelled);
}

void SettingSession::write()
{
    run([this, root = m_rootPath, info = m_controller->settingFileInfo(), expected = m_load.state,
         surroundings = m_surroundings]() -> Answer {
        const SettingCardState found = SettingStore::state(root);
        // From a card that was pulled nothing can be lost; that it can't be written shows by itself.
        if (found != expected && isThere(root))
            return [this, found] { askWhetherToOverwrite(found); };
        return [this, error = SettingStore::save(info, root, surroundings)] { didWrite(error); };
    });
}

void SettingSession::askWhetherToOverwrite(const SettingCardState& found)
{
    Alert alert;
    alert.kind = Alert::Kind::Question;
    alert.message = localizedText(
        QT_TRANSLATE_NOOP("Keys", "The settings on the card were changed by another program. Overwrite them?"));
    alert.buttons = {okText(), localizedText(QT_TRANSLATE_NOOP("Keys", "Cancel"))};
    alert.isRisky = true; // the other program's change would be lost
    show(alert, [this, found](AlertPresenter::Answer answer) {
        if (answer != AlertPresenter::Answer::FirstButton)
            return;           // the editor stays open
        m_load.state = found; // asked again when they change once more
        write();
    });
}

void SettingSession::didWrite(const std::optional<QString>& error)
{
    m_writeError = error.value_or(QString());
    if (!error)
        return closeAndTell(Outcome::Saved);
    Alert alert;
    alert.kind = Alert::Kind::Critical;
    alert.message = localizedText(QT_TRANSLATE_NOOP("Keys", "Could not write to the configuration file"));
    alert.buttons = {okText()};
    show(alert, [this](AlertPresenter::Answer) { closeAndTell(Outcome::WriteFailed); });
}

void SettingSession::closeAndTell(Outcome outcome)
{
    const std::weak_ptr<SettingSession*> alive = m_alive;
    if (m_callbacks.closeEditor)
        m_callbacks.closeEditor();
    if (alive.expired())
        return;
    // Said after a failure, too, which the user has been told of just before.
    Alert alert;
    alert.message = localizedText(QT_TRANSLATE_NOOP("Keys", "saved the setting"));
    alert.buttons = {okText()};
    show(alert, [this, outcome](AlertPresenter::Answer) {
        const auto finished = m_callbacks.finished;
        if (finished)
            finished(outcome);
    });
}

void SettingSession::setBusy(bool isBusy)
{
    m_isBusy = isBusy;
    if (m_callbacks.busyDidChange)
        m_callbacks.busyDidChange(isBusy);
}

void SettingSession::run(Work work)
{
    setBusy(true);
    const Runner runner = m_runner; // outlives the session, should an answer end it
    runner([this, work = std::move(work), alive = std::weak_ptr(m_alive)]() -> Answer {
        return [this, answer = work(), alive] {
            if (alive.expired())
                return;
            setBusy(false);
            if (!alive.expired())
                answer();
        };
    });
}

void SettingSession::show(const Alert& alert, AlertPresenter::Answered answered)
{
    m_presenter.show(alert,
                     [alive = std::weak_ptr(m_alive), answered = std::move(answered)](AlertPresenter::Answer answer) {
                         if (!alive.expired())
                             answered(answer);
                     });
}

} // namespace cardreel
