#pragma once

#include <QWidget>

namespace cardreel {

/// A thin bar with a round handle for a position in a recording; clicks jump, drags scrub, arrow keys step a second.
/// Interface thread.
class PositionSlider : public QWidget
{
    Q_OBJECT

public:
    explicit PositionSlider(QWidget* parent = nullptr);

    /// Seconds; ignored while the user drags.
    void setPosition(double seconds);
    /// Seconds; 0 makes the slider inert.
    void setDuration(double seconds);

    QSize sizeHint() const override { return {200, 24}; }
    QSize minimumSizeHint() const override { return {80, 24}; }

Q_SIGNALS:
    void moved(double seconds);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    double secondsAt(double x) const;
    void moveTo(double seconds);

    double m_position = 0;
    double m_duration = 0;
    bool m_isDragged = false;
};

} // namespace cardreel
