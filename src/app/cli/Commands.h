#pragma once

#include <QString>
#include <QStringList>

namespace cardreel::CommandLine {

struct Options
{
    bool json = false;
    bool all = false;
    bool reset = false;
    bool dryRun = false;
    QStringList assignments; ///< what followed --set, each with a name and a "="
};

// The commands: each prints to standard output and returns an exit status.
int listCard(const QString& cardPath, const Options& options);
int printTelemetry(const QString& sideFilePath, const Options& options);
int cardSettings(const QString& cardPath, const Options& options);

/// Prints one line "cardreel: PATH: WHY" to standard error and returns the status of a failure.
int failure(const QString& path, const QString& why);

/// Prints one line "cardreel: WHY (see cardreel --help)" to standard error and returns the status of wrong usage.
int wrongUsage(const QString& why);

} // namespace cardreel::CommandLine
