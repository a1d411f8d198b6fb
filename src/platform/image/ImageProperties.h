#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

namespace cardreel {

/// The properties of a JPEG file: "PixelWidth" and "PixelHeight", and the dictionaries "{TIFF}", "{Exif}" and "{GPS}",
/// keyed by the standard's tag names without their group's prefix. In "{GPS}", "Latitude" and "Longitude" are degrees
/// without sign as a double, "LatitudeRef" and "LongitudeRef" the hemisphere's letter.
///
/// Nothing when the file can't be opened; an empty map when it opens but holds no such picture. Any thread.
std::optional<QVariantMap> imageProperties(const QString& path);

} // namespace cardreel
