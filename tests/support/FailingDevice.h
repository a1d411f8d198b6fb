#pragma once

#include "platform/files/FileSteps.h"

#include <algorithm>
#include <cerrno>
#include <limits>

namespace cardreel::test {

/// A device on which only so many bytes find room, over all files together. What fits is really written.
class FailingDevice : public FileSteps
{
public:
    size_t room = std::numeric_limits<size_t>::max();
    bool copiesRanges = true; ///< whether the system can copy within itself here
    bool syncsDisk = true;    ///< whether what was written reaches it at last

    ssize_t copyRange(int from, int to, size_t count) override
    {
        if (!copiesRanges) {
            errno = EXDEV;
            return -1;
        }
        return room == 0 ? refuse() : taken(FileSteps::copyRange(from, to, std::min(count, room)));
    }
    ssize_t write(int file, const char* bytes, size_t count) override
    {
        return room == 0 ? refuse() : taken(FileSteps::write(file, bytes, std::min(count, room)));
    }
    int syncDisk(const QByteArray& folder) override
    {
        errno = EIO;
        return syncsDisk ? FileSteps::syncDisk(folder) : -1;
    }

private:
    static ssize_t refuse()
    {
        errno = ENOSPC;
        return -1;
    }
    ssize_t taken(ssize_t count)
    {
        room -= static_cast<size_t>(std::max<ssize_t>(count, 0));
        return count;
    }
};

} // namespace cardreel::test
