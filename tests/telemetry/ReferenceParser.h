#pragma once

#include <QByteArray>

#include <cstddef>

namespace cardreel {

class Telemetry;

/// Everything that a parse found, one item a line, numbers to the last bit.
QByteArray described(const Telemetry& telemetry);

/// What described() must give for the text, worked out the slow and plain way: the whole text at once, split and split
/// again, with Qt's conversions. Empty for what isn't UTF-8.
QByteArray expectedDescription(const QByteArray& text, qsizetype longestSentence);

} // namespace cardreel
