#pragma once

#include "platform/NewestJob.h"
#include "views/map/MapContents.h"
#include "views/map/MapViewport.h"
#include "views/map/OverlayPicture.h"

#include <QImage>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>

class QPainter;

namespace cardreel {

/// Draws routes and markers out of a picture that is painted in the background, larger than the view so that the map
/// can be dragged. Moves and scales it while the next is under way. Belongs to a MapView; interface thread.
class OverlayLayer
{
public:
    /// `changed` is called when there is something else to draw.
    explicit OverlayLayer(std::function<void()> changed);
    ~OverlayLayer();

    MapContents contents;

    /// What was there is added to, or changed: to be seen soon, together with what else comes.
    void contentsDidChange();
    /// What was there is no more: not to be seen from now on.
    void contentsWereCleared();

    /// Draws what there is, and has it painted anew where that isn't what should be seen.
    void draw(QPainter& painter, const MapViewport& viewport, double devicePixelRatio);
    bool isCurrent(const MapViewport& viewport, double devicePixelRatio) const;

private:
    struct Picture
    {
        QImage image;
        OverlayFrame frame;
        unsigned version = 0;
    };

    void startPainting(const MapViewport& viewport, double devicePixelRatio);
    void pictureDidFinish(const Picture& picture, qint64 elapsedMs);
    /// The picture's place in the view.
    QRectF target(const MapViewport& viewport) const;
    /// Whether the picture shows this part at this scale, point on point, with `spare` points around it.
    bool covers(const MapViewport& viewport, double devicePixelRatio, double spare) const;

    std::function<void()> m_changed;
    Picture m_picture;
    bool m_isPainting = false;
    QTimer m_wait; ///< runs while changes are being gathered
    qint64 m_lastPaintingMs = 0;
    std::shared_ptr<std::atomic<bool>> m_stop;
    NewestJob m_job;
};

} // namespace cardreel
