#pragma once

#include "telemetry/CustomLocation.h"
#include "telemetry/IndexedList.h"

namespace cardreel {

/// The fix whose timestamp lies nearest to a moment (seconds since 1970); of equals the first. Null for no fixes. Any
/// thread.
const CustomLocation* nearestFix(const IndexedList<CustomLocation>& fixes, double secondsSince1970);

} // namespace cardreel
