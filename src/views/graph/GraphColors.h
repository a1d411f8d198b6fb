#pragma once

#include <QColor>

namespace cardreel {

// The graph keeps its own dark ground in light surroundings too, so its colours aren't the desktop's. Markers have
// those of telemetry/ADASLineData.h.
inline constexpr QColor graphGXColor(106, 236, 247);
inline constexpr QColor graphGYColor(139, 153, 255);
inline constexpr QColor graphGZColor(248, 153, 144);
inline constexpr QColor graphSpeedColor(149, 149, 149);
inline constexpr QColor graphTextColor(149, 149, 149); ///< axis texts
inline constexpr QColor graphAxisColor(147, 147, 147);
inline constexpr QColor graphBackGroundColor(51, 51, 51);

inline constexpr QColor graphHairlineColor(72, 72, 72);
inline constexpr QColor graphReadoutColor(222, 224, 227);
inline constexpr QColor graphPositionColor(255, 255, 255);
inline constexpr QColor graphNeedleColor(255, 90, 77);

} // namespace cardreel
