#include "platform/video/RenderThread.h"

#include <QTransform>

#include <mpv/render.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace cardreel {

/// Pixel memory that goes round between the render thread and whoever still shows an older picture; a fresh allocation
/// for each picture would cost page faults as long as drawing it. Outlives the thread as long as pictures do.
class RenderThread::Buffers : public std::enable_shared_from_this<RenderThread::Buffers>
{
public:
    /// A writable picture whose memory comes back here when its last copy is gone.
    QImage image(QSize size)
    {
        // libmpv draws fastest into rows that are aligned so.
        constexpr qsizetype alignment = 64;
        const qsizetype bytesPerLine = (qsizetype{size.width()} * 4 + alignment - 1) / alignment * alignment;
        const auto bytes = static_cast<std::size_t>(bytesPerLine * size.height() + alignment);
        auto loan = std::make_unique<Loan>();
        loan->home = shared_from_this();
        {
            const std::lock_guard lock(m_mutex);
            const auto fitting = std::find_if(m_free.begin(), m_free.end(),
                                              [bytes](const Memory& memory) { return memory.size() == bytes; });
            if (fitting != m_free.end())
                loan->memory = std::move(*fitting);
            m_free.erase(std::remove_if(m_free.begin(), m_free.end(),
                                        [bytes](const Memory& memory) { return memory.size() != bytes; }),
                         m_free.end());
        }
        if (loan->memory.empty())
            loan->memory.resize(bytes);
        uchar* const start = loan->memory.data();
        uchar* const aligned = start + (alignment - reinterpret_cast<std::uintptr_t>(start) % alignment) % alignment;
        return QImage(aligned, size.width(), size.height(), bytesPerLine, QImage::Format_RGB32, &Buffers::giveBack,
                      loan.release());
    }

private:
    using Memory = std::vector<uchar>;

    struct Loan
    {
        std::shared_ptr<Buffers> home;
        Memory memory;
    };

    static void giveBack(void* opaque)
    {
        const std::unique_ptr<Loan> loan(static_cast<Loan*>(opaque));
        const std::lock_guard lock(loan->home->m_mutex);
        // One on screen, one published, one being drawn: more are never needed.
        if (loan->home->m_free.size() < 3)
            loan->home->m_free.push_back(std::move(loan->memory));
    }

    std::mutex m_mutex;
    std::vector<Memory> m_free;
};

RenderThread::RenderThread(mpv_handle* mpv, std::function<void()> pictureReady)
    : m_pictureReady(std::move(pictureReady))
    , m_buffers(std::make_shared<Buffers>())
{
    char type[] = MPV_RENDER_API_TYPE_SW;
    mpv_render_param parameters[] = {{MPV_RENDER_PARAM_API_TYPE, type}, {MPV_RENDER_PARAM_INVALID, nullptr}};
    if (!mpv || mpv_render_context_create(&m_context, mpv, parameters) < 0) {
        m_context = nullptr;
        return;
    }
    mpv_render_context_set_update_callback(
        m_context,
        [](void* opaque) {
            auto* const self = static_cast<RenderThread*>(opaque);
            const std::lock_guard lock(self->m_mutex);
            self->m_isUpdated = true;
            self->m_wake.notify_one();
        },
        this);
    m_thread = std::thread(&RenderThread::run, this);
}

RenderThread::~RenderThread()
{
    if (!m_context)
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_wake.notify_one();
    m_thread.join();
    mpv_render_context_set_update_callback(m_context, nullptr, nullptr);
    mpv_render_context_free(m_context);
}

void RenderThread::setSize(QSize pixels)
{
    const std::lock_guard lock(m_mutex);
    if (m_size == pixels)
        return;
    m_size = pixels;
    m_isRedrawWanted = true;
    m_wake.notify_one();
}

void RenderThread::setRotation(int degrees)
{
    const std::lock_guard lock(m_mutex);
    m_rotation = degrees;
}

void RenderThread::redraw()
{
    const std::lock_guard lock(m_mutex);
    m_isRedrawWanted = true;
    m_wake.notify_one();
}

void RenderThread::setVisibility(Visibility visibility)
{
    const std::lock_guard lock(m_mutex);
    m_visibility = visibility;
    if (visibility == Visibility::Hidden)
        m_image = {};
    if (visibility != Visibility::Shown)
        return;
    m_isRedrawWanted = true;
    m_wake.notify_one();
}

void RenderThread::setPictureInterval(std::chrono::milliseconds interval)
{
    const std::lock_guard lock(m_mutex);
    m_pictureInterval = interval;
}

QImage RenderThread::image() const
{
    const std::lock_guard lock(m_mutex);
    return m_image;
}

void RenderThread::detach()
{
    const std::lock_guard lock(m_mutex);
    m_pictureReady = nullptr;
}

void RenderThread::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_isUpdated || m_isRedrawWanted || m_isEnding; });
        if (m_isEnding)
            return;
        m_isUpdated = false;
        const bool isRedraw = std::exchange(m_isRedrawWanted, false);
        const auto now = std::chrono::steady_clock::now();
        const bool isDue = isRedraw || now - m_lastDrawn >= m_pictureInterval;
        const bool isDrawn = m_visibility == Visibility::Shown && !m_size.isEmpty() && isDue;
        const QSize size = m_size;
        const int rotation = m_rotation;
        lock.unlock();
        const bool isNew = (mpv_render_context_update(m_context) & MPV_RENDER_UPDATE_FRAME) != 0;
        if (isDrawn && (isNew || isRedraw)) {
            m_lastDrawn = now;
            draw(size, rotation);
        } else if (isNew)
            skip();
        lock.lock();
    }
}

void RenderThread::draw(QSize shown, int rotation)
{
    const QSize size = rotation % 180 == 0 ? shown : shown.transposed();
    QImage image = m_buffers->image(size);
    if (image.isNull())
        return skip();
    int dimensions[] = {size.width(), size.height()};
    char format[] = "bgr0"; // in memory order, as Format_RGB32 is on a little-endian machine
    auto stride = static_cast<std::size_t>(image.bytesPerLine());
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_SW_SIZE, dimensions}, {MPV_RENDER_PARAM_SW_FORMAT, format},
        {MPV_RENDER_PARAM_SW_STRIDE, &stride},  {MPV_RENDER_PARAM_SW_POINTER, image.bits()},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_render(m_context, parameters) >= 0)
        publish(rotation == 0 ? std::move(image) : image.transformed(QTransform().rotate(rotation)));
}

void RenderThread::skip()
{
    // mpv waits for its frames to be taken, and slows down when nobody does.
    int isSkipped = 1;
    mpv_render_param parameters[] = {{MPV_RENDER_PARAM_SKIP_RENDERING, &isSkipped},
                                     {MPV_RENDER_PARAM_INVALID, nullptr}};
    mpv_render_context_render(m_context, parameters);
}

void RenderThread::publish(QImage image)
{
    // The former picture's memory may go back to the buffers only after the lock is released: its owner's lock is
    // theirs.
    QImage former;
    const std::lock_guard lock(m_mutex);
    if (m_visibility != Visibility::Shown)
        return;
    former = std::exchange(m_image, std::move(image));
    if (m_pictureReady)
        m_pictureReady();
}

} // namespace cardreel
