#include "app/LeadButton.h"

#include "app/Theme.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace cardreel {

LeadButton::LeadButton(QWidget* parent)
    : QPushButton(tr("Lead other windows"), parent)
{
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setToolTip(tr("The other windows show the same time of day as this one"));
    connect(&Theme::current(), &Theme::changed, this, &LeadButton::updateIcon);
    updateIcon();
}

void LeadButton::setLeading(bool leading)
{
    if (leading == isChecked())
        return;
    setChecked(leading);
    if (leading)
        m_tookLead.start();
    else
        m_tookLead.invalidate();
}

void LeadButton::mousePressEvent(QMouseEvent* event)
{
    if (!m_tookLead.isValid() || m_tookLead.hasExpired(QApplication::doubleClickInterval()))
        QPushButton::mousePressEvent(event);
}

void LeadButton::updateIcon()
{
    setIcon(Theme::current().icon(u"lead"_s));
}

} // namespace cardreel
