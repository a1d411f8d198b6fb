#pragma once

#include "playback/MediaController.h"
#include "playback/Panes.h"

#include <QPointer>

#include <utility>

namespace cardreel {

// What the sources of MediaController share and nobody else uses.

/// What is left of a controller after a call that may have led anywhere. Made before the call, on the stack or in a
/// callback.
class MediaController::Survival
{
public:
    explicit Survival(MediaController* controller)
        : m_controller(controller)
        , m_load(controller->m_load)
    {
    }

    bool exists() const { return !m_controller.isNull(); }
    /// Neither destroyed nor disposed of.
    bool isAtWork() const { return m_controller && !m_controller->m_isDisposed; }
    /// Nor has anything else been loaded.
    bool isSame() const { return m_controller && m_controller->m_load == m_load; }
    MediaController* sameController() const { return isSame() ? m_controller.data() : nullptr; }

private:
    QPointer<MediaController> m_controller;
    quint64 m_load;
};

/// Calls an operation of a pane that may be missing.
template<typename Pane, typename... Parameters, typename... Arguments>
void tell(Pane* pane, void (Pane::*operation)(Parameters...), Arguments&&... arguments)
{
    if (pane)
        (pane->*operation)(std::forward<Arguments>(arguments)...);
}

} // namespace cardreel
