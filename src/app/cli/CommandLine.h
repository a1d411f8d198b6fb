#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>
#include <vector>

/// The program's interface for scripts. Results go to standard output, one line about what went wrong to standard
/// error.
namespace cardreel::CommandLine {

enum ExitStatus { Success = 0, Failure = 1, WrongUsage = 2, Cancelled = 130 };

/// Whether these arguments ask for something done without a window: a command, or --help and --version.
bool isCommand(int argc, char** argv);

/// Carries the command out and returns the exit status.
int run(int argc, char** argv);

/// The arguments as paths; names that aren't UTF-8 are kept. Nothing, with a line on standard error, when one is an
/// option.
std::optional<QStringList> paths(int argc, char** argv);

} // namespace cardreel::CommandLine
