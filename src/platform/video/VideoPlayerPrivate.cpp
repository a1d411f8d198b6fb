#include "platform/video/VideoPlayerPrivate.h"

#include "platform/BackgroundThread.h"
#include "platform/video/VideoItem.h"

#include <QPointer>

#include <mpv/client.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace cardreel {
namespace {

// Anything before a frame's start belongs to the frame before it.
constexpr double beforeFrameSeconds = 0.0005;
// Nearer than any two frames are.
constexpr double sameTimeSeconds = 1e-6;
// Scrubbing should show eight pictures a second at least; slower exact seeks are preceded by key frames.
constexpr double slowSeekSeconds = 0.11;
constexpr auto tickInterval = std::chrono::milliseconds(10);

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
    , hasOutput(audio == AudioOutput::Device)
{
    timer.setTimerType(Qt::PreciseTimer);
    timer.setInterval(tickInterval);
    connect(&timer, &QTimer::timeout, q, [this] {
        measurePace();
        notify(false);
    });
    if (!mpv->isValid())
        return;
    makeRenderThread();
    makeLookup();
    mpv->setWakeup([this] {
        if (isPumpQueued.exchange(true))
            return;
        QMetaObject::invokeMethod(
            q,
            [this] {
                isPumpQueued = false;
                // Whoever is told something may destroy the player.
                const QPointer<VideoPlayer> self(q);
                mpv->pump([this](const mpv_event& event) { handle(event); }, [&self] { return !self; });
            },
            Qt::QueuedConnection);
    });
    mpv_observe_property(mpv->get(), 0, "time-pos", MPV_FORMAT_DOUBLE);
    mpv_observe_property(mpv->get(), 0, "eof-reached", MPV_FORMAT_FLAG);
    mpv_observe_property(mpv->get(), 0, "hwdec-current", MPV_FORMAT_STRING);
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
    BackgroundThread::run([parts = std::move(parts)] {
        parts->render.reset();
        parts->mpv.reset();
        parts->lookup.reset();
    });
}

void VideoPlayer::Private::makeRenderThread()
{
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
}

void VideoPlayer::Private::makeLookup()
{
    lookup = std::make_unique<FrameLookup>([this](quint64 answered, FrameLookup::Frame frame) {
        QMetaObject::invokeMethod(
            q,
            [this, answered, frame] {
                if (answered == question)
                    frameLookedUp(frame);
            },
            Qt::QueuedConnection);
    });
}

double VideoPlayer::Private::speed() const
{
    return item ? item->speed() : 1;
}

double VideoPlayer::Private::fileDuration() const
{
    return item ? item->duration() * item->speed() : 0;
}

double VideoPlayer::Private::currentTime() const
{
    const double seconds = clock.time(Clock::now());
    const double length = fileDuration();
    return (length > 0 ? std::min(seconds, length) : seconds) / speed();
}

void VideoPlayer::Private::setPlaying(bool playing)
{
    if (isPlaying == playing)
        return;
    isPlaying = playing;
    shownFrame.reset();
    pendingSteps = 0;
    isStepping = false;
    clock.setRunning(playing, Clock::now());
    if (render)
        applyPictureInterval(); // before the last frame comes, which has to be drawn, and drawn again in quality
    mpv->setFlag("pause", !playing);
    applyQuality();
    if (playing) {
        paceSince = {};
        mpv->askFlag("eof-reached", tag(Reply::End)); // at the end nothing would change any more
    }
    isStopping = !playing && isShowing() && !seeks.isBusy();
    if (isStopping)
        mpv->askNumber("time-pos", tag(Reply::StopPosition));
    adaptDecoding();
    updateTimer();
    notifyJump();
    Q_EMIT q->rateChanged(playing ? 1 : 0);
}

void VideoPlayer::Private::setStatus(Status newStatus)
{
    if (status == newStatus)
        return;
    status = newStatus;
    updateTimer();
    Q_EMIT q->statusChanged(newStatus);
}

void VideoPlayer::Private::setPace(double factor)
{
    if (!item || std::abs(factor - pace) < 1e-3)
        return;
    pace = factor;
    paceSince = {};
    clock.setSpeed(speed() * pace, Clock::now());
    mpv->setNumber("speed", speed() * pace);
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

void VideoPlayer::Private::seek(double itemSeconds, double toleranceSeconds)
{
    if (status == Status::Unknown || status == Status::Failed || !std::isfinite(itemSeconds))
        return;
    const double now = clock.time(Clock::now());
    // Not brought below the end: a track may reach a little beyond the length that its file claims.
    const double target = std::max(itemSeconds * speed(), 0.0);
    const double length = fileDuration();
    const double shown = length > 0 ? std::min(target, length) : target;
    // Within the tolerance: where it has to be once it is there.
    const double aim =
        aimsAhead && isPlaying ? target + std::min(playingSeekSeconds, toleranceSeconds) * speed() : target;
    pendingSteps = 0;
    isStepping = false;
    isStopping = false;
    if (loading == Loading::Queued || loading == Loading::Looking) {
        loadStart = aim;
        jumpClock(shown);
        if (loading == Loading::Looking)
            question = lookup->ask(aim);
        return notifyJump();
    }
    if (seeks.isBusy() ? std::abs(aim - seekTarget) < sameTimeSeconds
                       : (isPlaying ? status == Status::Ready && std::abs(shown - now) <= toleranceSeconds * speed()
                                    : shownFrame && std::abs(shown - now) < sameTimeSeconds))
        return;
    isEndTold = false;
    jumpClock(shown);
    notifyJump();
    seekTarget = aim;
    start(seeks.request({aim, SeekQueue::Precision::Exact}));
}

void VideoPlayer::Private::jumpClock(double seconds)
{
    if (aimsAhead && isPlaying)
        clock.jumpOnTheRun(seconds, Clock::now());
    else
        clock.jump(seconds);
}

void VideoPlayer::Private::start(const std::optional<SeekQueue::Target>& target)
{
    applyQuality();
    if (!target)
        return;
    shownFrame.reset();
    seekStart = Clock::now();
    isPreview = target->precision == SeekQueue::Precision::Keyframe;
    if (isPreview || decoding == Decoding::KeyFrames)
        sendSeek(target->seconds, "absolute+keyframes");
    else
        question = lookup->ask(target->seconds);
}

void VideoPlayer::Private::frameLookedUp(FrameLookup::Frame frame)
{
    if (loading == Loading::Looking)
        return sendLoad(frame);
    if (!seeks.isBusy() || isSeekSent)
        return;
    if (!isPlaying) {
        shownFrame = frame.seconds;
        isShownForSure = true;
    }
    if (isStepping)
        clock.jump(frame.seconds);
    // mpv takes the key frame that precedes the target in the file, which may follow it on the screen.
    mpv->setNumber("hr-seek-demuxer-offset", frame.seekBefore + seekAimSeconds);
    sendSeek(frame.seconds + seekAimSeconds, "absolute+exact");
}

void VideoPlayer::Private::sendSeek(double seconds, const char* flags)
{
    mpv->command({"seek", QByteArray::number(seconds, 'f', 6).constData(), flags}, tag(Reply::Seek));
}

void VideoPlayer::Private::finishSeek()
{
    isSeekSent = false;
    const double took = std::chrono::duration<double>(Clock::now() - seekStart).count();
    if (isPlaying) {
        playingSeekSeconds = 0.7 * playingSeekSeconds + 0.3 * took;
    } else if (!isPreview) {
        exactSeekSeconds = exactSeekSeconds > 0 ? 0.7 * exactSeekSeconds + 0.3 * took : took;
    }
    std::optional<SeekQueue::Target> next = seeks.finished();
    if (next && exactSeekSeconds > slowSeekSeconds && !isPlaying)
        next->precision = SeekQueue::Precision::Keyframe;
    else if (!next && isPreview)
        next = seeks.request({seekTarget, SeekQueue::Precision::Exact});
    start(next);
    if (seeks.isBusy())
        return;
    isStepping = false;
    paceSince = {};
    // It played on for some frames when it was paused while the seek was under way.
    isStopping = !isPlaying && !shownFrame && isShowing();
    if (isStopping)
        mpv->askNumber("time-pos", tag(Reply::StopPosition));
    notifyJump();
    runSteps();
    adaptDecoding();
    if (!isSeeking())
        Q_EMIT q->seekFinished();
}

void VideoPlayer::Private::step(FrameStep step)
{
    setPlaying(false);
    if (status != Status::Ready && status != Status::Ended)
        return;
    // Raw streams have neither a length nor times to seek to: mpv would run off to their end.
    if (step == FrameStep::Backward && fileDuration() <= 0)
        return;
    pendingSteps += step == FrameStep::Forward ? 1 : -1;
    runSteps();
}

void VideoPlayer::Private::runSteps()
{
    // One after the other: each begins where the last one led.
    if (pendingSteps == 0 || isStepping || !isShowing() || seeks.isBusy() || !shownFrame)
        return;
    isStepping = true;
    if (pendingSteps > 0) {
        --pendingSteps;
        shownFrame.reset();
        mpv->command({"frame-step"});
    } else {
        ++pendingSteps;
        seekTarget = std::max(*shownFrame - beforeFrameSeconds, 0.0);
        start(seeks.request({seekTarget, SeekQueue::Precision::Exact}));
    }
}

int VideoPlayer::Private::addObserver(double intervalSeconds, TimeObserver observer)
{
    observers.push_back({++lastHandle, intervalSeconds, std::move(observer), -1});
    return lastHandle;
}

void VideoPlayer::Private::removeObserver(int handle)
{
    std::erase_if(observers, [handle](const Observer& observer) { return observer.handle == handle; });
}

void VideoPlayer::Private::updateTimer()
{
    const bool isWanted = isPlaying && status == Status::Ready;
    if (isWanted && !timer.isActive())
        timer.start();
    else if (!isWanted)
        timer.stop();
}

void VideoPlayer::Private::notifyJump()
{
    // Later, because an observer may be what asked for the jump.
    if (std::exchange(isJumpQueued, true))
        return;
    QMetaObject::invokeMethod(
        q,
        [this] {
            isJumpQueued = false;
            notify(true);
        },
        Qt::QueuedConnection);
}

void VideoPlayer::Private::notify(bool isJump)
{
    if (status != Status::Ready && status != Status::Ended)
        return;
    const double time = currentTime();
    const QPointer<VideoPlayer> self(q);
    // An observer may add or remove others, and destroy the player.
    for (std::size_t i = 0; self && i < observers.size(); ++i) {
        Observer& observer = observers[i];
        // The timer isn't as even as the time: half an interval counts as one.
        if (!isJump && time >= observer.last && time - observer.last < observer.intervalSeconds / 2)
            continue;
        observer.last = time;
        const TimeObserver call = observer.call;
        call(time);
    }
}

} // namespace cardreel
