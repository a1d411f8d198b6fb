#include "platform/volumes/MountedVolume.h"

#include <algorithm>
#include <utility>

namespace cardreel {

namespace {

/// A device's name tells a volume only as long as it stays there: the next card gets the same.
QString identity(const MountedVolume& volume)
{
    return volume.uuid.isEmpty() ? volume.device : volume.uuid;
}

} // namespace

std::vector<VolumeMoves::Move> VolumeMoves::update(const std::vector<MountedVolume>& volumes)
{
    std::vector<QString> paths;
    paths.reserve(volumes.size());
    QHash<QString, QString> last;
    for (const MountedVolume& volume : volumes)
        paths.push_back(volume.rootPath);
    const auto isIn = [](const std::vector<QString>& list, const QString& path) {
        return std::find(list.begin(), list.end(), path) != list.end();
    };

    std::vector<Move> moves;
    for (const MountedVolume& volume : volumes) {
        const QString former = m_lastPaths.value(identity(volume));
        // Copies of a card have the same identity: what is mounted where it was hasn't moved.
        if (!former.isEmpty() && !isIn(paths, former) && !isIn(m_mountedPaths, volume.rootPath))
            moves.push_back({former, volume.rootPath});
    }
    for (auto gone = m_lastPaths.cbegin(); gone != m_lastPaths.cend(); ++gone) {
        // What another volume was mounted as since is that one's path.
        if (!gone.key().startsWith(u'/') && !isIn(paths, gone.value()))
            last.insert(gone.key(), gone.value());
    }
    for (const MountedVolume& volume : volumes)
        last.insert(identity(volume), volume.rootPath);
    m_lastPaths = std::move(last);
    m_mountedPaths = std::move(paths);
    return moves;
}

} // namespace cardreel
