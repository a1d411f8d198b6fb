#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace cardreel {

/// The system's steps of replacing and copying files, one by one, so that a test can let each of them fail. Each
/// returns what the system call of the same purpose does and leaves the reason in errno. Paths are native. Any thread.
class FileSteps
{
public:
    virtual ~FileSteps() = default;

    /// A new file to write to; its descriptor, or -1 also when there is something already.
    virtual int create(const QByteArray& path);
    /// A file to read, never waiting for a pipe's or device's other end; its descriptor or -1.
    virtual int openToRead(const QByteArray& path);
    virtual ssize_t read(int file, char* bytes, size_t count);
    /// Within the system, at both files' positions, where their file systems know how.
    virtual ssize_t copyRange(int from, int to, size_t count);
    virtual ssize_t write(int file, const char* bytes, size_t count);
    virtual int sync(int file);
    virtual int close(int file);
    virtual int rename(const QByteArray& from, const QByteArray& to);
    /// Fails with EEXIST when there is something at `to`, which is looked up first where that can't be done in one go.
    virtual int renameToNew(const QByteArray& from, const QByteArray& to);
    virtual int remove(const QByteArray& path);
    virtual int syncFolder(const QByteArray& folder);
    /// Has everything reach the disk that was written to the one that holds the folder.
    virtual int syncDisk(const QByteArray& folder);
};

/// A new file for what is to be `path`, beside it, under a hidden name that no two programs come upon and that is no
/// recording's; its descriptor, or -1. `temporary` receives its path.
int createTemporary(FileSteps& steps, const QByteArray& path, QByteArray& temporary);

/// Writes all bytes, however many calls that takes; false with the reason in errno.
bool writeAll(FileSteps& steps, int file, const char* bytes, size_t count);

/// Puts `bytes` in the place of the file at `path`, in a folder that is there: whatever fails, and whenever the card is
/// pulled, the file is the former one or the whole new one; only from a card that can't be reached any more the
/// unfinished file beside it isn't removed. The new one has reached the card when this returns true. Otherwise `error`
/// is the system's reason.
bool replaceFile(const QByteArray& path, const QByteArray& bytes, FileSteps& steps, QString& error);

} // namespace cardreel
