#include "app/cli/Interrupts.h"

#include "app/cli/CommandLine.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace cardreel::CommandLine::Interrupts {

namespace {

// All that a signal's handler touches.
std::atomic<bool> holding = false;
std::atomic<bool> held = false;
std::atomic<int> wakeUp = -1;
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

void handle(int /*signal*/)
{
    if (!holding)
        _exit(Cancelled);
    const int formerError = errno;
    held = true;
    // A full pipe is as good as one byte more.
    [[maybe_unused]] const ssize_t count = write(wakeUp, "", 1);
    errno = formerError;
}

} // namespace

void endProgram()
{
    struct sigaction action = {};
    action.sa_handler = &handle;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction former = {};
        if (sigaction(signal, nullptr, &former) == 0 && former.sa_handler == SIG_DFL)
            sigaction(signal, &action, nullptr);
    }
}

int hold()
{
    static const int readingEnd = [] {
        int ends[2] = {-1, -1};
        if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) == 0)
            wakeUp = ends[1]; // both stay open: a signal may come until the very end
        return ends[0];
    }();
    holding = true;
    return readingEnd;
}

bool wereHeld()
{
    return held;
}

} // namespace cardreel::CommandLine::Interrupts
