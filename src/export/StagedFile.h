#pragma once

#include "platform/files/FileSteps.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace cardreel {

/// A file in the making: it is written under a name of its own beside the target and takes the target's name when it is
/// whole. What wasn't committed is gone with this object. Of a link the target is what it leads to. Errors are the
/// system's reasons. One thread at a time.
class StagedFile
{
public:
    /// Touches nothing yet.
    explicit StagedFile(const QString& targetPath);
    ~StagedFile();
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;

    /// Once: writes the bytes, with the permissions of the file that they will replace, and has them reach the disk.
    std::optional<QString> write(const QByteArray& bytes);
    /// Gives the file its final name, in the place of what has it. Quick: it waits for no data.
    std::optional<QString> commit();
    /// Has that name reach the disk, as well as the disk can. Not for the interface thread.
    void syncFolder();

    /// Removes what wasn't committed.
    void discard();

private:
    std::optional<QString> fill(int file, const QByteArray& bytes);

    FileSteps m_steps;
    QByteArray m_target;    ///< native, as is
    QByteArray m_temporary; ///< empty unless there is something to be removed
};

} // namespace cardreel
