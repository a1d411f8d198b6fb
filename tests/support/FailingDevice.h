#pragma once

#include "platform/files/FileSteps.h"

#include <QMap>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace cardreel::test {

/// A device on which only so many bytes find room, over all files together, and some steps fail. What fits is really
/// written. The system copies within itself in small pieces.
class FailingDevice : public FileSteps
{
public:
    enum class Step { CopyRange, Sync, Close, RenameToNew, SyncDisk };

    size_t room = std::numeric_limits<size_t>::max();
    QMap<Step, int> failsFrom; ///< the first call of a step, from 1 on, that is refused, as are those after it

    ssize_t copyRange(int from, int to, size_t count) override
    {
        constexpr size_t piece = 1 << 20;
        if (refuses(Step::CopyRange))
            return -1;
        return room == 0 ? full() : taken(FileSteps::copyRange(from, to, std::min({count, room, piece})));
    }
    ssize_t write(int file, const char* bytes, size_t count) override
    {
        return room == 0 ? full() : taken(FileSteps::write(file, bytes, std::min(count, room)));
    }
    int sync(int file) override { return refuses(Step::Sync) ? -1 : FileSteps::sync(file); }
    int close(int file) override
    {
        const int result = FileSteps::close(file); // also when it tells of a failure
        return refuses(Step::Close) ? -1 : result;
    }
    int renameToNew(const QByteArray& from, const QByteArray& to) override
    {
        return refuses(Step::RenameToNew) ? -1 : FileSteps::renameToNew(from, to);
    }
    int syncDisk(const QByteArray& folder) override
    {
        return refuses(Step::SyncDisk) ? -1 : FileSteps::syncDisk(folder);
    }

private:
    bool refuses(Step step)
    {
        const bool isRefused = ++m_calls[step] >= failsFrom.value(step, std::numeric_limits<int>::max());
        if (isRefused)
            errno = EIO;
        return isRefused;
    }
    static ssize_t full()
    {
        errno = ENOSPC;
        return -1;
    }
    ssize_t taken(ssize_t count)
    {
        room -= static_cast<size_t>(std::max<ssize_t>(count, 0));
        return count;
    }

    QMap<Step, int> m_calls;
};

} // namespace cardreel::test
