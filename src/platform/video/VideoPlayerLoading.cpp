#include "platform/files/Files.h"
#include "platform/text/Localization.h"
#include "platform/video/VideoAsset.h"
#include "platform/video/VideoItem.h"
#include "platform/video/VideoPlayerPrivate.h"

#include <cmath>
#include <utility>

namespace cardreel {
namespace {

// The speed is watched over so many seconds, and this much of it counts as kept: a frame more or less at either end.
constexpr double paceWindowSeconds = 1;
constexpr double keptPace = 0.98;
// More pictures a second than this nobody sees when they rush by.
constexpr auto fastPictureInterval = std::chrono::milliseconds(30);

double pixelsPerSecond(const VideoAsset& asset)
{
    return static_cast<double>(asset.trackSize().width()) * asset.trackSize().height() * asset.frameRate();
}

} // namespace

void VideoPlayer::Private::forgetFile()
{
    ++generation;
    entry.reset();
    isStarted = false;
    isSeekSent = false;
    isPreview = false;
    isStepping = false;
    isStopping = false;
    isEndTold = false;
    pendingSteps = 0;
    shownFrame.reset();
    ++question; // an answer under way is nobody's
    seeks.clear();
    mpv->takeReadError();
}

void VideoPlayer::Private::setItem(std::shared_ptr<VideoItem> newItem)
{
    if (!newItem)
        return unload();
    item = std::move(newItem);
    pace = 1;
    const VideoAsset& asset = *item->asset();
    clock.reset(asset.frameRate() > 0 ? 1 / asset.frameRate() : 0);
    clock.setSpeed(speed(), Clock::now());
    if (!render || !render->isValid())
        return fail(QT_TRANSLATE_NOOP("Keys", "The video player couldn't be started."));
    lookup->open(asset.path());
    scheduleLoad(0);
    setStatus(Status::Loading);
}

void VideoPlayer::Private::unload()
{
    forgetFile();
    loading = Loading::None;
    item.reset();
    pace = 1;
    clock.reset(0);
    if (render)
        render->setVisibility(RenderThread::Visibility::Hidden);
    mpv->command({"stop"});
    halt(Status::Unknown);
    Q_EMIT q->frameReady();
}

void VideoPlayer::Private::halt(Status newStatus)
{
    // The status first: a pause of what is still shown would load it anew, to stand on the exact frame.
    const bool isNew = std::exchange(status, newStatus) != newStatus;
    updateTimer();
    setPlaying(false);
    if (isNew && status == newStatus)
        Q_EMIT q->statusChanged(newStatus);
}

void VideoPlayer::Private::scheduleLoad(double start)
{
    forgetFile();
    seeks.hold();
    loadStart = start;
    clock.jump(start);
    render->setVisibility(RenderThread::Visibility::Held);
    if (loading == Loading::Queued)
        return;
    loading = Loading::Queued;
    QMetaObject::invokeMethod(
        q,
        [this] {
            if (loading == Loading::Queued)
                beginLoad();
        },
        Qt::QueuedConnection);
}

void VideoPlayer::Private::beginLoad()
{
    decoding = wantedDecoding();
    if (loadStart > 0) {
        loading = Loading::Looking;
        question = lookup->ask(loadStart);
    } else {
        sendLoad({});
    }
}

void VideoPlayer::Private::sendLoad(FrameLookup::Frame frame)
{
    loading = Loading::Sent;
    QByteArray options = "speed=" + QByteArray::number(speed() * pace, 'f', 6);
    // Sound that nobody hears would stumble at each change of pace, and the picture with it.
    if (!item->hasAudio() || !hasOutput)
        options += ",aid=no";
    if (loadStart > 0) {
        options += ",start=" + QByteArray::number(frame.seconds + seekAimSeconds, 'f', 6);
        options += ",hr-seek-demuxer-offset=" + QByteArray::number(frame.seekBefore + seekAimSeconds, 'f', 6);
    }
    if (decoding == Decoding::Coarse)
        options += ",vd-lavc-skiploopfilter=all,vd-lavc-skipframe=nonref,vd-lavc-fast=yes";
    // Between key frames there is nothing to seek exactly to.
    if (decoding == Decoding::KeyFrames)
        options += ",vd-lavc-skipframe=nonkey,hr-seek=no";
    else if (!isPlaying) {
        shownFrame = frame.seconds;
        isShownForSure = true;
    }
    applyPictureInterval();
    mpv->command({"loadfile", MpvHandle::location(item->asset()->path()).constData(), "replace", options.constData()},
                 tag(Reply::Load));
}

void VideoPlayer::Private::applyPictureInterval()
{
    render->setPictureInterval(isPlaying && speed() > 1 ? fastPictureInterval : std::chrono::milliseconds(0));
}

void VideoPlayer::Private::becomeReady()
{
    loading = Loading::None;
    paceSince = {};
    render->setVisibility(RenderThread::Visibility::Shown);
    mpv->askNumber("time-pos", tag(Reply::Position));
    start(seeks.finished());
    item->setReady();
    setStatus(Status::Ready);
    adaptDecoding();
    if (!seeks.isBusy() && loading == Loading::None) {
        applyQuality();
        Q_EMIT q->seekFinished();
    }
    notifyJump();
}

void VideoPlayer::Private::fail(const char* key)
{
    forgetFile();
    loading = Loading::None;
    if (render)
        render->setVisibility(RenderThread::Visibility::Hidden);
    // Sound without a picture would go on otherwise.
    mpv->command({"stop"});
    // What the file's head already told is more than what the player makes of it.
    const VideoAsset& asset = *item->asset();
    item->setFailed(asset.error() != FrameError::None
                        ? asset.errorText()
                        : localizedText(key).arg(files::displayPath(files::nameOf(asset.path()))));
    halt(Status::Failed);
    Q_EMIT q->frameReady();
}

Decoding VideoPlayer::Private::wantedDecoding() const
{
    // A picture that stands still is always the exact one.
    if (!isPlaying)
        return Decoding::Full;
    return DecodingPolicy::shared().decoding(pixelsPerSecond(*item->asset()), speed());
}

void VideoPlayer::Private::adaptDecoding()
{
    if (isShowing() && !seeks.isBusy() && wantedDecoding() != decoding)
        scheduleLoad(clock.time(Clock::now()));
}

void VideoPlayer::Private::measurePace()
{
    if (!isShowing() || seeks.isBusy() || decoding == Decoding::KeyFrames || speed() <= 1)
        return;
    const Clock::time_point now = Clock::now();
    const double time = clock.time(now);
    const double gone = std::chrono::duration<double>(now - paceSince).count();
    if (paceSince != Clock::time_point() && gone < paceWindowSeconds)
        return;
    if (paceSince != Clock::time_point() && time - paceFrom < gone * speed() * pace * keptPace) {
        DecodingPolicy::shared().fellBehind(decoding, pixelsPerSecond(*item->asset()), speed());
        adaptDecoding();
    }
    paceFrom = time;
    paceSince = now;
}

} // namespace cardreel
