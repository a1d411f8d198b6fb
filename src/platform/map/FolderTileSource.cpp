#include "platform/map/FolderTileSource.h"

#include "platform/files/Files.h"

#include <algorithm>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

/// The highest number among the folder's names; what else lies there is no level.
int deepestLevel(const QString& folder)
{
    int deepest = -1;
    for (const QString& name : files::names(folder)) {
        bool isNumber = false;
        const int level = name.toInt(&isNumber);
        if (isNumber && isTile({level, 0, 0}))
            deepest = std::max(deepest, level);
    }
    return deepest < 0 ? 19 : deepest;
}

} // namespace

FolderTileSource::FolderTileSource(const QString& folder)
    : m_folder(folder)
    , m_maxZoom(deepestLevel(folder))
{
}

void FolderTileSource::fetch(const TileKey& key, Answer answer)
{
    const QString stem = files::join(m_folder, u"%1/%2/%3"_s.arg(key.z).arg(key.x).arg(key.y));
    for (const auto extension : {".png"_L1, ".jpg"_L1, ".jpeg"_L1, ".webp"_L1}) {
        const QString path = stem + extension;
        if (!files::exists(path))
            continue;
        const std::unique_ptr<QFile> file = files::openForReading(path);
        const bool isReadable = file && file->size() <= largestBytes;
        const QByteArray bytes = isReadable ? file->read(largestBytes) : QByteArray();
        answer(bytes.isEmpty() ? Status::Failed : Status::Found, bytes);
        return;
    }
    // A folder that is gone, with the volume it is on perhaps, says nothing of its tiles.
    answer(files::isReadableFolder(m_folder) ? Status::Missing : Status::Failed, {});
}

} // namespace cardreel
