#pragma once

#include <QHash>
#include <QString>

#include <vector>

namespace cardreel {

/// A removable volume that is mounted.
struct MountedVolume
{
    QString name; ///< the label that it was given, otherwise its folder's name
    QString rootPath;
    QString device;         ///< such as /dev/sdb1
    QString uuid;           ///< of its file system; empty when it isn't known
    qint64 bytesTotal = -1; ///< -1: not known yet, or never, when the volume doesn't answer
    qint64 bytesFree = -1;  ///< for the user; likewise
    bool isReadOnly = false;

    bool operator==(const MountedVolume&) const = default;
};

/// Notices that a volume is mounted under another path than before: at once, or after it was gone for a while.
class VolumeMoves
{
public:
    struct Move
    {
        QString from;
        QString to;

        bool operator==(const Move&) const = default;
    };

    /// Given each list of the volumes that are mounted, one after the other.
    std::vector<Move> update(const std::vector<MountedVolume>& volumes);

private:
    QHash<QString, QString> m_lastPaths; ///< by what tells a volume from others
    std::vector<QString> m_mountedPaths;
};

} // namespace cardreel
