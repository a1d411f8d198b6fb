#include "media/CustomMapPolyline.h"

#include <utility>

namespace cardreel {

CustomMapPolyline::CustomMapPolyline(std::vector<Coordinate> line)
    : m_coordinates(std::move(line))
{
    for (const Coordinate& coordinate : m_coordinates)
        m_boundingMapRect = m_boundingMapRect.united(mapPoint(coordinate.latitude, coordinate.longitude));
}

} // namespace cardreel
