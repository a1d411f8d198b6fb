#pragma once

namespace cardreel {

/// A point of the Web Mercator square: x from 0 (180° W) to 1 (180° E), y from 0 (85.05° N) to 1 (85.05° S).
struct MapPoint
{
    double x = 0;
    double y = 0;
};

/// The Web Mercator projection (EPSG:3857) scaled to the unit square. Latitudes beyond ±85.05° are brought to the edge.
MapPoint mapPoint(double latitude, double longitude);

/// A rectangle of the Web Mercator square. A default one is the null rectangle, which unites with nothing.
struct MapRect
{
    double left = 0;
    double top = 0;
    double right = -1;
    double bottom = -1;

    bool isNull() const { return right < left; }
    MapRect united(const MapRect& other) const;
    MapRect united(const MapPoint& point) const;
};

} // namespace cardreel
