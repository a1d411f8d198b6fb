#pragma once

#include <QColor>
#include <QImage>
#include <QSize>
#include <QString>

namespace cardreel {

/// One of the program's own drawings (resources/images/NAME.svg) fitted into `size` pixels; a null image when there is
/// none of that name. Where the drawing says "currentColor" it takes `color`. Any thread.
QImage applicationImage(const QString& name, const QSize& size, const QColor& color = Qt::black);

} // namespace cardreel
