#pragma once

#include "playback/FakePanes.h"
#include "telemetry/NMEAData.h"

#include <QDir>
#include <QFile>

namespace cardreel::test {

/// A window with fake players whose first recording has the telemetry that a test writes.
struct GraphRecording
{
    DriveCard card;
    FakeWindow window;

    GraphRecording() { window.open(card.root()); }

    const std::shared_ptr<DCFInfo>& info() { return window.recording(0); }
    /// `text` in place of the side file, read.
    std::shared_ptr<const Telemetry> read(const QByteArray& text)
    {
        NMEAData& nmea = *info()->nmea;
        nmea.setFilePath(card.file(QStringLiteral("side.nmea"), text));
        nmea.setup();
        return nmea.snapshot();
    }
};

/// A fix with the speed, so many equal samples, and one driver-assistance record with the fields that follow its tag.
inline QByteArray group(int second, const QByteArray& knots, const QByteArray& sample, int samples,
                        const QByteArray& warning = ",,,,,,,,,,,,,,,")
{
    QByteArray text = fixSentence({.time = noon + std::chrono::seconds(second), .speed = knots});
    text += "$QVDSA," + warning + "\r\n";
    for (int i = 0; i < samples; ++i)
        text += "$GSENS," + sample + "\r\n";
    return text;
}

inline const QByteArray delayWarning = "5,1,,,,,,,,,,,,,,";
inline const QByteArray collisionWarning = ",,,,,10,1,,,,,,,,,";

} // namespace cardreel::test
