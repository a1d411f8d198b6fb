#include "playback/MediaControllerManager.h"

#include "playback/MediaController.h"

namespace cardreel {

MediaControllerManager& MediaControllerManager::sharedInstance()
{
    static auto* const manager = new MediaControllerManager;
    return *manager;
}

MediaController* MediaControllerManager::masterController() const
{
    return m_masterController;
}

void MediaControllerManager::updateMasterController(MediaController* controller)
{
    m_masterController = controller;
    if (controller)
        Q_EMIT masterMediaControllerDidChange(controller);
}

void MediaControllerManager::updateReferenceTime(std::optional<double> date, const MediaController* sender)
{
    if (date && sender && sender == m_masterController)
        Q_EMIT masterMediaControllerDateDidUpdate(*date);
}

} // namespace cardreel
