#pragma once

#include "views/map/MapViewport.h"

#include <QRectF>
#include <QString>

class QPainter;
class QPalette;

namespace cardreel {

/// A length that a map's scale bar shows. Plain functions; interface thread.
struct ScaleBar
{
    enum class Unit { Meter, Kilometer, Foot, Mile };

    double amount = 0; ///< one, two or five times a power of ten
    Unit unit = Unit::Meter;
    double width = 0; ///< points

    enum class System { Metric, Imperial };
    /// The longest round length that takes no more than `widest` points in the middle of the view.
    static ScaleBar fitting(const MapViewport& viewport, System system, double widest);

    /// In the user's language.
    QString text() const;
};

/// Draws it with its lower left corner there, in colours that can be read on any ground.
void drawScaleBar(QPainter& painter, const ScaleBar& bar, const QPointF& lowerLeft, const QPalette& palette);

} // namespace cardreel
