#include "views/graph/PointerText.h"

#include "platform/text/RecorderTime.h"
#include "platform/text/UnitText.h"
#include "views/graph/TelemetryMoment.h"

#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

QString timeOfDay(double secondsSince1970)
{
    return recorderTimeText(Instant(std::chrono::milliseconds(std::llround(secondsSince1970 * 1000))));
}

} // namespace

QString pointerText(const Telemetry* telemetry, double fraction, double lengthSeconds,
                    std::optional<double> startSeconds)
{
    QStringList lines;
    if (lengthSeconds > 0 && std::isfinite(lengthSeconds)) {
        const double seconds = fraction * lengthSeconds;
        lines.push_back(playTimeText(seconds));
        if (startSeconds)
            lines.back() += u"  ·  "_s + timeOfDay(*startSeconds + seconds);
    }
    if (!telemetry)
        return lines.join(u'\n');
    const TelemetryMoment moment(*telemetry, fraction);
    if (const std::optional<float> speed = moment.speed(); speed && !telemetry->totalLocations().empty())
        lines.push_back(QString::asprintf("%.1f ", static_cast<double>(*speed)) +
                        CustomLocation::unitForCurrentLocale());
    if (moment.motion && !telemetry->motions().empty())
        lines.push_back(
            QString::asprintf("GX %.3f  GY %.3f  GZ %.3f", moment.motion->gx, moment.motion->gy, moment.motion->gz));
    return lines.join(u'\n');
}

} // namespace cardreel
