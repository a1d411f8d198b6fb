#pragma once

#include <QString>

#include <optional>

namespace cardreel {

class Telemetry;

/// What the tip over the graph says of a fraction of the recording, line by line: how far into the recording and, when
/// the start is known (seconds since 1970), the recorder's time of day; the speed; the accelerations. What isn't known
/// is left out, so it may be empty; a length of 0 is not known, and a null telemetry knows nothing. Interface thread.
QString pointerText(const Telemetry* telemetry, double fraction, double lengthSeconds,
                    std::optional<double> startSeconds);

} // namespace cardreel
