#include "playback/ZoomPlayerViewController.h"

#include "platform/video/VideoAsset.h"
#include "platform/video/VideoComposition.h"
#include "platform/video/VideoItem.h"
#include "playback/RateStringTransformer.h"

#include <QAction>

#include <algorithm>
#include <utility>

namespace cardreel {

namespace {

constexpr double tickSeconds = 6.0 / 600;
constexpr double seekToleranceSeconds = 0.1;

void run(const PlayerPane::Callback& callback)
{
    if (callback)
        callback();
}

} // namespace

void ZoomPlayerViewController::playWithPath(const QString& path, Callback willStartPlay, Callback progress,
                                            Callback didStopPlaying)
{
    m_callbacks = std::make_shared<const Callbacks>(
        Callbacks{std::move(willStartPlay), std::move(progress), std::move(didStopPlaying)});
    m_pictureJob.cancel();
    m_pictureError.clear();
    m_pendingFraction.reset();
    playerIsActive(true);
    pictureViewIsActive(false);
    playAtPath(path);
}

void ZoomPlayerViewController::playAtPath(const QString& path)
{
    m_playsAfterLoading = wantsToPlay();
    m_observesEnd = false;
    m_asset.reset();
    m_assetError.clear();
    m_assetJob.cancel();
    resetTimes();
    m_currentItemPath = path;
    // The former picture stays on screen until the new one is there, but it stands still and is silent.
    m_isLoading = true;
    if (m_player)
        m_player->pause();
    if (path.isEmpty()) {
        assetIsRead(nullptr);
        return;
    }
    m_assetJob.start(
        [this, path] { return [this, asset = std::make_shared<const VideoAsset>(path)] { assetIsRead(asset); }; });
    updateMessage();
    Q_EMIT playingDidChange();
    Q_EMIT progressDidChange();
}

void ZoomPlayerViewController::assetIsRead(std::shared_ptr<const VideoAsset> asset)
{
    m_isLoading = false;
    if (asset && asset->exists()) {
        m_asset = std::move(asset);
        playItem();
        return;
    }
    if (asset)
        m_assetError = asset->errorText();
    emptyPane();
}

std::shared_ptr<VideoItem> ZoomPlayerViewController::itemWithPath()
{
    m_currentItemOriginalDuration = m_asset->duration();
    VideoComposition composition;
    const bool isInserted = composition.insertTimeRange(m_asset);
    if (isInserted && m_targetRate != 0 && m_targetRate != 1) {
        composition.removeAudioTracks();
        composition.scaleTimeRange(m_currentItemOriginalDuration, m_currentItemOriginalDuration / m_targetRate);
    }
    playerViewIsError(!isInserted);
    return isInserted ? std::make_shared<VideoItem>(composition) : std::make_shared<VideoItem>(m_asset);
}

void ZoomPlayerViewController::playItem()
{
    const std::shared_ptr<VideoItem> item = itemWithPath();
    if (const auto former = currentItem(); former && former->status() == VideoItem::Status::Failed)
        dropPlayer();
    if (!m_player)
        makePlayer();
    restoreView();
    m_player->replaceCurrentItem(item);
    if (std::exchange(m_mutePlaysAfterLoading, false))
        m_player->setVolume(0);
    if (std::exchange(m_playsAfterLoading, false) && m_player->rate() == 0)
        m_player->play();
    m_currentTime = 0;
    m_totalTime = item->duration();
    m_progress = 0;
    m_observesEnd = true;
    updateRenderSize();
    updateMessage();
    if (const auto fraction = std::exchange(m_pendingFraction, std::nullopt))
        setCurrentProgress(*fraction);
    if (!m_playerIsError)
        willStartPlay();
    Q_EMIT playingDidChange();
    Q_EMIT progressDidChange();
}

/// There is no file: nothing is left of the former one.
void ZoomPlayerViewController::emptyPane()
{
    m_playsAfterLoading = m_mutePlaysAfterLoading = false;
    m_pendingFraction.reset();
    m_changingAsset.reset();
    if (m_player)
        m_player->replaceCurrentItem(nullptr);
    // A picture that was asked for after the file keeps the pane active.
    if (!m_pictureIsActive)
        playerIsActive(false);
    updateMessage();
    Q_EMIT playingDidChange();
    Q_EMIT progressDidChange();
}

void ZoomPlayerViewController::resetTimes()
{
    m_progress = m_currentTime = m_totalTime = m_currentItemOriginalDuration = 0;
}

void ZoomPlayerViewController::makePlayer()
{
    m_player = std::make_unique<VideoPlayer>(m_audio);
    VideoPlayer* player = m_player.get();
    player->setVolume(m_volume);
    player->setMuted(m_isMuted);
    m_playerWasReady = false;
    connect(player, &VideoPlayer::statusChanged, this, &ZoomPlayerViewController::statusChanged);
    connect(player, &VideoPlayer::itemDidPlayToEnd, this, &ZoomPlayerViewController::handleEndPlay);
    connect(player, &VideoPlayer::rateChanged, this, [this] {
        if (!m_isLoading)
            Q_EMIT playingDidChange();
    });
    connect(player, &VideoPlayer::frameReady, m_playerScrollView, qOverload<>(&QWidget::update));
    m_timeObserver = player->addPeriodicTimeObserver(tickSeconds, [this](double seconds) { tick(seconds); });
    m_playerScrollView->setFrameSource([player] { return player->currentFrame(); });
    updateRenderSize();
    Q_EMIT playerDidChange();
}

void ZoomPlayerViewController::dropPlayer()
{
    if (!m_player)
        return;
    m_player->removeTimeObserver(m_timeObserver);
    m_player->disconnect(this);
    m_player->disconnect(m_playerScrollView);
    m_playerScrollView->setFrameSource({});
    m_player->pause();
    // It may be its own signal that led here.
    m_player.release()->deleteLater();
    Q_EMIT playerDidChange();
}

void ZoomPlayerViewController::dispose()
{
    m_assetJob.cancel();
    m_isLoading = m_playsAfterLoading = m_mutePlaysAfterLoading = false;
    m_callbacks = std::make_shared<const Callbacks>();
    m_changeAssetDidFinish.stop();
    m_pictureJob.cancel();
    m_asset.reset();
    m_changingAsset.reset();
    m_pendingFraction.reset();
    m_currentItemPath.clear();
    resetTimes();
    dropPlayer();
    Q_EMIT playingDidChange();
    Q_EMIT progressDidChange();
}

std::shared_ptr<VideoItem> ZoomPlayerViewController::currentItem() const
{
    return m_player ? m_player->currentItem() : nullptr;
}

void ZoomPlayerViewController::statusChanged(VideoPlayer::Status status)
{
    // A player becomes ready once, with its first item.
    const bool becameReady = status == VideoPlayer::Status::Ready && !std::exchange(m_playerWasReady, true);
    // What becomes of an item that is about to be replaced is nobody's business any more.
    if (m_isLoading)
        return;
    const bool failed = status == VideoPlayer::Status::Failed;
    if (becameReady || failed)
        m_changeAssetDidFinish.start();
    if (failed)
        playerViewIsError(true);
    updateMessage();
    m_playerScrollView->update();
    if (becameReady)
        willStartPlay();
    if (failed)
        Q_EMIT playingDidChange();
}

void ZoomPlayerViewController::tick(double seconds)
{
    const std::shared_ptr<VideoItem> item = currentItem();
    if (m_isChangeingAsset || m_isLoading || !item)
        return;
    m_currentTime = seconds;
    m_totalTime = item->duration();
    m_progress = m_totalTime > 0 ? m_currentTime / m_totalTime : 0;
    updateProgress();
}

void ZoomPlayerViewController::updateProgress()
{
    const std::shared_ptr<const Callbacks> callbacks = m_callbacks;
    run(callbacks->progress);
    Q_EMIT progressDidChange();
}

void ZoomPlayerViewController::willStartPlay()
{
    const std::shared_ptr<const Callbacks> callbacks = m_callbacks;
    run(callbacks->willStartPlay);
}

void ZoomPlayerViewController::handleEndPlay(const std::shared_ptr<VideoItem>& item)
{
    if (!m_observesEnd || !item || item != currentItem() || m_player->rate() == 0 || item == m_changingAsset)
        return;
    m_changingAsset = item;
    const std::shared_ptr<const Callbacks> callbacks = m_callbacks;
    run(callbacks->didStopPlaying);
}

bool ZoomPlayerViewController::wantsToPlay() const
{
    return m_isLoading ? m_playsAfterLoading : isPlaying();
}

bool ZoomPlayerViewController::isPlaying() const
{
    return !m_isLoading && m_player && m_player->rate() != 0;
}

void ZoomPlayerViewController::play()
{
    if (m_isLoading)
        m_playsAfterLoading = true;
    else if (currentItem() && m_player->rate() == 0)
        m_player->play();
}

void ZoomPlayerViewController::mutePlay()
{
    if (m_isLoading)
        m_mutePlaysAfterLoading = true;
    else if (m_player)
        m_player->setVolume(0);
    play();
}

void ZoomPlayerViewController::pause()
{
    if (m_isLoading)
        m_playsAfterLoading = false;
    else if (m_player)
        m_player->pause();
}

void ZoomPlayerViewController::playPauseSwitch()
{
    if (wantsToPlay())
        pause();
    else
        play();
}

void ZoomPlayerViewController::stepFrame(VideoPlayer::FrameStep step)
{
    if (!m_isLoading && currentItem())
        m_player->stepFrame(step);
}

void ZoomPlayerViewController::setCurrentProgress(double fraction)
{
    // Written so that what is no number counts as 0.
    const double wanted = fraction > 0 ? std::min(fraction, 1.0) : 0;
    if (m_isLoading) {
        m_pendingFraction = wanted;
        return;
    }
    if (m_totalTime <= 0)
        return;
    setCurrentDuration(wanted * m_totalTime);
}

void ZoomPlayerViewController::setCurrentDuration(double seconds)
{
    if (m_isLoading || !currentItem() || m_totalTime <= 0)
        return;
    m_currentTime = std::clamp(seconds, 0.0, m_totalTime);
    m_progress = m_currentTime / m_totalTime;
    m_player->seek(m_currentTime, seekToleranceSeconds);
    Q_EMIT progressDidChange();
}

void ZoomPlayerViewController::audioMuteEnable(bool enable)
{
    m_playerScrollView->setShouldMute(enable);
    if (m_player)
        m_player->setMuted(enable);
    if (std::exchange(m_isMuted, enable) != enable)
        Q_EMIT muteDidChange(enable);
}

void ZoomPlayerViewController::setVolume(double volume)
{
    m_volume = std::clamp(volume, 0.0, 1.0);
    if (m_player)
        m_player->setVolume(m_volume);
}

void ZoomPlayerViewController::updatePlaybackRate(double rate)
{
    if (!m_isChangeingAsset)
        updatePlayerViewRate(rate);
}

void ZoomPlayerViewController::updatePlayerViewRate(double rate)
{
    setTargetRate(rate);
    // What loads takes the rate along.
    if (rate == 0 || m_isLoading || !m_asset || !m_player)
        return;
    m_pendingFraction = m_progress;
    m_playsAfterLoading = isPlaying();
    m_observesEnd = false;
    playItem();
}

void ZoomPlayerViewController::setTargetRate(double rate)
{
    m_targetRate = rate;
    m_rateChangeButton->setText(RateStringTransformer::transformedValue(rate).value_or(QString()));
    Q_EMIT progressDidChange();
}

bool ZoomPlayerViewController::canChangeRate() const
{
    const std::shared_ptr<VideoItem> item = currentItem();
    return item && item->canPlayFastForward();
}

void ZoomPlayerViewController::incrementPlaybackRate()
{
    if (!canChangeRate())
        return;
    const double next = m_targetRate == 0 ? 1 : 2 * m_targetRate;
    updatePlayerViewRate(next > m_rateLimit ? lowestRate : next);
}

void ZoomPlayerViewController::raisePlaybackRate()
{
    const double next = m_targetRate == 0 ? 1 : 2 * m_targetRate;
    if (canChangeRate() && next <= m_rateLimit)
        updatePlayerViewRate(next);
}

void ZoomPlayerViewController::decrementPlaybackRate()
{
    const double next = std::max(m_targetRate / 2, lowestRate);
    if (canChangeRate() && next != m_targetRate)
        updatePlayerViewRate(next);
}

void ZoomPlayerViewController::setSynchronizedPlay(bool synchronized)
{
    m_rateLimit = synchronized ? highestSynchronizedRate : highestRate;
}

} // namespace cardreel
