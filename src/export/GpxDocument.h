#pragma once

#include <QByteArray>

namespace cardreel {

class ExportRoute;

/// The GPX 1.1 document of a drive: a track for each day with a segment for each unbroken run of fixes, and a waypoint
/// for each event. Times are UTC. Speeds (metres per second) and courses (degrees) that a receiver told stand in
/// version 2 of the track point extension; where it told none, none is made up. No state; any thread.
class GpxDocument
{
public:
    GpxDocument() = delete;

    static QByteArray text(const ExportRoute& route);
};

} // namespace cardreel
