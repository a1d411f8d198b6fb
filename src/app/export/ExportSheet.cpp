#include "app/export/ExportSheet.h"

#include "app/WindowKeys.h"
#include "app/export/SheetParts.h"
#include "app/lists/RecordingListModel.h"
#include "app/settings/MenuBox.h"
#include "media/DCFInfo.h"
#include "platform/files/Files.h"
#include "platform/settings/UserDefaults.h"
#include "platform/text/DateText.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

QString nameOf(ExportFormat format)
{
    return extensionOf(format).toUpper();
}

QString hintOf(ExportFormat format)
{
    switch (format) {
    case ExportFormat::Kmz:
        return ExportSheet::tr("As KML, but in a much smaller file.");
    case ExportFormat::Gpx:
        return ExportSheet::tr("Tracks and waypoints, for navigation programs.");
    case ExportFormat::Kml:
        break;
    }
    return ExportSheet::tr("Routes by day and events, for globes and map programs.");
}

/// The day under which the list has it; empty when it has none.
QString dayOf(const DCFInfo& recording)
{
    const Instant time = recorderTimeOf(recording);
    if (time == Instant{})
        return {};
    return DateText::patterned(u"yyyy-MM-dd"_s, u"en_US_POSIX"_s, TimeZone::Utc).text(time);
}

} // namespace

ExportSheet::ExportSheet(DCFList selected, DCFList all, const QString& cardPath, QWidget* parent)
    : QDialog(parent)
    , m_selectedRecordings(std::move(selected))
    , m_allRecordings(std::move(all))
    , m_cardPath(cardPath)
    , m_folder(lastFolder(keys::exportFolder))
    , m_selected(new QRadioButton(tr("&Selected recordings (%1)").arg(locale().toString(m_selectedRecordings.size()))))
    , m_all(new QRadioButton(tr("&All recordings (%1)").arg(locale().toString(m_allRecordings.size()))))
    , m_format(new MenuBox)
    , m_formatHint(makeHint())
    , m_path(new PathField)
    , m_problem(new ProblemLabel)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Export Route"));
    QVBoxLayout* column = makeSheetColumn(*this);
    addRecordings(*column);
    addTarget(*column);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_export = buttons->addButton(tr("&Export"), QDialogButtonBox::AcceptRole);
    column->addWidget(buttons);
    m_export->setDefault(true); // of this sheet, so once it belongs to that
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportSheet::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    formatDidChange();
    m_path->setPath(proposedPath());
}

void ExportSheet::addRecordings(QVBoxLayout& column)
{
    column.addWidget(new QLabel(tr("Recordings:")));
    column.addWidget(m_selected);
    column.addWidget(m_all);
    m_selected->setEnabled(!m_selectedRecordings.empty());
    (m_selectedRecordings.size() > 1 ? m_selected : m_all)->setChecked(true);
}

void ExportSheet::addTarget(QVBoxLayout& column)
{
    for (const ExportFormat format : exportFormats)
        m_format->addItem(nameOf(format));
    addField(column, tr("&Format:"), m_format);
    column.addWidget(m_formatHint);
    addField(column, tr("Fi&le:"), m_path);
    column.addWidget(m_problem);
    m_path->line()->setAccessibleName(tr("File"));
    connect(m_format, &QComboBox::currentIndexChanged, this, &ExportSheet::formatDidChange);
    connect(m_path, &PathField::changed, this, &ExportSheet::pathDidChange);
    connect(m_path, &PathField::browseRequested, this, &ExportSheet::browse);
}

QString ExportSheet::proposedPath() const
{
    const QString card = asFileName(files::nameOf(m_cardPath));
    QString name = card.isEmpty() ? tr("Route") : card;
    if (const QString day = dayOf(*m_allRecordings.front()); !day.isEmpty())
        name += u' ' + day;
    return freePath(m_folder, name, u'.' + extensionOf(format()));
}

ExportFormat ExportSheet::format() const
{
    return exportFormats[static_cast<size_t>(m_format->currentIndex())];
}

void ExportSheet::setFormat(ExportFormat format)
{
    const QSignalBlocker quiet(m_format);
    m_format->setCurrentIndex(static_cast<int>(format));
    m_formatHint->setText(hintOf(format));
}

QString ExportSheet::targetPath() const
{
    const QString typed = m_path->path();
    // What ends in a slash is a folder without a file's name yet.
    return files::nameOf(typed).isEmpty() ? QString() : withExtension(fullPath(typed, m_folder), format());
}

/// The extension decides; while there is none that says anything, the menu does.
void ExportSheet::pathDidChange()
{
    if (isExportName(m_path->path()))
        setFormat(formatOf(m_path->path()));
    refresh();
}

void ExportSheet::formatDidChange()
{
    m_formatHint->setText(hintOf(format()));
    m_path->setPath(withExtension(m_path->path(), format()));
    refresh();
}

void ExportSheet::refresh()
{
    const QString path = targetPath();
    const QString why = path.isEmpty() ? QString() : whyNoFileAt(path, m_cardPath);
    m_problem->showProblem(why);
    if (m_export)
        m_export->setEnabled(!path.isEmpty() && why.isEmpty());
}

void ExportSheet::browse()
{
    auto* dialog = new QFileDialog(this, tr("Export Route"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilters({u"KML (*.kml)"_s, u"KMZ (*.kmz)"_s, u"GPX (*.gpx)"_s});
    const auto suffix = [dialog] {
        const QStringList filters = dialog->nameFilters();
        const auto index = static_cast<size_t>(std::max<qsizetype>(filters.indexOf(dialog->selectedNameFilter()), 0));
        dialog->setDefaultSuffix(extensionOf(exportFormats[index]));
    };
    dialog->selectNameFilter(dialog->nameFilters().at(static_cast<qsizetype>(format())));
    suffix();
    connect(dialog, &QFileDialog::filterSelected, dialog, suffix);
    const QString path = targetPath();
    dialog->setDirectory(files::isFolder(files::folderOf(path)) ? files::folderOf(path) : m_folder);
    dialog->selectFile(files::nameOf(path));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& chosenPath) {
        m_path->setPath(chosenPath);
        m_replaceable = targetPath() == chosenPath ? chosenPath : QString();
    });
    dialog->open();
}

void ExportSheet::accept()
{
    refresh(); // the disk may have changed since
    if (!m_export->isEnabled())
        return;
    const QString path = targetPath();
    if (files::exists(path) && path != m_replaceable)
        askToReplace(*this,
                     {windowTitle(),
                      tr("“%1” is there already. Replace it?").arg(files::displayPath(files::nameOf(path))),
                      {},
                      tr("&Replace")},
                     [this, path] { finish(path); });
    else
        finish(path);
}

void ExportSheet::finish(const QString& path)
{
    UserDefaults::shared().setValue(keys::exportFolder, files::folderOf(path));
    Q_EMIT chosen(m_selected->isChecked() ? m_selectedRecordings : m_allRecordings, path);
    QDialog::accept();
}

} // namespace cardreel
