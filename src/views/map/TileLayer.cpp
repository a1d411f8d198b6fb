#include "views/map/TileLayer.h"

#include "platform/map/TileLoader.h"

#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace cardreel {

namespace {

using namespace std::chrono_literals;

constexpr auto gathering = 40ms;      ///< tiles that are seen for less while the map moves aren't asked for
constexpr int keptKiB = 64 * 1024;    ///< of tiles
constexpr qsizetype mostInView = 500; ///< tiles; a bound of what is kept beyond that
constexpr int furthestAncestor = 8;   ///< levels; beyond, one of its points would fill the view
constexpr int mostMissing = 20'000;   ///< keys remembered; what is forgotten is merely asked for again

int costOf(const QImage& image)
{
    return static_cast<int>(image.sizeInBytes() / 1024) + 1;
}

QRectF onDevicePixels(const QRectF& rect, double devicePixelRatio)
{
    // Edge by edge, so that neighbours meet without a seam.
    const auto snap = [devicePixelRatio](double x) { return std::round(x * devicePixelRatio) / devicePixelRatio; };
    return {QPointF(snap(rect.left()), snap(rect.top())), QPointF(snap(rect.right()), snap(rect.bottom()))};
}

/// Draws a part of a picture into a rectangle that may be far larger than the view, as a single tile on a deep level
/// is.
void drawPart(QPainter& painter, const QRectF& target, const QImage& image, const QRectF& source, const QRectF& view)
{
    if (target.width() <= 2 * std::max(view.width(), view.height())) {
        painter.drawImage(target, image, source);
        return;
    }
    const QRectF seen = target & view;
    const double scale = source.width() / target.width();
    const QPointF corner = source.topLeft() + (seen.topLeft() - target.topLeft()) * scale;
    painter.drawImage(seen, image, QRectF(corner, seen.size() * scale));
}

} // namespace

TileLayer::TileLayer(std::function<void()> changed)
    : m_changed(std::move(changed))
    , m_tiles(keptKiB)
{
    m_asking.setSingleShot(true);
    m_asking.setInterval(gathering);
    QObject::connect(&m_asking, &QTimer::timeout, &m_asking, [this] { ask(); });
}

TileLayer::~TileLayer() = default;

void TileLayer::setSettings(const TileSettings& settings)
{
    m_loader.reset();
    m_tiles.clear();
    m_missing.clear();
    m_wanted.clear();
    m_asked.clear();
    m_isIncomplete = false;
    m_isRemote = isTileServer(settings.location);
    if (!settings.location.isEmpty()) {
        m_loader = std::make_unique<TileLoader>(settings);
        TileLoader* loader = m_loader.get();
        QObject::connect(loader, &TileLoader::tileDidLoad, &m_asking,
                         [this](const TileKey& key, const QImage& image) { tileDidLoad(key, image); });
        QObject::connect(loader, &TileLoader::tileIsMissing, &m_asking, [this](const TileKey& key) {
            if (m_missing.size() >= mostMissing)
                m_missing.clear();
            m_missing.insert(key);
            m_changed();
        });
        QObject::connect(loader, &TileLoader::stateDidChange, &m_asking, m_changed);
    }
    m_changed();
}

QString TileLayer::attribution() const
{
    return m_loader ? m_loader->attribution() : QString();
}

bool TileLayer::isUnreachable() const
{
    return m_loader && m_loader->state() == TileLoader::State::Unreachable;
}

void TileLayer::tileDidLoad(const TileKey& key, const QImage& image)
{
    // All tiles in view must find room, or they would push one another out for ever.
    const int cost = costOf(image);
    const qsizetype inView = std::min<qsizetype>(static_cast<qsizetype>(m_wanted.size()), mostInView);
    m_tiles.setMaxCost(std::max(m_tiles.maxCost(), 2 * inView * cost));
    m_tiles.insert(key, new QImage(image), cost);
    m_changed();
}

int TileLayer::level(const MapViewport& viewport) const
{
    const int deepest = m_loader ? m_loader->maxZoom() : 0;
    return std::clamp(static_cast<int>(std::lround(viewport.zoom)), 0, std::clamp(deepest, 0, 30));
}

std::vector<TileLayer::VisibleTile> TileLayer::visibleTiles(const MapViewport& viewport) const
{
    std::vector<VisibleTile> tiles;
    const int z = level(viewport);
    const int count = 1 << z;
    const double size = viewport.worldSize() / count;
    const QPointF origin = viewport.origin();
    const auto first = [size](double edge) { return static_cast<int>(std::floor(edge / size)); };
    const auto last = [size](double edge) { return static_cast<int>(std::ceil(edge / size)) - 1; };
    for (int y = std::max(0, first(origin.y())); y <= std::min(count - 1, last(origin.y() + viewport.size.height()));
         ++y) {
        for (int x = first(origin.x()); x <= last(origin.x() + viewport.size.width()); ++x) {
            const QRectF target(x * size - origin.x(), y * size - origin.y(), size, size);
            const QPointF off = target.center() - QPointF(viewport.size.width() / 2, viewport.size.height() / 2);
            tiles.push_back({{z, (x % count + count) % count, y}, target, std::hypot(off.x(), off.y())});
        }
    }
    std::stable_sort(tiles.begin(), tiles.end(),
                     [](const VisibleTile& a, const VisibleTile& b) { return a.distance < b.distance; });
    return tiles;
}

bool TileLayer::hasStandIn(const TileKey& key) const
{
    for (TileKey ancestor = key; ancestor.z >= 0 && key.z - ancestor.z <= furthestAncestor;
         ancestor = {ancestor.z - 1, ancestor.x / 2, ancestor.y / 2}) {
        if (m_tiles.contains(ancestor))
            return true;
    }
    return false;
}

bool TileLayer::hasHoles(const MapViewport& viewport) const
{
    if (!m_loader)
        return true;
    const std::vector<VisibleTile> tiles = visibleTiles(viewport);
    return !std::all_of(tiles.begin(), tiles.end(), [this](const VisibleTile& tile) { return hasStandIn(tile.key); });
}

void TileLayer::draw(QPainter& painter, const MapViewport& viewport, double devicePixelRatio)
{
    m_isIncomplete = false;
    if (!m_loader)
        return;
    m_wanted.clear();
    painter.save();
    for (const VisibleTile& tile : visibleTiles(viewport)) {
        if (!m_tiles.contains(tile.key)) {
            m_isIncomplete = true;
            if (!m_missing.contains(tile.key) &&
                std::find(m_wanted.begin(), m_wanted.end(), tile.key) == m_wanted.end())
                m_wanted.push_back(tile.key);
        }
        drawTile(painter, tile, QRectF(QPointF(), viewport.size), devicePixelRatio);
    }
    painter.restore();
    if (!m_asking.isActive())
        m_asking.start();
}

void TileLayer::drawTile(QPainter& painter, const VisibleTile& tile, const QRectF& view, double devicePixelRatio)
{
    const QRectF target = onDevicePixels(tile.target, devicePixelRatio);
    const QImage* image = m_tiles.object(tile.key);
    if (image) {
        const QSizeF pixels = target.size() * devicePixelRatio;
        painter.setRenderHint(QPainter::SmoothPixmapTransform, pixels != QSizeF(image->size()));
        drawPart(painter, target, *image, image->rect(), view);
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!drawAncestor(painter, tile, target, view))
        drawChildren(painter, tile, devicePixelRatio);
}

bool TileLayer::drawAncestor(QPainter& painter, const VisibleTile& tile, const QRectF& target, const QRectF& view)
{
    for (int up = 1; up <= std::min(furthestAncestor, tile.key.z); ++up) {
        const QImage* image = m_tiles.object({tile.key.z - up, tile.key.x >> up, tile.key.y >> up});
        if (!image)
            continue;
        const double parts = 1 << up;
        const QSizeF size = QSizeF(image->size()) / parts;
        const int mask = (1 << up) - 1;
        const QPointF corner((tile.key.x & mask) * size.width(), (tile.key.y & mask) * size.height());
        drawPart(painter, target, *image, QRectF(corner, size), view);
        return true;
    }
    return false;
}

void TileLayer::drawChildren(QPainter& painter, const VisibleTile& tile, double devicePixelRatio)
{
    const QSizeF size = tile.target.size() / 2;
    for (int i = 0; i < 4; ++i) {
        const QImage* image = m_tiles.object({tile.key.z + 1, tile.key.x * 2 + i % 2, tile.key.y * 2 + i / 2});
        if (!image)
            continue;
        const QPointF corner = tile.target.topLeft() + QPointF(i % 2 * size.width(), i / 2 * size.height());
        painter.drawImage(onDevicePixels(QRectF(corner, size), devicePixelRatio), *image);
    }
}

void TileLayer::ask()
{
    if (m_loader && m_asked != m_wanted)
        m_loader->setWanted(m_asked = m_wanted);
}

} // namespace cardreel
