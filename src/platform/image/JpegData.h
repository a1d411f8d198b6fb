#pragma once

#include <QByteArray>
#include <QImage>
#include <QVariantMap>

namespace cardreel {

/// The picture as a JPEG file with the "{GPS}" dictionary of `properties`, in the form in which imageProperties() reads
/// them: degrees are written as the standard's degrees, minutes and seconds, "Altitude" in metres as a rational, a text
/// as text whatever the standard has for its tag. Degrees come back to a hundred-millionth. Other dictionaries aren't
/// written. Empty when the picture can't be encoded. Any thread.
QByteArray jpegData(const QImage& image, const QVariantMap& properties);

} // namespace cardreel
