#pragma once

#include "platform/map/TileSource.h"
#include "views/map/MapViewport.h"

#include <QCache>
#include <QImage>
#include <QSet>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class QPainter;

namespace cardreel {

class TileLoader;

/// The tiles of a map: keeps those that were seen last, asks for those that are to be seen, and draws what there is,
/// with coarser or finer tiles where the right ones are still to come. Belongs to a MapView; interface thread.
class TileLayer
{
public:
    /// `changed` is called when there is something else to draw.
    explicit TileLayer(std::function<void()> changed);
    ~TileLayer();

    void setSettings(const TileSettings& settings);

    /// Draws the tiles and asks for those that are missing. What no tile covers is left as it is.
    void draw(QPainter& painter, const MapViewport& viewport, double devicePixelRatio);
    /// Of what draw() drew last: whether some of it is not, or not yet, the tile that belongs there.
    bool isIncomplete() const { return m_isIncomplete; }
    /// Whether the world shows through in draw() at this viewport.
    bool hasHoles(const MapViewport& viewport) const;

    QString attribution() const;
    bool isUnreachable() const;
    /// Whether the tiles come from a server, not from this computer.
    bool isRemote() const { return m_isRemote; }

private:
    struct VisibleTile
    {
        TileKey key; ///< x within the world
        QRectF target;
        double distance; ///< from the view's middle
    };

    std::vector<VisibleTile> visibleTiles(const MapViewport& viewport) const;
    int level(const MapViewport& viewport) const;
    void drawTile(QPainter& painter, const VisibleTile& tile, const QRectF& view, double devicePixelRatio);
    bool drawAncestor(QPainter& painter, const VisibleTile& tile, const QRectF& target, const QRectF& view);
    void drawChildren(QPainter& painter, const VisibleTile& tile, double devicePixelRatio);
    bool hasStandIn(const TileKey& key) const;
    void ask();
    void tileDidLoad(const TileKey& key, const QImage& image);

    std::function<void()> m_changed;
    std::unique_ptr<TileLoader> m_loader; ///< null without a source
    QCache<TileKey, QImage> m_tiles;      ///< costs are KiB
    QSet<TileKey> m_missing;
    std::vector<TileKey> m_wanted; ///< the most urgent first
    std::vector<TileKey> m_asked;  ///< what the loader was told last
    QTimer m_asking;               ///< runs while wishes are being gathered
    bool m_isIncomplete = false;
    bool m_isRemote = false;
};

} // namespace cardreel
