#include "views/map/Graticule.h"

#include "views/map/MapChip.h"

#include <QLocale>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr double closestLines = 96;      ///< points; room for a label between two meridians
constexpr double widestDecimalStep = 20; ///< degrees; above, lines divide the quarter of a circle
constexpr double northernmost = 85.0511;

/// "139.75° E", with as many decimals as the step has.
QString degreesText(double degrees, double step, QChar positive, QChar negative)
{
    const int decimals = std::max(0, static_cast<int>(std::ceil(-std::log10(step) - 1e-9)));
    const QString number = QLocale().toString(std::abs(degrees), 'f', decimals);
    if (std::abs(degrees) < step / 2)
        return number + u'°';
    return number + u"° "_s + (degrees > 0 ? positive : negative);
}

} // namespace

double graticuleStep(const MapViewport& viewport)
{
    const double least = closestLines * 360 / viewport.worldSize();
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0, 10.0}) {
        if (factor * power >= least && factor * power <= widestDecimalStep)
            return factor * power;
    }
    return least <= 30 ? 30 : least <= 60 ? 60 : 90;
}

std::vector<GraticuleLine> meridians(const MapViewport& viewport)
{
    std::vector<GraticuleLine> lines;
    const double step = graticuleStep(viewport);
    const double west = viewport.fromView({0, 0}).x * 360 - 180;
    const double east = viewport.fromView({viewport.size.width(), 0}).x * 360 - 180;
    const double first = std::ceil(west / step);
    for (double i = first; i * step <= east; ++i) {
        const double x = viewport.toView({(i * step + 180) / 360, 0}).x();
        // The other side of the world goes on in the copy beside it.
        double longitude = std::remainder(i * step, 360);
        if (longitude == -180)
            longitude = 180;
        lines.push_back({x, degreesText(longitude, step, u'E', u'W')});
    }
    return lines;
}

std::vector<GraticuleLine> parallels(const MapViewport& viewport)
{
    std::vector<GraticuleLine> lines;
    const double step = graticuleStep(viewport);
    const double north = coordinateAt(viewport.fromView({0, 0})).latitude;
    const double south = coordinateAt(viewport.fromView({0, viewport.size.height()})).latitude;
    for (double i = std::ceil(std::max(south, -northernmost) / step); i * step <= std::min(north, northernmost); ++i) {
        const double y = viewport.toView(mapPoint(i * step, 0)).y();
        lines.push_back({y, degreesText(i * step, step, u'N', u'S')});
    }
    return lines;
}

void drawGraticule(QPainter& painter, const MapViewport& viewport, const QPalette& palette)
{
    constexpr int inset = 4;
    painter.save();
    const QFont font = mapFont(painter.font());
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const QColor lineColor = palette.color(QPalette::Mid);
    const QColor textColor = palette.color(QPalette::PlaceholderText);
    painter.setRenderHint(QPainter::Antialiasing, false);
    // Beyond the poles' side there is no world.
    const double top = std::max(0.0, viewport.toView({0, 0}).y());
    const double bottom = std::min(viewport.size.height(), viewport.toView({0, 1}).y());
    for (const GraticuleLine& line : meridians(viewport)) {
        const double x = std::floor(line.position) + 0.5;
        painter.setPen(lineColor);
        painter.drawLine(QPointF(x, top), QPointF(x, bottom));
        if (x + inset + metrics.horizontalAdvance(line.label) > viewport.size.width())
            continue;
        painter.setPen(textColor);
        painter.drawText(QPointF(x + inset, top + inset + metrics.ascent()), line.label);
    }
    for (const GraticuleLine& line : parallels(viewport)) {
        const double y = std::floor(line.position) + 0.5;
        painter.setPen(lineColor);
        painter.drawLine(QPointF(0, y), QPointF(viewport.size.width(), y));
        // A label at the top would lie on those of the meridians.
        if (y < top + 2 * inset + 2 * metrics.height())
            continue;
        painter.setPen(textColor);
        painter.drawText(QPointF(inset, y - inset), line.label);
    }
    painter.restore();
}

} // namespace cardreel
