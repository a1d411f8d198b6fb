#pragma once

#include <QImage>
#include <QSize>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

struct mpv_handle;
struct mpv_render_context;

namespace cardreel {

/// Draws one player's video into pictures of the pane's size, on a thread of its own. Owned by VideoPlayer, called on
/// the interface thread, destroyed in the background before the mpv handle.
class RenderThread
{
public:
    /// `pictureReady` is called on the render thread after image() has changed; it must only queue.
    RenderThread(mpv_handle* mpv, std::function<void()> pictureReady);
    /// Waits for the picture being drawn and for mpv to close its video output.
    ~RenderThread();
    RenderThread(const RenderThread&) = delete;
    RenderThread& operator=(const RenderThread&) = delete;

    bool isValid() const { return m_context != nullptr; }

    void setSize(QSize pixels);
    /// Clockwise turn of what is drawn from now on: 0, 90, 180 or 270 degrees.
    void setRotation(int degrees);
    /// Draws the present frame anew.
    void redraw();
    enum class Visibility {
        Hidden, ///< there is no picture, and frames are passed over
        Held,   ///< the last picture stays, and frames are passed over
        Shown,  ///< becoming so draws the present frame
    };
    void setVisibility(Visibility visibility);
    /// Frames that follow a drawn one within this time are passed over; 0 draws all.
    void setPictureInterval(std::chrono::milliseconds interval);
    QImage image() const;
    /// After it returns `pictureReady` is not called any more.
    void detach();

private:
    class Buffers;

    void run();
    void draw(QSize shown, int rotation);
    void skip();
    void publish(QImage image);

    mpv_render_context* m_context = nullptr;
    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::function<void()> m_pictureReady;
    QImage m_image;
    QSize m_size;
    int m_rotation = 0;
    Visibility m_visibility = Visibility::Hidden;
    std::chrono::milliseconds m_pictureInterval{0};
    std::chrono::steady_clock::time_point m_lastDrawn;
    bool m_isUpdated = false;
    bool m_isRedrawWanted = false;
    bool m_isEnding = false;
    std::shared_ptr<Buffers> m_buffers;
    std::thread m_thread;
};

} // namespace cardreel
