#pragma once

namespace cardreel {

/// A position on the earth, degrees in WGS 84, north and east positive.
struct Coordinate
{
    double latitude = 0;
    double longitude = 0;

    bool operator==(const Coordinate& other) const = default;
};

/// Whether it is a place at all: numbers within ±90 and ±180 degrees.
bool isPlace(const Coordinate& coordinate);

/// A point of the Web Mercator square: x from 0 (180° W) to 1 (180° E), y from 0 (85.05° N) to 1 (85.05° S). The square
/// repeats to both sides: x and x + 1 are the same place.
struct MapPoint
{
    double x = 0;
    double y = 0;

    bool operator==(const MapPoint& other) const = default;
};

/// The Web Mercator projection (EPSG:3857) scaled to the unit square. Latitudes beyond ±85.05° are brought to the edge.
MapPoint mapPoint(double latitude, double longitude);
MapPoint mapPoint(const Coordinate& coordinate);

/// The place at a point; longitudes come out within -180 to 180.
Coordinate coordinateAt(const MapPoint& point);

/// A rectangle of the Web Mercator square, which may reach beyond its left and right edges. A default one is the null
/// rectangle, which unites with nothing, contains nothing and intersects nothing.
struct MapRect
{
    double left = 0;
    double top = 0;
    double right = -1;
    double bottom = -1;

    bool isNull() const { return right < left; }
    double width() const { return isNull() ? 0 : right - left; }
    double height() const { return isNull() ? 0 : bottom - top; }
    MapPoint center() const { return {(left + right) / 2, (top + bottom) / 2}; }
    MapRect united(const MapRect& other) const;
    MapRect united(const MapPoint& point) const;
    MapRect translated(double dx) const { return {left + dx, top, right + dx, bottom}; }
    /// Edges included.
    bool contains(const MapRect& other) const;
    bool contains(const MapPoint& point) const;
    bool intersects(const MapRect& other) const;
};

} // namespace cardreel
