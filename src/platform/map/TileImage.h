#pragma once

#include <QByteArray>
#include <QImage>

namespace cardreel {

constexpr int largestTileSide = 1024; ///< pixels

/// The picture in a tile's file: PNG, JPEG, GIF or WebP of 1x1 to 1024x1024 pixels, in a format that paints fast. Null
/// for everything else, which is found out before memory is taken for it. Any thread.
QImage tileImage(const QByteArray& bytes);

} // namespace cardreel
