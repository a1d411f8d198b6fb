#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <initializer_list>

struct mpv_handle;
struct mpv_event;
struct mpv_stream_cb_info;

namespace cardreel {

/// One libmpv player core with this program's options and file reading. Nothing here waits for the core: commands and
/// properties are queued, and answers come as events. Created on the interface thread, which also pumps the events;
/// destroyed in the background, because ending a core takes its time.
class MpvHandle
{
public:
    /// `audioOutputs` are mpv's drivers in the order in which they are tried.
    explicit MpvHandle(const QByteArray& audioOutputs);
    ~MpvHandle();
    MpvHandle(const MpvHandle&) = delete;
    MpvHandle& operator=(const MpvHandle&) = delete;

    /// False when libmpv couldn't start.
    bool isValid() const { return m_isInitialized; }
    mpv_handle* get() const { return m_handle; }

    /// `wakeup` is called on any thread when there are events; it must only queue. None is under way once an empty one
    /// has been set.
    void setWakeup(std::function<void()> wakeup);
    /// Hands over every event that waits, until `isGone`: then this handle may not exist any more.
    void pump(const std::function<void(const mpv_event&)>& handle, const std::function<bool()>& isGone);

    /// Each returns at once; a reply of the given number follows as an event, errors included.
    void command(std::initializer_list<const char*> arguments, quint64 reply = 0);
    void setFlag(const char* property, bool value);
    void setNumber(const char* property, double value);
    void setText(const char* property, const char* value, quint64 reply = 0);
    void askNumber(const char* property, quint64 reply);
    void askFlag(const char* property, quint64 reply);

    /// What to give to "loadfile" for a path.
    static QByteArray location(const QString& path);
    /// Whether reading any file has failed since the last call, as when a card was pulled.
    bool takeReadError() { return m_readFailed.exchange(false); }

private:
    static int openFile(void* self, char* location, mpv_stream_cb_info* stream);

    mpv_handle* m_handle = nullptr;
    bool m_isInitialized = false;
    std::function<void()> m_wakeup;
    std::atomic<bool> m_readFailed = false;
};

} // namespace cardreel
