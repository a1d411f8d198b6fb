#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;
class QPalette;

namespace cardreel {

// Small print on the map, which can be read on tiles of any colour: on a plate of the panel's. Interface thread.

/// The font of everything that is written on the map.
QFont mapFont(const QFont& font);

void drawMapPlate(QPainter& painter, const QRectF& place, const QPalette& palette);

/// Draws the text on a plate at the bottom of `room`, in as many lines as it takes, and says where.
QRectF drawMapChip(QPainter& painter, const QRectF& room, Qt::Alignment alignment, const QString& text,
                   const QPalette& palette);

} // namespace cardreel
