#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QWidget>

#include <memory>

class QPainterPath;

namespace cardreel {

/// Where a callout lies and which way it points. Plain; any thread.
struct CalloutPlacement
{
    QPoint corner;        ///< upper left, in the view
    int pointerX = 0;     ///< of the tip, from the corner
    bool isBelow = false; ///< the callout lies below what it points at

    /// For a callout of a size that points at a rectangle of the view: above it, below it where only there it fits, and
    /// not beyond the view's sides as long as its tip can reach the rectangle's middle.
    static CalloutPlacement of(const QSize& callout, const QRectF& target, const QSizeF& view);

    bool operator==(const CalloutPlacement& other) const = default;
};

/// The frame around what a map shows of a marker, with a tip that points at it. A child of the map's viewport;
/// interface thread.
class MapCallout : public QWidget
{
public:
    MapCallout(std::unique_ptr<QWidget> content, QWidget* viewport);

    /// Goes to where it points at the rectangle.
    void pointAt(const QRectF& target);
    /// Goes away, slowly, and is no more.
    void fade();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QPainterPath outline() const;
    void setPlacement(const CalloutPlacement& placement);

    CalloutPlacement m_placement;
    QRectF m_target;
};

} // namespace cardreel
