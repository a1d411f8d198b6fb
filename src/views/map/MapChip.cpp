#include "views/map/MapChip.h"

#include <QPainter>
#include <QPalette>

namespace cardreel {

QFont mapFont(const QFont& font)
{
    QFont result = font;
    result.setPixelSize(11);
    return result;
}

void drawMapPlate(QPainter& painter, const QRectF& place, const QPalette& palette)
{
    QColor plate = palette.color(QPalette::Window);
    plate.setAlphaF(0.85F);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(plate);
    painter.drawRoundedRect(place, 4, 4);
    painter.restore();
}

QRectF drawMapChip(QPainter& painter, const QRectF& room, Qt::Alignment alignment, const QString& text,
                   const QPalette& palette)
{
    constexpr double beside = 6;
    constexpr double above = 2;
    const auto flags = static_cast<int>(alignment) | Qt::AlignBottom | Qt::TextWordWrap;
    painter.save();
    painter.setFont(mapFont(painter.font()));
    const QRectF inner = room.adjusted(beside, above, -beside, -above);
    const QRectF words = painter.boundingRect(inner, flags, text);
    const QRectF place = words.adjusted(-beside, -above, beside, above);
    drawMapPlate(painter, place, palette);
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawText(words, flags, text);
    painter.restore();
    return place;
}

} // namespace cardreel
