#include "export/TaskWrapper.h"

#include "platform/files/Files.h"

#include <QLoggingCategory>

#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

Q_LOGGING_CATEGORY(logExport, "cardreel.export", QtInfoMsg)

class Descriptor
{
public:
    Descriptor() = default;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    void set(int file) { m_file = file; }
    int get() const { return m_file; }
    void close()
    {
        if (m_file >= 0)
            ::close(std::exchange(m_file, -1));
    }

private:
    int m_file = -1;
};

/// The program with its standard output on `output`, and no other way out; an errno when it can't be started.
int start(const QStringList& args, int output, pid_t& process)
{
    std::vector<QByteArray> texts;
    texts.reserve(static_cast<size_t>(args.size()));
    for (const QString& argument : args)
        texts.push_back(files::nativePath(argument));
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (QByteArray& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    if (const int code = posix_spawn_file_actions_init(&actions); code != 0)
        return code;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const int code = posix_spawn(&process, pointers.front(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return code;
}

/// Everything until the end; an errno in `code`.
QByteArray readAll(int file, int& code)
{
    QByteArray result;
    std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t count = read(file, buffer.data(), buffer.size());
        if (count > 0)
            result.append(buffer.data(), count);
        else if (count == 0 || errno != EINTR) {
            code = count == 0 ? 0 : errno;
            return result;
        }
    }
}

void waitForEnd(pid_t process)
{
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

/// The program's output; an errno in `code` when there is none.
QByteArray run(const QStringList& args, int& code)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        code = errno;
        return {};
    }
    Descriptor reading;
    Descriptor writing;
    reading.set(ends[0]);
    writing.set(ends[1]);
    pid_t process = 0;
    code = start(args, writing.get(), process);
    writing.close(); // or the end would never come
    if (code != 0)
        return {};
    QByteArray output = readAll(reading.get(), code);
    reading.close();
    waitForEnd(process);
    return output;
}

} // namespace

QStringList TaskWrapper::argsWithCommandLineString(const QString& line)
{
    return {u"/bin/csh"_s, u"-c"_s, line};
}

std::optional<QByteArray> TaskWrapper::syncProcessWithArguments(const QStringList& args)
{
    int code = EINVAL;
    QByteArray output = args.isEmpty() ? QByteArray() : run(args, code);
    if (code != 0) {
        qCWarning(logExport, "%s error = %s args = %s", "syncProcessWithArguments", std::strerror(code),
                  qUtf8Printable(files::displayPath(args.join(u' '))));
        return std::nullopt;
    }
    return output;
}

QString quotedForCShell(const QString& text)
{
    QString result = u"'"_s;
    for (const QChar c : text) {
        if (c == u'\'')
            result += u"'\\'"_s; // ends the quotes, a bare apostrophe, and they begin again
        else if (c == u'!' || c == u'\n')
            result += u'\\'; // history and the end of the line reach into quotes, where a backslash is else itself
        result += c;
    }
    return result + u'\'';
}

} // namespace cardreel
