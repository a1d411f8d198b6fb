#include "media/CustomMapPolyline.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace cardreel {

namespace {

constexpr double noPoint = std::numeric_limits<double>::quiet_NaN();

} // namespace

CustomMapPolyline::CustomMapPolyline(std::vector<Coordinate> line, std::vector<uint32_t> gaps)
    : m_coordinates(std::move(line))
    , m_gaps(std::move(gaps))
{
    m_mapPoints.reserve(m_coordinates.size());
    std::optional<double> lastX;
    for (const Coordinate& coordinate : m_coordinates) {
        MapPoint& point = m_mapPoints.emplace_back(MapPoint{noPoint, noPoint});
        if (!isPlace(coordinate))
            continue;
        point = mapPoint(coordinate);
        if (lastX)
            point.x += std::round(*lastX - point.x);
        lastX = point.x;
        m_boundingMapRect = m_boundingMapRect.united(point);
    }
}

bool CustomMapPolyline::isGap(std::size_t after) const
{
    return std::binary_search(m_gaps.begin(), m_gaps.end(), after);
}

} // namespace cardreel
