#include "platform/video/VideoItem.h"
#include "platform/video/VideoPlayerPrivate.h"

#include <QPointer>

#include <mpv/client.h>

#include <cmath>
#include <cstring>
#include <utility>

namespace cardreel {

void VideoPlayer::Private::handle(const mpv_event& event)
{
    const bool isAnswer = event.reply_userdata >> 8 == generation;
    const auto reply = static_cast<Reply>(event.reply_userdata & 0xff);
    switch (event.event_id) {
    case MPV_EVENT_COMMAND_REPLY:
        if (isAnswer)
            commandAnswered(reply, event);
        break;
    case MPV_EVENT_GET_PROPERTY_REPLY:
        if (isAnswer)
            propertyAnswered(reply, event);
        break;
    case MPV_EVENT_SET_PROPERTY_REPLY:
        if (isAnswer && reply == Reply::Quality && isFine == true)
            render->redraw();
        break;
    case MPV_EVENT_START_FILE:
        isStarted = static_cast<const mpv_event_start_file*>(event.data)->playlist_entry_id == entry;
        break;
    case MPV_EVENT_END_FILE: {
        const auto* const end = static_cast<const mpv_event_end_file*>(event.data);
        if (end->playlist_entry_id != entry)
            break;
        // With keep-open a file that plays stays; any end is a file that couldn't be.
        if (end->error == MPV_ERROR_LOADING_FAILED || end->error == MPV_ERROR_UNKNOWN_FORMAT)
            fail(QT_TRANSLATE_NOOP("Keys", "The video \"%1\" can't be opened."));
        else
            fail(QT_TRANSLATE_NOOP("Keys", "The video \"%1\" can't be decoded."));
        break;
    }
    case MPV_EVENT_PLAYBACK_RESTART:
        if (!isStarted)
            break;
        if (loading == Loading::Sent)
            mpv->askNumber("dwidth", tag(Reply::PictureWidth));
        else if (isSeekSent)
            mpv->askNumber("time-pos", tag(Reply::SeekPosition));
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        if (isStarted)
            propertyChanged(*static_cast<const mpv_event_property*>(event.data));
        break;
    default:
        break;
    }
}

void VideoPlayer::Private::commandAnswered(Reply reply, const mpv_event& event)
{
    if (reply == Reply::Seek) {
        if (event.error < 0)
            finishSeek();
        else
            isSeekSent = true;
    } else if (reply == Reply::Load) {
        if (event.error < 0)
            return fail(QT_TRANSLATE_NOOP("Keys", "The video \"%1\" can't be opened."));
        const mpv_node& result = static_cast<const mpv_event_command*>(event.data)->result;
        if (result.format != MPV_FORMAT_NODE_MAP)
            return;
        for (int i = 0; i < result.u.list->num; ++i) {
            if (std::strcmp(result.u.list->keys[i], "playlist_entry_id") == 0)
                entry = result.u.list->values[i].u.int64;
        }
    }
}

void VideoPlayer::Private::propertyAnswered(Reply reply, const mpv_event& event)
{
    const auto* const property = static_cast<const mpv_event_property*>(event.data);
    const bool isNumber = event.error >= 0 && property->format == MPV_FORMAT_DOUBLE;
    const double number = isNumber ? *static_cast<const double*>(property->data) : 0;
    switch (reply) {
    case Reply::PictureWidth:
        if (isNumber)
            mpv->askNumber("current-tracks/video/demux-rotation", tag(Reply::Rotation));
        else
            mpv->askNumber("current-tracks/video/id", tag(Reply::VideoTrack));
        break;
    case Reply::VideoTrack:
        if (isNumber)
            fail(QT_TRANSLATE_NOOP("Keys", "The video \"%1\" can't be decoded."));
        else
            fail(QT_TRANSLATE_NOOP("Keys", "\"%1\" holds no video."));
        break;
    case Reply::Rotation:
        // Not available means upright.
        render->setRotation(isNumber ? static_cast<int>(std::lround(number / 90)) % 4 * 90 : 0);
        becomeReady();
        break;
    case Reply::Position:
        if (isNumber)
            positionReported(number);
        break;
    case Reply::StopPosition:
        if (!isStopping)
            break;
        isStopping = false;
        if (isNumber)
            positionReported(number);
        Q_EMIT q->seekFinished();
        break;
    case Reply::SeekPosition:
        if (isNumber && isPlaying)
            clock.report(number, Clock::now());
        finishSeek();
        break;
    case Reply::End:
        if (event.error >= 0 && property->format == MPV_FORMAT_FLAG && *static_cast<const int*>(property->data) != 0)
            endReported();
        break;
    case Reply::None:
    case Reply::Load:
    case Reply::Seek:
    case Reply::Quality:
        break;
    }
}

void VideoPlayer::Private::propertyChanged(const mpv_event_property& property)
{
    if (property.format == MPV_FORMAT_FLAG && std::strcmp(property.name, "eof-reached") == 0) {
        // Changes are reported without an order; an end that the former file reached must not end this one. So ask
        // again.
        if (*static_cast<const int*>(property.data) != 0)
            mpv->askFlag("eof-reached", tag(Reply::End));
        else if (status == Status::Ended)
            setStatus(Status::Ready);
    } else if (property.format == MPV_FORMAT_DOUBLE && std::strcmp(property.name, "time-pos") == 0) {
        positionReported(*static_cast<const double*>(property.data));
    } else if (property.format == MPV_FORMAT_STRING && std::strcmp(property.name, "hwdec-current") == 0) {
        DecodingPolicy::shared().setHardware(std::strcmp(*static_cast<char* const*>(property.data), "no") != 0);
        adaptDecoding();
    }
}

void VideoPlayer::Private::positionReported(double seconds)
{
    // While it is on its way elsewhere the clock shows where that is, and a frame sought exactly needs no report: mpv
    // then reports what it was told to aim at.
    if (!isShowing() || seeks.isBusy() || (shownFrame && isShownForSure))
        return;
    if (isPlaying)
        return clock.report(seconds, Clock::now());
    // After a pause one more frame may come on, which was on its way already.
    if (shownFrame == seconds)
        return;
    const bool isStepped = std::exchange(isStepping, false);
    shownFrame = seconds;
    isShownForSure = false;
    clock.jump(seconds);
    notifyJump();
    runSteps();
    if (isStepped && !isSeeking())
        Q_EMIT q->seekFinished();
}

void VideoPlayer::Private::endReported()
{
    if (!isShowing() || seeks.isBusy())
        return;
    if (mpv->takeReadError())
        return fail(QT_TRANSLATE_NOOP("Keys", "The video \"%1\" can't be read any further."));
    isStepping = false;
    pendingSteps = 0;
    if (isPlaying && status == Status::Ready)
        clock.finish();
    const std::shared_ptr<VideoItem> ended = item;
    const QPointer<VideoPlayer> self(q);
    setStatus(Status::Ended);
    if (!self || !isPlaying || ended != item || std::exchange(isEndTold, true))
        return;
    notifyJump();
    Q_EMIT q->itemDidPlayToEnd(ended);
}

} // namespace cardreel
