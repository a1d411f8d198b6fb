#pragma once

#include <QColor>

namespace cardreel {

// The colours of the driver-assistance warnings.
inline constexpr QColor adasDelayColor(5, 248, 209);
inline constexpr QColor adasLaneDepartureColor(255, 198, 0);
inline constexpr QColor adasForwardCollisionColor(255, 0, 0);
inline constexpr QColor adasSTRIXColor(238, 123, 72);

/// One marker of a driver-assistance warning in the graph. A plain value.
struct ADASLineData
{
    ADASLineData(double markerPosition, const QColor& markerColor);

    double position; ///< tenths of the interval between two groups of pictures; 5 is the group's own point
    QColor color;

    bool operator==(const ADASLineData& other) const = default;
};

} // namespace cardreel
