#pragma once

#include "media/CustomMapPolyline.h"

#include <memory>
#include <vector>

namespace cardreel {

// What of the map is to be seen. Plain rules; any thread.

/// The union of the routes' bounding rectangles; the null rectangle for none. Where routes lie on both sides of the
/// antimeridian, the rectangle reaches across it instead of round the world.
MapRect totalMapRect(const std::vector<std::shared_ptr<const CustomMapPolyline>>& routes);

/// What happens when following the position is switched over.
enum class TracingStart {
    Nothing,
    CenterOnPosition,
    FitRoutes,
};
/// Fits the routes when none of their rectangle is to be seen; centres when exactly the routes are to be seen. x and x
/// + 1 are the same place.
TracingStart tracingStart(const MapRect& visible, const MapRect& routes);

} // namespace cardreel
