#pragma once

#include <QWidget>

namespace cardreel {

/// A thin bar with a round handle for a fraction from 0 to 1: a click jumps there, a drag follows the pointer. Only
/// shows and announces. Interface thread.
class BarSlider : public QWidget
{
    Q_OBJECT

public:
    /// The position is what the window is about and shows the accent colour; other sliders stay quiet.
    enum class Look { Accented, Quiet };

    explicit BarSlider(Look look, QWidget* parent = nullptr);

    double fraction() const { return m_fraction; }
    /// Brought into 0 to 1; ignored while the user drags.
    void setFraction(double fraction);
    /// Without something to move in, only the bar is drawn and nothing is announced.
    bool isActive() const { return m_isActive; }
    void setActive(bool active);
    bool isDragged() const { return m_isDragged; }

    QSize sizeHint() const override { return {200, 24}; }
    QSize minimumSizeHint() const override { return {48, 24}; }

Q_SIGNALS:
    /// The user moved the handle.
    void moved(double fraction);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

    double fractionAt(double x) const;
    double xOf(double fraction) const;
    /// As the user's hand does: shows and announces it.
    void moveTo(double fraction);

private:
    const Look m_look;
    double m_fraction = 0;
    bool m_isActive = true;
    bool m_isDragged = false;
};

} // namespace cardreel
