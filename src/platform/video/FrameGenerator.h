#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <atomic>
#include <memory>

namespace cardreel {

enum class FrameError {
    None,
    CannotOpen,   ///< missing, no regular file, unreadable, or no video container
    NoVideoTrack, ///< opened, but has sound or data only
    CannotDecode, ///< no decoder, refused dimensions, or a damaged track
    NoFrame,      ///< the track holds no decodable picture
    Cancelled,
};

/// A picture taken from a video, or why there is none.
struct VideoFrame
{
    QImage image;        ///< null unless error is None
    double seconds = -1; ///< when the frame starts, from the file's start; -1 without a picture
    FrameError error = FrameError::None;
    QString errorText; ///< one sentence for the user, naming the file; empty without an error
};

/// Takes single frames out of a video file with FFmpeg's libraries, exact to the frame: for thumbnails and stills. A
/// value of its own for one thread at a time; different generators work side by side. Never blocks on a pipe or device,
/// and reads nothing but the file itself, whatever the file refers to.
class FrameGenerator
{
public:
    /// Opens the file. When `cancel` is given it is polled during all reading and decoding and must outlive the
    /// generator.
    explicit FrameGenerator(const QString& path, const std::atomic<bool>* cancel = nullptr);
    FrameGenerator(FrameGenerator&&) noexcept;
    FrameGenerator& operator=(FrameGenerator&&) noexcept;
    ~FrameGenerator();

    /// Why opening failed; None when frames can be asked for.
    FrameError error() const;
    QString errorText() const;

    /// Length in seconds; 0 when unknown. A cut file still claims its full length.
    double duration() const;
    /// Size as shown: pixel shape and rotation applied. Empty when opening failed.
    QSize naturalSize() const;
    /// Average frames per second; 0 when unknown.
    double frameRate() const;

    /// The frame on screen at a time in seconds from the file's start: the first one before its start, the last one
    /// past its end. Shrunk (never enlarged) to fit `maximumSize`, or in natural size when that is empty.
    VideoFrame frame(double seconds, QSize maximumSize = {});

    /// One frame of one file.
    static VideoFrame frame(const QString& path, double seconds, QSize maximumSize,
                            const std::atomic<bool>* cancel = nullptr);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace cardreel
