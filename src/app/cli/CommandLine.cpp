#include "app/cli/CommandLine.h"

#include "app/cli/Commands.h"
#include "platform/files/Files.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

using namespace Qt::StringLiterals;

namespace cardreel::CommandLine {

namespace {

struct Command
{
    const char* name;
    const char* argument;
    std::vector<QString> options;
    int (*run)(const QString& path, const Options& options);
};

const std::vector<Command>& commands()
{
    static const std::vector<Command> all = {
        {"list", "CARD", {u"--json"_s}, &listCard},
        {"telemetry", "SIDEFILE", {u"--json"_s, u"--all"_s}, &printTelemetry},
        {"settings", "CARD", {u"--json"_s, u"--set"_s, u"--reset"_s, u"--dry-run"_s}, &cardSettings},
    };
    return all;
}

struct Flag
{
    const char* name;
    bool Options::*member;
};
constexpr std::array<Flag, 4> flags = {{
    {"--json", &Options::json},
    {"--all", &Options::all},
    {"--reset", &Options::reset},
    {"--dry-run", &Options::dryRun},
}};

const char* const helpText = R"(Usage:
  cardreel [CARD…]                              open the cards, each in a window
  cardreel list CARD [--json]                   print the card's recordings and pictures
  cardreel telemetry SIDEFILE [--json] [--all]  print what a recording's side file holds
  cardreel settings CARD [--json]               print the recorder's settings on the card
  cardreel settings CARD [--reset] [--set NAME=VALUE…] [--dry-run] [--json]
                                                change them
  cardreel --help | --version

CARD is a mounted memory card or a folder copied from one: the folder that holds
NORMAL, EVENT and so on. SIDEFILE is a recording's .NMEA or .CED file.

  --json     print one JSON object instead of a table
  --all      print every fix and warning too, with --json also every acceleration sample
             and group of pictures
  --set      change settings: one or more NAME=VALUE follow; "cardreel settings CARD"
             lists the names and their values
  --reset    go back to the factory's settings, before what --set says
  --dry-run  only show what would change
  --         what follows is a path, even if it begins with a hyphen or is a command's name

Exit status: 0 on success; 1, with one line on standard error, when the path can't
be read or the settings not be written; 2 for wrong usage.
)";

/// What follows --set. A path that looks like it can be written as "./a=b".
bool isAssignment(const QString& argument)
{
    const qsizetype end = argument.indexOf(u'=');
    const auto isOfName = [](QChar c) { return c.isLetterOrNumber() || c == u'_'; };
    return end > 0 && std::all_of(argument.begin(), argument.begin() + end, isOfName);
}

/// A command's arguments, told apart.
struct Arguments
{
    Options options;
    QStringList paths;
    QString problem; ///< empty when they are as they should be
};

/// Carries an option out; the number of arguments after it that belong to it.
qsizetype takeOption(Arguments& taken, const QStringList& arguments, qsizetype position)
{
    const QString& name = arguments.at(position);
    for (const Flag& flag : flags) {
        if (name == QLatin1StringView(flag.name))
            taken.options.*flag.member = true;
    }
    if (name != u"--set")
        return 0;
    qsizetype count = 0;
    while (position + 1 + count < arguments.size() && isAssignment(arguments.at(position + 1 + count)))
        taken.options.assignments.push_back(arguments.at(position + 1 + count++));
    if (count == 0)
        taken.problem = u"--set takes NAME=VALUE"_s;
    return count;
}

Arguments takeArguments(const Command& command, const QStringList& arguments)
{
    Arguments taken;
    bool onlyPaths = false;
    for (qsizetype i = 0; i < arguments.size() && taken.problem.isEmpty(); ++i) {
        const QString& argument = arguments.at(i);
        if (!onlyPaths && argument == u"--")
            onlyPaths = true;
        else if (onlyPaths || !argument.startsWith(u'-') || argument == u"-")
            taken.paths.push_back(argument);
        else if (std::find(command.options.begin(), command.options.end(), argument) == command.options.end())
            taken.problem = u"%1 has no option %2"_s.arg(QLatin1StringView(command.name), argument);
        else
            i += takeOption(taken, arguments, i);
    }
    if (taken.problem.isEmpty() && taken.paths.size() != 1)
        taken.problem = u"%1 takes one %2"_s.arg(QLatin1StringView(command.name), QLatin1StringView(command.argument));
    return taken;
}

int runCommand(const Command& command, const QStringList& arguments)
{
    const Arguments taken = takeArguments(command, arguments);
    if (!taken.problem.isEmpty())
        return wrongUsage(taken.problem);
    const int status = command.run(taken.paths.first(), taken.options);
    // A full disk or a closed pipe shows only now.
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        return failure(u"standard output"_s, QString::fromLocal8Bit(std::strerror(errno)));
    return status;
}

} // namespace

int wrongUsage(const QString& why)
{
    std::fprintf(stderr, "cardreel: %s (see cardreel --help)\n", why.toLocal8Bit().constData());
    return WrongUsage;
}

bool isCommand(int argc, char** argv)
{
    if (argc < 2)
        return false;
    for (const Command& command : commands()) {
        if (std::strcmp(argv[1], command.name) == 0)
            return true;
    }
    // Also what only looks like an option, so that a mistyped one doesn't open a window.
    return argv[1][0] == '-' && std::strcmp(argv[1], "--") != 0;
}

int run(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 2; i < argc; ++i)
        arguments.push_back(files::fromNativePath(argv[i]));
    const QString first = files::fromNativePath(argv[1]);
    for (const Command& command : commands()) {
        if (first == QLatin1StringView(command.name))
            return runCommand(command, arguments);
    }
    if (first == u"--help" || first == u"-h") {
        std::fputs(helpText, stdout);
        return Success;
    }
    if (first == u"--version") {
        std::printf("cardreel %s\n", QCoreApplication::applicationVersion().toLatin1().constData());
        return Success;
    }
    return wrongUsage(u"there is no option %1"_s.arg(first));
}

std::optional<QStringList> paths(int argc, char** argv)
{
    QStringList result;
    bool onlyPaths = false;
    for (int i = 1; i < argc; ++i) {
        const QString argument = files::fromNativePath(argv[i]);
        if (!onlyPaths && argument == u"--") {
            onlyPaths = true;
        } else if (!onlyPaths && argument.startsWith(u'-')) {
            wrongUsage(u"there is no option %1"_s.arg(argument));
            return std::nullopt;
        } else {
            result.push_back(argument);
        }
    }
    return result;
}

} // namespace cardreel::CommandLine
