#pragma once

#include <QString>

/// Where paths really lie: nothing may be written to a card, whatever links and mounts lead there. Any thread.
namespace cardreel {

/// Where a path really leads, links followed; what isn't there yet is taken as it stands.
QString resolvedPath(const QString& path);

/// Whether one is, or lies somewhere in, the other. They need not be there.
bool foldersOverlap(const QString& a, const QString& b);

/// Whether writing the file would change the folder or something below it: the file, or what it is a link to, is or
/// would be there. False for no folder.
bool wouldLieWithin(const QString& filePath, const QString& folder);

} // namespace cardreel
