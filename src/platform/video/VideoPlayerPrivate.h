#pragma once

#include "platform/video/DecodingPolicy.h"
#include "platform/video/FrameLookup.h"
#include "platform/video/MpvHandle.h"
#include "platform/video/PlayClock.h"
#include "platform/video/RenderThread.h"
#include "platform/video/SeekQueue.h"
#include "platform/video/VideoPlayer.h"

#include <QTimer>

#include <atomic>
#include <optional>
#include <vector>

struct mpv_event_property;

namespace cardreel {

/// An exact seek of mpv shows the first frame that starts no more than 5 ms before the target. Aiming between a frame's
/// start and that limit finds the frame itself however its time was rounded, up to 500 frames a second.
inline constexpr double seekAimSeconds = 0.003;

/// The inside of a VideoPlayer: its helpers and the state that mpv's events move. Everything here runs on the interface
/// thread; the helpers' callbacks only queue. Times are the file's own, not the item's, unless said otherwise. Its
/// sources are VideoPlayerPrivate.cpp (what is asked of it), VideoPlayerLoading.cpp (how a file comes in) and
/// VideoPlayerEvents.cpp (what mpv reports).
class VideoPlayer::Private
{
public:
    Private(VideoPlayer* player, AudioOutput audio);
    ~Private();

    void setItem(std::shared_ptr<VideoItem> newItem);
    void setPlaying(bool playing);
    /// Seconds of the item.
    void seek(double itemSeconds, double toleranceSeconds);
    void step(FrameStep step);
    void setPace(double factor);
    /// Seconds of the item.
    double currentTime() const;
    int addObserver(double intervalSeconds, TimeObserver observer);
    void removeObserver(int handle);
    /// Whether the picture is still on its way to where currentTime() says it is.
    bool isSeeking() const { return seeks.isBusy() || isStopping || isStepping; }

    VideoPlayer* const q;
    // Members are declared in the order in which they have to be made; the destructor hands them over in the other.
    std::unique_ptr<MpvHandle> mpv;
    std::unique_ptr<RenderThread> render;
    std::unique_ptr<FrameLookup> lookup;

    std::shared_ptr<VideoItem> item;
    Status status = Status::Unknown;
    bool isPlaying = false;
    bool isMuted = false;
    const bool hasOutput; ///< sound is heard; else it isn't decoded either
    bool aimsAhead = false;
    double volume = 1;
    SeekQueue seeks;

private:
    /// What an answer from mpv is about. The load's generation goes along, because answers for a former file may still
    /// come.
    enum class Reply : quint64 {
        None,
        Load,
        Seek,
        PictureWidth,
        VideoTrack,
        Rotation,
        Position,
        StopPosition,
        SeekPosition,
        End,
        Quality
    };

    enum class Loading {
        None,    ///< nothing is being loaded
        Queued,  ///< begins with the next turn of the event loop, so that what is asked for until then goes along
        Looking, ///< the frame to start with is being looked up
        Sent,    ///< mpv is at it
    };

    struct Observer
    {
        int handle;
        double intervalSeconds;
        TimeObserver call;
        double last;
    };

    using Clock = PlayClock::Moment::clock;

    quint64 tag(Reply reply) const { return generation << 8 | static_cast<quint64>(reply); }
    double speed() const;
    double fileDuration() const;
    bool isShowing() const { return loading == Loading::None && (status == Status::Ready || status == Status::Ended); }

    void makeRenderThread();
    void makeLookup();

    // Loading.
    void forgetFile();
    void unload();
    void halt(Status newStatus);
    void scheduleLoad(double start);
    void beginLoad();
    void sendLoad(FrameLookup::Frame frame);
    void applyPictureInterval();
    void becomeReady();
    Decoding wantedDecoding() const;
    void adaptDecoding();
    void measurePace();
    void fail(const char* key);

    // What is asked.
    void setStatus(Status newStatus);
    void applyQuality();
    void frameLookedUp(FrameLookup::Frame frame);
    void start(const std::optional<SeekQueue::Target>& target);
    void sendSeek(double seconds, const char* flags);
    void finishSeek();
    void jumpClock(double seconds);
    void runSteps();
    void updateTimer();
    void notifyJump();
    void notify(bool isJump);

    // What mpv reports.
    void handle(const mpv_event& event);
    void commandAnswered(Reply reply, const mpv_event& event);
    void propertyAnswered(Reply reply, const mpv_event& event);
    void propertyChanged(const mpv_event_property& property);
    void positionReported(double seconds);
    void endReported();

    quint64 generation = 0;
    Loading loading = Loading::None;
    double loadStart = 0;
    Decoding decoding = Decoding::Full; ///< of the file as it is loaded
    std::optional<int64_t> entry;       ///< mpv's number for the file, once known
    bool isStarted = false;             ///< what mpv now reports is about this file
    bool isSeekSent = false;            ///< mpv has taken the seek and will report when it shows
    bool isPreview = false;             ///< the seek under way only leads near its target, for a quick picture
    double seekTarget = 0;
    Clock::time_point seekStart;
    double exactSeekSeconds = 0;      ///< how long exact seeks take, on average
    double playingSeekSeconds = 0.08; ///< and those of a playing player, until it plays on
    std::optional<bool> isFine;       ///< the scaling now set; nothing before the first
    quint64 question = 0;
    std::optional<double> shownFrame; ///< start of the frame that stands on the screen, when known
    bool isShownForSure = false;      ///< it was sought exactly, not just reported
    bool isEndTold = false;           ///< since the last load or seek
    int pendingSteps = 0;             ///< frames to go on or, below 0, back
    bool isStepping = false;
    bool isStopping = false; ///< paused, but which frame it stopped at isn't known yet
    double pace = 1;
    PlayClock clock;
    QTimer timer;
    double paceFrom = 0;         ///< since when the speed is measured, in the file's time ...
    Clock::time_point paceSince; ///< ... and outside
    std::vector<Observer> observers;
    int lastHandle = 0;
    bool isJumpQueued = false;
    std::atomic<bool> isPumpQueued = false;
    std::atomic<bool> isFrameQueued = false;
};

} // namespace cardreel
