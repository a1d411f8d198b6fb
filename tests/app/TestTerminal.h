#pragma once

#include "app/ProgramRun.h"
#include "support/Waiting.h"

#include <sys/ioctl.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace cardreel::test {

/// A terminal for the program's standard error, read from the other side.
class TestTerminal
{
public:
    explicit TestTerminal(unsigned short columns)
        : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (grantpt(m_master) == 0 && unlockpt(m_master) == 0)
            m_slave = open(ptsname(m_master), O_RDWR | O_NOCTTY | O_CLOEXEC);
        winsize size = {};
        size.ws_col = columns;
        ioctl(m_slave, TIOCSWINSZ, &size);
    }
    ~TestTerminal()
    {
        m_process.kill();
        m_process.waitForFinished();
        close(m_slave);
        close(m_master);
    }
    TestTerminal(const TestTerminal&) = delete;
    TestTerminal& operator=(const TestTerminal&) = delete;

    bool start(const QString& folder, const QStringList& arguments)
    {
        prepare(m_process, folder);
        m_process.setChildProcessModifier([slave = m_slave] {
            dup2(slave, STDERR_FILENO);
            for (const int number : {SIGINT, SIGTERM, SIGHUP})
                ::signal(number, SIG_DFL); // whoever runs the tests may ignore them
        });
        m_process.start(qEnvironmentVariable("CARDREEL_PROGRAM"), arguments);
        const bool isStarted = m_process.waitForStarted();
        close(std::exchange(m_slave, -1)); // its end is the program's end
        return isStarted;
    }

    /// What comes next; empty at the end.
    QByteArray read()
    {
        pollfd ready = {m_master, POLLIN, 0};
        std::array<char, 512> bytes;
        if (poll(&ready, 1, patienceMs) <= 0)
            return {};
        const ssize_t count = ::read(m_master, bytes.data(), bytes.size());
        return count > 0 ? QByteArray(bytes.data(), count) : QByteArray();
    }
    QByteArray readToEnd()
    {
        QByteArray result;
        for (QByteArray more = read(); !more.isEmpty(); more = read())
            result += more;
        return result;
    }

    void send(int signal) { ::kill(static_cast<pid_t>(m_process.processId()), signal); }

    /// Waits for the program's end; -1 when a signal ended it.
    int status()
    {
        const bool isEnded = m_process.waitForFinished() && m_process.exitStatus() == QProcess::NormalExit;
        return isEnded ? m_process.exitCode() : -1;
    }

private:
    int m_master;
    int m_slave = -1;
    QProcess m_process;
};

} // namespace cardreel::test
