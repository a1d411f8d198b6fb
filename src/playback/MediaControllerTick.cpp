// What a tick of the front player does, and how the master's ticks are followed.

#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "playback/MediaControllerManager.h"
#include "playback/MediaControllerParts.h"
#include "telemetry/CustomLocation.h"

#include <cmath>
#include <limits>

namespace cardreel {

namespace {

// How far the rear player may be off, in seconds of its file. It is left alone within a second while it plays, because
// seeking makes it stutter; standing still it has to show the same moment.
constexpr double playingToleranceSeconds = 1.0;
constexpr double pausedToleranceSeconds = 0.01;

// A recording that was never played is taken to be as long as recorders usually make them.
constexpr double unknownDurationSeconds = 180.0;

// How late or early a follower may be, in seconds of the drive at rate 1.
constexpr double followerToleranceSeconds = 0.3;

// Several windows can't be decoded at once any faster.
constexpr double synchronisedRateLimit = 8.0;

bool hasFileDate(const DCFInfo& dcf)
{
    return dcf.fileDate != Instant{};
}

struct Match
{
    std::shared_ptr<DCFInfo> dcf;
    double fraction;
};

/// The first recording that was under way at that time, and how far.
std::optional<Match> recordingAt(const MediaLibrary::DCFList& recordings, double date)
{
    for (const std::shared_ptr<DCFInfo>& dcf : recordings) {
        if (!hasFileDate(*dcf))
            continue;
        const double end = secondsSince1970(dcf->fileDate);
        const bool isKnown = dcf->duration != 0;
        const double start = end - (isKnown ? dcf->duration : unknownDurationSeconds);
        if (start < date && date < end)
            return Match{dcf, isKnown ? (date - start) / dcf->duration : 0};
    }
    return {};
}

double shownSpeed(const MapPane* map)
{
    const CustomPointAnnotation* marker = map ? map->userLocation() : nullptr;
    return marker ? static_cast<double>(marker->speed) : CustomLocation::NO_SPEED;
}

} // namespace

std::optional<double> MediaController::startOf(const DCFInfo& dcf, double lengthSeconds)
{
    if (dcf.startDate)
        return secondsSince1970(*dcf.startDate);
    if (hasFileDate(dcf))
        return secondsSince1970(dcf.fileDate) - lengthSeconds;
    return {};
}

void MediaController::progressAction(PlayerPane* player)
{
    if (!player || m_isDisposed || m_tickingLoad == m_load)
        return;
    const Survival survival(this);
    const quint64 outerTick = std::exchange(m_tickingLoad, m_load);
    if (currentDCF())
        currentDCF()->duration = player->originalTotalTime();
    if (m_currentPicture)
        tickWithPicture(player, survival);
    else
        tickWithVideo(player, survival);
    if (!survival.exists())
        return;
    m_tickingLoad = outerTick;
    if (survival.isSame())
        Q_EMIT didTick();
}

void MediaController::tickWithPicture(PlayerPane* player, const Survival& survival)
{
    if (player->totalTime() == 0)
        return;
    const std::shared_ptr<DCFInfo> dcf = currentDCF();
    if (!dcf) {
        showCurrentPictureWithoutDCF();
        return;
    }
    const double length = player->originalTotalTime();
    const double time = secondsSince1970(m_currentPicture->fileDate);
    m_userDate = time;
    const double seconds = time - startOf(*dcf, length).value_or(0);
    // Single precision: a picture of the last frame, dated a hair after it, still belongs to the recording.
    const auto fraction = static_cast<float>(seconds / length);
    if (!(fraction >= 0.0F && fraction <= 1.0F)) {
        showCurrentPictureWithoutDCF();
        return;
    }
    tell(m_graphVC, &GraphPane::updateProgress, static_cast<double>(fraction));
    if (survival.isSame())
        player->setCurrentProgress(static_cast<double>(fraction));
    if (!survival.isSame())
        return;
    tell(m_mapVC, &MapPane::updateDCF, dcf, seconds, length);
    tell(m_graphVC, &GraphPane::setCurrentSpeed, shownSpeed(m_mapVC));
    if (survival.isSame())
        player->pause();
}

void MediaController::tickWithVideo(PlayerPane* player, const Survival& survival)
{
    if (m_graphVC && m_graphVC->userControlIsActive()) {
        pauseForGraph(player, survival);
    } else {
        tell(m_graphVC, &GraphPane::setProgressMax, 1.0);
        tell(m_graphVC, &GraphPane::setProgressMin, 0.0);
        tell(m_graphVC, &GraphPane::updateProgress, player->progress());
        keepInStep(player, survival);
    }
    if (!survival.isSame())
        return;
    const std::shared_ptr<DCFInfo> dcf = currentDCF();
    const double length = player->originalTotalTime();
    const double seconds = player->originalCurrentTime();
    if (dcf)
        tell(m_mapVC, &MapPane::updateDCF, dcf, seconds, length);
    tell(m_graphVC, &GraphPane::setCurrentSpeed, shownSpeed(m_mapVC));
    const std::optional<double> start = dcf ? startOf(*dcf, length) : std::nullopt;
    m_userDate = start ? *start + seconds : 0;
    if (isMasterController())
        MediaControllerManager::sharedInstance().updateReferenceTime(m_userDate, this);
}

void MediaController::pauseForGraph(PlayerPane* player, const Survival& survival)
{
    player->pause();
    if (survival.isSame())
        tell(targetVCWithSourceVC(player), &PlayerPane::pause);
}

void MediaController::keepInStep(PlayerPane* player, const Survival& survival)
{
    PlayerPane* other = targetVCWithSourceVC(player);
    if (!other)
        return;
    const double progress = player->progress();
    const double length = other->originalTotalTime();
    const double seconds = other->isPlaying() ? playingToleranceSeconds : pausedToleranceSeconds;
    const double tolerance = length > 0 ? seconds / length : std::numeric_limits<double>::infinity();
    if (std::abs(progress - other->progress()) > tolerance || other->playbackRate() == 0) {
        if (player->isPlaying())
            other->play();
        else
            other->pause();
        if (!survival.isSame())
            return;
        other->setCurrentProgress(progress);
        if (!survival.isSame())
            return;
    }
    const double rate = player->playbackRate();
    if (other->playbackRate() != rate)
        other->updatePlaybackRate(rate);
}

void MediaController::updateCurrentDate(double date)
{
    if (m_isDisposed || isMasterController() || !canReloadMedia())
        return;
    const std::optional<Match> match = recordingAt(mediaTree(), date);
    if (!match)
        return;
    const Survival survival(this);
    if (match->dcf != currentDCF())
        updateCurrentDCF(match->dcf, false, nullptr);
    if (survival.isAtWork())
        jumpTo(date, match->fraction);
    if (survival.isAtWork())
        followMastersRate();
}

void MediaController::jumpTo(double date, double fraction)
{
    if (!m_playerVC)
        return;
    const double rate = m_playerVC->playbackRate();
    if (std::abs(m_userDate - date) > rate * followerToleranceSeconds || rate == 0)
        m_playerVC->setCurrentProgress(fraction);
}

void MediaController::followMastersRate()
{
    const MediaController* master = MediaControllerManager::sharedInstance().masterController();
    PlayerPane* leading = master ? master->playerVC() : nullptr;
    if (!leading)
        return;
    const Survival survival(this);
    double rate = leading->playbackRate();
    if (rate > synchronisedRateLimit) {
        rate = synchronisedRateLimit;
        leading->updatePlaybackRate(rate);
    }
    if (survival.isAtWork() && m_playerVC && m_playerVC->playbackRate() != rate)
        m_playerVC->updatePlaybackRate(rate);
}

} // namespace cardreel
