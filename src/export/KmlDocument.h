#pragma once

#include "telemetry/CustomLocation.h"

#include <QByteArray>
#include <QColor>

namespace cardreel {

class ExportRoute;

/// The KML 2.2 document of a drive: a folder for each day with the route as a line and as a track with times, and one
/// with a placemark for each event. Line ends are CR LF. No state; any thread.
class KmlDocument
{
public:
    KmlDocument() = delete;

    static QByteArray text(const ExportRoute& route);

    /// Alpha, blue, green and red as two upper-case hexadecimal digits each, which is KML's order.
    static QByteArray colorString(const QColor& color);
};

} // namespace cardreel
