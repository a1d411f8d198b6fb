#include "app/ReadoutBar.h"

#include "names/ConstClass.h"
#include "telemetry/CustomLocation.h"
#include "views/map/PlaceText.h"

#include <QHBoxLayout>
#include <QLabel>

namespace cardreel {

namespace {

/// A reading that jumps as little as its figures let it.
QLabel* addReading(QHBoxLayout& row, const QString& name)
{
    auto* value = new QLabel;
    value->setAccessibleName(name);
    value->setToolTip(name);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    row.addWidget(value);
    return value;
}

} // namespace

ReadoutBar::ReadoutBar(QWidget* parent)
    : QWidget(parent)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);
    m_clock = addReading(*row, tr("Time of day"));
    m_speed = addReading(*row, tr("Speed"));
    m_position = addReading(*row, tr("Position"));
    m_heading = addReading(*row, tr("Heading"));
    clear();
}

void ReadoutBar::clear()
{
    m_clock->setText(ConstClass::TIMECOUNT_NO_MEDIA);
    setFix(nullptr, {});
}

void ReadoutBar::setClock(const QString& text)
{
    m_clock->setText(text);
}

void ReadoutBar::setFix(const CustomLocation* fix, const QString& reason)
{
    setPlace(fix, reason);
    if (!fix)
        return;
    m_speed->setText(speedText(fix->shownSpeed()));
    m_heading->setText(headingText(fix->shownCourse()));
}

void ReadoutBar::setPlace(const CustomLocation* place, const QString& reason)
{
    m_speed->clear();
    m_heading->clear();
    m_position->setText(place ? coordinateText(place->latitude, place->longitude) : reason);
}

} // namespace cardreel
