#include "app/ReadoutBar.h"

#include "names/ConstClass.h"
#include "telemetry/CustomLocation.h"

#include <QGridLayout>
#include <QLabel>
#include <QLocale>

#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int wholeCircle = 360;
const QString noReading = u"–"_s;

/// A reading: its name small above, its value large below.
QLabel* addReading(QGridLayout& grid, const QString& name, int width)
{
    const int column = grid.columnCount();
    auto* caption = new QLabel(name);
    caption->setForegroundRole(QPalette::PlaceholderText);
    QFont small = caption->font();
    small.setPixelSize(11);
    caption->setFont(small);
    auto* value = new QLabel;
    QFont large = value->font();
    large.setPixelSize(18);
    value->setFont(large);
    value->setAccessibleName(name);
    value->setMinimumWidth(width);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    caption->setBuddy(value);
    grid.addWidget(caption, 0, column);
    grid.addWidget(value, 1, column);
    return value;
}

QString speedText(const CustomLocation& fix)
{
    const double metersPerSecond = fix.hasSpeed() ? fix.speed : fix.correctedSpeed;
    return ReadoutBar::tr("%1 %2", "speed and its unit")
        .arg(QLocale::system().toString(std::lround(CustomLocation::speedForCurrentLocale(metersPerSecond))),
             CustomLocation::unitForCurrentLocale());
}

QString headingText(const CustomLocation& fix)
{
    const double course = fix.hasCourse() ? fix.course : fix.correctedDirection;
    return !(course >= 0) ? noReading : u"%1°"_s.arg(std::lround(course) % wholeCircle, 3, 10, QLatin1Char('0'));
}

} // namespace

QString positionText(const CustomLocation& fix)
{
    return u"%1, %2"_s.arg(fix.latitude, 0, 'f', 6).arg(fix.longitude, 0, 'f', 6);
}

ReadoutBar::ReadoutBar(QWidget* parent)
    : QWidget(parent)
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(12, 12, 12, 12);
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(2);
    m_clock = addReading(*grid, tr("Time of day"), 228);
    m_speed = addReading(*grid, tr("Speed"), 80);
    m_heading = addReading(*grid, tr("Heading"), 52);
    m_position = addReading(*grid, tr("Position"), 210);
    grid->setColumnStretch(grid->columnCount(), 1);
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
    m_speed->setText(speedText(*fix));
    m_heading->setText(headingText(*fix));
}

void ReadoutBar::setPlace(const CustomLocation* place, const QString& reason)
{
    m_speed->setText(noReading);
    m_heading->setText(noReading);
    m_position->setText(place ? positionText(*place) : reason);
}

} // namespace cardreel
