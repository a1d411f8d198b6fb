#pragma once

#include <QImage>
#include <QWidget>

namespace cardreel {

/// The speedometer: a dial from 0 to 180 units over 270 degrees, its needle, and the speed in whole units. Interface
/// thread.
class NeedleView : public QWidget
{
    Q_OBJECT

public:
    explicit NeedleView(QWidget* parent = nullptr);

    /// In the locale's unit; not negative.
    void updateLayerWithSpeed(float speed);
    float speed() const { return m_speed; }
    /// The speed in whole units, cut and not rounded.
    QString numberText() const;
    /// What the dial counts: "km/h" or "mph".
    void setUnit(const QString& unit);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage drawnFace() const;
    void drawNeedle(QPainter& painter) const;
    void drawNumber(QPainter& painter) const;
    double side() const { return qMin(width(), height()); }

    QString m_unit;
    float m_speed = 0;
    QImage m_face; ///< all but the needle and the number
};

} // namespace cardreel
