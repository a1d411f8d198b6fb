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
    std::vector<const char*> arguments; ///< what they are called
    std::vector<const char*> options;
    int (*run)(const Options& options);
};

const std::vector<Command>& commands()
{
    static const std::vector<Command> all = {
        {"list", {"CARD"}, {"--json"}, &listCard},
        {"telemetry", {"SIDEFILE"}, {"--json", "--all"}, &printTelemetry},
        {"settings", {"CARD"}, {"--json", "--set", "--reset", "--dry-run"}, &cardSettings},
        {"export", {"CARD", "OUT"}, {"--select"}, &exportRoute},
        {"backup", {"CARD", "FOLDER"}, {"--pictures", "--select", "--verify"}, &backUpCard},
        {"capture", {"CARD", "STEM"}, {"--at", "--out", "--rear", "--mirror"}, &captureFrame},
    };
    return all;
}

struct Flag
{
    const char* name;
    bool Options::*member;
};
constexpr std::array<Flag, 7> flags = {{
    {"--json", &Options::json},
    {"--all", &Options::all},
    {"--reset", &Options::reset},
    {"--dry-run", &Options::dryRun},
    {"--verify", &Options::verify},
    {"--rear", &Options::rear},
    {"--mirror", &Options::mirror},
}};

/// An option with the argument after it, whatever that looks like. Given again, the last counts.
struct ValueOption
{
    const char* name;
    const char* value; ///< what it is called
    std::optional<QString> Options::*member;
};
constexpr std::array<ValueOption, 3> valueOptions = {{
    {"--at", "SECONDS", &Options::at},
    {"--out", "FILE", &Options::out},
    {"--pictures", "all, none or only", &Options::pictures},
}};

/// What follows --set. A path that looks like it can be written as "./a=b".
bool isAssignment(const QString& argument)
{
    const qsizetype end = argument.indexOf(u'=');
    const auto isOfName = [](QChar c) { return c.isLetterOrNumber() || c == u'_'; };
    return end > 0 && std::all_of(argument.begin(), argument.begin() + end, isOfName);
}

bool isNoOption(const QString& argument)
{
    return !argument.startsWith(u'-');
}

/// An option with one or more arguments after it, as long as they are of its kind. Given again, they add up.
struct ListOption
{
    const char* name;
    const char* value;
    QStringList Options::*member;
    bool (*takes)(const QString& argument);
};
constexpr std::array<ListOption, 2> listOptions = {{
    {"--set", "NAME=VALUE", &Options::assignments, &isAssignment},
    {"--select", "STEM", &Options::selected, &isNoOption},
}};

const char* const helpText = R"(Usage:
  cardreel [CARD…]                              open the cards, each in a window
  cardreel list CARD [--json]                   print the card's recordings and pictures
  cardreel telemetry SIDEFILE [--json] [--all]  print what a recording's side file holds
  cardreel settings CARD [--json]               print the recorder's settings on the card
  cardreel settings CARD [--reset] [--set NAME=VALUE…] [--dry-run] [--json]
                                                change them
  cardreel export CARD OUT.{kml,kmz,gpx} [--select STEM…]
                                                write the route and the events to a file
  cardreel backup CARD FOLDER [--pictures all|none|only] [--select STEM…] [--verify]
                                                copy to a new folder that opens like a card
  cardreel capture CARD STEM --at SECONDS --out FILE [--rear] [--mirror]
                                                save a frame as .jpg, .jpeg or .png
  cardreel --help | --version

CARD is a mounted memory card or a folder copied from one: the folder that holds
NORMAL, EVENT and so on. SIDEFILE is a recording's .NMEA or .CED file. STEM is the name
of a recording's file without its extension; the path below the card does, too.

  --json     print one JSON object instead of a table
  --all      print every fix and warning too, with --json also every acceleration sample
             and group of pictures
  --set      change settings: one or more NAME=VALUE follow; "cardreel settings CARD"
             lists the names and their values
  --reset    go back to the factory's settings, before what --set says
  --dry-run  only show what would change
  --select   take only these recordings: one or more STEMs follow, up to the next option
             or "--"
  --pictures copy the pictures of all recordings too (all, which is usual), no pictures
             (none), or the pictures only
  --verify   read each copy back and compare it with the card
  --at       the moment: seconds from the recording's start, at most its length
  --out      the picture; what is there already is replaced, as export does
  --rear     what the rear camera shows at that moment
  --mirror   left and right exchanged
  --         what follows is a path, even if it begins with a hyphen or is a command's name

export, backup and capture print nothing when all went well; how far they are is shown
when standard error is a terminal. Ctrl+C cancels them and leaves nothing unfinished.

Exit status: 0 on success; 1, with one line on standard error, when the path can't
be read or what was asked for not be written; 2 for wrong usage, also for a STEM that
isn't on the card or a moment behind its end; 130 when cancelled.
)";

/// A command's arguments, told apart.
struct Arguments
{
    Options options;
    QString problem; ///< empty when they are as they should be
};

template<typename Table>
const typename Table::value_type* entryFor(const Table& table, const QString& name)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const auto& entry) { return name == QLatin1StringView(entry.name); });
    return found == table.end() ? nullptr : &*found;
}

/// Carries an option out; the number of arguments after it that belong to it.
qsizetype takeOption(Arguments& taken, const QString& name, const QStringList& rest)
{
    if (const Flag* flag = entryFor(flags, name)) {
        taken.options.*flag->member = true;
        return 0;
    }
    const char* missing = nullptr;
    qsizetype count = 0;
    if (const ListOption* list = entryFor(listOptions, name)) {
        while (count < rest.size() && list->takes(rest.at(count)))
            (taken.options.*list->member).push_back(rest.at(count++));
        missing = list->value;
    } else if (const ValueOption* option = entryFor(valueOptions, name)) {
        if (!rest.isEmpty())
            taken.options.*option->member = rest.at(count++);
        missing = option->value;
    }
    if (count == 0)
        taken.problem = u"%1 takes %2"_s.arg(name, QLatin1StringView(missing));
    return count;
}

bool hasOption(const Command& command, const QString& name)
{
    return std::any_of(command.options.begin(), command.options.end(),
                       [&](const char* option) { return name == QLatin1StringView(option); });
}

QString namesOf(const std::vector<const char*>& arguments)
{
    QStringList names;
    for (const char* name : arguments)
        names += QString::fromLatin1(name);
    return names.size() == 1 ? u"one "_s + names.first() : names.join(u" and "_s);
}

Arguments takeArguments(const Command& command, const QStringList& arguments)
{
    Arguments taken;
    QStringList& paths = taken.options.arguments;
    bool onlyPaths = false;
    for (qsizetype i = 0; i < arguments.size() && taken.problem.isEmpty(); ++i) {
        const QString& argument = arguments.at(i);
        if (!onlyPaths && argument == u"--")
            onlyPaths = true;
        else if (onlyPaths || !argument.startsWith(u'-') || argument == u"-")
            paths.push_back(argument);
        else if (!hasOption(command, argument))
            taken.problem = u"%1 has no option %2"_s.arg(QLatin1StringView(command.name), argument);
        else
            i += takeOption(taken, argument, arguments.sliced(i + 1));
    }
    if (taken.problem.isEmpty() && static_cast<size_t>(paths.size()) != command.arguments.size())
        taken.problem = u"%1 takes %2"_s.arg(QLatin1StringView(command.name), namesOf(command.arguments));
    return taken;
}

int runCommand(const Command& command, const QStringList& arguments)
{
    const Arguments taken = takeArguments(command, arguments);
    if (!taken.problem.isEmpty())
        return wrongUsage(taken.problem);
    const int status = command.run(taken.options);
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
    if (const Command* command = entryFor(commands(), first))
        return runCommand(*command, arguments);
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
