#include "platform/files/FileCopy.h"

#include "platform/files/FileSteps.h"
#include "platform/files/Files.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

using Code = FileError::Code;

constexpr size_t rangeBytes = 64U << 20; // what the system copies in one call
constexpr size_t bufferBytes = 1U << 20;

FileError systemError(Code code, const QString& path)
{
    return {code, path, QString::fromLocal8Bit(std::strerror(errno))};
}

/// A descriptor that is closed in any case.
class OpenFile
{
public:
    OpenFile(FileSteps& steps, int file)
        : m_steps(steps)
        , m_file(file)
    {
    }
    ~OpenFile()
    {
        if (m_file >= 0)
            m_steps.close(m_file);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int get() const { return m_file; }
    bool close() { return m_steps.close(std::exchange(m_file, -1)) == 0; }

private:
    FileSteps& m_steps;
    int m_file;
};

/// One copy under way.
class Copy
{
public:
    Copy(const QString& source, const QString& target, FileSteps& steps)
        : m_steps(steps)
        , m_source(source)
        , m_target(target)
        , m_in(steps, steps.openToRead(files::nativePath(source)))
    {
    }

    std::optional<FileError> run(ReadBack readBack);

private:
    std::optional<FileError> checkSource();
    std::optional<FileError> writeTo(OpenFile& out);
    std::optional<FileError> copyBytes(int out);
    std::optional<FileError> copyThroughBuffer(int out);
    std::optional<FileError> checkLength(int out) const;
    std::optional<FileError> finish(OpenFile& out, ReadBack readBack);
    std::optional<FileError> compare();
    ssize_t readWhole(int file, std::vector<char>& buffer);

    FileSteps& m_steps;
    QString m_source;
    QString m_target;
    QByteArray m_temporary;
    OpenFile m_in;
    struct stat m_found = {};
    off_t m_copied = 0;
};

std::optional<FileError> Copy::checkSource()
{
    if (m_in.get() < 0)
        return systemError(errno == ENOENT ? Code::NoSuchFile : Code::CannotRead, m_source);
    if (fstat(m_in.get(), &m_found) != 0)
        return systemError(Code::CannotRead, m_source);
    if (!S_ISREG(m_found.st_mode))
        return FileError{Code::CannotRead, m_source, FileError::tr("Not a regular file")};
    return {};
}

std::optional<FileError> Copy::run(ReadBack readBack)
{
    if (std::optional<FileError> error = checkSource())
        return error;
    struct stat there = {};
    const QByteArray nativeTarget = files::nativePath(m_target);
    if (lstat(nativeTarget.constData(), &there) == 0) {
        errno = EEXIST;
        return systemError(Code::Exists, m_target);
    }
    OpenFile out(m_steps, createTemporary(m_steps, nativeTarget, m_temporary));
    if (out.get() < 0)
        return systemError(Code::CannotWrite, m_target);
    std::optional<FileError> error = writeTo(out);
    if (!error)
        error = finish(out, readBack);
    if (!error && m_steps.renameToNew(m_temporary, nativeTarget) != 0)
        error = systemError(errno == EEXIST ? Code::Exists : Code::CannotWrite, m_target);
    if (error)
        m_steps.remove(m_temporary);
    return error;
}

std::optional<FileError> Copy::writeTo(OpenFile& out)
{
    (void)posix_fadvise(m_in.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    if (std::optional<FileError> error = copyBytes(out.get()))
        return error;
    return checkLength(out.get());
}

/// The system copies fastest, but not between all file systems, and at what it takes for the end it may be wrong. The
/// buffer goes on from there.
std::optional<FileError> Copy::copyBytes(int out)
{
    while (m_copied < m_found.st_size) {
        const ssize_t count = m_steps.copyRange(m_in.get(), out, rangeBytes);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG))
            return systemError(Code::CannotWrite, m_target);
        if (count <= 0)
            break;
        m_copied += count;
    }
    return copyThroughBuffer(out);
}

/// As much as fits the buffer; less only at the end of the file, -1 with the reason in errno.
ssize_t Copy::readWhole(int file, std::vector<char>& buffer)
{
    size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count = m_steps.read(file, buffer.data() + done, buffer.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        done += static_cast<size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

std::optional<FileError> Copy::copyThroughBuffer(int out)
{
    thread_local std::vector<char> buffer(bufferBytes);
    for (;;) {
        const ssize_t count = m_steps.read(m_in.get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return systemError(Code::CannotRead, m_source);
        if (count == 0)
            return {};
        if (!writeAll(m_steps, out, buffer.data(), static_cast<size_t>(count)))
            return systemError(Code::CannotWrite, m_target);
        m_copied += count;
    }
}

/// Everything that the source had at the beginning, and that it has now, has to be in the copy.
std::optional<FileError> Copy::checkLength(int out) const
{
    struct stat now = {};
    struct stat written = {};
    if (fstat(m_in.get(), &now) != 0)
        return systemError(Code::CannotRead, m_source);
    if (m_copied != m_found.st_size || now.st_size != m_copied)
        return FileError{Code::Changed, m_source, FileError::tr("Its length changed while it was copied")};
    if (fstat(out, &written) != 0)
        return systemError(Code::CannotWrite, m_target);
    if (written.st_size != m_copied)
        return FileError{Code::CannotWrite, m_target, FileError::tr("The copy isn't as long as its source")};
    return {};
}

std::optional<FileError> Copy::finish(OpenFile& out, ReadBack readBack)
{
    if (readBack == ReadBack::Compare) {
        if (m_steps.sync(out.get()) != 0)
            return systemError(Code::CannotWrite, m_target);
        // What is read back is to come from the device, not from memory.
        (void)posix_fadvise(out.get(), 0, 0, POSIX_FADV_DONTNEED);
    }
    // Many file systems of cards and sticks know no permissions; a copy without them is as good.
    (void)fchmod(out.get(), m_found.st_mode & 0777);
    const struct timespec times[] = {m_found.st_atim, m_found.st_mtim};
    if (futimens(out.get(), times) != 0)
        return systemError(Code::CannotWrite, m_target);
    if (!out.close())
        return systemError(Code::CannotWrite, m_target);
    if (readBack == ReadBack::Compare)
        return compare();
    return {};
}

std::optional<FileError> Copy::compare()
{
    OpenFile copy(m_steps, m_steps.openToRead(m_temporary));
    if (copy.get() < 0)
        return systemError(Code::Differs, m_target);
    if (lseek(m_in.get(), 0, SEEK_SET) != 0)
        return systemError(Code::CannotRead, m_source);
    std::vector<char> expected(bufferBytes);
    std::vector<char> found(bufferBytes);
    for (;;) {
        const ssize_t count = readWhole(m_in.get(), expected);
        if (count < 0)
            return systemError(Code::CannotRead, m_source);
        const ssize_t copied = readWhole(copy.get(), found);
        if (copied < 0)
            return systemError(Code::Differs, m_target);
        if (copied != count || std::memcmp(expected.data(), found.data(), static_cast<size_t>(count)) != 0)
            return FileError{Code::Differs, m_target, FileError::tr("The copy doesn't read back as its source")};
        if (static_cast<size_t>(count) < expected.size())
            return {};
    }
}

} // namespace

QString FileError::text() const
{
    return files::displayPath(path) + u": "_s + reason;
}

std::optional<FileError> copyFile(const QString& source, const QString& target, FileSteps& steps, ReadBack readBack)
{
    return Copy(source, target, steps).run(readBack);
}

std::optional<FileError> makeFolders(const QString& root, const QString& relative, QStringList* made)
{
    QString path = root;
    for (const QString& name : relative.split(u'/', Qt::SkipEmptyParts)) {
        path = files::join(path, name);
        const QByteArray native = files::nativePath(path);
        const bool isNew = mkdir(native.constData(), 0777) == 0;
        const int reason = errno;
        struct stat there = {};
        const bool isThere = !isNew && lstat(native.constData(), &there) == 0;
        if (isThere && S_ISLNK(there.st_mode))
            return FileError{Code::CannotWrite, path, FileError::tr("It is a link, which may lead to a card")};
        if (!isNew && !(isThere && S_ISDIR(there.st_mode))) {
            errno = reason;
            return systemError(Code::CannotWrite, path);
        }
        if (isNew && made)
            *made << path;
    }
    return {};
}

} // namespace cardreel
