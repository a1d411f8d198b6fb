#include "platform/video/VideoSource.h"

#include "platform/files/Files.h"
#include "platform/text/Localization.h"

#include <QtGlobal>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>
#include <unistd.h>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/display.h>
}

namespace cardreel {
namespace {

constexpr int ioBufferSize = 64 * 1024;
constexpr int maximumSide = 16'384;
// An hour at 60 pictures a second without any key frame. Only a damaged file comes near it.
constexpr int maximumPackets = 250'000;
constexpr int maximumAttempts = 12;
constexpr int maximumReordering = 16;

bool hasPictureSize(const AVCodecParameters* parameters)
{
    return parameters->width > 0 && parameters->height > 0;
}

bool isPlayable(const AVStream* stream)
{
    return stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
           (stream->disposition & (AV_DISPOSITION_ATTACHED_PIC | AV_DISPOSITION_TIMED_THUMBNAILS)) == 0;
}

bool isDescribed(const AVCodecParameters* parameters)
{
    return hasPictureSize(parameters) && parameters->codec_id != AV_CODEC_ID_NONE &&
           (parameters->extradata_size > 0 || parameters->codec_id == AV_CODEC_ID_MJPEG);
}

struct PacketDeleter
{
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

} // namespace

/// What FFmpeg reads from: the file, and how it went.
struct VideoSource::Input
{
    std::unique_ptr<QFile> file;
    const std::atomic<bool>* cancel = nullptr;
    std::int64_t position = 0;
    std::int64_t size = 0;
    AVIOContext* io = nullptr;

    static bool isCancelled(const Input* self) { return self->cancel && self->cancel->load(std::memory_order_relaxed); }

    static int read(void* opaque, std::uint8_t* buffer, int size)
    {
        auto* const self = static_cast<Input*>(opaque);
        if (isCancelled(self))
            return AVERROR_EXIT;
        ssize_t got = 0;
        do {
            got = ::pread(self->file->handle(), buffer, static_cast<std::size_t>(size), self->position);
        } while (got < 0 && errno == EINTR);
        if (got < 0)
            return AVERROR(errno);
        if (got == 0)
            return AVERROR_EOF;
        self->position += got;
        return static_cast<int>(got);
    }

    static std::int64_t seek(void* opaque, std::int64_t offset, int whence)
    {
        auto* const self = static_cast<Input*>(opaque);
        std::int64_t base = 0;
        switch (whence & ~AVSEEK_FORCE) {
        case AVSEEK_SIZE:
            return self->size;
        case SEEK_SET:
            break;
        case SEEK_CUR:
            base = self->position;
            break;
        case SEEK_END:
            base = self->size;
            break;
        default:
            return AVERROR(EINVAL);
        }
        if (offset < -base || offset > std::numeric_limits<std::int64_t>::max() - base)
            return AVERROR(EINVAL);
        self->position = base + offset;
        return self->position;
    }

    static int interrupt(void* opaque) { return isCancelled(static_cast<const Input*>(opaque)) ? 1 : 0; }

    static int refuseOpen(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) { return AVERROR(EACCES); }

    ~Input()
    {
        if (io) {
            av_freep(&io->buffer);
            avio_context_free(&io);
        }
    }
};

void silenceFFmpeg()
{
    static std::once_flag silenced;
    std::call_once(silenced, [] { av_log_set_level(AV_LOG_QUIET); });
}

VideoSource::VideoSource(const QString& path, const std::atomic<bool>* cancel)
    : m_path(path)
    , m_cancel(cancel)
    , m_input(std::make_unique<Input>())
{
    silenceFFmpeg();
    m_input->file = files::openForReading(path);
    m_input->cancel = cancel;
    if (!m_input->file || !openContext())
        fail(FrameError::CannotOpen);
    else if (!chooseStream())
        fail(FrameError::NoVideoTrack);
    else if (!hasPictureSize(m_stream->codecpar) || m_stream->codecpar->width > maximumSide ||
             m_stream->codecpar->height > maximumSide ||
             std::int64_t{m_stream->codecpar->width} * m_stream->codecpar->height > maximumVideoPixels)
        fail(FrameError::CannotDecode);
}

VideoSource::~VideoSource()
{
    avformat_close_input(&m_context);
}

void VideoSource::fail(FrameError error)
{
    m_error = isCancelled() ? FrameError::Cancelled : error;
    m_errorText = textFor(m_error);
}

QString VideoSource::textFor(FrameError error) const
{
    const QString name = files::displayPath(files::nameOf(m_path));
    switch (error) {
    case FrameError::None:
    case FrameError::Cancelled:
        break;
    case FrameError::CannotOpen:
        return localizedText(QT_TRANSLATE_NOOP("Keys", "The video \"%1\" can't be opened.")).arg(name);
    case FrameError::NoVideoTrack:
        return localizedText(QT_TRANSLATE_NOOP("Keys", "\"%1\" holds no video.")).arg(name);
    case FrameError::CannotDecode:
        return localizedText(QT_TRANSLATE_NOOP("Keys", "The video \"%1\" can't be decoded.")).arg(name);
    case FrameError::NoFrame:
        return localizedText(QT_TRANSLATE_NOOP("Keys", "The video \"%1\" holds no picture.")).arg(name);
    }
    return {};
}

bool VideoSource::openContext()
{
    m_input->size = m_input->file->size();
    auto* const buffer = static_cast<unsigned char*>(av_malloc(ioBufferSize));
    if (!buffer)
        return false;
    m_input->io = avio_alloc_context(buffer, ioBufferSize, 0, m_input.get(), &Input::read, nullptr, &Input::seek);
    m_context = avformat_alloc_context();
    if (!m_input->io || !m_context) {
        if (!m_input->io)
            av_free(buffer);
        return false;
    }
    m_context->pb = m_input->io;
    m_context->flags |= AVFMT_FLAG_CUSTOM_IO;
    m_context->io_open = &Input::refuseOpen;
    m_context->interrupt_callback = {&Input::interrupt, m_input.get()};
    m_context->format_whitelist = av_strdup(acceptedVideoFormats);
    return avformat_open_input(&m_context, "", nullptr, nullptr) == 0;
}

bool VideoSource::chooseStream()
{
    // The same track that the player takes: the first that is on by default.
    const auto choose = [this] {
        m_stream = nullptr;
        for (unsigned i = 0; i < m_context->nb_streams; ++i) {
            AVStream* const candidate = m_context->streams[i];
            if (isPlayable(candidate) && (!m_stream || ((candidate->disposition & AV_DISPOSITION_DEFAULT) != 0 &&
                                                        (m_stream->disposition & AV_DISPOSITION_DEFAULT) == 0)))
                m_stream = candidate;
        }
    };
    choose();
    // Decoding a second of every stream costs fifty times what opening does, and an MP4's header says it all. Other
    // containers also tell only then at which time they start.
    const bool isMp4 = std::strncmp(m_context->iformat->name, "mov,", 4) == 0;
    const bool headerIsEnough = isMp4 && (!m_stream || isDescribed(m_stream->codecpar));
    if (!headerIsEnough) {
        avformat_find_stream_info(m_context, nullptr);
        choose();
    }
    for (unsigned i = 0; i < m_context->nb_streams; ++i) {
        if (m_context->streams[i] != m_stream)
            m_context->streams[i]->discard = AVDISCARD_ALL;
    }
    return m_stream != nullptr;
}

int VideoSource::rotation() const
{
    std::size_t size = 0;
    const auto* const data = av_stream_get_side_data(m_stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (!data || size < 9 * sizeof(std::int32_t))
        return 0;
    std::int32_t matrix[9];
    std::memcpy(matrix, data, sizeof matrix);
    const double counterclockwise = av_display_rotation_get(matrix);
    if (std::isnan(counterclockwise))
        return 0;
    const int quarters = static_cast<int>(std::lround(-counterclockwise / 90)) % 4;
    return (quarters + 4) % 4 * 90;
}

double VideoSource::pixelAspect() const
{
    const AVRational aspect = av_guess_sample_aspect_ratio(m_context, m_stream, nullptr);
    if (aspect.num <= 0 || aspect.den <= 0)
        return 1;
    const double value = av_q2d(aspect);
    // Beyond this it is damage, not a shape.
    return value < 1.0 / 16 || value > 16 ? 1 : value;
}

double VideoSource::duration() const
{
    if (m_stream->duration > 0) {
        // A track that starts late lasts as long after that.
        const std::int64_t start = m_stream->start_time == AV_NOPTS_VALUE ? timestamp(0) : m_stream->start_time;
        return seconds(start + m_stream->duration);
    }
    return m_context->duration > 0 ? static_cast<double>(m_context->duration) / AV_TIME_BASE : 0;
}

double VideoSource::frameRate() const
{
    if (m_stream->avg_frame_rate.num > 0 && m_stream->avg_frame_rate.den > 0)
        return av_q2d(m_stream->avg_frame_rate);
    const double length = duration();
    return m_stream->nb_frames > 0 && length > 0 ? static_cast<double>(m_stream->nb_frames) / length : 0;
}

std::int64_t VideoSource::timestamp(double seconds) const
{
    // Containers that start elsewhere than at zero say so once probed; the player counts from there too.
    const double start =
        m_context->start_time == AV_NOPTS_VALUE ? 0 : static_cast<double>(m_context->start_time) / AV_TIME_BASE;
    const double value = (seconds + start) / av_q2d(m_stream->time_base);
    // Times that went through a double must not fall just short of the tick they came from.
    constexpr double largest = 4e18;
    return static_cast<std::int64_t>(std::floor(std::clamp(value, -largest, largest) + 1e-3));
}

double VideoSource::seconds(std::int64_t timestamp) const
{
    const double start =
        m_context->start_time == AV_NOPTS_VALUE ? 0 : static_cast<double>(m_context->start_time) / AV_TIME_BASE;
    return static_cast<double>(timestamp) * av_q2d(m_stream->time_base) - start;
}

bool VideoSource::seek(std::int64_t timestamp)
{
    return av_seek_frame(m_context, m_stream->index, timestamp, AVSEEK_FLAG_BACKWARD) >= 0 ||
           avformat_seek_file(m_context, m_stream->index, std::numeric_limits<std::int64_t>::min(), timestamp,
                              std::numeric_limits<std::int64_t>::max(), 0) >= 0;
}

bool VideoSource::read(AVPacket* packet)
{
    for (int i = 0; i < maximumPackets && !isCancelled(); ++i) {
        av_packet_unref(packet);
        if (av_read_frame(m_context, packet) < 0)
            return false;
        // A packet that is cut off by the file's end is no picture.
        if (packet->stream_index == m_stream->index && (packet->flags & AV_PKT_FLAG_CORRUPT) == 0)
            return true;
    }
    return false;
}

std::optional<std::int64_t> VideoSource::keyFrameBefore(std::int64_t timestamp) const
{
    for (int i = avformat_index_get_entries_count(m_stream) - 1; i >= 0; --i) {
        const AVIndexEntry* const entry = avformat_index_get_entry(m_stream, i);
        if ((entry->flags & AVINDEX_KEYFRAME) != 0 && entry->timestamp < timestamp &&
            entry->pos + entry->size <= m_input->size)
            return entry->timestamp;
    }
    return std::nullopt;
}

VideoSource::Scan VideoSource::scan(std::int64_t timestamp, AVPacket* packet)
{
    Scan found;
    int later = 0;
    for (int packets = 0; packets < maximumPackets && read(packet); ++packets) {
        const std::int64_t shown = packet->pts;
        const bool isKey = (packet->flags & AV_PKT_FLAG_KEY) != 0;
        found.isEmpty = false;
        if (shown == AV_NOPTS_VALUE) {
            found.isTimed = false;
            break;
        }
        const std::int64_t decoded = packet->dts == AV_NOPTS_VALUE ? shown : packet->dts;
        if (!found.first)
            found.first = shown;
        if (isKey && !found.key) {
            found.key = shown;
            found.keyDecoded = decoded;
        }
        if (shown <= timestamp && (!found.best || shown > *found.best) && (packet->flags & AV_PKT_FLAG_DISCARD) == 0)
            found.best = shown;
        // Nothing is shown before it is decoded, so no later packet can hold the frame. Without decoding times only the
        // longest reordering that any codec allows tells.
        later += shown > timestamp ? 1 : 0;
        const bool isPast = packet->dts == AV_NOPTS_VALUE ? later > maximumReordering : packet->dts > timestamp;
        if (isPast || found.best == timestamp)
            break;
    }
    return found;
}

std::optional<VideoSource::Location> VideoSource::locate(std::int64_t timestamp)
{
    const std::unique_ptr<AVPacket, PacketDeleter> packet(av_packet_alloc());
    const std::int64_t start = m_stream->start_time == AV_NOPTS_VALUE ? 0 : m_stream->start_time;
    const std::int64_t second =
        std::max<std::int64_t>(1, av_rescale(1, m_stream->time_base.den, m_stream->time_base.num));
    // The first frame is decoded up to a reordering's length before it is shown.
    const std::int64_t beforeAll = start - second;
    std::int64_t seekTimestamp = timestamp;
    for (int attempt = 0; packet && attempt < maximumAttempts && !isCancelled(); ++attempt) {
        // Not every container can seek; one that was just opened stands at its start anyway.
        seek(seekTimestamp);
        const Scan found = scan(timestamp, packet.get());
        if (!found.isTimed)
            return Location{seekTimestamp, std::nullopt, false};
        const bool isAtStart = seekTimestamp < beforeAll || attempt + 1 == maximumAttempts;
        if (!found.isEmpty && (isAtStart || (found.key && *found.key <= timestamp))) {
            const bool hasKey = found.key.has_value();
            return Location{seekTimestamp, found.best ? found.best : (hasKey ? found.key : found.first), hasKey};
        }
        if (found.isEmpty) {
            // Nothing to read there, as in a cut file, whose index still lists what is gone.
            if (isAtStart)
                break;
            seekTimestamp = keyFrameBefore(seekTimestamp)
                                .value_or(attempt + 2 < maximumAttempts ? seekTimestamp / 2 : beforeAll - 1);
        } else if (found.key && attempt == 0) {
            // Indexes count in decoding order: this key frame comes to the screen after the time, so what is shown then
            // precedes it and depends on the key frame before.
            seekTimestamp = std::min(seekTimestamp, found.keyDecoded) - 1;
        } else {
            // A container without an index doesn't land on key frames: ever farther back until there is one.
            seekTimestamp = attempt + 2 < maximumAttempts ? seekTimestamp - (second << attempt) : beforeAll - 1;
        }
    }
    return std::nullopt;
}

std::optional<VideoSource::FrameStart> VideoSource::frameStart(double seconds)
{
    if (m_error != FrameError::None)
        return std::nullopt;
    const std::optional<Location> found = locate(timestamp(seconds));
    if (!found || !found->presentation)
        return std::nullopt;
    const double start = this->seconds(*found->presentation);
    return FrameStart{start, std::max(0.0, start - this->seconds(found->seekTimestamp))};
}

} // namespace cardreel
