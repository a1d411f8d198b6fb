#pragma once

#include <optional>

namespace cardreel {

/// Keeps a single seek under way and remembers only the newest of those asked for meanwhile, so that scrubbing never
/// queues up. Owned by VideoPlayer; interface thread.
class SeekQueue
{
public:
    enum class Precision { Exact, Keyframe };

    struct Target
    {
        double seconds = 0;
        Precision precision = Precision::Exact;
    };

    /// The seek to start now; nothing when one is under way already.
    std::optional<Target> request(Target target);

    /// The one under way has ended: the one to start now, if any.
    std::optional<Target> finished();

    /// Counts as under way until finished(), so that what is asked for while a file loads waits for it. Forgets the
    /// rest.
    void hold();

    /// Nothing is under way or wanted.
    void clear();

    bool isBusy() const { return m_isBusy; }

private:
    bool m_isBusy = false;
    std::optional<Target> m_next;
};

} // namespace cardreel
