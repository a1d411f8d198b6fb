#include "telemetry/FixLookup.h"

#include <cmath>
#include <limits>

namespace cardreel {

const CustomLocation* nearestFix(const IndexedList<CustomLocation>& fixes, double secondsSince1970)
{
    // Recorders set their clocks while driving, so timestamps need not rise: every fix is looked at.
    const CustomLocation* nearest = nullptr;
    double smallest = std::numeric_limits<double>::max();
    for (const CustomLocation& fix : fixes) {
        const double distance = std::abs(cardreel::secondsSince1970(fix.timestamp) - secondsSince1970);
        if (distance < smallest) {
            smallest = distance;
            nearest = &fix;
        }
    }
    return nearest;
}

} // namespace cardreel
