#pragma once

#include "media/CustomMapPolyline.h"

#include <memory>

namespace cardreel {

class DCFInfo;

/// A marker on the map: a recording's start, or the present position. A plain record.
struct CustomPointAnnotation
{
    Coordinate coordinate;
    bool isUserLocation = false;
    bool GPSEnable = false;
    double direction = -1;       ///< degrees clockwise from north; -1 when not known
    float speed = -1;            ///< m/s; -1 when not known
    std::weak_ptr<DCFInfo> info; ///< the recording it marks; none for the present position
};

} // namespace cardreel
