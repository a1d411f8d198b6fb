#include "platform/map/TileSource.h"

#include "platform/files/Files.h"
#include "platform/map/FolderTileSource.h"
#include "platform/map/HttpTileSource.h"
#include "platform/map/MbtilesTileSource.h"

namespace cardreel {
namespace {

constexpr int deepestLevel = 24; ///< tiles of two metres

} // namespace

bool isTile(const TileKey& key)
{
    return key.z >= 0 && key.z <= deepestLevel && key.x >= 0 && key.y >= 0 && key.x < 1 << key.z && key.y < 1 << key.z;
}

bool isTileServer(const QString& location)
{
    return HttpTileSource::isTemplate(location);
}

std::unique_ptr<TileSource> makeTileSource(const TileSettings& settings)
{
    const QString location = settings.location.trimmed();
    if (HttpTileSource::isTemplate(location))
        return std::make_unique<HttpTileSource>(location, HttpClient::shared(settings.cacheFolder));
    const files::Status status = files::status(settings.location);
    if (status.isFolder)
        return std::make_unique<FolderTileSource>(settings.location);
    return status.exists ? MbtilesTileSource::open(settings.location) : nullptr;
}

} // namespace cardreel
