#pragma once

#include "telemetry/Telemetry.h"

#include <QStringList>

#include <cstddef>
#include <optional>

namespace cardreel {

/// What a recording's telemetry says at a fraction of it. Fixes, samples and warnings are each picked proportionally
/// from their own list, for the lists differ in length. A value; any thread.
struct TelemetryMoment
{
    std::optional<CustomLocation> location;  ///< a fix at 0° N 0° E, its speed unknown, where a file has none
    std::optional<MotionData> motion;        ///< zero where a file has no samples
    std::optional<std::size_t> driveSupport; ///< index into the records

    TelemetryMoment() = default;
    TelemetryMoment(const Telemetry& telemetry, double fraction);

    /// The speed in the locale's unit, never negative; none without a fix or when it isn't finite.
    std::optional<float> speed() const;
    /// Four lines: the speed, then the axes. What isn't known keeps the text that stands before anything is.
    QStringList readouts() const;
};

/// What a warning chip says: the names without the comma that ends each.
QString warningText(const QString& appearanceEventName);

} // namespace cardreel
