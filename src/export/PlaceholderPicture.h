#pragma once

#include <QByteArray>

namespace cardreel {

/// What the description of an event begins with: a fragment of HTML with a picture of 192 × 108 pixels in it, the size
/// of a thumbnail, and a line break. Constant; any thread.
const QByteArray& placeholderPictureHtml();

} // namespace cardreel
