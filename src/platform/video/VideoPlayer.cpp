#include "platform/video/VideoPlayer.h"

#include "platform/BackgroundThread.h"
#include "platform/video/VideoPlayerPrivate.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cardreel {

VideoPlayer::VideoPlayer(AudioOutput audio, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, audio))
{
}

VideoPlayer::~VideoPlayer() = default;

void VideoPlayer::replaceCurrentItem(std::shared_ptr<VideoItem> item)
{
    d->setItem(std::move(item));
}

const std::shared_ptr<VideoItem>& VideoPlayer::currentItem() const
{
    return d->item;
}

void VideoPlayer::play()
{
    if (d->status != Status::Unknown && d->status != Status::Failed)
        d->setPlaying(true);
}

void VideoPlayer::pause()
{
    d->setPlaying(false);
}

double VideoPlayer::rate() const
{
    return d->isPlaying ? 1 : 0;
}

void VideoPlayer::seek(double seconds, double toleranceSeconds)
{
    d->seek(seconds, toleranceSeconds);
}

bool VideoPlayer::isSeeking() const
{
    return d->isSeeking();
}

void VideoPlayer::stepFrame(FrameStep step)
{
    d->step(step);
}

double VideoPlayer::currentTime() const
{
    return d->currentTime();
}

int VideoPlayer::addPeriodicTimeObserver(double intervalSeconds, TimeObserver observer)
{
    return d->addObserver(intervalSeconds, std::move(observer));
}

void VideoPlayer::removeTimeObserver(int handle)
{
    d->removeObserver(handle);
}

void VideoPlayer::setPace(double factor)
{
    d->setPace(factor);
}

void VideoPlayer::setAimsAhead(bool aimsAhead)
{
    d->aimsAhead = aimsAhead;
}

void VideoPlayer::setRenderSize(QSize pixels)
{
    if (d->render)
        d->render->setSize(pixels);
}

QImage VideoPlayer::currentFrame() const
{
    return d->render ? d->render->image() : QImage();
}

VideoPlayer::Status VideoPlayer::status() const
{
    return d->status;
}

bool VideoPlayer::isMuted() const
{
    return d->isMuted;
}

void VideoPlayer::setMuted(bool muted)
{
    if (std::exchange(d->isMuted, muted) != muted)
        d->mpv->setFlag("mute", muted);
}

double VideoPlayer::volume() const
{
    return d->volume;
}

void VideoPlayer::setVolume(double volume)
{
    const double wanted = std::clamp(volume, 0.0, 1.0);
    // Told so at each tick, mpv would be busy with it.
    if (std::exchange(d->volume, wanted) == wanted)
        return;
    // mpv's scale follows hearing: its gain is the cube of the fraction.
    d->mpv->setNumber("volume", 100 * std::cbrt(d->volume));
}

void VideoPlayer::waitForShutdown()
{
    BackgroundThread::wait();
}

} // namespace cardreel
