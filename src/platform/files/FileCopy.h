#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <optional>

/// Copies of single files that are whole or not there at all, for jobs that copy many. Any thread.
namespace cardreel {

class FileSteps;

/// Why a file or folder couldn't be copied or made.
struct FileError
{
    enum class Code {
        NoSuchFile = 260, ///< there is nothing to read; only of the source
        CannotRead,
        Changed, ///< the source grew, shrank, or was replaced by something else meanwhile
        Exists,  ///< what would be written is there already
        CannotWrite,
        Differs,  ///< what was written doesn't read back as the source
        Overlaps, ///< the target lies in what is to be copied, or the other way round
    };
    Code code = Code::CannotRead;
    QString path;   ///< of the file or folder that it happened to
    QString reason; ///< the system's, or one of ours from tr()

    /// For the user: the path and the reason.
    QString text() const;

    Q_DECLARE_TR_FUNCTIONS(cardreel::FileError)
};

enum class ReadBack { No, Compare /**< has the copy reach its device, reads it from there and compares each byte */ };

/// Copies a regular file with its permissions and its times, to the nanosecond where the file systems keep them. The
/// copy has its name only once it is whole, and as many bytes as its source; what is at `target` already, be it a link
/// that leads nowhere, is never overwritten. After an error nothing is left at `target`. The folder has to be there.
std::optional<FileError> copyFile(const QString& source, const QString& target, FileSteps& steps,
                                  ReadBack readBack = ReadBack::No);

/// Makes `relative` with the folders above it in `root`, which has to be there: it may be a disk that was pulled, whose
/// place is then on another disk. A folder that exists is no error. `made`, when given, receives those
/// that weren't there, from above.
std::optional<FileError> makeFolders(const QString& root, const QString& relative, QStringList* made = nullptr);

} // namespace cardreel
