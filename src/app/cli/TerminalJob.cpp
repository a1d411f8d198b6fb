#include "app/cli/TerminalJob.h"

#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"
#include "app/cli/Interrupts.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QSocketNotifier>

using namespace Qt::StringLiterals;

namespace cardreel::CommandLine {

TerminalJob::TerminalJob()
    : m_interrupts(Interrupts::hold())
{
    InterfaceThread::open();
    // The command says in one line what went wrong; the log would be a second one.
    QLoggingCategory::setFilterRules(u"cardreel.*.warning=false"_s);
}

void TerminalJob::finish(const std::optional<FileError>& error)
{
    m_isFinished = true;
    m_error = error;
    QCoreApplication::exit();
}

int TerminalJob::run(std::atomic<bool>& cancelFlag)
{
    waitForEnd(cancelFlag);
    m_bar.clear();
    if (m_isFinished && !m_error)
        return Success; // also when a signal came too late to cancel anything
    // Ctrl+C reaches the programs that a job runs, too: what fails then was cancelled.
    if (Interrupts::wereHeld() || !m_error)
        return Cancelled;
    return failure(m_error->path, m_error->reason);
}

void TerminalJob::waitForEnd(std::atomic<bool>& cancelFlag)
{
    QSocketNotifier notifier(m_interrupts, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&] {
        notifier.setEnabled(false);
        cancelFlag = true;
        m_bar.show(QCoreApplication::translate("CommandLine", "Cancelling…"));
        QCoreApplication::exit();
    });
    QCoreApplication::exec();
    InterfaceThread::close();
    BackgroundQueue::waitForDone();
}

} // namespace cardreel::CommandLine
