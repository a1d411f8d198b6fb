#pragma once

#include "platform/files/FileSteps.h"

#include <QByteArray>
#include <QString>

namespace cardreel {

/// A file in the making: it is written under a name of its own beside the target and takes the target's name when it is
/// whole. What wasn't committed is gone with this object. One thread at a time.
class StagedFile
{
public:
    /// Touches nothing yet.
    explicit StagedFile(const QString& targetPath);
    ~StagedFile();
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;

    /// Where to write, with the target's extension. Somebody else may make that file.
    const QString& path() const { return m_path; }

    /// Once: writes the bytes and has them reach the disk. Otherwise `error` is the system's reason.
    bool write(const QByteArray& bytes, QString& error);
    /// Has what somebody else wrote there reach the disk.
    bool sync(QString& error);
    /// Gives the file its final name, in the place of what has it. Quick: it waits for no data.
    bool commit(QString& error);

    /// Removes what wasn't committed.
    void discard();

private:
    FileSteps m_steps;
    QString m_target;
    QString m_path;
    bool m_committed = false;
};

} // namespace cardreel
