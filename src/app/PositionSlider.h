#pragma once

#include "app/BarSlider.h"

#include <QPointer>

#include <optional>

class QLabel;

namespace cardreel {

/// The position in a recording. While the pointer is over it, a tip above says what time of day it was there. Interface
/// thread.
class PositionSlider : public BarSlider
{
    Q_OBJECT

public:
    explicit PositionSlider(QWidget* parent = nullptr);
    ~PositionSlider() override;

    /// The recording's length and the recorder's clock at its start, in seconds and seconds since 1970; a length of 0
    /// makes the slider inert. Without a clock the tip tells how far into the recording it is.
    void setRecording(double durationSeconds, std::optional<double> startSeconds);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void showTip(double x);
    void hideTip();

    QPointer<QLabel> m_tip; ///< a child of the window, so that it may stand above this bar and over the video
    double m_duration = 0;
    std::optional<double> m_start;
};

} // namespace cardreel
