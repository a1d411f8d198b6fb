#include "app/MapBackgroundSheet.h"

#include "app/WindowKeys.h"
#include "platform/files/Files.h"
#include "platform/settings/UserDefaults.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const QString publicTemplate = u"https://tile.openstreetmap.org/{z}/{x}/{y}.png"_s;
const QString publicAttribution = u"© OpenStreetMap contributors"_s;
constexpr int sheetWidth = 440;
constexpr int indent = 24; // under a radio button's text

/// Fields under their labels, shown for one of the choices.
QVBoxLayout* makeFields(QWidget* fields)
{
    auto* column = new QVBoxLayout(fields);
    column->setContentsMargins(indent, 0, 0, 8);
    column->setSpacing(4);
    return column;
}

void addField(QVBoxLayout& column, const QString& name, QLineEdit* field)
{
    auto* label = new QLabel(name);
    label->setBuddy(field);
    column.addWidget(label);
    column.addWidget(field);
}

} // namespace

TileSettings MapBackgroundSheet::savedSettings()
{
    const UserDefaults& defaults = UserDefaults::shared();
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    return {defaults.value(keys::mapTiles).toString(), defaults.value(keys::mapAttribution).toString(),
            cache.isEmpty() ? QString() : cache + u"/tiles"_s};
}

void MapBackgroundSheet::saveSettings(const TileSettings& settings)
{
    UserDefaults::shared().setValue(keys::mapTiles, settings.location);
    UserDefaults::shared().setValue(keys::mapAttribution, settings.attribution);
}

MapBackgroundSheet::MapBackgroundSheet(const TileSettings& settings, QWidget* parent)
    : QDialog(parent)
    , m_public(new QRadioButton(tr("&OpenStreetMap, from the network")))
    , m_server(new QRadioButton(tr("Another tile &server")))
    , m_local(new QRadioButton(tr("Tiles on this &computer")))
    , m_none(new QRadioButton(tr("&Nothing: only a grid of degrees")))
    , m_template(new QLineEdit)
    , m_attribution(new QLineEdit)
    , m_path(new QLineEdit)
    , m_serverFields(new QWidget)
    , m_localFields(new QWidget)
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Map Background"));
    addChoices();
    choose(settings);
    for (const QRadioButton* choice : {m_public, m_server, m_local, m_none})
        connect(choice, &QRadioButton::toggled, this, &MapBackgroundSheet::showFields);
    connect(m_template, &QLineEdit::textChanged, this, &MapBackgroundSheet::showFields);
    connect(m_path, &QLineEdit::textChanged, this, &MapBackgroundSheet::showFields);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_buttons, &QDialogButtonBox::accepted, this, [this] {
        Q_EMIT chosen(this->settings());
        accept();
    });
    showFields();
}

void MapBackgroundSheet::addChoices()
{
    QVBoxLayout* server = makeFields(m_serverFields);
    m_template->setPlaceholderText(u"https://tiles.example.org/{z}/{x}/{y}.png"_s);
    addField(*server, tr("Address, with {z}, {x} and {y}:"), m_template);
    addField(*server, tr("Shown on the map as its source:"), m_attribution);

    QVBoxLayout* local = makeFields(m_localFields);
    addField(*local, tr("An MBTiles file, or a folder with z/x/y.png:"), m_path);
    auto* file = new QPushButton(tr("Choose &File…"));
    auto* folder = new QPushButton(tr("Choose Fol&der…"));
    auto* browsers = new QHBoxLayout;
    browsers->addWidget(file);
    browsers->addWidget(folder);
    browsers->addStretch(1);
    local->addLayout(browsers);
    connect(file, &QPushButton::clicked, this, [this] { browse(QFileDialog::ExistingFile); });
    connect(folder, &QPushButton::clicked, this, [this] { browse(QFileDialog::Directory); });

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(16, 16, 16, 12);
    rows->setSpacing(8);
    for (QWidget* row :
         std::initializer_list<QWidget*>{m_public, m_server, m_serverFields, m_local, m_localFields, m_none})
        rows->addWidget(row);
    rows->addStretch(1);
    rows->addWidget(m_buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    m_buttons->setMinimumWidth(sheetWidth);
}

void MapBackgroundSheet::choose(const TileSettings& settings)
{
    QRadioButton* choice = m_local;
    if (settings.location.isEmpty())
        choice = m_none;
    else if (settings.location == publicTemplate)
        choice = m_public;
    else if (isTileServer(settings.location))
        choice = m_server;
    choice->setChecked(true);
    if (choice == m_server) {
        m_template->setText(settings.location);
        m_attribution->setText(settings.attribution);
    } else if (choice == m_local) {
        m_path->setText(settings.location);
    }
}

TileSettings MapBackgroundSheet::settings() const
{
    TileSettings settings = savedSettings();
    if (m_public->isChecked()) {
        settings.location = publicTemplate;
        settings.attribution = publicAttribution;
    } else if (m_server->isChecked()) {
        settings.location = m_template->text().trimmed();
        settings.attribution = m_attribution->text().trimmed();
    } else {
        settings.location = m_local->isChecked() ? m_path->text() : QString();
        settings.attribution.clear();
    }
    return settings;
}

void MapBackgroundSheet::browse(QFileDialog::FileMode mode)
{
    auto* dialog =
        new QFileDialog(this, mode == QFileDialog::Directory ? tr("Choose Tiles") : tr("Choose an MBTiles File"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(mode);
    if (mode == QFileDialog::Directory)
        dialog->setOption(QFileDialog::ShowDirsOnly);
    else
        dialog->setNameFilters({tr("MBTiles (*.mbtiles)"), tr("All files (*)")});
    connect(dialog, &QFileDialog::fileSelected, m_path, &QLineEdit::setText);
    dialog->open();
}

void MapBackgroundSheet::showFields()
{
    m_serverFields->setVisible(m_server->isChecked());
    m_localFields->setVisible(m_local->isChecked());
    const bool isComplete = (!m_server->isChecked() || isTileServer(m_template->text().trimmed())) &&
                            (!m_local->isChecked() || files::exists(m_path->text()));
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(isComplete);
}

} // namespace cardreel
