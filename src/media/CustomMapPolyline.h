#pragma once

#include "platform/map/MapGeometry.h"

#include <QColor>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cardreel {

/// The route of one recording as a line on the map. Made by the background parse, coloured by day and drawn on the
/// interface thread; all but `lineColor` stays as it was made, so that any thread may read it.
class CustomMapPolyline
{
public:
    /// `gaps` names, in rising order, the coordinates after which nothing is known of the way to the next.
    explicit CustomMapPolyline(std::vector<Coordinate> line, std::vector<uint32_t> gaps = {});

    const std::vector<Coordinate>& coordinates() const { return m_coordinates; }
    /// The coordinates on the map. The line goes the shorter way round the earth, so that x may leave 0 to 1. Not a
    /// number where the coordinate is no place.
    const std::vector<MapPoint>& mapPoints() const { return m_mapPoints; }
    /// Of mapPoints(); the null rectangle for a line without points.
    const MapRect& boundingMapRect() const { return m_boundingMapRect; }
    const std::vector<uint32_t>& gaps() const { return m_gaps; }
    /// Whether nothing is known of the way from this coordinate to the next.
    bool isGap(std::size_t after) const;

    QColor lineColor;

private:
    std::vector<Coordinate> m_coordinates;
    std::vector<MapPoint> m_mapPoints;
    std::vector<uint32_t> m_gaps;
    MapRect m_boundingMapRect;
};

} // namespace cardreel
