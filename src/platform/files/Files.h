#pragma once

#include "platform/Instant.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// The file system as the program sees it. Paths are QStrings that keep names which aren't UTF-8: each stray byte
/// becomes a lone surrogate (U+DC80 + byte − 0x80) that nativePath() turns back, so that such a card opens like any
/// other. Nothing else in the program hands a path on a card to the system without passing here. Any thread.
namespace cardreel::files {

QByteArray nativePath(const QString& path);
QString fromNativePath(const QByteArray& bytes);

/// The path for people: stray bytes shown as U+FFFD.
QString displayPath(const QString& path);

struct Status
{
    bool exists = false;
    bool isFolder = false;
    quint64 size = 0;               ///< bytes
    Instant modified{};             ///< meaningful only when it exists
    std::optional<Instant> created; ///< nothing where the file system doesn't keep it
};

/// What the path leads to, links followed; `exists` is false also when it can't be looked at.
Status status(const QString& path);
bool exists(const QString& path);
bool isFolder(const QString& path);

/// Whether its names can be listed.
bool isReadableFolder(const QString& path);
/// Whether both lead to the same file or folder.
bool isSameFile(const QString& a, const QString& b);
/// The path from the root on, without "." and superfluous slashes. One with ".." is what that really leads to, links
/// resolved, as long as it is there.
QString absolutePath(const QString& path);

/// Whether the file carries the immutable attribute or has no write permission bit at all (how a memory card's
/// read-only attribute is mounted). False when that can't be read.
bool isLocked(const QString& path);

/// What an ordinary user may still write to the volume that holds the path, in bytes; nothing when it can't be told.
std::optional<quint64> freeBytes(const QString& path);

/// The names directly in a folder, in the file system's order, without "." and ".."; empty when it can't be read.
std::vector<QString> names(const QString& folder);

/// Visits every entry below a folder in the file system's order, a folder before its contents; links to folders are
/// passed over. Paths are relative to the root. Unreadable folders have no contents.
void walk(const QString& root, const std::function<void(const QString& relativePath, bool isFolder)>& visit);

/// Path joined with one slash.
QString join(const QString& folder, const QString& relative);
/// Everything before the last slash; empty when there is none.
QString folderOf(const QString& path);
/// What follows the last slash.
QString nameOf(const QString& path);
/// The name without its last extension ("a.b.MP4" gives "a.b"; ".x" has no extension).
QString stemOf(const QString& path);
/// The rest of the name without its point, in lower case.
QString extensionOf(const QString& path);

/// Opens for reading, never blocking on a pipe or device; nothing unless it is a readable regular file. `error`, when
/// given, receives the system's reason.
std::unique_ptr<QFile> openForReading(const QString& path, QString* error = nullptr);

} // namespace cardreel::files
