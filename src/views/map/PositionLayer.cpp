#include "views/map/PositionLayer.h"

#include "media/CustomPointAnnotation.h"
#include "views/map/MarkerImages.h"

#include <QPainter>

#include <cmath>

namespace cardreel {

class PositionLayer::Item : public QGraphicsItem
{
public:
    Item() { setFlag(ItemIgnoresTransformations); }

    void setImage(const QImage& image)
    {
        if (image.cacheKey() == m_image.cacheKey())
            return;
        prepareGeometryChange();
        m_image = image;
        update();
    }

    QRectF boundingRect() const override
    {
        const QSizeF size = m_image.deviceIndependentSize();
        return {QPointF(-size.width() / 2, -size.height() / 2), size};
    }

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/, QWidget* /*widget*/) override
    {
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(boundingRect().topLeft(), m_image);
    }

private:
    QImage m_image;
};

PositionLayer::PositionLayer(QGraphicsScene& scene, double unitsPerWorld)
    : m_scene(scene)
    , m_unitsPerWorld(unitsPerWorld)
{
}

PositionLayer::~PositionLayer() = default;

void PositionLayer::show(const MapContents& contents, const MapViewport& viewport, double devicePixelRatio)
{
    size_t used = 0;
    for (const MapContents::Marker& marker : contents.positionMarkers()) {
        const QImage image = contents.drawing(marker, devicePixelRatio);
        const MapPoint point = mapPoint(marker->coordinate);
        const double beside = image.deviceIndependentSize().width() / viewport.worldSize();
        const MapRect visible = viewport.rect();
        const double last = std::floor(visible.right + beside - point.x);
        for (double copy = std::ceil(visible.left - beside - point.x); copy <= last; ++copy) {
            if (used == m_items.size()) {
                m_items.push_back(std::make_unique<Item>());
                m_scene.addItem(m_items.back().get());
            }
            Item& item = *m_items[used++];
            item.setImage(image);
            const double degrees = annotationRotation(*marker);
            item.setRotation(std::isfinite(degrees) ? degrees : 0);
            item.setPos((point.x + copy) * m_unitsPerWorld, point.y * m_unitsPerWorld);
        }
    }
    m_items.resize(used);
}

} // namespace cardreel
