#include "sample-card/CardWriter.h"
#include "sample-card/Options.h"

#include <QGuiApplication>

#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

enum ExitStatus { Done = 0, Failed = 1, Misused = 2 };

void say(const QString& line)
{
    std::fprintf(stderr, "sample-card: %s\n", line.toLocal8Bit().constData());
}

// On a terminal one line that counts up; in a log a line now and then.
class ProgressLine
{
public:
    void show(const QString& what, std::size_t done, std::size_t all)
    {
        const auto percent = done * 100 / all;
        if (what == shownWhat && percent / step() == shownPercent / step() && done != all)
            return;
        shownWhat = what;
        shownPercent = percent;
        const QByteArray text = u"%1: %2 of %3"_s.arg(what).arg(done).arg(all).toLocal8Bit();
        if (terminal)
            std::fprintf(stderr, "\r\033[Ksample-card: %s%s", text.constData(), done == all ? "\n" : "");
        else
            std::fprintf(stderr, "sample-card: %s\n", text.constData());
    }

    // Puts what follows on a line of its own.
    void end()
    {
        if (terminal && shownPercent != 0 && shownPercent != 100)
            std::fputc('\n', stderr);
    }

private:
    std::size_t step() const { return terminal ? 1 : 20; }

    bool terminal = isatty(STDERR_FILENO) != 0;
    QString shownWhat;
    std::size_t shownPercent = 0;
};

} // namespace

int main(int argc, char** argv)
{
    // Painting text needs the application, but no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt's own remarks on the surroundings mean nothing here; every failure is reported by this program.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    // An ffmpeg that ends early shows as a failed write, not as the end of this program.
    std::signal(SIGPIPE, SIG_IGN);
    const QGuiApplication application(argc, argv);

    const ParsedOptions parsed = parseOptions(QGuiApplication::arguments());
    if (std::holds_alternative<HelpWanted>(parsed)) {
        std::fputs(helpText().toLocal8Bit().constData(), stdout);
        return Done;
    }
    if (const auto* wrong = std::get_if<WrongUsage>(&parsed)) {
        say(wrong->what + u" (see sample-card --help)"_s);
        return Misused;
    }

    const auto& options = std::get<Options>(parsed);
    ProgressLine line;
    Problem problem;
    if (options.onlySideFile) {
        problem = writeSideFile(options);
    } else {
        CardWriter writer(options,
                          [&](const QString& what, std::size_t done, std::size_t all) { line.show(what, done, all); });
        problem = writer.write();
    }
    line.end();
    if (problem) {
        say(*problem);
        return Failed;
    }
    return Done;
}
