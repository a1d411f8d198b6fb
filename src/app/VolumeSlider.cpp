#include "app/VolumeSlider.h"

#include <QWheelEvent>

namespace cardreel {

namespace {

constexpr double notch = 120;         // wheels report a notch as so much
constexpr double volumeANotch = 0.05; // of the whole

} // namespace

VolumeSlider::VolumeSlider(QWidget* parent)
    : BarSlider(Look::Quiet, parent)
{
    setAccessibleName(tr("Volume"));
    setToolTip(tr("Volume"));
    setFixedWidth(72);
}

void VolumeSlider::turn(QWheelEvent* event)
{
    moveTo(fraction() + event->angleDelta().y() / notch * volumeANotch);
    event->accept();
}

void VolumeSlider::wheelEvent(QWheelEvent* event)
{
    turn(event);
}

} // namespace cardreel
