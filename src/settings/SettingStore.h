#pragma once

#include "platform/files/FileSteps.h"
#include "settings/SettingClock.h"
#include "settings/SettingFileInfo.h"

#include <QString>

#include <optional>

namespace cardreel {

/// A card's settings files at a moment, to tell later whether somebody else has changed them.
struct SettingCardState
{
    struct File
    {
        bool exists = false;
        quint64 size = 0;      ///< bytes
        qint64 modifiedNs = 0; ///< since 1970
        QByteArray hash;       ///< of the content; empty when it couldn't be read

        /// Content decides, because a card's times are coarse and copying a file onto itself is no change; size and
        /// time do where it can't be read.
        bool operator==(const File& other) const;
    };
    File bin;
    File old;

    bool operator==(const SettingCardState&) const = default;
};

/// What was found on a card.
struct SettingLoad
{
    std::optional<SettingFileInfo> info; ///< nothing when it failed
    QString source;                      ///< the file it came from, or that failed; empty when the card has none
    QString error;                       ///< why it failed
    SettingCardState state;              ///< of the same moment
};

/// Where the settings are on a card, reading and writing them. Waits for the card, so not on the interface thread while
/// somebody uses the program. Any other thread.
class SettingStore
{
public:
    /// A larger file is no settings file and isn't read.
    static constexpr qint64 largestFile = 65'536; // bytes

    static QString binPath(const QString& fileRootPath);
    static QString oldPath(const QString& fileRootPath);

    /// Reads the backup `settings.old` when there is one, otherwise `settings.bin`. False, leaving `info` alone, when
    /// there is neither or it can't be read.
    static bool importUnitSettingInfo(SettingFileInfo& info, const QString& fileRootPath);
    /// The same, telling more.
    static SettingLoad load(const QString& fileRootPath);
    static SettingCardState state(const QString& fileRootPath);

    /// Writes `settings.bin` and then removes `settings.old`. False when it couldn't be written: the former files are
    /// still there. A backup that can't be removed is only logged.
    static bool exportUnitSettingInfo(const SettingFileInfo& info, const QString& rootFilePath);

    /// What exporting depends on, for tests.
    struct Surroundings
    {
        SettingClock clock = currentClockReading;
        FileSteps* steps = nullptr; ///< outlives every write; nothing: the system's own
    };
    /// The same; nothing when it succeeded, otherwise why not.
    static std::optional<QString> save(const SettingFileInfo& info, const QString& rootFilePath,
                                       const Surroundings& surroundings);
};

} // namespace cardreel
