#include "platform/BackgroundThread.h"

#include <atomic>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

namespace cardreel::BackgroundThread {
namespace {

struct Job
{
    std::thread thread;
    std::atomic<bool> isDone = false;
};

class Registry
{
public:
    ~Registry() { wait(); }

    void run(std::function<void()> work)
    {
        const std::lock_guard lock(m_mutex);
        // Those that have ended meanwhile are joined here at no cost, so that a long session keeps none of them.
        for (auto job = m_jobs.begin(); job != m_jobs.end();) {
            if (job->isDone) {
                job->thread.join();
                job = m_jobs.erase(job);
            } else {
                ++job;
            }
        }
        Job& job = m_jobs.emplace_back();
        job.thread = std::thread([&job, work = std::move(work)]() mutable {
            work();
            work = nullptr;
            job.isDone = true;
        });
    }

    void wait()
    {
        std::list<Job> jobs;
        {
            const std::lock_guard lock(m_mutex);
            jobs.splice(jobs.end(), m_jobs);
        }
        for (Job& job : jobs)
            job.thread.join();
    }

private:
    std::mutex m_mutex;
    std::list<Job> m_jobs;
};

Registry& registry()
{
    static Registry instance;
    return instance;
}

} // namespace

void run(std::function<void()> job)
{
    registry().run(std::move(job));
}

void wait()
{
    registry().wait();
}

} // namespace cardreel::BackgroundThread
