#include "views/graph/TelemetryMoment.h"

#include "views/graph/GraphGeometry.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

TelemetryMoment::TelemetryMoment(const Telemetry& telemetry, double fraction)
{
    const auto single = static_cast<float>(fraction);
    const std::span<const CustomLocation> fixes = telemetry.totalLocations();
    const std::span<const MotionData> motions = telemetry.motions();
    if (fixes.empty())
        location.emplace(0.0, 0.0);
    else if (const auto index = recordIndexAt(single, fixes.size()))
        location = fixes[*index];
    if (motions.empty())
        motion.emplace(0.0, 0.0, 0.0);
    else if (const auto index = recordIndexAt(single, motions.size()))
        motion = motions[*index];
    driveSupport = recordIndexAt(single, telemetry.driveSupports().size());
}

std::optional<float> TelemetryMoment::speed() const
{
    if (!location)
        return {};
    const float speed = CustomLocation::speedForCurrentLocale(location->shownSpeed());
    return std::isfinite(speed) ? std::optional(std::max(speed, 0.0F)) : std::nullopt;
}

QStringList TelemetryMoment::readouts() const
{
    const std::optional<float> shown = speed();
    const MotionData g = motion.value_or(MotionData(0, 0, 0));
    return {shown ? QString::asprintf("Speed:%2.1f", static_cast<double>(*shown)) : u"Speed:---"_s,
            QString::asprintf("GX:%1.6f", g.gx), QString::asprintf("GY:%1.6f", g.gy),
            QString::asprintf("GZ:%1.6f", g.gz)};
}

QString warningText(const QString& appearanceEventName)
{
    return appearanceEventName.split(u',', Qt::SkipEmptyParts).join(u", ");
}

} // namespace cardreel
