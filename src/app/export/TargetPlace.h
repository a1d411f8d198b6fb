#pragma once

#include "export/ExportFormat.h"

#include <QString>

/// What can be said of the place that the user names for an export or a backup, before anything is written there. No
/// state; any thread.
namespace cardreel {

/// The path with the format's extension in place of another format's; any other name gets it in addition. Empty stays
/// empty.
QString withExtension(const QString& path, ExportFormat format);

/// What the user typed as a path from the root on: "~" is the user's home, and what isn't one lies in `folder`.
QString fullPath(const QString& typed, const QString& folder);

/// The name in the folder or, when there is something already, with the first number from 2 on that is free between
/// name and extension. The extension with its point; empty for a folder.
QString freePath(const QString& folder, const QString& name, const QString& extension);

/// The name with a dash for each character that can't be in one, on a FAT file system either: that is what most disks
/// come with.
QString asFileName(const QString& name);

// For the user, in one sentence; empty when nothing is known to be in the way.

/// Why no file can be written there.
QString whyNoFileAt(const QString& path, const QString& cardPath);
/// Why the folder can't hold a new one: it has to be there.
QString whyNoFolderIn(const QString& folder);
/// Why the folder can't become a backup.
QString whyNoBackUpAt(const QString& path, const QString& cardPath);

/// Whether there is a folder with something in it, or one whose names can't be read.
bool isFilledFolder(const QString& path);

} // namespace cardreel
