#pragma once

#include "platform/Instant.h"

#include <QString>

#include <optional>
#include <vector>

namespace cardreel {

/// What folders and names on a card mean: which layout a folder has, whether a name fits a pattern, which kind of
/// recording a folder holds and which date a name carries. No state; any thread.
class CardLayout
{
public:
    /// Whether `regexPattern` (ICU syntax) is found in the target exactly once, covering the whole of it. A pattern
    /// that doesn't compile matches nothing.
    static bool fullMatchResultWithTarget(const QString& target, const QString& regexPattern);

    /// Always false: cards in the DCF layout are not read.
    static bool mediaIsDCF(const QString& rootPath);
    /// Whether one of the root's entries is named as a folder of the recorder layout.
    static bool mediaIsLM90(const QString& rootPath);
    /// The same with the rear camera's folder counted in.
    static bool mediaIsAlter(const QString& rootPath);
    /// Whether the folder can be opened as a card at all.
    static bool mediaIsAvailable(const QString& rootPath);

    /// The date in a name, read as Japan Standard Time with a twelve-hour clock field; nothing when it is none.
    static std::optional<Instant> dateFromJSTFileNameString(const QString& path);
    /// The date in the local zone and the user's locale: short date, medium time.
    static QString dateString(Instant date);

    /// The names directly in a folder; none when it can't be read.
    static std::vector<QString> pathsAtDirectory(const QString& folder);
    /// The same as full paths.
    static std::vector<QString> fullPathsAtDirectory(const QString& folder);
    /// Full paths of everything below a folder.
    static std::vector<QString> getFilesInDirectory(const QString& folder);
    /// True only for a folder that exists.
    static bool pathIsDirectory(const QString& path);
};

/// The recorder's clock time in a name YYMMDDhhmmss…, which the recorder doesn't place in a zone: read as UTC and to be
/// shown in UTC. Nothing when the stem is shorter than twelve characters or its fields are no date.
std::optional<Instant> recorderDate(const QString& path);

/// recorderDate() in the user's locale, medium style; the present moment where the name carries no date.
QString recordingDateText(const QString& path);

/// The kind (ConstClass::DCF_EVENTNAME_…) of the recordings in a folder of this name; normal when it is unknown.
QString eventNameOfFolder(const QString& folderName);

/// A whole text as a decimal number; nothing when it is anything else or too large.
std::optional<qint64> decimalInteger(const QString& text);

} // namespace cardreel
