#pragma once

#include "platform/map/TileSource.h"

namespace cardreel {

/// Tiles as files z/x/y.png, .jpg, .jpeg or .webp in a folder. Answers at once. Owned by whoever shows them; one
/// thread.
class FolderTileSource : public TileSource
{
public:
    static constexpr qint64 largestBytes = 4 << 20;

    explicit FolderTileSource(const QString& folder);

    void fetch(const TileKey& key, Answer answer) override;
    void cancel(const TileKey&) override {}
    void reject(const TileKey&) override {}
    int parallelFetches() const override { return 1; }
    int maxZoom() const override { return m_maxZoom; }
    QString attribution() const override { return {}; }

private:
    const QString m_folder;
    int m_maxZoom;
};

} // namespace cardreel
