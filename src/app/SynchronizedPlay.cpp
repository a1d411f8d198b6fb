#include "app/SynchronizedPlay.h"

#include "playback/MediaController.h"
#include "playback/MediaControllerManager.h"

#include <algorithm>

namespace cardreel {

SynchronizedPlay::SynchronizedPlay(QObject* parent)
    : QObject(parent)
{
    connect(&MediaControllerManager::sharedInstance(), &MediaControllerManager::masterMediaControllerDidChange, this,
            &SynchronizedPlay::updateLead);
}

void SynchronizedPlay::addWindow(SynchronizedWindow* window)
{
    m_windows.push_back(window);
    update();
    updateLead();
}

void SynchronizedPlay::removeWindow(SynchronizedWindow* window)
{
    if (std::erase(m_windows, window) == 0)
        return;
    if (m_keyWindow == window)
        m_keyWindow = nullptr;
    MediaControllerManager::sharedInstance().updateMasterController(nullptr);
    updateLead(); // that nobody leads is not announced
    update();
}

void SynchronizedPlay::windowDidBecomeKey(SynchronizedWindow* window)
{
    if (m_keyWindow == window)
        return;
    m_keyWindow = window;
    update();
    if (!isSynchronized(window))
        return;
    MediaControllerManager& manager = MediaControllerManager::sharedInstance();
    if (manager.masterController() && manager.masterController() != &window->mediaController())
        manager.updateMasterController(&window->mediaController());
    if (!window->hasCard())
        window->tellToSelectMedia();
}

void SynchronizedPlay::windowDidResignKey(SynchronizedWindow* window)
{
    if (m_keyWindow != window)
        return;
    m_keyWindow = nullptr;
    update();
}

void SynchronizedPlay::windowDidChange()
{
    update();
}

void SynchronizedPlay::setLeading(SynchronizedWindow* window, bool leading)
{
    MediaControllerManager& manager = MediaControllerManager::sharedInstance();
    if (!leading) {
        window->tellSynchronizationCanceled();
        manager.updateMasterController(nullptr);
        return updateLead();
    }
    const bool leadsOthers = isSynchronized(window);
    manager.updateMasterController(&window->mediaController());
    if (!leadsOthers)
        Q_EMIT newWindowRequested();
}

bool SynchronizedPlay::isSynchronized(const SynchronizedWindow* window) const
{
    if (m_windows.size() < 2)
        return false;
    return window->isRearCameraOn() || std::all_of(m_windows.begin(), m_windows.end(),
                                                   [](const SynchronizedWindow* each) { return each->hasCard(); });
}

void SynchronizedPlay::update()
{
    for (SynchronizedWindow* window : m_windows) {
        const bool synchronized = isSynchronized(window);
        window->setSynchronized(synchronized);
        window->setSilenced(synchronized && window != m_keyWindow);
    }
}

void SynchronizedPlay::updateLead()
{
    for (SynchronizedWindow* window : m_windows)
        window->setLeading(window->mediaController().isMasterController());
}

} // namespace cardreel
