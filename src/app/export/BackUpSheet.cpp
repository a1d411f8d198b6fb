#include "app/export/BackUpSheet.h"

#include "app/WindowKeys.h"
#include "app/export/SheetParts.h"
#include "app/export/TargetPlace.h"
#include "app/settings/SwitchBox.h"
#include "export/ExportDates.h"
#include "platform/files/Files.h"
#include "platform/settings/UserDefaults.h"
#include "platform/text/Localization.h"
#include "platform/text/UnitText.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

BackUpSheet::BackUpSheet(DCFList selected, DCFList arranged, const QString& cardPath, QWidget* parent)
    : QDialog(parent)
    , m_selected(std::move(selected))
    , m_arranged(std::move(arranged))
    , m_cardPath(cardPath)
    , m_lastFolder(lastFolder(keys::backUpFolder))
    , m_plainName(asFileName(backUpDirectoryName(now())))
    , m_backUpOptionAllPicture(new QRadioButton(
          tr("&All pictures, and the selected recordings (%1)").arg(locale().toString(m_selected.size()))))
    , m_backUpOptionNoPicture(new QRadioButton(
          tr("&No pictures, only the selected recordings (%1)").arg(locale().toString(m_selected.size()))))
    , m_backUpOptionOnlyPicture(new QRadioButton(tr("&Only all pictures")))
    , m_backUpOptionLabel(new QLabel(tr("What is copied:")))
    , m_folder(new PathField)
    , m_name(new QLineEdit)
    , m_readBack(new SwitchBox(tr("&Read the copies back and compare")))
    , m_free(new QLabel)
    , m_required(new QLabel)
    , m_problem(new ProblemLabel)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Back Up"));
    QVBoxLayout* column = makeSheetColumn(*this);
    addOptions(*column);
    addTarget(*column);
    m_readBack->setToolTip(tr("Takes about twice as long"));
    m_readBack->setChecked(UserDefaults::shared().value(keys::backUpReadBack).toBool());
    column->addWidget(m_readBack);
    addSizes(*column);
    column->addWidget(m_problem);
    addButtons(*column);
    m_folder->setPath(m_lastFolder);
    backUpOptionChanged();
}

void BackUpSheet::addOptions(QVBoxLayout& column)
{
    column.addWidget(m_backUpOptionLabel);
    m_backUpOptionAllPicture->setChecked(true);
    for (QRadioButton* option : {m_backUpOptionAllPicture, m_backUpOptionNoPicture, m_backUpOptionOnlyPicture}) {
        column.addWidget(option);
        connect(option, &QRadioButton::toggled, this, &BackUpSheet::backUpOptionChanged);
    }
    // Who knows of no selection thinks that this copies the card.
    if (m_selected.size() < m_arranged.size()) {
        column.addWidget(
            makeHint(tr("%1 of %2 recordings are selected; Ctrl+A in the list selects all.")
                         .arg(locale().toString(m_selected.size()), locale().toString(m_arranged.size()))));
    }
}

void BackUpSheet::addTarget(QVBoxLayout& column)
{
    addField(column, tr("In the &folder:"), m_folder);
    addField(column, tr("As a new folder with the na&me:"), m_name);
    m_folder->line()->setAccessibleName(tr("Folder"));
    connect(m_folder, &PathField::changed, this, &BackUpSheet::panelDidChangeToDirectoryURL);
    connect(m_folder, &PathField::browseRequested, this, &BackUpSheet::browse);
    connect(m_name, &QLineEdit::textChanged, this, &BackUpSheet::refresh);
}

void BackUpSheet::addSizes(QVBoxLayout& column)
{
    auto* sizes = new QGridLayout;
    sizes->setHorizontalSpacing(12);
    sizes->setVerticalSpacing(4);
    sizes->setColumnStretch(1, 1);
    sizes->addWidget(new QLabel(localizedText(QT_TRANSLATE_NOOP("Keys", "Free size:"))), 0, 0);
    sizes->addWidget(m_free, 0, 1);
    sizes->addWidget(new QLabel(localizedText(QT_TRANSLATE_NOOP("Keys", "Required size:"))), 1, 0);
    sizes->addWidget(m_required, 1, 1);
    column.addLayout(sizes);
}

void BackUpSheet::addButtons(QVBoxLayout& column)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_execute = buttons->addButton(localizedText(QT_TRANSLATE_NOOP("Keys", "Execute")), QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &BackUpSheet::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column.addWidget(buttons);
    m_execute->setDefault(true); // of this sheet, so once it belongs to that
}

void BackUpSheet::proposeName()
{
    if (m_name->text() != m_proposedName)
        return; // it is the user's own
    m_proposedName = files::nameOf(freePath(folder(), m_plainName, {}));
    m_name->setText(m_proposedName);
    m_name->setCursorPosition(0);
}

BackUpOptionState BackUpSheet::optionState() const
{
    return {m_backUpOptionAllPicture->isChecked(), m_backUpOptionNoPicture->isChecked(),
            m_backUpOptionOnlyPicture->isChecked()};
}

BackUpList BackUpSheet::items() const
{
    return selectedObjectsForOptionState(optionState(), m_arranged, m_selected);
}

QString BackUpSheet::folder() const
{
    return fullPath(m_folder->path(), m_lastFolder);
}

QString BackUpSheet::targetPath() const
{
    return folder().isEmpty() || m_name->text().isEmpty() ? QString() : files::join(folder(), m_name->text());
}

bool BackUpSheet::event(QEvent* event)
{
    // The user may have made room elsewhere.
    if (event->type() == QEvent::WindowActivate)
        refresh();
    return QDialog::event(event);
}

void BackUpSheet::backUpOptionChanged()
{
    m_requiredBytes = totalSelectedFileSizeForInfos(items());
    refresh();
}

void BackUpSheet::panelDidChangeToDirectoryURL()
{
    proposeName();
    refresh();
}

bool BackUpSheet::panelValidateURL() const
{
    return hasFreeForTargetSize(m_freeBytes, m_requiredBytes);
}

QString BackUpSheet::whyNot() const
{
    if (items().empty())
        return m_selected.empty() && !m_backUpOptionOnlyPicture->isChecked()
                   ? tr("No recording is selected.")
                   : tr("There are no pictures on this card.");
    if (m_name->text().contains(u'/'))
        return tr("A folder's name can't hold a slash.");
    return targetPath().isEmpty() ? QString() : whyNoBackUpAt(targetPath(), m_cardPath);
}

void BackUpSheet::refresh()
{
    if (!m_execute)
        return; // not complete yet
    updateDiskRequireValueLabel();
    const QString why = whyNot();
    m_problem->showProblem(why);
    m_execute->setEnabled(why.isEmpty() && !targetPath().isEmpty() && panelValidateURL());
}

void BackUpSheet::updateDiskRequireValueLabel()
{
    m_freeBytes = freeSizeAtVolume(folder());
    m_free->setText(dataSizeText(m_freeBytes));
    m_required->setText(dataSizeText(m_requiredBytes));
    m_free->setForegroundRole(panelValidateURL() ? QPalette::WindowText : QPalette::BrightText);
    m_free->setToolTip(panelValidateURL() ? QString() : tr("It must be more than the required size and 1 MiB."));
}

void BackUpSheet::browse()
{
    auto* dialog = new QFileDialog(this, tr("Choose the Folder for the Backup"), folder());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, m_folder, &PathField::setPath);
    dialog->open();
}

void BackUpSheet::accept()
{
    refresh(); // the disks may have changed since
    if (!m_execute->isEnabled())
        return;
    const QString path = targetPath();
    if (isFilledFolder(path))
        askToUse(path);
    else
        finish(path);
}

void BackUpSheet::askToUse(const QString& path)
{
    const QString name = files::displayPath(files::nameOf(path));
    askToReplace(*this,
                 {windowTitle(), tr("“%1” is there already and isn't empty. Back up into it?").arg(name),
                  tr("If the backup fails or is cancelled, the whole folder is removed with everything that is in it, "
                     "also what was there before."),
                  tr("&Use This Folder")},
                 [this, path] { finish(path); });
}

void BackUpSheet::finish(const QString& path)
{
    UserDefaults::shared().setValue(keys::backUpFolder, files::folderOf(path));
    UserDefaults::shared().setValue(keys::backUpReadBack, m_readBack->isChecked());
    Q_EMIT chosen(items(), path, m_readBack->isChecked() ? ReadBack::Compare : ReadBack::No);
    QDialog::accept();
}

} // namespace cardreel
