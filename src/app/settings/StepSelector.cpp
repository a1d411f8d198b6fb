#include "app/settings/StepSelector.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace cardreel {

StepSelector::StepSelector(QWidget* parent)
    : QWidget(parent)
    , m_group(new QButtonGroup(this))
{
    setFocusPolicy(Qt::ClickFocus); // otherwise the label's key wouldn't lead here
    setStyleSheet(u"QPushButton { padding: 5px 4px; outline: none; }"
                  u"QPushButton:checked:focus { border: 2px solid palette(link); padding: 4px 3px; }"
                  u"QPushButton:checked:disabled { border-color: palette(mid); }"_s);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    connect(m_group, &QButtonGroup::idToggled, this, &StepSelector::takeFocusAtChecked);
    connect(m_group, &QButtonGroup::idClicked, this, &StepSelector::chosen);
}

void StepSelector::addStep(int value, const QString& text)
{
    auto* button = new QPushButton(text);
    button->setCheckable(true);
    button->setAutoExclusive(true); // known to screen readers, which the group isn't
    button->setAutoDefault(false);  // Return is for the sheet
    button->setFocusPolicy(Qt::ClickFocus);
    button->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    QAbstractButton* const last = m_group->buttons().value(m_group->buttons().size() - 1);
    m_group->addButton(button, value);
    layout()->addWidget(button);
    if (last)
        setTabOrder(last, button); // also when what follows in the window is there already
}

bool StepSelector::hasStep(int value) const
{
    return m_group->button(value) != nullptr;
}

void StepSelector::setValue(int value)
{
    m_group->button(value)->setChecked(true);
}

void StepSelector::describe(const QString& name, const QString& description)
{
    for (QAbstractButton* button : m_group->buttons()) {
        button->setAccessibleName(tr("%1: %2", "a setting's name and the value of a button").arg(name, button->text()));
        button->setAccessibleDescription(description);
    }
}

void StepSelector::takeFocusAtChecked()
{
    for (QAbstractButton* button : m_group->buttons()) {
        button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
        if (button->isChecked())
            setFocusProxy(button);
    }
}

} // namespace cardreel
