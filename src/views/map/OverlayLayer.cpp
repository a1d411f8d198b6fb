#include "views/map/OverlayLayer.h"

#include <QElapsedTimer>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace cardreel {

namespace {

constexpr int margin = 256;              ///< points that the picture is larger than the view on each side
constexpr double comfortable = 128;      ///< with less of it left, the next picture is painted
constexpr qint64 shortestGathering = 16; ///< milliseconds
constexpr qint64 longestGathering = 500;

} // namespace

OverlayLayer::OverlayLayer(std::function<void()> changed)
    : m_changed(std::move(changed))
{
    m_wait.setSingleShot(true);
    QObject::connect(&m_wait, &QTimer::timeout, &m_wait, m_changed);
}

OverlayLayer::~OverlayLayer()
{
    if (m_stop)
        *m_stop = true;
}

void OverlayLayer::contentsDidChange()
{
    // While a card is read routes come by the thousand. The more there are, the rarer they are painted anew, so that at
    // most half of a processor is spent on it.
    if (!m_wait.isActive())
        m_wait.start(static_cast<int>(std::clamp(m_lastPaintingMs, shortestGathering, longestGathering)));
}

void OverlayLayer::contentsWereCleared()
{
    if (m_stop)
        *m_stop = true;
    m_job.cancel();
    m_isPainting = false;
    m_lastPaintingMs = 0;
    m_picture = {};
    m_wait.stop();
    m_changed();
}

void OverlayLayer::draw(QPainter& painter, const MapViewport& viewport, double devicePixelRatio)
{
    const bool isStale = m_picture.version != contents.version() && !m_wait.isActive();
    const bool isWanted = isStale || !covers(viewport, devicePixelRatio, comfortable);
    if (isWanted && !m_isPainting && !contents.isEmpty())
        startPainting(viewport, devicePixelRatio);
    if (m_picture.image.isNull())
        return;
    const QRectF place = target(viewport);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, place.size() != QSizeF(m_picture.frame.size));
    painter.drawImage(place, m_picture.image);
    painter.restore();
}

bool OverlayLayer::isCurrent(const MapViewport& viewport, double devicePixelRatio) const
{
    return contents.isEmpty() || (m_picture.version == contents.version() && covers(viewport, devicePixelRatio, 0));
}

QRectF OverlayLayer::target(const MapViewport& viewport) const
{
    const OverlayFrame& frame = m_picture.frame;
    const double scale = frame.zoom == viewport.zoom ? 1 : std::exp2(viewport.zoom - frame.zoom);
    QRectF place(frame.origin * scale - viewport.origin(), QSizeF(frame.size) * scale);
    // On the copy of the world that the view is on.
    const double world = viewport.worldSize();
    place.translate(std::round((viewport.size.width() / 2 - place.center().x()) / world) * world, 0);
    return place;
}

bool OverlayLayer::covers(const MapViewport& viewport, double devicePixelRatio, double spare) const
{
    const OverlayFrame& frame = m_picture.frame;
    if (m_picture.image.isNull() || frame.zoom != viewport.zoom || frame.devicePixelRatio != devicePixelRatio)
        return false;
    const QRectF place = target(viewport);
    // On another copy of the world it may lie between the points.
    const double off = place.left() - std::round(place.left());
    return std::abs(off) < 0.01 &&
           place.contains(QRectF(QPointF(), viewport.size).adjusted(-spare, -spare, spare, spare));
}

void OverlayLayer::startPainting(const MapViewport& viewport, double devicePixelRatio)
{
    Picture picture;
    picture.frame = {viewport.zoom, viewport.origin() - QPointF(margin, margin),
                     viewport.size.toSize() + QSize(2 * margin, 2 * margin), devicePixelRatio};
    picture.version = contents.version();
    m_isPainting = true;
    m_stop = std::make_shared<std::atomic<bool>>(false);
    m_job.start([this, picture, stop = m_stop, snapshot = contents.snapshot(devicePixelRatio)]() mutable {
        QElapsedTimer timer;
        timer.start();
        picture.image = overlayPicture(*snapshot, picture.frame, *stop);
        return [this, picture, elapsed = timer.elapsed()] { pictureDidFinish(picture, elapsed); };
    });
}

void OverlayLayer::pictureDidFinish(const Picture& picture, qint64 elapsedMs)
{
    m_isPainting = false;
    m_lastPaintingMs = elapsedMs;
    if (picture.image.isNull()) // no memory; the next frame tries again
        return;
    m_picture = picture;
    m_changed();
}

} // namespace cardreel
