#include "platform/video/VideoPlayerPrivate.h"

#include "platform/files/Files.h"
#include "platform/text/Localization.h"
#include "platform/video/BackgroundEnd.h"

#include <mpv/client.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace cardreel {
namespace {

// An exact seek of mpv shows the first frame that starts no more than 5 ms before the target. Aiming between a frame's
// start and that limit finds the frame itself however its time was rounded, up to 500 frames a second.
constexpr double seekAimSeconds = 0.003;
// Anything before a frame's start belongs to the frame before it.
constexpr double beforeFrameSeconds = 0.0005;

struct ScalerOption
{
    const char* name;
    const char* playing;
    const char* paused;
};

// Good scaling costs more than a frame's time on a small machine, but a picture that stands still is worth it.
constexpr ScalerOption scalerOptions[] = {
    {"sws-fast", "yes", "no"},
    {"sws-scaler", "bilinear", "lanczos"},
    {"zimg-dither", "no", "random"},
    {"zimg-scaler", "bilinear", "lanczos"},
};

} // namespace

VideoPlayer::Private::Private(VideoPlayer* player, AudioOutput audio)
    : q(player)
    , mpv(std::make_unique<MpvHandle>(audio == AudioOutput::None ? "null" : "pulse,pipewire,alsa,null"))
{
    if (!mpv->isValid())
        return;
    render = std::make_unique<RenderThread>(mpv->get(), [this] {
        if (isFrameQueued.exchange(true))
            return;
        QMetaObject::invokeMethod(
            q,
            [this] {
                isFrameQueued = false;
                Q_EMIT q->frameReady();
            },
            Qt::QueuedConnection);
    });
    lookup = std::make_unique<FrameLookup>([this](quint64 answered, FrameLookup::Frame frame) {
        QMetaObject::invokeMethod(
            q,
            [this, answered, frame] {
                if (answered != question || !seeks.isBusy())
                    return;
                if (!isPlaying)
                    soughtFrame = frame.seconds;
                // mpv takes the key frame that precedes the target in the file, which may follow it on the screen.
                mpv->setNumber("hr-seek-demuxer-offset", frame.seekBefore + seekAimSeconds);
                sendSeek(frame.seconds + seekAimSeconds, "absolute+exact");
            },
            Qt::QueuedConnection);
    });
    mpv->setWakeup([this] {
        if (isPumpQueued.exchange(true))
            return;
        QMetaObject::invokeMethod(
            q,
            [this] {
                isPumpQueued = false;
                mpv->pump([this](const mpv_event& event) { handle(event); });
            },
            Qt::QueuedConnection);
    });
    mpv_observe_property(mpv->get(), 0, "time-pos", MPV_FORMAT_DOUBLE);
    mpv_observe_property(mpv->get(), 0, "duration", MPV_FORMAT_DOUBLE);
    mpv_observe_property(mpv->get(), 0, "eof-reached", MPV_FORMAT_FLAG);
    applyQuality();
}

VideoPlayer::Private::~Private()
{
    // First nobody may call back any more; what is already queued goes with the player, its receiver.
    if (lookup)
        lookup->detach();
    if (render)
        render->detach();
    mpv->setWakeup({});
    // The sound must not go on while the rest is winding up.
    mpv->command({"stop"});
    struct Parts
    {
        std::unique_ptr<MpvHandle> mpv;
        std::unique_ptr<RenderThread> render;
        std::unique_ptr<FrameLookup> lookup;
    };
    auto parts = std::make_shared<Parts>(Parts{std::move(mpv), std::move(render), std::move(lookup)});
    BackgroundEnd::run([parts = std::move(parts)] {
        parts->render.reset();
        parts->mpv.reset();
        parts->lookup.reset();
    });
}

void VideoPlayer::Private::reset()
{
    ++generation;
    entry.reset();
    isStarted = false;
    isSeekSent = false;
    soughtFrame.reset();
    ++question; // an answer under way is nobody's
    seeks.clear();
    errorText.clear();
    if (render)
        render->setHidden(true);
    mpv->takeReadError();
}

void VideoPlayer::Private::open(const QString& newPath)
{
    reset();
    path = newPath;
    setPlaying(false);
    setDuration(0); // first: a position is reckoned with the length it belongs to
    setPosition(0);
    if (!render || !render->isValid())
        return fail(QT_TRANSLATE_NOOP("Keys", "The video player couldn't be started."));
    seeks.hold();
    lookup->open(path);
    setStatus(Status::Loading);
    mpv->command({"loadfile", MpvHandle::location(path).constData(), "replace"}, tag(Reply::Load));
}

void VideoPlayer::Private::stop()
{
    reset();
    mpv->command({"stop"});
    setPlaying(false);
    setDuration(0); // first: a position is reckoned with the length it belongs to
    setPosition(0);
    setStatus(Status::Unknown);
    Q_EMIT q->frameReady();
}

void VideoPlayer::Private::setPlaying(bool playing)
{
    if (isPlaying == playing)
        return;
    isPlaying = playing;
    if (playing)
        soughtFrame.reset();
    mpv->setFlag("pause", !playing);
    applyQuality();
    Q_EMIT q->playingChanged(playing);
}

void VideoPlayer::Private::setStatus(Status newStatus)
{
    if (status == newStatus)
        return;
    status = newStatus;
    Q_EMIT q->statusChanged(newStatus);
}

void VideoPlayer::Private::setPosition(double seconds)
{
    if (position == seconds)
        return;
    position = seconds;
    Q_EMIT q->positionChanged(seconds);
}

void VideoPlayer::Private::setDuration(double seconds)
{
    if (duration == seconds)
        return;
    duration = seconds;
    Q_EMIT q->durationChanged(seconds);
}

void VideoPlayer::Private::positionReported(double seconds)
{
    // After an exact seek mpv reports what it was told to aim at, or where the sound is; the frame shown is known
    // better.
    setPosition(soughtFrame.value_or(seconds));
}

void VideoPlayer::Private::fail(const char* key)
{
    reset();
    // Sound without a picture would go on otherwise.
    mpv->command({"stop"});
    setPlaying(false);
    const QString text = localizedText(key).arg(files::displayPath(files::nameOf(path)));
    errorText = text;
    const quint64 failed = generation;
    setStatus(Status::Failed);
    Q_EMIT q->frameReady();
    // Somebody may have answered the status by opening another file.
    if (failed == generation)
        Q_EMIT q->failed(text);
}

void VideoPlayer::Private::becomeReady()
{
    render->setHidden(false);
    setStatus(Status::Ready);
    applyQuality();
    mpv->askNumber("time-pos", tag(Reply::Position));
    start(seeks.finished());
}

void VideoPlayer::Private::applyQuality()
{
    const bool isWanted = !isPlaying && !seeks.isBusy();
    if (isFine == isWanted)
        return;
    isFine = isWanted;
    for (const ScalerOption& option : scalerOptions)
        mpv->setText(option.name, isWanted ? option.paused : option.playing,
                     &option == std::end(scalerOptions) - 1 ? tag(Reply::Quality) : 0);
}

void VideoPlayer::Private::seek(double seconds, SeekQueue::Precision precision)
{
    if (status == Status::Unknown || status == Status::Failed || !std::isfinite(seconds))
        return;
    // Not brought below the end: a track may reach a little beyond the length that its file claims.
    start(seeks.request({std::max(seconds, 0.0), precision}));
}

void VideoPlayer::Private::start(const std::optional<SeekQueue::Target>& target)
{
    applyQuality();
    if (!target)
        return;
    if (target->precision == SeekQueue::Precision::Exact)
        question = lookup->ask(target->seconds);
    else {
        soughtFrame.reset();
        sendSeek(target->seconds, "absolute+keyframes");
    }
}

void VideoPlayer::Private::sendSeek(double seconds, const char* flags)
{
    mpv->command({"seek", QByteArray::number(seconds, 'f', 6).constData(), flags}, tag(Reply::Seek));
}

void VideoPlayer::Private::finishSeek()
{
    isSeekSent = false;
    start(seeks.finished());
    if (!seeks.isBusy())
        Q_EMIT q->seekFinished();
}

void VideoPlayer::Private::step(FrameStep step)
{
    setPlaying(false);
    if ((status != Status::Ready && status != Status::Ended) || seeks.isBusy())
        return;
    if (step == FrameStep::Forward) {
        soughtFrame.reset();
        mpv->command({"frame-step"});
    } else {
        seek(position - beforeFrameSeconds, SeekQueue::Precision::Exact);
    }
}

} // namespace cardreel
