// Writes a drive down in the sentences of the recorder's side file: once a second a fix, the acceleration samples of
// that second, and the warning unit's sentence. Any thread.
#pragma once

#include "sample-card/Drive.h"

#include <QByteArray>
#include <QDateTime>

namespace cardreel {

// The head sentence that opens every side file.
QByteArray tripSentence(const QByteArray& tripID);

// One fix, with its checksum, that begins at a state of the drive. Lines end in CR LF.
void appendFix(QByteArray& text, const DriveState& state, const QDateTime& time);
void appendSample(QByteArray& text, const DriveState& state);

// The whole side file of a recording of the given length that began at `start` (UTC).
QByteArray sideFile(const DriveLog& log, const QByteArray& tripID, const QDateTime& start, int seconds);

} // namespace cardreel
