#include "platform/NewestJob.h"

#include "platform/BackgroundThread.h"

#include <QCoreApplication>

#include <mutex>
#include <utility>

namespace cardreel {

struct NewestJob::Shared
{
    std::mutex mutex;
    std::function<Answer()> wanted; ///< not yet begun
    quint64 request = 0;            ///< the newest; cancelling is one, too
    bool isRunning = false;
};

NewestJob::NewestJob()
    : m_shared(std::make_shared<Shared>())
{
}

NewestJob::~NewestJob()
{
    cancel();
}

void NewestJob::cancel()
{
    const std::lock_guard lock(m_shared->mutex);
    ++m_shared->request;
    m_shared->wanted = nullptr;
}

void NewestJob::start(std::function<Answer()> work)
{
    {
        const std::lock_guard lock(m_shared->mutex);
        ++m_shared->request;
        m_shared->wanted = std::move(work);
        if (std::exchange(m_shared->isRunning, true))
            return;
    }
    BackgroundThread::run([shared = m_shared] {
        for (;;) {
            std::function<Answer()> next;
            quint64 request = 0;
            {
                const std::lock_guard lock(shared->mutex);
                next = std::exchange(shared->wanted, nullptr);
                request = shared->request;
                if (!next) {
                    shared->isRunning = false;
                    return;
                }
            }
            Answer answer = next();
            QCoreApplication* const application = QCoreApplication::instance();
            if (!application)
                continue;
            // Whether the one who asked is still there only the interface thread can tell.
            QMetaObject::invokeMethod(
                application,
                [shared, request, answer = std::move(answer)] {
                    {
                        const std::lock_guard lock(shared->mutex);
                        if (shared->request != request)
                            return;
                    }
                    answer();
                },
                Qt::QueuedConnection);
        }
    });
}

} // namespace cardreel
