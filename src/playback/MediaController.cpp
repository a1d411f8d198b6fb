#include "playback/MediaController.h"

#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "playback/MediaControllerManager.h"
#include "playback/MediaControllerParts.h"

#include <algorithm>
#include <utility>

namespace cardreel {

namespace {

/// For good: a picture taken outside its recording was attached by mistake.
void detach(const std::shared_ptr<PictureInfo>& picture)
{
    if (const std::shared_ptr<DCFInfo> parent = picture->parentDCFInfo.lock())
        std::erase(parent->pictures, picture);
    picture->parentDCFInfo.reset();
}

} // namespace

MediaController::MediaController(QObject* parent)
    : MediaLibrary(parent)
{
    addNotification();
    // Another card has none of them.
    connect(this, &MediaLibrary::mediaTreeDidSync, this, [this] {
        m_currentPicture.reset();
        m_selectedDCFs.clear();
    });
    connect(this, &MediaLibrary::jobsShouldCancel, this, &MediaController::jobsHaveToEnd);
}

MediaController::~MediaController()
{
    dispose();
}

void MediaController::dispose()
{
    m_isDisposed = true;
    ++m_load;
    cancelParse();
    cancelJobs();
    m_currentProgressVC = nullptr;
    m_dcfListVC = nullptr;
    m_playerVC = nullptr;
    m_playerVCSecondary = nullptr;
    m_graphVC = nullptr;
    m_mapVC = nullptr;
    removeNotification();
    if (isMasterController())
        MediaControllerManager::sharedInstance().updateMasterController(nullptr);
}

void MediaController::setPlayerVC(PlayerPane* front)
{
    if (m_playerVC != front)
        ++m_load;
    m_playerVC = front;
}

PlayerPane* MediaController::targetVCWithSourceVC(const PlayerPane* player) const
{
    for (PlayerPane* candidate : playerVCs()) {
        if (candidate && candidate != player)
            return candidate;
    }
    return nullptr;
}

void MediaController::updateSelectedDCFs(DCFList dcfs)
{
    const Survival survival(this);
    if (dcfs.size() > 1) {
        for (PlayerPane* MediaController::*player :
             {&MediaController::m_playerVC, &MediaController::m_playerVCSecondary}) {
            tell(this->*player, &PlayerPane::pause);
            if (!survival.isAtWork())
                return;
        }
    }
    m_selectedDCFs = std::move(dcfs);
}

void MediaController::updateCurrentDCF(std::shared_ptr<DCFInfo> dcf, bool fromDCFListVC,
                                       std::shared_ptr<PictureInfo> currentPicture)
{
    if (m_isDisposed)
        return;
    m_currentPicture = std::move(currentPicture);
    if (!fromDCFListVC) {
        tell(m_dcfListVC, &RecordingsList::selectCurrentDCF, dcf);
        return;
    }
    if (!dcf) {
        showCurrentPictureWithoutDCF();
        return;
    }
    setCurrentDCF(dcf);
    m_listDidSelect = true;
    ++m_load;
    loadCurrentDCF();
}

void MediaController::loadCurrentDCF()
{
    const Survival survival(this);
    const std::shared_ptr<DCFInfo> dcf = currentDCF();
    if (PlayerPane* front = m_playerVC) {
        front->playWithPath(dcf->filePath, callback(&MediaController::frontWillStart, front),
                            callback(&MediaController::progressAction, front),
                            callback(&MediaController::frontDidStop, front));
        if (!survival.isSame())
            return;
    }
    loadSecondary();
    if (!survival.isSame())
        return;
    if (dcf->thumbnailPath.isEmpty()) {
        // Not parsed yet: the parse starts over with this one.
        const auto at = std::find(mediaTree().begin(), mediaTree().end(), dcf);
        if (at != mediaTree().end())
            reparseAtIndex(static_cast<size_t>(at - mediaTree().begin()));
    }
    if (const std::shared_ptr<PictureInfo> picture = m_currentPicture) {
        tell(m_playerVC, &PlayerPane::showImageWithPath, picture->filePath);
        if (!survival.isSame())
            return;
        tell(m_playerVCSecondary, &PlayerPane::showImageWithPath, picture->secondaryFilePath);
        if (!survival.isSame())
            return;
    }
    tell(m_graphVC, &GraphPane::drawGraphWithCurrentDCFInfo, dcf);
    if (survival.isSame())
        Q_EMIT currentDidChange();
}

void MediaController::loadSecondary()
{
    const std::shared_ptr<DCFInfo> dcf = currentDCF();
    if (PlayerPane* rear = dcf ? m_playerVCSecondary : nullptr)
        rear->playWithPath(dcf->secondaryFilePath, {}, callback(&MediaController::rearDidProgress, rear), {});
}

std::function<void()> MediaController::callback(PlayerAction action, PlayerPane* player)
{
    // A pane may drop this callback while it runs: nothing of it is used after the call.
    return [survival = Survival(this), action, player] {
        if (MediaController* controller = survival.sameController())
            (controller->*action)(player);
    };
}

void MediaController::showCurrentPictureWithoutDCF()
{
    if (m_isDisposed)
        return;
    const Survival survival(this);
    const std::shared_ptr<PictureInfo> picture = m_currentPicture;
    tell(m_graphVC, &GraphPane::setProgressMax, 1.0);
    tell(m_graphVC, &GraphPane::setProgressMin, 0.0);
    tell(m_graphVC, &GraphPane::updateProgress, 0.0);
    tell(m_graphVC, &GraphPane::drawGraphWithCurrentDCFInfo, nullptr);
    tell(m_graphVC, &GraphPane::setCurrentSpeed, 0.0);
    if (picture)
        tell(m_mapVC, &MapPane::upDateWithCenterLocation, picture->location);
    const auto showStill = [&survival](PlayerPane* player, const QString& path) {
        tell(player, &PlayerPane::showImageWithPath, path);
        if (survival.isSame())
            tell(player, &PlayerPane::pause);
        return survival.isSame();
    };
    if (showStill(m_playerVC, picture ? picture->filePath : QString()))
        showStill(m_playerVCSecondary, picture ? picture->secondaryFilePath : QString());
    if (picture)
        detach(picture);
    if (survival.isSame())
        Q_EMIT currentDidChange();
}

void MediaController::updateProgress(double fraction)
{
    const Survival survival(this);
    tell(m_playerVC, &PlayerPane::setCurrentProgress, fraction);
    if (survival.isAtWork())
        tell(m_playerVCSecondary, &PlayerPane::setCurrentProgress, fraction);
}

void MediaController::frontWillStart(PlayerPane* front)
{
    const Survival survival(this);
    willStartAction(front);
    if (!survival.isSame() || !m_listDidSelect)
        return;
    // Before the call, which may lead to the next selection already.
    m_listDidSelect = false;
    front->play();
}

void MediaController::frontDidStop(PlayerPane*)
{
    didStopPlayingAction();
}

void MediaController::rearDidProgress(PlayerPane* rear)
{
    if (rear != m_playerVCSecondary || !rear->isPlaying())
        return;
    if (m_playerVC && m_playerVC->isPlaying())
        rear->mutePlay();
    else
        rear->pause();
}

void MediaController::willStartAction(PlayerPane* player)
{
    PlayerPane* other = targetVCWithSourceVC(player);
    if (player && other && other->playbackRate() != player->playbackRate())
        other->updatePlaybackRate(player->playbackRate());
}

void MediaController::didStopPlayingAction()
{
    const std::shared_ptr<DCFInfo> dcf = currentDCF();
    tell(m_dcfListVC, &RecordingsList::selectNextDCFWithCurrentDCF, dcf);
}

bool MediaController::isMasterController() const
{
    return MediaControllerManager::sharedInstance().masterController() == this;
}

void MediaController::addNotification()
{
    if (!m_isDisposed)
        connect(&MediaControllerManager::sharedInstance(), &MediaControllerManager::masterMediaControllerDateDidUpdate,
                this, &MediaController::masterMediaControllerDateDidUpdate, Qt::UniqueConnection);
}

void MediaController::removeNotification()
{
    disconnect(&MediaControllerManager::sharedInstance(), nullptr, this, nullptr);
}

void MediaController::masterMediaControllerDateDidUpdate(double date)
{
    if (!isMasterController())
        updateCurrentDate(date);
}

} // namespace cardreel
