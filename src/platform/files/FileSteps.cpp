#include "platform/files/FileSteps.h"

#include <QRandomGenerator>

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace cardreel {

namespace {

QString systemsReason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// What may be done with the former file may be done with the new one. A card's file system may know no such thing.
void takePermissions(int file, const QByteArray& formerPath)
{
    struct stat former
    {
    };
    if (stat(formerPath.constData(), &former) == 0)
        (void)fchmod(file, former.st_mode & 0777);
}

/// Writes the bytes and has them reach the card, and closes the file in any case.
bool fill(FileSteps& steps, int file, const QByteArray& bytes, QString& error)
{
    const bool isThere =
        writeAll(steps, file, bytes.constData(), static_cast<size_t>(bytes.size())) && steps.sync(file) == 0;
    if (!isThere)
        error = systemsReason();
    const bool isClosed = steps.close(file) == 0;
    if (isThere && !isClosed)
        error = systemsReason();
    return isThere && isClosed;
}

} // namespace

int FileSteps::create(const QByteArray& path)
{
    return open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

int FileSteps::openToRead(const QByteArray& path)
{
    return open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

ssize_t FileSteps::read(int file, char* bytes, size_t count)
{
    return ::read(file, bytes, count);
}

ssize_t FileSteps::copyRange(int from, int to, size_t count)
{
    return copy_file_range(from, nullptr, to, nullptr, count, 0);
}

ssize_t FileSteps::write(int file, const char* bytes, size_t count)
{
    return ::write(file, bytes, count);
}

int FileSteps::sync(int file)
{
    return fsync(file);
}

int FileSteps::close(int file)
{
    return ::close(file);
}

int FileSteps::rename(const QByteArray& from, const QByteArray& to)
{
    return std::rename(from.constData(), to.constData());
}

int FileSteps::renameToNew(const QByteArray& from, const QByteArray& to)
{
    const int result = renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE);
    if (result == 0 || (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP))
        return result;
    if (faccessat(AT_FDCWD, to.constData(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) {
        errno = EEXIST;
        return -1;
    }
    return std::rename(from.constData(), to.constData());
}

int FileSteps::remove(const QByteArray& path)
{
    return unlink(path.constData());
}

int FileSteps::syncFolder(const QByteArray& folder)
{
    const int opened = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return -1;
    int result = fsync(opened);
    // Some file systems know no such thing for folders; then all that can be done was done.
    if (result != 0 && (errno == EINVAL || errno == ENOTSUP))
        result = 0;
    const int reason = errno;
    ::close(opened);
    errno = reason;
    return result;
}

int FileSteps::syncDisk(const QByteArray& folder)
{
    const int opened = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return -1;
    const int result = syncfs(opened);
    const int reason = errno;
    ::close(opened);
    errno = reason;
    return result;
}

int createTemporary(FileSteps& steps, const QByteArray& path, QByteArray& temporary)
{
    constexpr int attempts = 100;
    const QByteArray folder = path.first(path.lastIndexOf('/') + 1);
    int file = -1;
    for (int i = 0; i < attempts && file < 0; ++i) {
        temporary = folder + ".cardreel-" + QByteArray::number(QRandomGenerator::global()->generate(), 16);
        file = steps.create(temporary);
        if (file < 0 && errno != EEXIST)
            break;
    }
    return file;
}

bool writeAll(FileSteps& steps, int file, const char* bytes, size_t count)
{
    for (size_t done = 0; done < count;) {
        const ssize_t written = steps.write(file, bytes + done, count - done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written == 0)
            errno = EIO; // a device that takes nothing would be asked for ever
        if (written <= 0)
            return false;
        done += static_cast<size_t>(written);
    }
    return true;
}

bool replaceFile(const QByteArray& path, const QByteArray& bytes, FileSteps& steps, QString& error)
{
    const QByteArray folder = path.first(path.lastIndexOf('/') + 1);
    QByteArray temporary;
    const int file = createTemporary(steps, path, temporary);
    if (file < 0) {
        error = systemsReason();
        return false;
    }
    takePermissions(file, path);
    if (!fill(steps, file, bytes, error)) {
        steps.remove(temporary);
        return false;
    }
    if (steps.rename(temporary, path) != 0) {
        error = systemsReason();
        steps.remove(temporary);
        return false;
    }
    if (steps.syncFolder(folder) != 0) {
        error = systemsReason();
        return false;
    }
    return true;
}

} // namespace cardreel
