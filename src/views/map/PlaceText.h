#pragma once

#include <QString>

namespace cardreel {

struct CustomPointAnnotation;
struct RouteMoment;

// What the map says of a place, in the user's language and units. The recorder's clock, which has no zone, keeps its
// own figures. Interface thread.

/// "58 km/h"; a dash for a negative speed, which isn't known.
QString speedText(double metersPerSecond);
/// "heading 042°"; empty for a negative direction, which isn't known.
QString headingText(double degrees);
/// "35.677730, 139.754813".
QString coordinateText(double latitude, double longitude);
/// Date, time and speed; within a gap, between which times nothing was received.
QString routeMomentText(const RouteMoment& moment);
/// What is known of the present position, line by line.
QString positionMarkerText(const CustomPointAnnotation& marker);

} // namespace cardreel
