#pragma once

#include <QString>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace cardreel {

/// Finds the start of the frame that is on screen at a time, on a thread of its own because a card may be slow to
/// answer. Owned by VideoPlayer, which is called back on that thread; the newest question replaces one not yet begun.
class FrameLookup
{
public:
    struct Frame
    {
        double seconds = 0;    ///< its start from the file's start; what was asked for when the frame can't be told
        double seekBefore = 0; ///< a demuxer has to seek this much earlier to meet the frame's key frame
    };
    using Answer = std::function<void(quint64 question, Frame frame)>;

    explicit FrameLookup(Answer answer);
    /// Waits for a read under way: destroyed in the background.
    ~FrameLookup();

    void open(const QString& path);
    /// The number that comes back with the answer.
    quint64 ask(double seconds);
    /// After it returns nothing is answered any more.
    void detach();

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    Answer m_answer;
    QString m_path;
    quint64 m_file = 0;
    quint64 m_question = 0;
    double m_seconds = 0;
    bool m_isAsked = false;
    bool m_isEnding = false;
    std::atomic<bool> m_cancel = false;
    std::thread m_thread;
};

} // namespace cardreel
