#include "app/cli/CommandLine.h"

#include "app/cli/Commands.h"
#include "platform/files/Files.h"

#include <QCoreApplication>

#include <algorithm>
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
    };
    return all;
}

const char* const helpText = R"(Usage:
  cardreel [CARD…]                              open the cards, each in a window
  cardreel list CARD [--json]                   print the card's recordings and pictures
  cardreel telemetry SIDEFILE [--json] [--all]  print what a recording's side file holds
  cardreel --help | --version

CARD is a mounted memory card or a folder copied from one: the folder that holds
NORMAL, EVENT and so on. SIDEFILE is a recording's .NMEA or .CED file.

  --json  print one JSON object instead of a table
  --all   print every fix and warning too, with --json also every acceleration sample
          and group of pictures
  --      what follows is a path, even if it begins with a hyphen or is a command's name

Exit status: 0 on success; 1, with one line on standard error, when the path can't
be read; 2 for wrong usage.
)";

int wrongUsage(const QString& why)
{
    std::fprintf(stderr, "cardreel: %s (see cardreel --help)\n", why.toLocal8Bit().constData());
    return WrongUsage;
}

int runCommand(const Command& command, const QStringList& arguments)
{
    Options options;
    QStringList paths;
    bool onlyPaths = false;
    for (const QString& argument : arguments) {
        if (!onlyPaths && argument == u"--")
            onlyPaths = true;
        else if (onlyPaths || !argument.startsWith(u'-') || argument == u"-")
            paths.push_back(argument);
        else if (std::find(command.options.begin(), command.options.end(), argument) == command.options.end())
            return wrongUsage(u"%1 has no option %2"_s.arg(QLatin1StringView(command.name), argument));
        else
            (argument == u"--json" ? options.json : options.all) = true;
    }
    if (paths.size() != 1)
        return wrongUsage(
            u"%1 takes one %2"_s.arg(QLatin1StringView(command.name), QLatin1StringView(command.argument)));
    const int status = command.run(paths.first(), options);
    // A full disk or a closed pipe shows only now.
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        return failure(u"standard output"_s, QString::fromLocal8Bit(std::strerror(errno)));
    return status;
}

} // namespace

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
