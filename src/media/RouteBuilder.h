#pragma once

#include "media/CustomMapPolyline.h"
#include "media/CustomPointAnnotation.h"

#include <QColor>

#include <memory>
#include <vector>

namespace cardreel {

class DCFInfo;

/// Makes routes, markers and day colours out of recordings' telemetry, parsing it first where that has not happened
/// yet. Reads nothing of a recording but its telemetry, so it works beside the interface thread. No state; any thread.
class RouteBuilder
{
public:
    using DCFList = std::vector<std::shared_ptr<DCFInfo>>;

    /// The route of one recording in library order: its valid fixes and, where the next recording goes on the same day,
    /// that one's first fix, so that the lines join. Its first fixes without speed or course take the last ones of the
    /// recording before on the same day. Where more than ten seconds lie between two of its fixes, or the clock jumps
    /// as far back, the line has a gap. A line without points when it has no valid fix.
    static std::shared_ptr<CustomMapPolyline> polylineForDCFInfos(const DCFList& dcfs, size_t AtIndex);

    /// The marker at the recording's first valid fix; nothing when it has none.
    static std::shared_ptr<CustomPointAnnotation> annotationForDCFInfo(const std::shared_ptr<DCFInfo>& dcf);

    /// The colour of each recording's route, in library order: the next of routeColors with each later day. Recordings
    /// without a valid fix get an invalid colour.
    static std::vector<QColor> dayColors(const DCFList& dcfs);
};

} // namespace cardreel
