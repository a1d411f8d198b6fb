#pragma once

#include "app/BarSlider.h"

namespace cardreel {

/// How loud the sound is, linear, from silent to full. The wheel turns it too. Interface thread.
class VolumeSlider : public BarSlider
{
    Q_OBJECT

public:
    explicit VolumeSlider(QWidget* parent = nullptr);

    QSize sizeHint() const override { return {72, 24}; }

    /// What a turn of the wheel over the sound's controls does.
    void turn(QWheelEvent* event);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace cardreel
