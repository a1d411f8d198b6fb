#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace cardreel {

/// The system's steps of replacing a file, one by one, so that a test can let each of them fail. Each returns what the
/// system call of the same purpose does and leaves the reason in errno. Paths are native. Any thread.
class FileSteps
{
public:
    virtual ~FileSteps() = default;

    /// A new file to write to; its descriptor, or -1 also when there is something already.
    virtual int create(const QByteArray& path);
    virtual ssize_t write(int file, const char* bytes, size_t count);
    virtual int sync(int file);
    virtual int close(int file);
    virtual int rename(const QByteArray& from, const QByteArray& to);
    virtual int remove(const QByteArray& path);
    virtual int syncFolder(const QByteArray& folder);
};

/// Puts `bytes` in the place of the file at `path`, in a folder that is there: whatever fails, and whenever the card is
/// pulled, the file is the former one or the whole new one; only from a card that can't be reached any more the
/// unfinished file beside it isn't removed. The new one has reached the card when this returns true. Otherwise `error`
/// is the system's reason.
bool replaceFile(const QByteArray& path, const QByteArray& bytes, FileSteps& steps, QString& error);

} // namespace cardreel
