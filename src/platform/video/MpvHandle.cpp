#include "platform/video/MpvHandle.h"

#include "platform/files/Files.h"
#include "platform/video/VideoSource.h"

#include <QLoggingCategory>

#include <mpv/client.h>
#include <mpv/stream_cb.h>

#include <cerrno>
#include <clocale>
#include <cstring>
#include <memory>
#include <unistd.h>
#include <utility>
#include <vector>

namespace cardreel {
namespace {

Q_LOGGING_CATEGORY(logVideo, "cardreel.video", QtWarningMsg)

constexpr auto protocol = "cardreel";

struct Option
{
    const char* name;
    const char* value;
};

constexpr Option options[] = {
    {"vo", "libmpv"},
    {"config", "no"},
    {"terminal", "no"},
    {"idle", "yes"},
    {"osc", "no"},
    {"load-scripts", "no"},
    {"load-stats-overlay", "no"},
    {"load-osd-console", "no"},
    {"load-auto-profiles", "no"},
    {"ytdl", "no"},
    {"osd-level", "0"},
    {"input-default-bindings", "no"},
    {"input-media-keys", "no"},
    {"sub-auto", "no"},
    {"sid", "no"},
    {"audio-file-auto", "no"},
    {"cover-art-auto", "no"},
    {"audio-display", "no"},
    {"access-references", "no"},
    {"ordered-chapters", "no"},
    {"cache", "no"},
    {"demuxer", "lavf"},
    {"pause", "yes"},
    {"keep-open", "yes"},
    // The end stops the picture, not the player: sought back while playing, it plays on.
    {"keep-open-pause", "no"},
    // The software renderer can't turn pictures, and believes it can; RenderThread does it.
    {"video-rotate", "no"},
    {"hwdec", "auto-copy-safe"},
    {"framedrop", "decoder+vo"},
    {"hr-seek", "yes"},
};

/// An open file as mpv reads it; mpv owns it from opening to closing.
struct OpenFile
{
    std::unique_ptr<QFile> file;
    std::int64_t position = 0;
    std::atomic<bool>* readFailed;

    static std::int64_t read(void* opaque, char* buffer, std::uint64_t size)
    {
        auto* const self = static_cast<OpenFile*>(opaque);
        ssize_t got = 0;
        do {
            got = ::pread(self->file->handle(), buffer, static_cast<std::size_t>(size), self->position);
        } while (got < 0 && errno == EINTR);
        if (got < 0) {
            *self->readFailed = true;
            return -1;
        }
        self->position += got;
        return got;
    }

    static std::int64_t seek(void* opaque, std::int64_t offset)
    {
        if (offset < 0)
            return MPV_ERROR_GENERIC;
        static_cast<OpenFile*>(opaque)->position = offset;
        return offset;
    }

    static std::int64_t size(void* opaque) { return static_cast<OpenFile*>(opaque)->file->size(); }

    static void close(void* opaque) { delete static_cast<OpenFile*>(opaque); }
};

} // namespace

MpvHandle::MpvHandle(const QByteArray& audioOutputs)
{
    // libmpv refuses to start otherwise; Qt sets the user's locale when the application object is made.
    if (std::strcmp(std::setlocale(LC_NUMERIC, nullptr), "C") != 0)
        std::setlocale(LC_NUMERIC, "C");
    silenceFFmpeg();
    m_handle = mpv_create();
    if (!m_handle) {
        qCWarning(logVideo, "mpv_create failed");
        return;
    }
    for (const Option& option : options) {
        const int result = mpv_set_option_string(m_handle, option.name, option.value);
        if (result < 0)
            qCWarning(logVideo, "option %s: %s", option.name, mpv_error_string(result));
    }
    const QByteArray limit = "max_pixels=" + QByteArray::number(maximumVideoPixels);
    mpv_set_option_string(m_handle, "vd-lavc-o", limit.constData());
    mpv_set_option_string(m_handle, "ao", audioOutputs.constData());
    // As a map, because its value holds the commas that separate the entries in the textual form.
    mpv_node value{};
    value.format = MPV_FORMAT_STRING;
    QByteArray formats(acceptedVideoFormats);
    value.u.string = formats.data();
    char key[] = "format_whitelist";
    char* keys[] = {key};
    mpv_node_list list{1, &value, keys};
    mpv_node map{};
    map.format = MPV_FORMAT_NODE_MAP;
    map.u.list = &list;
    const int mapResult = mpv_set_option(m_handle, "demuxer-lavf-o", MPV_FORMAT_NODE, &map);
    if (mapResult < 0)
        qCWarning(logVideo, "format list: %s", mpv_error_string(mapResult));

    mpv_request_log_messages(m_handle, "error");
    const int result = mpv_initialize(m_handle);
    m_isInitialized = result >= 0 && mpv_stream_cb_add_ro(m_handle, protocol, this, &MpvHandle::openFile) >= 0;
    if (!m_isInitialized)
        qCWarning(logVideo, "libmpv couldn't start: %s", mpv_error_string(result));
}

MpvHandle::~MpvHandle()
{
    setWakeup({});
    if (m_handle)
        mpv_terminate_destroy(m_handle);
}

void MpvHandle::setWakeup(std::function<void()> wakeup)
{
    if (!m_handle)
        return;
    // libmpv holds a lock of its own while it calls back, so nothing is under way once this has returned.
    mpv_set_wakeup_callback(m_handle, nullptr, nullptr);
    m_wakeup = std::move(wakeup);
    if (m_wakeup)
        mpv_set_wakeup_callback(
            m_handle, [](void* self) { static_cast<MpvHandle*>(self)->m_wakeup(); }, this);
}

void MpvHandle::pump(const std::function<void(const mpv_event&)>& handle, const std::function<bool()>& isGone)
{
    if (!m_handle)
        return;
    for (;;) {
        const mpv_event* const event = mpv_wait_event(m_handle, 0);
        if (event->event_id == MPV_EVENT_NONE)
            return;
        if (event->event_id == MPV_EVENT_LOG_MESSAGE) {
            const auto* const message = static_cast<const mpv_event_log_message*>(event->data);
            qCInfo(logVideo, "%s: %s", message->prefix, QByteArray(message->text).trimmed().constData());
            continue;
        }
        handle(*event);
        if (isGone())
            return;
    }
}

void MpvHandle::command(std::initializer_list<const char*> arguments, quint64 reply)
{
    std::vector<const char*> list(arguments);
    list.push_back(nullptr);
    if (m_isInitialized)
        mpv_command_async(m_handle, reply, list.data());
}

void MpvHandle::setFlag(const char* property, bool value)
{
    int flag = value ? 1 : 0;
    if (m_isInitialized)
        mpv_set_property_async(m_handle, 0, property, MPV_FORMAT_FLAG, &flag);
}

void MpvHandle::setNumber(const char* property, double value)
{
    if (m_isInitialized)
        mpv_set_property_async(m_handle, 0, property, MPV_FORMAT_DOUBLE, &value);
}

void MpvHandle::setText(const char* property, const char* value, quint64 reply)
{
    if (m_isInitialized)
        mpv_set_property_async(m_handle, reply, property, MPV_FORMAT_STRING, &value);
}

void MpvHandle::askNumber(const char* property, quint64 reply)
{
    if (m_isInitialized)
        mpv_get_property_async(m_handle, reply, property, MPV_FORMAT_DOUBLE);
}

void MpvHandle::askFlag(const char* property, quint64 reply)
{
    if (m_isInitialized)
        mpv_get_property_async(m_handle, reply, property, MPV_FORMAT_FLAG);
}

QByteArray MpvHandle::location(const QString& path)
{
    // In hexadecimal, because a path may hold any byte but 0 and nothing on the way must take it for something else.
    return QByteArray(protocol) + "://" + files::nativePath(path).toHex();
}

int MpvHandle::openFile(void* self, char* location, mpv_stream_cb_info* stream)
{
    const QByteArray hex = QByteArray(location).mid(static_cast<qsizetype>(std::strlen(protocol)) + 3);
    auto file = std::make_unique<OpenFile>();
    file->file = files::openForReading(files::fromNativePath(QByteArray::fromHex(hex)));
    if (!file->file)
        return MPV_ERROR_LOADING_FAILED;
    file->readFailed = &static_cast<MpvHandle*>(self)->m_readFailed;
    stream->read_fn = &OpenFile::read;
    stream->seek_fn = &OpenFile::seek;
    stream->size_fn = &OpenFile::size;
    stream->close_fn = &OpenFile::close;
    stream->cookie = file.release();
    return 0;
}

} // namespace cardreel
