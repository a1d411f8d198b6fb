#include "views/map/ScaleBar.h"

#include "views/map/MapChip.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cardreel {

namespace {

constexpr double equator = 40'075'016.686; ///< metres
constexpr double metersPerFoot = 0.3048;
constexpr double feetPerMile = 5280;

double roundDown(double amount)
{
    const double power = std::pow(10, std::floor(std::log10(amount)));
    for (const double factor : {5.0, 2.0}) {
        if (factor * power <= amount)
            return factor * power;
    }
    return power;
}

} // namespace

ScaleBar ScaleBar::fitting(const MapViewport& viewport, System system, double widest)
{
    const double latitude = coordinateAt(viewport.center).latitude * std::numbers::pi / 180;
    const double metersPerPoint = equator * std::cos(latitude) / viewport.worldSize();
    const bool isMetric = system == System::Metric;
    const double small = metersPerPoint * widest / (isMetric ? 1 : metersPerFoot);
    const double largerUnit = isMetric ? 1000 : feetPerMile;
    const bool isLarge = small >= largerUnit;
    ScaleBar bar;
    bar.amount = roundDown(isLarge ? small / largerUnit : small);
    bar.unit = isMetric ? isLarge ? Unit::Kilometer : Unit::Meter : isLarge ? Unit::Mile : Unit::Foot;
    bar.width = bar.amount / small * (isLarge ? largerUnit : 1) * widest;
    return bar;
}

QString ScaleBar::text() const
{
    const QString number = QLocale().toString(amount, 'g', 6);
    switch (unit) {
    case Unit::Meter:
        return QCoreApplication::translate("cardreel::ScaleBar", "%1 m").arg(number);
    case Unit::Kilometer:
        return QCoreApplication::translate("cardreel::ScaleBar", "%1 km").arg(number);
    case Unit::Foot:
        return QCoreApplication::translate("cardreel::ScaleBar", "%1 ft").arg(number);
    case Unit::Mile:
        return QCoreApplication::translate("cardreel::ScaleBar", "%1 mi").arg(number);
    }
    return number;
}

void drawScaleBar(QPainter& painter, const ScaleBar& bar, const QPointF& lowerLeft, const QPalette& palette)
{
    constexpr double inset = 6;
    constexpr double tick = 4;
    const QFont font = mapFont(painter.font());
    const QFontMetricsF metrics(font);
    const double width = std::max(std::round(bar.width), metrics.horizontalAdvance(bar.text()));
    const QSizeF size(width + 2 * inset, metrics.height() + tick + inset);
    const QRectF plate(lowerLeft - QPointF(0, size.height()), size);
    const double x = plate.left() + inset + 0.5;
    const double y = plate.bottom() - inset + 0.5;
    drawMapPlate(painter, plate, palette);
    painter.save();
    painter.setFont(font);
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawText(plate.adjusted(inset, 1, -inset, 0), Qt::AlignTop | Qt::AlignHCenter, bar.text());
    const double right = x + std::round(bar.width) - 1;
    painter.drawPolyline(QPolygonF({{x, y - tick}, {x, y}, {right, y}, {right, y - tick}}));
    painter.restore();
}

} // namespace cardreel
