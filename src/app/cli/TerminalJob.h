#pragma once

#include "app/cli/ProgressBar.h"
#include "platform/files/FileCopy.h"

#include <atomic>
#include <optional>

namespace cardreel::CommandLine {

/// A background job that a command waits for: its progress on the terminal, and Ctrl+C, which cancels it as the button
/// of its sheet would. One for each run of the program; interface thread.
class TerminalJob
{
public:
    /// Signals are held from now on.
    TerminalJob();

    void show(const ProgressBar::State& state) { m_bar.show(state); }
    /// The job is over, well or with an error. For its last callback.
    void finish(const std::optional<FileError>& error);

    /// Handles events until finish() is called or a signal sets the flag, then waits until nothing works in the
    /// background any more: what a cancelled job had made is removed by then. Prints the error, and returns the
    /// command's exit status.
    int run(std::atomic<bool>& cancelFlag);

private:
    void waitForEnd(std::atomic<bool>& cancelFlag);

    ProgressBar m_bar;
    int m_interrupts; ///< readable after a signal
    bool m_isFinished = false;
    std::optional<FileError> m_error;
};

} // namespace cardreel::CommandLine
