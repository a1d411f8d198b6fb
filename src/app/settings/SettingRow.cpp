#include "app/settings/SettingRow.h"

#include "app/settings/MenuBox.h"
#include "app/settings/SettingTexts.h"
#include "app/settings/StepSelector.h"
#include "app/settings/SwitchBox.h"

#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace cardreel {

namespace {

constexpr int margin = 16; // with the dot in its middle
constexpr qreal dotRadius = 3;
constexpr int notePixels = 11;

} // namespace

SettingRow::SettingRow(const SettingField& field, quint16 modelID, const UnitSettingViewModel& shown, QWidget* parent)
    : QWidget(parent)
    , m_field(field)
    , m_note(SettingTexts::note(field, modelID))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, 0, margin, 0);
    column->setSpacing(4);
    if (field.reach(modelID) == SettingField::Reach::Missing) {
        auto* label = new QLabel(SettingTexts::name(field));
        label->setEnabled(false);
        column->addWidget(m_firstLine = label);
    } else {
        addControl(*column, modelID);
    }
    if (!m_note.isEmpty())
        addNote(*column);
    showValue(shown, shown);
}

void SettingRow::addControl(QVBoxLayout& column, quint16 modelID)
{
    const SettingField::Reach reach = m_field.reach(modelID);
    const bool isEnabled =
        !m_field.isEditable() || reach == SettingField::Reach::Saved || reach == SettingField::Reach::Dropped;
    m_control = makeControl();
    m_control->setEnabled(isEnabled);
    m_firstLine = m_control;
    if (!m_switch) {
        auto* label = new QLabel(SettingTexts::label(m_field));
        label->setBuddy(m_control);
        label->setEnabled(isEnabled);
        column.addWidget(m_firstLine = label);
    }
    column.addWidget(m_control);
}

void SettingRow::addNote(QVBoxLayout& column)
{
    auto* note = new QLabel(m_note);
    QFont font = note->font();
    font.setPixelSize(notePixels);
    note->setFont(font);
    note->setForegroundRole(QPalette::PlaceholderText);
    note->setWordWrap(true);
    column.addWidget(note);
}

QWidget* SettingRow::makeControl()
{
    switch (m_field.kind) {
    case SettingField::Kind::Switch:
        m_switch = new SwitchBox(SettingTexts::label(m_field));
        connect(m_switch, &QCheckBox::toggled, this, [this](bool isOn) { Q_EMIT edited(isOn ? 1 : 0); });
        return m_switch;
    case SettingField::Kind::Choice:
        m_menu = new MenuBox;
        connect(m_menu, &QComboBox::activated, this,
                [this](int index) { Q_EMIT edited(m_menu->itemData(index).toInt()); });
        return m_menu;
    case SettingField::Kind::Step:
        m_steps = new StepSelector;
        connect(m_steps, &StepSelector::chosen, this, &SettingRow::edited);
        return m_steps;
    case SettingField::Kind::Text:
        break;
    }
    m_text = new QLabel;
    m_text->setTextFormat(Qt::PlainText); // it comes from the card
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return m_text;
}

void SettingRow::showValue(const UnitSettingViewModel& model, const UnitSettingViewModel& before)
{
    if (!m_control)
        return;
    const int value = m_field.value(model);
    if (m_switch) {
        const QSignalBlocker quiet(m_switch);
        m_switch->setChecked(value != 0);
    } else if (m_text) {
        m_text->setText(SettingTexts::value(m_field, model));
    } else {
        for (int known = 0; known <= m_field.highestValue(model); ++known)
            offer(model, known);
        offer(model, value);
        if (m_menu)
            m_menu->setCurrentIndex(m_menu->findData(value));
        else
            m_steps->setValue(value);
    }
    m_isChanged = m_field.isEditable() && m_field.differs(model, before);
    describe(m_isChanged ? tr("Changed; it was “%1”.").arg(SettingTexts::value(m_field, before)) : QString());
    update();
}

void SettingRow::offer(const UnitSettingViewModel& model, int value)
{
    const QString text = m_field.textOf(model, value).value_or(SettingTexts::unknownValue(value));
    if (m_menu && m_menu->findData(value) < 0)
        m_menu->addItem(text, value);
    else if (m_steps && !m_steps->hasStep(value))
        m_steps->addStep(value, text);
}

void SettingRow::describe(const QString& whatChanged)
{
    const QString description = whatChanged.isEmpty() ? m_note : whatChanged;
    setToolTip(whatChanged);
    m_control->setAccessibleName(SettingTexts::name(m_field));
    m_control->setAccessibleDescription(description);
    if (m_steps)
        m_steps->describe(SettingTexts::name(m_field), description);
}

void SettingRow::paintEvent(QPaintEvent*)
{
    if (!m_isChanged)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Link));
    const qreal x = layoutDirection() == Qt::LeftToRight ? margin / 2.0 : width() - margin / 2.0;
    painter.drawEllipse(QPointF(x, m_firstLine->geometry().center().y() + 0.5), dotRadius, dotRadius);
}

} // namespace cardreel
