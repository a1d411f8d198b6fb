#include "platform/video/FrameLookup.h"

#include "platform/video/VideoSource.h"

#include <utility>

namespace cardreel {

FrameLookup::FrameLookup(Answer answer)
    : m_answer(std::move(answer))
    , m_thread(&FrameLookup::run, this)
{
}

FrameLookup::~FrameLookup()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
        m_cancel = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void FrameLookup::open(const QString& path)
{
    const std::lock_guard lock(m_mutex);
    m_path = path;
    ++m_file;
    m_isAsked = false;
    m_cancel = true;
}

quint64 FrameLookup::ask(double seconds)
{
    const std::lock_guard lock(m_mutex);
    m_seconds = seconds;
    m_isAsked = true;
    m_wake.notify_one();
    return ++m_question;
}

void FrameLookup::detach()
{
    const std::lock_guard lock(m_mutex);
    m_answer = nullptr;
    m_cancel = true;
}

void FrameLookup::run()
{
    std::unique_ptr<VideoSource> source;
    quint64 opened = 0;
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_isAsked || m_isEnding; });
        if (m_isEnding)
            return;
        m_isAsked = false;
        m_cancel = false;
        const quint64 question = m_question;
        const quint64 file = m_file;
        const QString path = m_path;
        const double seconds = m_seconds;
        lock.unlock();

        if (!source || opened != file) {
            source = std::make_unique<VideoSource>(path, &m_cancel);
            opened = file;
        }
        const std::optional<VideoSource::FrameStart> found = source->frameStart(seconds);
        const Frame frame = found ? Frame{found->seconds, found->seekBefore} : Frame{seconds, 0};

        lock.lock();
        // A file opened meanwhile has cancelled this one's reading, and nobody waits for the answer.
        if (file != m_file)
            source.reset();
        else if (m_answer)
            m_answer(question, frame);
    }
}

} // namespace cardreel
