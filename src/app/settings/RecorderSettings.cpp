#include "app/settings/RecorderSettings.h"

#include "app/settings/UnitSettingSheet.h"
#include "app/settings/VolumeChooser.h"
#include "platform/files/Files.h"
#include "platform/volumes/MountedVolumes.h"

namespace cardreel {

RecorderSettings::RecorderSettings(QWidget& window)
    : m_window(window)
    , m_presenter([this] { return belowAlert(); })
{
    m_untilSheet.setSingleShot(true);
    m_untilSheet.setInterval(SettingSession::editorDelayMs);
    connect(&m_untilSheet, &QTimer::timeout, this, &RecorderSettings::showSheet);
}

RecorderSettings::~RecorderSettings()
{
    m_session.reset(); // first, so that nobody is answered by what closes now
    delete m_sheet;
    delete m_chooser;
}

void RecorderSettings::edit(const QString& rootPath)
{
    if (!raiseWhatIsOpen())
        begin(rootPath);
}

void RecorderSettings::chooseCard(const QString& proposed)
{
    if (raiseWhatIsOpen())
        return;
    m_session.reset(); // one that is still waiting for its card
    m_chooser = new VolumeChooser(proposed, &m_window);
    auto* volumes = new MountedVolumes(m_chooser);
    const auto update = [chooser = m_chooser.data(), volumes] { chooser->setVolumes(volumes->volumes()); };
    connect(volumes, &MountedVolumes::didChange, m_chooser, update);
    connect(m_chooser, &VolumeChooser::chosen, this, &RecorderSettings::begin);
    connect(m_chooser, &QDialog::rejected, this, [this] {
        m_session.reset();
        m_chooser.clear();
    });
    update();
    m_chooser->open();
}

bool RecorderSettings::isActive() const
{
    return m_session || m_chooser;
}

bool RecorderSettings::raiseWhatIsOpen()
{
    QWidget* const open = m_sheet ? static_cast<QWidget*>(m_sheet) : m_chooser;
    if (open)
        open->activateWindow();
    return open || m_untilSheet.isActive();
}

void RecorderSettings::begin(const QString& rootPath)
{
    SettingSession::Callbacks callbacks;
    callbacks.openEditor = [this](UnitSettingViewController&) { openEditor(); };
    callbacks.closeEditor = [this] {
        if (m_sheet)
            m_sheet->leave();
        m_sheet.clear();
    };
    callbacks.finished = [this](SettingSession::Outcome outcome) { end(outcome); };
    callbacks.busyDidChange = [this](bool isBusy) { setBusy(isBusy); };
    m_session = std::make_unique<SettingSession>(rootPath, m_presenter, callbacks);
    m_session->open();
}

void RecorderSettings::openEditor()
{
    if (!m_chooser)
        return showSheet();
    m_chooser->done(QDialog::Accepted);
    m_chooser.clear();
    m_untilSheet.start();
}

void RecorderSettings::showSheet()
{
    if (!m_session || !m_session->controller())
        return;
    m_sheet = new UnitSettingSheet(*m_session->controller(), m_session->loaded(), &m_window);
    m_sheet->setWindowTitle(tr("Recorder Settings – %1").arg(files::nameOf(files::displayPath(m_session->rootPath()))));
    m_sheet->open();
}

void RecorderSettings::setBusy(bool isBusy)
{
    if (m_sheet)
        m_sheet->setBusy(isBusy);
    else if (m_chooser)
        m_chooser->setBusy(isBusy);
}

void RecorderSettings::end(SettingSession::Outcome outcome)
{
    m_session.reset();
    if (outcome != SettingSession::Outcome::Cancelled)
        Q_EMIT finished(outcome);
}

QWidget* RecorderSettings::belowAlert() const
{
    if (m_sheet)
        return m_sheet;
    return m_chooser ? static_cast<QWidget*>(m_chooser) : &m_window;
}

} // namespace cardreel
