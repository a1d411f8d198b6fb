#pragma once

#include "platform/map/MapGeometry.h"

#include <QColor>

#include <vector>

namespace cardreel {

/// A position on the earth, degrees in WGS 84.
struct Coordinate
{
    double latitude = 0;
    double longitude = 0;
};

/// The route of one recording as a line on the map. Made by the background parse, coloured by day and drawn on the
/// interface thread.
class CustomMapPolyline
{
public:
    explicit CustomMapPolyline(std::vector<Coordinate> line);

    const std::vector<Coordinate>& coordinates() const { return m_coordinates; }
    /// The null rectangle for a line without points.
    const MapRect& boundingMapRect() const { return m_boundingMapRect; }

    QColor lineColor;

private:
    std::vector<Coordinate> m_coordinates;
    MapRect m_boundingMapRect;
};

} // namespace cardreel
