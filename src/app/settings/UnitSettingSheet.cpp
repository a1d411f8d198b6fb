#include "app/settings/UnitSettingSheet.h"

#include "app/settings/SettingRow.h"
#include "app/settings/SettingTexts.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <variant>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int sheetWidth = 440;
constexpr int edge = 16;
constexpr int frameAllowance = 72; // what the desktop puts around the sheet, and its panel

QLabel* makeTitle(const QString& text)
{
    auto* title = new QLabel(text);
    QFont font = title->font();
    font.setWeight(QFont::DemiBold);
    title->setFont(font);
    title->setContentsMargins(edge, edge / 2, edge, 0);
    return title;
}

QWidget* makeHairline()
{
    auto* line = new QFrame;
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    line->setBackgroundRole(QPalette::Mid);
    return line;
}

} // namespace

UnitSettingSheet::UnitSettingSheet(UnitSettingViewController& controller, const SettingLoad& loaded, QWidget* parent)
    : QDialog(parent)
    , m_controller(&controller)
    , m_source(new QLabel(SettingTexts::source(loaded)))
    , m_scroll(new QScrollArea)
    , m_writing(new QLabel(tr("Writing to the card…")))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Recorder Settings"));
    m_source->setTextFormat(Qt::PlainText);
    m_source->setWordWrap(true);
    m_source->setForegroundRole(QPalette::PlaceholderText);
    m_source->setContentsMargins(edge, 12, edge, 12);
    m_writing->setContentsMargins(edge, 12, edge, 0);
    m_writing->hide();
    makeButtons();

    QWidget* rows = makeRows();
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setWidget(rows);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (QWidget* part :
         std::initializer_list<QWidget*>{m_source, makeHairline(), m_scroll, makeHairline(), m_writing, m_buttons})
        column->addWidget(part);
    column->setStretchFactor(m_scroll, 1);

    // What the keyboard comes to is seen, also when a label's key leads there.
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, QWidget* now) {
        if (now && m_scroll->widget()->isAncestorOf(now))
            m_scroll->ensureWidgetVisible(now);
    });
    controller.viewModelDidChange = [sheet = QPointer(this)] {
        if (sheet)
            sheet->refresh();
    };
    fitToScreen(*rows);
}

QWidget* UnitSettingSheet::makeRows()
{
    auto* rows = new QWidget;
    auto* column = new QVBoxLayout(rows);
    column->setContentsMargins(0, 0, 0, edge);
    column->setSpacing(12);
    const quint16 modelID = m_controller->settingFileInfo().modelID;
    const UnitSettingViewModel model = shown(m_controller->viewModel());
    for (const SettingTexts::Group& group : SettingTexts::groups()) {
        column->addWidget(makeTitle(group.title));
        for (const SettingField* field : group.fields) {
            auto* row = new SettingRow(*field, modelID, model);
            connect(row, &SettingRow::edited, this, [this, field](int value) { setValue(*field, value); });
            column->addWidget(row);
            m_rows.push_back(row);
        }
    }
    column->addStretch(1);
    return rows;
}

void UnitSettingSheet::makeButtons()
{
    QPushButton* reset = m_buttons->addButton(tr("&Reset…"), QDialogButtonBox::ResetRole);
    reset->setToolTip(tr("Back to the factory's settings; nothing is saved yet"));
    reset->setAutoDefault(false);
    m_buttons->setContentsMargins(edge, 12, edge, 12);
    m_buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(reset, &QPushButton::clicked, this, [this] {
        if (m_controller)
            m_controller->settingReset();
    });
    connect(m_buttons, &QDialogButtonBox::accepted, this, &UnitSettingSheet::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &UnitSettingSheet::reject);
}

/// As high as its rows, where the screen has room; otherwise they scroll.
void UnitSettingSheet::fitToScreen(const QWidget& rows)
{
    const int width =
        std::max(sheetWidth, rows.minimumSizeHint().width()) + m_scroll->verticalScrollBar()->sizeHint().width();
    setMinimumWidth(width);
    const int rest = m_source->heightForWidth(width) + m_buttons->sizeHint().height() + 2; // and two lines
    const int wanted = rows.layout()->totalHeightForWidth(width) + rest;
    resize(width, std::min(wanted, screen()->availableSize().height() - frameAllowance));
}

void UnitSettingSheet::setValue(const SettingField& field, int value)
{
    if (!m_controller)
        return;
    // Not through the field, which refuses the unknown value that came from the card.
    UnitSettingViewModel& model = m_controller->viewModel();
    if (const auto* const number = std::get_if<int UnitSettingViewModel::*>(&field.member))
        model.** number = value;
    else
        field.setValue(model, value);
    refresh();
}

UnitSettingViewModel UnitSettingSheet::shown(UnitSettingViewModel model) const
{
    const SettingFileInfo& info = m_controller->settingFileInfo();
    model.parkingRecording = info.parkingRecording != 0;
    model.overwriteSaveJunction = info.overwriteSaveJunction != 0;
    model.playbackVolume = info.playbackVolume;
    model.childLock = info.childLock != 0;
    model.batteryConnect = info.batteryConnect != 0;
    return model;
}

void UnitSettingSheet::refresh()
{
    if (!m_controller)
        return;
    const UnitSettingViewModel model = shown(m_controller->viewModel());
    const UnitSettingViewModel before = shown(m_controller->initialViewModel());
    for (SettingRow* row : m_rows)
        row->showValue(model, before);
}

SettingRow* UnitSettingSheet::row(QStringView fieldName) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                    [&](const SettingRow* row) { return &row->field() == settingField(fieldName); });
    return found == m_rows.end() ? nullptr : *found;
}

void UnitSettingSheet::setBusy(bool isBusy)
{
    m_scroll->setEnabled(!isBusy);
    m_buttons->setEnabled(!isBusy);
    m_writing->setVisible(isBusy);
    if (!isBusy)
        m_buttons->button(QDialogButtonBox::Ok)->setFocus();
}

void UnitSettingSheet::leave()
{
    m_controller = nullptr;
    done(Accepted);
}

void UnitSettingSheet::accept()
{
    if (m_controller)
        m_controller->settingFinish();
}

void UnitSettingSheet::reject()
{
    if (m_controller)
        m_controller->settingCancel();
}

} // namespace cardreel
