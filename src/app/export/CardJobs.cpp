#include "app/export/CardJobs.h"

#include "app/export/BackUpSheet.h"
#include "app/export/ExportSheet.h"
#include "app/export/ProgressSheet.h"
#include "platform/files/Files.h"
#include "playback/MediaController.h"

#include <QAction>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

CardJobs::CardJobs(MediaController& controller, QWidget& window)
    : m_controller(controller)
    , m_window(window)
    , m_export(new QAction(tr("&Export Route…"), this))
    , m_backUp(new QAction(tr("&Back Up…"), this))
{
    m_export->setShortcut(Qt::CTRL | Qt::Key_E);
    m_backUp->setShortcut(Qt::CTRL | Qt::Key_B);
    m_export->setToolTip(tr("Export the route to a file (Ctrl+E)"));
    m_backUp->setToolTip(tr("Copy recordings and pictures to another disk (Ctrl+B)"));
    connect(m_export, &QAction::triggered, this, &CardJobs::exportRoute);
    connect(m_backUp, &QAction::triggered, this, &CardJobs::backUp);
    connect(&controller, &MediaLibrary::mediaTreeDidSync, this, &CardJobs::updateActions);
    updateActions();
}

CardJobs::~CardJobs()
{
    m_controller.closeProgress(); // what it tells is the sheet's
    delete m_sheet;
}

bool CardJobs::isJobRunning() const
{
    return m_controller.isJobRunning();
}

void CardJobs::updateActions()
{
    for (QAction* action : {m_export, m_backUp})
        action->setEnabled(!m_controller.mediaTree().empty() && !m_sheet);
}

/// Another sheet of the window may have come since the actions were enabled.
bool CardJobs::canBegin() const
{
    const QList<QDialog*> dialogs = m_window.findChildren<QDialog*>();
    return !m_controller.mediaTree().empty() && !m_sheet &&
           std::none_of(dialogs.begin(), dialogs.end(), [](const QDialog* dialog) { return dialog->isVisible(); });
}

void CardJobs::exportRoute()
{
    if (!canBegin())
        return;
    // The list neither sorts nor filters: what it shows is the media tree. The sheet keeps what is selected now, for
    // the clock goes on selecting.
    auto* sheet =
        new ExportSheet(m_controller.selectedDCFs(), m_controller.mediaTree(), m_controller.rootPath(), &m_window);
    connect(sheet, &ExportSheet::chosen, this, &CardJobs::runExport);
    begin(sheet);
}

void CardJobs::backUp()
{
    if (!canBegin())
        return;
    auto* sheet =
        new BackUpSheet(m_controller.selectedDCFs(), m_controller.mediaTree(), m_controller.rootPath(), &m_window);
    connect(sheet, &BackUpSheet::chosen, this, &CardJobs::runBackUp);
    begin(sheet);
}

void CardJobs::begin(QDialog* sheet)
{
    m_controller.setCanReloadMedia(false);
    m_sheet = sheet;
    connect(sheet, &QDialog::rejected, this, [this] {
        m_controller.setCanReloadMedia(true);
        end();
    });
    updateActions();
    sheet->open();
}

void CardJobs::runExport(const MediaLibrary::DCFList& recordings, const QString& path)
{
    ProgressSheet* sheet =
        showProgress(Kind::Export, tr("Exporting to “%1”").arg(files::displayPath(files::nameOf(path))),
                     static_cast<qsizetype>(recordings.size()));
    m_controller.exportInfos(recordings, path, sheet);
}

void CardJobs::runBackUp(const BackUpList& items, const QString& path, ReadBack readBack)
{
    ProgressSheet* sheet =
        showProgress(Kind::BackUp, tr("Backing up to “%1”").arg(files::displayPath(files::nameOf(path))),
                     static_cast<qsizetype>(items.size()));
    m_controller.backUpSelectedInfos(items, path, readBack, sheet);
}

ProgressSheet* CardJobs::showProgress(Kind kind, const QString& title, qsizetype items)
{
    m_kind = kind;
    m_asks = true;
    auto* sheet = new ProgressSheet(title, items, &m_window);
    m_sheet = sheet;
    sheet->addActions(m_keysOfSheet);
    connect(sheet, &ProgressSheet::didEnd, this, [this] {
        if (m_question)
            m_question->reject(); // there is nothing to ask any more
        Q_EMIT jobDidEnd();
    });
    connect(sheet, &QDialog::finished, this, [this] {
        m_controller.closeProgress();
        end();
    });
    sheet->show();
    return sheet;
}

/// Its sheet is about to go.
void CardJobs::end()
{
    m_sheet.clear();
    updateActions();
    Q_EMIT didEnd();
}

void CardJobs::stop()
{
    delete m_question;
    if (!m_sheet)
        return;
    m_controller.closeProgress();
    m_controller.setCanReloadMedia(true);
    delete m_sheet;
    end();
}

void CardJobs::askToStop(std::function<void()> stopped)
{
    if (m_question && m_question->isVisible())
        return m_question->activateWindow();
    m_question = askBelow(m_window, 1, tr("&Stop and Close"), [this, stopped = std::move(stopped)] {
        m_question.clear(); // it is closing itself
        stop();
        stopped();
    });
}

QMessageBox* CardJobs::askBelow(QWidget& window, int jobs, const QString& stopText, std::function<void()> agreed) const
{
    QString text = tr("%n export(s) and backup(s) are running.", nullptr, jobs);
    QString consequence = tr("If you stop them, what is unfinished is removed.");
    if (jobs == 1 && m_kind == Kind::BackUp) {
        text = tr("A backup is running.");
        consequence = tr("If you stop it, its folder is removed with everything in it.");
    } else if (jobs == 1) {
        text = tr("An export is running.");
        consequence = tr("If you stop it, no file is written.");
    }
    auto* box = new QMessageBox(QMessageBox::Question, QString(), text, QMessageBox::NoButton, &window);
    box->setInformativeText(consequence);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton* keep = box->addButton(tr("&Keep Running"), QMessageBox::RejectRole);
    const QPushButton* stop = box->addButton(stopText, QMessageBox::DestructiveRole);
    box->setDefaultButton(keep);
    box->setEscapeButton(keep);
    connect(box, &QDialog::finished, this, [box, stop, agreed = std::move(agreed)] {
        if (box->clickedButton() == stop)
            agreed();
    });
    box->open();
    return box;
}

} // namespace cardreel
