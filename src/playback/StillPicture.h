#pragma once

#include <QImage>
#include <QSize>
#include <QString>

namespace cardreel {

/// No more than a screen has, so that a pane doesn't hold a camera's whole picture.
inline constexpr QSize mostStillPictureSize(2560, 1600);

/// A JPEG file's picture, upright, shrunk to fit mostStillPictureSize; null when it can't be read as one. Takes as long as
/// the card takes: not for the interface thread.
QImage readStillPicture(const QString& path);

} // namespace cardreel
