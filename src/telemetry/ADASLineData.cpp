#include "telemetry/ADASLineData.h"

namespace cardreel {

ADASLineData::ADASLineData(double markerPosition, const QColor& markerColor)
    : position(markerPosition)
    , color(markerColor)
{
}

} // namespace cardreel
