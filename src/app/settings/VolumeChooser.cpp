#include "app/settings/VolumeChooser.h"

#include "app/Theme.h"
#include "platform/files/Files.h"
#include "platform/text/UnitText.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

enum Column { Name, Size, Free, ColumnCount };

constexpr int sheetWidth = 440;
constexpr int listHeight = 160;
constexpr int notePixels = 11;

QString sizeText(qint64 bytes)
{
    return bytes < 0 ? u"–"_s : dataSizeText(static_cast<quint64>(bytes));
}

MountedVolume entryOfFolder(const QString& path)
{
    MountedVolume entry;
    entry.name = files::nameOf(path);
    entry.rootPath = path;
    return entry;
}

QString pathOf(const QTreeWidgetItem* item)
{
    return item->data(Name, Qt::UserRole).toString();
}

QLabel* makeNote()
{
    auto* note = new QLabel;
    QFont font = note->font();
    font.setPixelSize(notePixels);
    note->setFont(font);
    note->setTextFormat(Qt::PlainText);
    note->setForegroundRole(QPalette::PlaceholderText);
    note->setWordWrap(true);
    return note;
}

} // namespace

VolumeChooser::VolumeChooser(const QString& proposed, QWidget* parent)
    : QDialog(parent)
    , m_list(new QTreeWidget)
    , m_place(makeNote())
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Recorder Settings"));
    auto* label = new QLabel(tr("Memory &card:"));
    label->setBuddy(m_list);
    addList();
    addButtons();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(16, 16, 16, 12);
    rows->setSpacing(8);
    for (QWidget* row : std::initializer_list<QWidget*>{label, m_list, m_place, m_buttons})
        rows->addWidget(row);
    setMinimumWidth(sheetWidth);
    if (!proposed.isEmpty())
        m_folders.push_back(proposed);
    fill(proposed);
}

void VolumeChooser::addList()
{
    m_list->setColumnCount(ColumnCount);
    m_list->setHeaderLabels({tr("Name"), tr("Size"), tr("Free")});
    m_list->setAccessibleName(tr("Memory cards"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setMinimumHeight(listHeight);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setStyleSheet(
        u"QTreeWidget { border: 1px solid palette(mid); border-radius: 6px; outline: none; }"
        u"QTreeWidget:focus { border-color: palette(link); }"
        u"QTreeWidget::item { padding: 5px 6px; border: none; background: transparent; }"
        u"QTreeWidget::item:selected { background: palette(highlight); color: palette(highlighted-text); }"
        u"QHeaderView { background: transparent; }"
        u"QHeaderView::section { background: transparent; border: none; border-bottom: 1px solid palette(mid);"
        u" padding: 5px 6px; }"_s);
    QHeaderView* header = m_list->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(Name, QHeaderView::Stretch);
    for (const Column column : {Size, Free}) {
        header->setSectionResizeMode(column, QHeaderView::ResizeToContents);
        m_list->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    connect(m_list, &QTreeWidget::currentItemChanged, this, &VolumeChooser::selectionDidChange);
    connect(m_list, &QTreeWidget::itemActivated, this, &VolumeChooser::accept);
}

void VolumeChooser::addButtons()
{
    QPushButton* folder = m_buttons->addButton(tr("Choose &Folder…"), QDialogButtonBox::ResetRole); // at the far side
    folder->setAutoDefault(false);
    connect(folder, &QPushButton::clicked, this, &VolumeChooser::browse);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &VolumeChooser::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &VolumeChooser::reject);
}

void VolumeChooser::setVolumes(const std::vector<MountedVolume>& volumes)
{
    if (volumes == m_volumes)
        return;
    m_volumes = volumes;
    fill(selectedPath());
}

void VolumeChooser::addFolder(const QString& path)
{
    std::erase(m_folders, path);
    m_folders.insert(m_folders.begin(), path);
    fill(path);
}

std::vector<MountedVolume> VolumeChooser::entries() const
{
    std::vector<MountedVolume> all = m_volumes;
    for (const QString& folder : m_folders) {
        const auto isFolder = [&folder](const MountedVolume& volume) { return volume.rootPath == folder; };
        if (std::none_of(m_volumes.begin(), m_volumes.end(), isFolder))
            all.push_back(entryOfFolder(folder));
    }
    return all;
}

void VolumeChooser::fill(const QString& selected)
{
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    QIcon icon = Theme::current().icon(u"card"_s);
    icon.addPixmap(icon.pixmap(32, 32), QIcon::Selected); // not tinted
    for (const MountedVolume& entry : entries()) {
        auto* item = new QTreeWidgetItem(
            {files::displayPath(entry.name), sizeText(entry.bytesTotal), sizeText(entry.bytesFree)});
        item->setData(Name, Qt::UserRole, entry.rootPath);
        item->setIcon(Name, icon);
        for (const Column column : {Size, Free})
            item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
        m_list->addTopLevelItem(item);
    }
    select(selected);
    selectionDidChange();
}

void VolumeChooser::select(const QString& path)
{
    QTreeWidgetItem* chosenItem = m_list->topLevelItem(0);
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        if (pathOf(m_list->topLevelItem(i)) == path)
            chosenItem = m_list->topLevelItem(i);
    }
    m_list->setCurrentItem(chosenItem);
}

QString VolumeChooser::selectedPath() const
{
    const QTreeWidgetItem* item = m_list->currentItem();
    return item ? pathOf(item) : QString();
}

void VolumeChooser::selectionDidChange()
{
    const QString path = selectedPath();
    QString text = files::displayPath(path);
    for (const MountedVolume& volume : m_volumes) {
        if (volume.rootPath == path && volume.isReadOnly)
            text = tr("%1 (can only be read: settings can be looked at, but not saved)").arg(text);
    }
    if (m_list->topLevelItemCount() == 0)
        text = tr("No memory card is in this computer. Put one in, or choose a folder.");
    m_place->setText(text);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(!path.isEmpty() && !m_isBusy);
}

void VolumeChooser::browse()
{
    auto* dialog = new QFileDialog(this, tr("Choose Card"), files::folderOf(selectedPath()));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, this,
            [this](const QString& path) { addFolder(files::absolutePath(path)); });
    dialog->open();
}

void VolumeChooser::setBusy(bool isBusy)
{
    m_isBusy = isBusy;
    // Otherwise Cancel would get the focus, and with it the Return key that chose the card.
    if (isBusy)
        setFocus();
    m_list->setEnabled(!isBusy);
    if (!isBusy)
        m_list->setFocus();
    for (QAbstractButton* button : m_buttons->buttons())
        button->setEnabled(!isBusy || m_buttons->buttonRole(button) == QDialogButtonBox::RejectRole);
    selectionDidChange();
}

void VolumeChooser::accept()
{
    if (!m_isBusy && !selectedPath().isEmpty())
        Q_EMIT chosen(selectedPath());
}

} // namespace cardreel
