#include "platform/BackgroundQueue.h"

#include <QRunnable>
#include <QThreadPool>

#include <atomic>
#include <utility>

namespace cardreel::BackgroundQueue {

namespace {

// The pool orders a job's start after the call that asked for it, but inside Qt, where the thread sanitizer doesn't see
// it. This counter says the same in the program's own code.
std::atomic<unsigned> started = 0;

QThreadPool& pool()
{
    static QThreadPool threads;
    return threads;
}

class Job : public QRunnable
{
public:
    explicit Job(std::function<void()> function)
        : m_function(std::move(function))
    {
    }

    void run() override
    {
        (void)started.load(std::memory_order_acquire);
        m_function();
    }

private:
    std::function<void()> m_function;
};

} // namespace

void start(std::function<void()> job, Priority priority)
{
    auto* runnable = new Job(std::move(job)); // the pool deletes it
    started.fetch_add(1, std::memory_order_release);
    pool().start(runnable, priority == Priority::Soon ? 1 : 0);
}

bool waitForDone(int timeoutMs)
{
    return pool().waitForDone(timeoutMs);
}

} // namespace cardreel::BackgroundQueue
