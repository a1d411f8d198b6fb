#pragma once

#include "views/map/MapViewport.h"

#include <QString>

#include <vector>

class QPainter;
class QPalette;

namespace cardreel {

/// Lines of equal latitude and longitude, for a map without tiles. Plain functions; any thread.
struct GraticuleLine
{
    double position = 0; ///< in the view, in points: x of a meridian, y of a parallel
    QString label;
};

/// How many degrees lines are apart, so that they are easily told from one another: 30 on the whole world, else one,
/// two or five times a power of ten.
double graticuleStep(const MapViewport& viewport);

std::vector<GraticuleLine> meridians(const MapViewport& viewport);
std::vector<GraticuleLine> parallels(const MapViewport& viewport);

void drawGraticule(QPainter& painter, const MapViewport& viewport, const QPalette& palette);

} // namespace cardreel
