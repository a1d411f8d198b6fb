#pragma once

#include <QString>

namespace cardreel::CommandLine {

struct Options
{
    bool json = false;
    bool all = false;
};

// The commands: each prints to standard output and returns an exit status.
int listCard(const QString& cardPath, const Options& options);
int printTelemetry(const QString& sideFilePath, const Options& options);

/// Prints one line "cardreel: PATH: WHY" to standard error and returns the status of a failure.
int failure(const QString& path, const QString& why);

} // namespace cardreel::CommandLine
