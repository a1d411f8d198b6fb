#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

namespace cardreel {

class VideoItem;

/// Plays one item at a time for one pane. Owned by its pane and used on the interface thread, which it never blocks:
/// decoding and rendering run on threads of its own, and everything asked for here takes effect a little later. Times
/// are the item's, which run faster or slower than the file's when the item is a scaled composition.
class VideoPlayer : public QObject
{
    Q_OBJECT

public:
    enum class AudioOutput { Device, None };
    enum class Status {
        Unknown, ///< no item
        Loading,
        Ready,  ///< a first frame is there
        Ended,  ///< stands on the last frame; leaves this status when it is sought elsewhere
        Failed, ///< the item's errorText() says why
    };
    enum class FrameStep { Forward, Backward };
    using TimeObserver = std::function<void(double seconds)>;

    explicit VideoPlayer(AudioOutput audio = AudioOutput::Device, QObject* parent = nullptr);
    /// Returns at once; what is left ends in the background. See waitForShutdown().
    ~VideoPlayer() override;

    /// Loads an item, standing at its start, playing on when the former played; null for none. The former item's
    /// picture stays until the new one's first is there; none and a failure take it away.
    void replaceCurrentItem(std::shared_ptr<VideoItem> item);
    const std::shared_ptr<VideoItem>& currentItem() const;

    /// Nothing without an item and after a failure.
    void play();
    void pause();
    /// 1 when told to play, also at the end of the item; 0 when paused, failed or without an item.
    double rate() const;

    /// Goes to a time of the item, brought into it. Paused, it shows the very frame whose time on screen contains it.
    /// Playing, nothing is done when the present time lies within the tolerance. One seek is under way at a time; of
    /// those asked for meanwhile the newest follows. Asked for while loading, it happens as soon as the item is ready.
    void seek(double seconds, double toleranceSeconds = 0);
    /// Whether the picture is still on its way to currentTime(): by a seek, a step, a pause or because it loads.
    bool isSeeking() const;
    /// Pauses and shows the next or the previous frame of the file.
    void stepFrame(FrameStep step = FrameStep::Forward);

    /// Seconds; while a seek is under way where it leads, else a time during which the frame on screen is shown, moving
    /// between frames while playing. 0 without an item.
    double currentTime() const;
    /// Calls `observer` each time so much of the item's time has gone by while it plays, and whenever the time jumps,
    /// it starts or stops. Not before the item is ready. Returns what removes it.
    int addPeriodicTimeObserver(double intervalSeconds, TimeObserver observer);
    void removeTimeObserver(int handle);

    /// Plays so much faster (1.1) or slower (0.9) than the item says, to catch up with another player. For players
    /// without sound; 1 again with the next item.
    void setPace(double factor);

    /// Whether seeks of a playing player lead, within their tolerance, to where it would be by the time they are done:
    /// for a player that keeps up with another. Off at first.
    void setAimsAhead(bool aimsAhead);

    /// Size in device pixels of the pictures that are made; the video is centred in it on black, its shape kept.
    /// Nothing is drawn while it is empty.
    void setRenderSize(QSize pixels);
    /// The newest picture (Format_RGB32); null while there is none.
    QImage currentFrame() const;

    Status status() const;

    /// Beside the volume, which it leaves as it is.
    bool isMuted() const;
    void setMuted(bool muted);
    /// From 0 (silent) to 1, linear in amplitude.
    double volume() const;
    void setVolume(double volume);

    /// Waits for the players that were destroyed to end. For the end of main(), after the last one is gone.
    static void waitForShutdown();

Q_SIGNALS:
    void statusChanged(cardreel::VideoPlayer::Status status);
    void rateChanged(double rate);
    /// The end was reached while playing; once each time.
    void itemDidPlayToEnd(const std::shared_ptr<cardreel::VideoItem>& item);
    /// currentFrame() has changed. Several pictures may share one signal.
    void frameReady();
    /// No seek is under way any more. The picture may come with a frameReady() of its own a little later.
    void seekFinished();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace cardreel
