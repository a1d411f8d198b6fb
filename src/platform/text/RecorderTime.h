#pragma once

#include "platform/Instant.h"

#include <QString>

namespace cardreel {

/// The recorder's day in the user's locale, for a header ("Sat, Jun 14, 2025").
QString recorderDayText(Instant recorderTime);
/// The recorder's time of day with seconds in the user's locale.
QString recorderTimeText(Instant recorderTime);
/// Both, for the clock over the picture.
QString recorderDateTimeText(Instant recorderTime);

} // namespace cardreel
