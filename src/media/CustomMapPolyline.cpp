#include "media/CustomMapPolyline.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cardreel {

CustomMapPolyline::CustomMapPolyline(std::vector<Coordinate> line, std::vector<uint32_t> gaps)
    : m_coordinates(std::move(line))
    , m_gaps(std::move(gaps))
{
    m_mapPoints.reserve(m_coordinates.size());
    for (const Coordinate& coordinate : m_coordinates) {
        MapPoint point = mapPoint(coordinate);
        if (!m_mapPoints.empty())
            point.x += std::round(m_mapPoints.back().x - point.x);
        m_boundingMapRect = m_boundingMapRect.united(point);
        m_mapPoints.push_back(point);
    }
}

bool CustomMapPolyline::isGap(std::size_t after) const
{
    return std::binary_search(m_gaps.begin(), m_gaps.end(), after);
}

} // namespace cardreel
