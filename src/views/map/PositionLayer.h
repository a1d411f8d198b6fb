#pragma once

#include "platform/map/MapGeometry.h"
#include "views/map/MapContents.h"

#include <QGraphicsItem>
#include <QGraphicsScene>

#include <memory>
#include <vector>

namespace cardreel {

/// The marker of the present position, as items of the map's scene: it moves twice a second, and only its surroundings
/// are painted anew. Belongs to a MapView; interface thread.
class PositionLayer
{
public:
    /// `unitsPerWorld` is how wide the world is in the scene.
    PositionLayer(QGraphicsScene& scene, double unitsPerWorld);
    ~PositionLayer();

    /// Shows the markers on each copy of the world that can be seen.
    void show(const MapContents& contents, const MapViewport& viewport, double devicePixelRatio);

private:
    class Item;

    QGraphicsScene& m_scene;
    double m_unitsPerWorld;
    std::vector<std::unique_ptr<Item>> m_items;
};

} // namespace cardreel
