#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <linux/capability.h>
#include <sys/prctl.h>

namespace cardreel::test {

/// What a command of the program came to.
struct ProgramRun
{
    int status = -1;
    QByteArray out;
    QByteArray err;

    QJsonObject json() const { return QJsonDocument::fromJson(out).object(); }
};

/// Has the program run in a folder, where there is no display and permissions mean what they say.
inline void prepare(QProcess& process, const QString& folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none such"));
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.setChildProcessModifier([] {
        prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
        prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
    });
}

inline ProgramRun runIn(const QString& folder, const QString& program, const QStringList& arguments)
{
    QProcess process;
    prepare(process, folder);
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

inline ProgramRun runProgram(const QString& folder, const QStringList& arguments)
{
    return runIn(folder, qEnvironmentVariable("CARDREEL_PROGRAM"), arguments);
}

} // namespace cardreel::test
