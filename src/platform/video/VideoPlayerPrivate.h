#pragma once

#include "platform/video/FrameLookup.h"
#include "platform/video/MpvHandle.h"
#include "platform/video/RenderThread.h"
#include "platform/video/SeekQueue.h"
#include "platform/video/VideoPlayer.h"

#include <atomic>
#include <optional>

struct mpv_event_property;

namespace cardreel {

/// The inside of a VideoPlayer: its three helpers and the state that mpv's events move. Everything here runs on the
/// interface thread; the helpers' callbacks only queue. Its sources are VideoPlayerPrivate.cpp (what is asked of it)
/// and VideoPlayerEvents.cpp (what mpv reports).
class VideoPlayer::Private
{
public:
    Private(VideoPlayer* player, AudioOutput audio);
    ~Private();

    void open(const QString& newPath);
    void stop();
    void setPlaying(bool playing);
    void seek(double seconds, SeekQueue::Precision precision);
    void step(FrameStep step);

    VideoPlayer* const q;
    // Members are declared in the order in which they have to be made; the destructor hands them over in the other.
    std::unique_ptr<MpvHandle> mpv;
    std::unique_ptr<RenderThread> render;
    std::unique_ptr<FrameLookup> lookup;

    Status status = Status::Unknown;
    QString errorText;
    double position = 0;
    double duration = 0;
    bool isPlaying = false;
    SeekQueue seeks;

private:
    /// What an answer from mpv is about. The file's generation goes along, because answers for a former file may still
    /// come.
    enum class Reply : quint64 {
        None,
        Load,
        Seek,
        PictureWidth,
        VideoTrack,
        Rotation,
        Position,
        SeekPosition,
        Duration,
        End,
        Quality
    };

    quint64 tag(Reply reply) const { return generation << 8 | static_cast<quint64>(reply); }

    void reset();
    void setStatus(Status newStatus);
    void setPosition(double seconds);
    void setDuration(double seconds);
    void positionReported(double seconds);
    void fail(const char* key);
    void becomeReady();
    void applyQuality();
    void start(const std::optional<SeekQueue::Target>& target);
    void sendSeek(double seconds, const char* flags);
    void finishSeek();

    void handle(const mpv_event& event);
    void commandAnswered(Reply reply, const mpv_event& event);
    void propertyAnswered(Reply reply, const mpv_event& event);
    void propertyChanged(const mpv_event_property& property);
    void endReported();

    QString path;
    quint64 generation = 0;
    std::optional<int64_t> entry; ///< mpv's number for the file, once known
    bool isStarted = false;       ///< what mpv now reports is about this file
    bool isSeekSent = false;      ///< mpv has taken the seek and will report when it shows
    std::optional<bool> isFine;   ///< the scaling now set; nothing before the first
    quint64 question = 0;
    std::optional<double> soughtFrame; ///< start of the frame that an exact seek left on the screen
    std::atomic<bool> isPumpQueued = false;
    std::atomic<bool> isFrameQueued = false;
};

} // namespace cardreel
