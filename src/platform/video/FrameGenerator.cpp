#include "platform/video/FrameGenerator.h"

#include "platform/video/ScaledImage.h"
#include "platform/video/VideoSource.h"

#include <utility>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace cardreel {
namespace {

// Shrunk this much, what the loop filter smooths is finer than a pixel.
constexpr int smallPictureFactor = 4;

enum class LoopFilter { On, SkippedAtLast };

struct Deleter
{
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

template<typename T>
using Owned = std::unique_ptr<T, Deleter>;

} // namespace

struct FrameGenerator::Private
{
    VideoSource source;
    Owned<AVCodecContext> codec;
    Owned<AVPacket> packet{av_packet_alloc()};
    Owned<AVFrame> decoded{av_frame_alloc()};
    Owned<AVFrame> best{av_frame_alloc()};
    ScaledImage scaled;
    FrameError error = FrameError::None;

    Private(const QString& path, const std::atomic<bool>* cancel)
        : source(path, cancel)
        , error(source.error())
    {
        if (error == FrameError::None && !openCodec())
            error = FrameError::CannotDecode;
    }

    bool openCodec()
    {
        const AVCodecParameters* const parameters = source.stream()->codecpar;
        const AVCodec* const found = avcodec_find_decoder(parameters->codec_id);
        codec.reset(found ? avcodec_alloc_context3(found) : nullptr);
        if (!codec || !packet || !decoded || !best || avcodec_parameters_to_context(codec.get(), parameters) < 0)
            return false;
        codec->pkt_timebase = source.stream()->time_base;
        codec->max_pixels = maximumVideoPixels;
        // One frame is wanted, mostly: threads that decode the next ones only cost their start.
        codec->thread_count = 1;
        return avcodec_open2(codec.get(), found, nullptr) == 0;
    }

    /// Takes what the decoder has ready; true once the frame at `target` is in `best`.
    bool takeFrames(std::int64_t target)
    {
        while (avcodec_receive_frame(codec.get(), decoded.get()) == 0) {
            const std::int64_t time = decoded->best_effort_timestamp;
            const bool isPast = time != AV_NOPTS_VALUE && time > target;
            if (isPast && best->buf[0])
                return true;
            av_frame_unref(best.get());
            av_frame_move_ref(best.get(), decoded.get());
            if (isPast || time == target)
                return true;
        }
        return false;
    }

    /// Decodes from the key frame on until the frame at `timestamp` is in `best`, or, in a damaged file, the nearest
    /// before.
    void decode(const VideoSource::Location& location, std::int64_t timestamp, LoopFilter filter)
    {
        av_frame_unref(best.get());
        avcodec_flush_buffers(codec.get());
        source.seek(location.seekTimestamp);
        const std::int64_t target = location.presentation.value_or(timestamp);
        bool found = false;
        bool isStarted = !location.hasKeyFrame;
        while (!found && source.read(packet.get())) {
            isStarted = isStarted || (packet->flags & AV_PKT_FLAG_KEY) != 0;
            if (!isStarted)
                continue;
            const bool isTarget = location.presentation && packet->pts == target;
            // Frames that no other depends on needn't be decoded on the way.
            codec->skip_frame = location.presentation && !isTarget ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
            // Earlier frames need it, or its absence would add up over the frames that build on them.
            codec->skip_loop_filter =
                isTarget && filter == LoopFilter::SkippedAtLast ? AVDISCARD_ALL : AVDISCARD_DEFAULT;
            // A packet that the decoder refuses is damage; what follows may still be whole.
            avcodec_send_packet(codec.get(), packet.get());
            found = takeFrames(target);
            if (isTarget)
                break;
        }
        if (!found) {
            // The frame waits in the decoder for its turn in display order: nothing that follows is needed for it.
            avcodec_send_packet(codec.get(), nullptr);
            takeFrames(target);
        }
    }
};

FrameGenerator::FrameGenerator(const QString& path, const std::atomic<bool>* cancel)
    : d(std::make_unique<Private>(path, cancel))
{
}

FrameGenerator::FrameGenerator(FrameGenerator&&) noexcept = default;
FrameGenerator& FrameGenerator::operator=(FrameGenerator&&) noexcept = default;
FrameGenerator::~FrameGenerator() = default;

FrameError FrameGenerator::error() const
{
    return d->error;
}

QString FrameGenerator::errorText() const
{
    return d->source.textFor(d->error);
}

double FrameGenerator::duration() const
{
    return d->source.error() == FrameError::None ? d->source.duration() : 0;
}

QSize FrameGenerator::naturalSize() const
{
    if (d->error != FrameError::None)
        return {};
    const AVCodecParameters* const parameters = d->source.stream()->codecpar;
    return ScaledImage::shownSize({parameters->width, parameters->height}, d->source.pixelAspect(),
                                  d->source.rotation(), {});
}

double FrameGenerator::frameRate() const
{
    return d->source.error() == FrameError::None ? d->source.frameRate() : 0;
}

VideoFrame FrameGenerator::frame(double seconds, QSize maximumSize)
{
    const auto failure = [this](FrameError error) {
        if (d->source.isCancelled())
            error = FrameError::Cancelled;
        return VideoFrame{{}, -1, error, d->source.textFor(error)};
    };
    if (d->error != FrameError::None)
        return failure(d->error);

    const std::int64_t timestamp = d->source.timestamp(seconds);
    const std::optional<VideoSource::Location> location = d->source.locate(timestamp);
    if (!location)
        return failure(FrameError::NoFrame);

    const QSize coded(d->source.stream()->codecpar->width, d->source.stream()->codecpar->height);
    const QSize shown = ScaledImage::shownSize(coded, d->source.pixelAspect(), d->source.rotation(), maximumSize);
    const bool isSmall = qint64{shown.width()} * shown.height() * smallPictureFactor * smallPictureFactor <=
                         qint64{coded.width()} * coded.height();
    d->decode(*location, timestamp, isSmall ? LoopFilter::SkippedAtLast : LoopFilter::On);
    if (d->source.isCancelled() || !d->best->buf[0])
        return failure(FrameError::NoFrame);

    VideoFrame result;
    result.image = d->scaled.image(*d->best, shown, d->source.rotation());
    if (result.image.isNull())
        return failure(FrameError::CannotDecode);
    if (d->best->best_effort_timestamp != AV_NOPTS_VALUE)
        result.seconds = d->source.seconds(d->best->best_effort_timestamp);
    return result;
}

VideoFrame FrameGenerator::frame(const QString& path, double seconds, QSize maximumSize,
                                 const std::atomic<bool>* cancel)
{
    return FrameGenerator(path, cancel).frame(seconds, maximumSize);
}

} // namespace cardreel
