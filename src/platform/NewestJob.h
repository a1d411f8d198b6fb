#pragma once

#include <functional>
#include <memory>

namespace cardreel {

/// Work that may take as long as a card takes, of which only the newest counts: done on a thread of its own, one at a
/// time, and of what is asked for meanwhile only the newest follows. A member of whoever wants the answer; interface
/// thread.
class NewestJob
{
public:
    /// What to do with the outcome, on the interface thread.
    using Answer = std::function<void()>;

    NewestJob();
    /// Doesn't wait for what is under way; its answer is dropped.
    ~NewestJob();
    NewestJob(const NewestJob&) = delete;
    NewestJob& operator=(const NewestJob&) = delete;

    /// Runs `work` in the background and what it returns here, later, unless cancel() or another start() comes first.
    void start(std::function<Answer()> work);
    void cancel();

private:
    struct Shared;
    std::shared_ptr<Shared> m_shared;
};

} // namespace cardreel
