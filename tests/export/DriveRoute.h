#pragma once

#include "export/ExportRoute.h"
#include "support/CardBuilder.h"
#include "telemetry/NMEAData.h"

#include <optional>
#include <vector>

namespace cardreel::test {

/// Adds a recording with these fixes to the route.
inline void addRecording(ExportRoute& route, const std::vector<Fix>& fixes,
                         const std::optional<QString>& eventName = {})
{
    NMEAData nmea{QString()};
    QByteArray text;
    for (const Fix& fix : fixes)
        text += fixSentence(fix);
    nmea.parseNMEALinesWithLines(QString::fromLatin1(text));
    route.add(*nmea.snapshot(), eventName);
}

} // namespace cardreel::test
