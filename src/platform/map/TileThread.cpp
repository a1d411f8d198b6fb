#include "platform/map/TileThread.h"

#include "platform/BackgroundThread.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>

#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace cardreel {

// Jobs stand in a queue of our own, so that their hand-over is visible to the thread sanitizer; Qt's event only wakes.
struct TileThread::Queue
{
    struct Loop : QEventLoop
    {
        explicit Loop(Queue& itsQueue)
            : queue(itsQueue)
        {
        }
        void customEvent(QEvent*) override { queue.runJobs(); }

        Queue& queue;
    };

    std::mutex mutex;
    std::vector<std::function<void()>> jobs;
    Loop* loop = nullptr; ///< while it runs
    bool isEnding = false;

    void run();
    void runJobs();
    void wake(); ///< with the mutex held
};

void TileThread::Queue::run()
{
    Loop mainLoop(*this);
    {
        const std::lock_guard lock(mutex);
        loop = &mainLoop;
        wake();
    }
    mainLoop.exec();
    {
        const std::lock_guard lock(mutex);
        loop = nullptr;
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TileThread::Queue::runJobs()
{
    std::vector<std::function<void()>> taken;
    {
        const std::lock_guard lock(mutex);
        taken.swap(jobs);
    }
    for (std::function<void()>& job : taken)
        std::exchange(job, nullptr)();
    const std::lock_guard lock(mutex);
    if (isEnding && jobs.empty())
        loop->quit();
}

void TileThread::Queue::wake()
{
    if (loop)
        QMetaObject::invokeMethod(
            loop, [this] { runJobs(); }, Qt::QueuedConnection);
}

std::shared_ptr<TileThread> TileThread::shared()
{
    static std::weak_ptr<TileThread> running;
    std::shared_ptr<TileThread> thread = running.lock();
    if (!thread) {
        thread.reset(new TileThread);
        running = thread;
    }
    return thread;
}

TileThread::TileThread()
    : m_queue(std::make_shared<Queue>())
    , m_thread([queue = m_queue] { queue->run(); })
{
}

TileThread::~TileThread()
{
    {
        const std::lock_guard lock(m_queue->mutex);
        m_queue->isEnding = true;
        m_queue->wake();
    }
    const auto thread = std::make_shared<std::thread>(std::move(m_thread));
    BackgroundThread::run([thread] { thread->join(); });
}

void TileThread::post(std::function<void()> job)
{
    const std::lock_guard lock(m_queue->mutex);
    m_queue->jobs.push_back(std::move(job));
    if (m_queue->jobs.size() == 1)
        m_queue->wake();
}

} // namespace cardreel
