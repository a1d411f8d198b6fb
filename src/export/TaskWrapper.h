#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace cardreel {

/// Runs another program and waits for it. No state; any thread but the interface thread, which would stand still.
class TaskWrapper
{
public:
    TaskWrapper() = delete;

    /// What makes the C shell carry out the line.
    static QStringList argsWithCommandLineString(const QString& line);

    /// Starts args[0] with the other items as its arguments, reads its standard output to the end and waits for the
    /// program to end, whatever its status. Nothing, and a line in the log, when it can't be started or read. Arguments
    /// may hold paths as in platform/files/Files.h. The program has no standard
    /// input, and what it says on its error output is dropped: it would appear in the middle of our own.
    static std::optional<QByteArray> syncProcessWithArguments(const QStringList& args);
};

/// One word for the C shell, in single quotes; nothing in it is run, expanded or taken from the history. Text without
/// an apostrophe, an exclamation mark or a line feed stands between the quotes as it is.
QString quotedForCShell(const QString& text);

} // namespace cardreel
