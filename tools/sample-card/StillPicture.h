// Writes a still picture as the recorder does: a JPEG with its moment and position in its EXIF block. Main thread.
#pragma once

#include "sample-card/Drive.h"
#include "sample-card/FileOutput.h"

#include <QDateTime>

class QImage;

namespace cardreel {

// Without a GPS block where the drive has no fix.
Problem writeStillPicture(const QString& path, const QImage& picture, const DriveState& state, const QDateTime& moment);

} // namespace cardreel
