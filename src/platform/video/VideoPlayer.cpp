#include "platform/video/VideoPlayer.h"

#include "platform/video/BackgroundEnd.h"
#include "platform/video/VideoPlayerPrivate.h"

#include <algorithm>
#include <cmath>

namespace cardreel {

VideoPlayer::VideoPlayer(AudioOutput audio, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, audio))
{
}

VideoPlayer::~VideoPlayer() = default;

void VideoPlayer::open(const QString& path)
{
    d->open(path);
}

void VideoPlayer::stop()
{
    d->stop();
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

bool VideoPlayer::isPlaying() const
{
    return d->isPlaying;
}

void VideoPlayer::seek(double seconds, SeekMode mode)
{
    d->seek(seconds, mode == SeekMode::Exact ? SeekQueue::Precision::Exact : SeekQueue::Precision::Keyframe);
}

bool VideoPlayer::isSeeking() const
{
    return d->seeks.isBusy();
}

void VideoPlayer::stepFrame(FrameStep step)
{
    d->step(step);
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

QString VideoPlayer::errorText() const
{
    return d->errorText;
}

double VideoPlayer::position() const
{
    return d->position;
}

double VideoPlayer::duration() const
{
    return d->duration;
}

void VideoPlayer::setMuted(bool muted)
{
    d->mpv->setFlag("mute", muted);
}

void VideoPlayer::setVolume(double volume)
{
    // mpv's scale follows hearing: its gain is the cube of the fraction.
    d->mpv->setNumber("volume", 100 * std::cbrt(std::clamp(volume, 0.0, 1.0)));
}

void VideoPlayer::waitForShutdown()
{
    BackgroundEnd::wait();
}

} // namespace cardreel
