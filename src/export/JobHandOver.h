#pragma once

#include "platform/InterfaceThread.h"

#include <functional>
#include <memory>
#include <utility>

namespace cardreel {

/// How a background job speaks to the object that stands for it on the interface thread. It never holds that object
/// while it works or waits, so whoever drops the object ends the job. Belongs to the job's thread.
template<typename Owner> // with a cancelFlag
class JobHandOver
{
public:
    explicit JobHandOver(std::weak_ptr<Owner> owner)
        : m_owner(std::move(owner))
    {
    }

    /// Whether the object was cancelled or is gone.
    bool isCancelled() const
    {
        const std::shared_ptr<Owner> owner = m_owner.lock();
        return !owner || owner->cancelFlag;
    }

    /// Has `call` run on the interface thread and waits for its end. False when it wasn't called: the job was
    /// cancelled before, which is only known for sure over there, nobody listens any more, or the application closes.
    bool tell(const std::function<void(Owner&)>& call) const
    {
        bool isTold = false;
        InterfaceThread::callAndWait([&] {
            const std::shared_ptr<Owner> owner = m_owner.lock();
            isTold = owner && !owner->cancelFlag;
            if (isTold)
                call(*owner);
        });
        return isTold;
    }

private:
    std::weak_ptr<Owner> m_owner;
};

} // namespace cardreel
