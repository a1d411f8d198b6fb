#pragma once

#include "media/MediaLibrary.h"

#include <QString>
#include <QStringList>

#include <optional>

/// What the commands that take recordings along have in common: the card that they read and those of its recordings
/// that are meant. Interface thread.
namespace cardreel::CommandLine {

/// Scans the card. False, with the reason in one line on standard error, when it can't be read or is none.
bool openCard(MediaLibrary& library, const QString& cardPath);

/// The recordings that have one of these names: the file name without its extension, or the path below the card's root.
/// Each once, earliest first; all when no name is given. Nothing, with a line about wrong usage on standard error, when
/// a name is no recording's.
std::optional<MediaLibrary::DCFList> namedRecordings(const MediaLibrary& library, const QStringList& names);

} // namespace cardreel::CommandLine
