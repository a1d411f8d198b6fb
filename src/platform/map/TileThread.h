#pragma once

#include <functional>
#include <memory>
#include <thread>

namespace cardreel {

/// The one thread with an event loop on which all tiles are brought, so that several maps together ask a server for no
/// more at a time than one does. Held by the loaders; ends after the last of them, without being waited for:
/// BackgroundThread::wait() does that.
class TileThread
{
public:
    /// The running one, or a new one. Interface thread.
    static std::shared_ptr<TileThread> shared();
    ~TileThread();
    TileThread(const TileThread&) = delete;
    TileThread& operator=(const TileThread&) = delete;

    /// Runs a job there, in order, and destroys it there. Any thread.
    void post(std::function<void()> job);

private:
    struct Queue;

    TileThread();

    std::shared_ptr<Queue> m_queue;
    std::thread m_thread;
};

} // namespace cardreel
