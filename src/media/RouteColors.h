#pragma once

#include "platform/Instant.h"

#include <QColor>

#include <array>
#include <optional>

namespace cardreel {

/// The colours of the routes, one a day of driving, used in turn.
extern const std::array<QColor, 7> routeColors;

/// Whole calendar days from the first date to the second in the local time zone; negative when it is earlier.
qint64 daysBetween(Instant first, Instant second);

/// Whether a route that begins at `date` belongs to a later day than `after`; false when either is missing.
bool shouldChangeRouteColor(std::optional<Instant> date, std::optional<Instant> after);

} // namespace cardreel
