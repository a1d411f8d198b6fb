#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>

#include <memory>

namespace cardreel {

/// Plays one video file at a time for one pane. Owned by its pane and used on the interface thread, which it never
/// blocks: decoding and rendering run on threads of its own, and everything asked for here takes effect a little later.
class VideoPlayer : public QObject
{
    Q_OBJECT

public:
    enum class AudioOutput { Device, None };
    enum class SeekMode {
        Exact,    ///< shows the very frame whose time on screen contains the position
        Keyframe, ///< shows the nearest key frame: faster, for scrubbing
    };
    enum class Status {
        Unknown, ///< no file
        Loading,
        Ready,  ///< a first frame is there
        Ended,  ///< stands on the last frame; leaves this status when it is sought elsewhere
        Failed, ///< the text came with failed()
    };
    enum class FrameStep { Forward, Backward };

    explicit VideoPlayer(AudioOutput audio = AudioOutput::Device, QObject* parent = nullptr);
    /// Returns at once; what is left ends in the background. See waitForShutdown().
    ~VideoPlayer() override;

    /// Loads a file, paused on its first frame; whatever was playing is dropped.
    void open(const QString& path);
    /// Unloads the file: status Unknown, no picture.
    void stop();

    void play();
    void pause();
    /// Whether it was told to play: stays so at the end of the file, until pause(), stop() or open().
    bool isPlaying() const;

    /// Position in seconds from the file's start, brought into the file. One seek is under way at a time; of those
    /// asked for meanwhile the newest follows. Asked for while loading, it happens as soon as the file is ready.
    void seek(double seconds, SeekMode mode = SeekMode::Exact);
    bool isSeeking() const;
    /// Pauses and shows the next or the previous frame.
    void stepFrame(FrameStep step = FrameStep::Forward);

    /// Size in device pixels of the pictures that are made; the video is centred in it on black, its shape kept.
    /// Nothing is drawn while it is empty.
    void setRenderSize(QSize pixels);
    /// The newest picture (Format_RGB32); null while there is none.
    QImage currentFrame() const;

    Status status() const;
    QString errorText() const;
    /// Start of the frame on screen in seconds, as last reported; 0 without a file.
    double position() const;
    /// Seconds; 0 while unknown. A cut file still claims its full length.
    double duration() const;

    void setMuted(bool muted);
    /// From 0 (silent) to 1, linear in amplitude.
    void setVolume(double volume);

    /// Waits for the players that were destroyed to end. For the end of main(), after the last one is gone.
    static void waitForShutdown();

Q_SIGNALS:
    void statusChanged(cardreel::VideoPlayer::Status status);
    void failed(const QString& errorText);
    void positionChanged(double seconds);
    void durationChanged(double seconds);
    void playingChanged(bool playing);
    /// The end was reached while playing; once each time.
    void endReached();
    /// currentFrame() has changed. Several pictures may share one signal.
    void frameReady();
    /// No seek is under way any more; position() is the new one. Its picture comes with a frameReady() of its own.
    void seekFinished();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace cardreel
