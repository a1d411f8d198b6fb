#pragma once

#include "platform/video/FrameGenerator.h"

#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

struct AVFormatContext;
struct AVPacket;
struct AVStream;

namespace cardreel {

/// Containers that hold video by themselves, as FFmpeg names them. All others are refused, playlists before all: a file
/// on a card must not send the program elsewhere.
inline constexpr const char* acceptedVideoFormats =
    "mov,mp4,matroska,webm,avi,mpegts,mpeg,mpegvideo,h264,hevc,m4v,flv,asf,ogg,mjpeg";

/// Larger pictures than this are damage; decoding them would take gigabytes.
inline constexpr int maximumVideoPixels = 128'000'000;

/// What a damaged file makes FFmpeg say on stderr is of no use to anybody; this program tells what failed itself. Any
/// thread.
void silenceFFmpeg();

/// The video track of one file, opened by FFmpeg's demuxers. All reading goes through one descriptor of its own, so
/// that a pulled card is a read error and a playlist in a video's clothes reaches neither other files nor the network.
/// Used by the rest of this folder only; one thread at a time.
class VideoSource
{
public:
    /// Where decoding has to start for a frame, and which packet holds it. In the track's own time base.
    struct Location
    {
        std::int64_t seekTimestamp;               ///< hand it to seek(): a key frame at or before the frame follows
        std::optional<std::int64_t> presentation; ///< nothing where packets carry no times
        bool hasKeyFrame;                         ///< packets before the first key frame after seek() are of no use
    };

    VideoSource(const QString& path, const std::atomic<bool>* cancel);
    ~VideoSource();
    VideoSource(const VideoSource&) = delete;
    VideoSource& operator=(const VideoSource&) = delete;

    FrameError error() const { return m_error; }
    QString errorText() const { return m_errorText; }
    /// The sentence for an error met later on, for instance while decoding.
    QString textFor(FrameError error) const;
    bool isCancelled() const { return m_cancel && m_cancel->load(std::memory_order_relaxed); }

    AVFormatContext* context() const { return m_context; }
    AVStream* stream() const { return m_stream; }
    /// Clockwise turn of the shown picture: 0, 90, 180 or 270 degrees.
    int rotation() const;
    /// Width of a pixel divided by its height.
    double pixelAspect() const;
    double duration() const;
    double frameRate() const;

    std::int64_t timestamp(double seconds) const;
    double seconds(std::int64_t timestamp) const;

    /// The frame on screen at a time, found from the packets' times without decoding. Nothing when no packet can be
    /// read.
    std::optional<Location> locate(std::int64_t timestamp);
    struct FrameStart
    {
        double seconds;    ///< from the file's start
        double seekBefore; ///< a demuxer has to seek this many seconds before that to meet the frame's key frame
    };
    /// The frame on screen at a time; nothing when it can't be told.
    std::optional<FrameStart> frameStart(double seconds);

    bool seek(std::int64_t timestamp);
    /// The track's next whole packet; false at the end, on a read error and when cancelled.
    bool read(AVPacket* packet);

private:
    struct Input;

    /// What was met on the way from where the file stands to a time.
    struct Scan
    {
        bool isEmpty = true;
        bool isTimed = true;
        std::optional<std::int64_t> first;
        std::optional<std::int64_t> key; ///< the first key frame
        std::int64_t keyDecoded = 0;
        std::optional<std::int64_t> best; ///< the latest that is shown by then
    };

    Scan scan(std::int64_t timestamp, AVPacket* packet);
    void fail(FrameError error);
    bool openContext();
    bool chooseStream();
    std::optional<std::int64_t> keyFrameBefore(std::int64_t timestamp) const;

    QString m_path;
    const std::atomic<bool>* m_cancel;
    FrameError m_error = FrameError::None;
    QString m_errorText;
    std::unique_ptr<Input> m_input;
    AVFormatContext* m_context = nullptr;
    AVStream* m_stream = nullptr;
};

} // namespace cardreel
