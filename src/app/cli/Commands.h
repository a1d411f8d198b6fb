#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace cardreel::CommandLine {

/// What a command was told. Of its values only the form is looked at before.
struct Options
{
    QStringList arguments; ///< as many as the command takes
    bool json = false;
    bool all = false;
    bool reset = false;
    bool dryRun = false;
    bool verify = false;
    bool rear = false;
    bool mirror = false;
    std::optional<QString> pictures;
    std::optional<QString> at;
    std::optional<QString> out;
    QStringList assignments; ///< what followed --set, each with a name and a "="
    QStringList selected;    ///< what followed --select
};

// The commands: each prints what it found to standard output, and returns an exit status.
int listCard(const Options& options);
int printTelemetry(const Options& options);
int cardSettings(const Options& options);
// These print nothing when all went well.
int exportRoute(const Options& options);
int backUpCard(const Options& options);
int captureFrame(const Options& options);

/// Prints one line "cardreel: PATH: WHY" to standard error and returns the status of a failure.
int failure(const QString& path, const QString& why);

/// Prints one line "cardreel: WHY (see cardreel --help)" to standard error and returns the status of wrong usage.
int wrongUsage(const QString& why);

} // namespace cardreel::CommandLine
