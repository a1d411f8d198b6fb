#include "platform/InterfaceThread.h"

#include <QCoreApplication>
#include <QThread>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace cardreel::InterfaceThread {

namespace {

enum class State { Waiting, Running, Done, Abandoned };

struct Call
{
    State state = State::Waiting;
};

// One lock and one condition for all calls: at most a handful of jobs wait at a time. Standard primitives on purpose,
// so that the hand-over is visible to the thread sanitizer, which doesn't see into Qt's event queue.
std::mutex mutex;
std::condition_variable changed;
bool closing = false;
std::vector<std::shared_ptr<Call>> waiting;

} // namespace

bool callAndWait(const std::function<void()>& call)
{
    QCoreApplication* application = QCoreApplication::instance();
    if (!application)
        return false;
    if (QThread::currentThread() == application->thread()) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            if (closing)
                return false;
        }
        call();
        return true;
    }

    auto pending = std::make_shared<Call>();
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (closing)
            return false;
        waiting.push_back(pending);
        QMetaObject::invokeMethod(
            application,
            // `call` lives on the waiting thread's stack: it is touched only after the state says Running, and the
            // waiting thread stays until it says Done.
            [pending, &call] {
                {
                    const std::lock_guard<std::mutex> inner(mutex);
                    if (pending->state == State::Abandoned)
                        return;
                    pending->state = State::Running;
                    std::erase(waiting, pending);
                }
                call();
                {
                    const std::lock_guard<std::mutex> inner(mutex);
                    pending->state = State::Done;
                }
                changed.notify_all();
            },
            Qt::QueuedConnection);
    }
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [&] { return pending->state == State::Done || pending->state == State::Abandoned; });
    return pending->state == State::Done;
}

void close()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        closing = true;
        for (const std::shared_ptr<Call>& call : waiting)
            call->state = State::Abandoned;
        waiting.clear();
    }
    changed.notify_all();
}

void open()
{
    const std::lock_guard<std::mutex> lock(mutex);
    closing = false;
}

} // namespace cardreel::InterfaceThread
