#include "views/map/OverlayPicture.h"

#include "media/CustomMapPolyline.h"
#include "views/map/MapView.h"
#include "views/map/RouteStrokes.h"

#include <QPainter>
#include <QPen>

#include <cmath>
#include <functional>
#include <unordered_set>
#include <utility>

namespace cardreel {

namespace {

constexpr double dashLength = 9; ///< points
constexpr double dashGap = 6;
constexpr double pinGrid = 4; ///< points; of markers that stand within such a square only the topmost can be seen

QPen routePen(const QColor& color, const RouteStroke& stroke)
{
    QPen pen(color, MapView::lineWidth, Qt::SolidLine, stroke.isGap ? Qt::FlatCap : Qt::RoundCap, Qt::RoundJoin);
    if (stroke.isGap) {
        pen.setDashPattern({dashLength / MapView::lineWidth, dashGap / MapView::lineWidth});
        pen.setDashOffset(std::fmod(stroke.start, dashLength + dashGap) / MapView::lineWidth);
    }
    return pen;
}

class OverlayPainter
{
public:
    OverlayPainter(QPainter& painter, const OverlayFrame& frame)
        : m_painter(painter)
        , m_scale{256 * std::exp2(frame.zoom), frame.origin}
        , m_picture(QPointF(), frame.size)
    {
    }

    void paint(const OverlaySnapshot::Line& line)
    {
        constexpr double beyond = 2 * MapView::lineWidth; // what is cut off shows neither its end nor a join
        const QRectF clip = m_picture.adjusted(-beyond, -beyond, beyond, beyond);
        const MapRect& bounds = line.route->boundingMapRect();
        if (bounds.isNull() || bounds.bottom * m_scale.worldSize < clip.top() + m_scale.origin.y() ||
            bounds.top * m_scale.worldSize > clip.bottom() + m_scale.origin.y())
            return;
        const auto [first, last] = copies(clip.left(), clip.right(), bounds.left, bounds.right);
        for (double copy = first; copy <= last; ++copy) {
            m_strokes.clear();
            appendRouteStrokes(m_strokes, *line.route, m_scale, copy, clip);
            for (const RouteStroke& stroke : m_strokes) {
                m_painter.setPen(routePen(line.color, stroke));
                if (stroke.points.size() == 1)
                    m_painter.drawPoint(stroke.points.front());
                else
                    m_painter.drawPolyline(stroke.points);
            }
        }
    }

    /// From the topmost down: where one stands already, one below it is left out.
    void choose(const OverlaySnapshot::Pin& pin)
    {
        const QSizeF size = pin.image.deviceIndependentSize();
        const auto [first, last] =
            copies(-size.width() / 2, m_picture.width() + size.width() / 2, pin.point.x, pin.point.x);
        for (double copy = first; copy <= last; ++copy) {
            const QPointF foot = m_scale.at(pin.point, copy);
            if (foot.y() < 0 || foot.y() > m_picture.height() + size.height())
                continue;
            // Squares of the world, not of the picture: the same are left out when the map has moved.
            const QPointF place = (foot + m_scale.origin) / pinGrid;
            if (m_taken.insert({std::floor(place.x()), std::floor(place.y())}).second)
                m_pins.emplace_back(foot - QPointF(size.width() / 2, size.height()), pin.image);
        }
    }

    void paintChosen()
    {
        for (auto pin = m_pins.rbegin(); pin != m_pins.rend(); ++pin)
            m_painter.drawImage(pin->first, pin->second);
    }

private:
    struct PlaceHash
    {
        size_t operator()(const std::pair<double, double>& place) const
        {
            return std::hash<double>()(place.first) * 31 + std::hash<double>()(place.second);
        }
    };

    /// On which copies of the world something from `left` to `right` lies between two edges of the picture.
    std::pair<double, double> copies(double leftEdge, double rightEdge, double left, double right) const
    {
        return {std::ceil((leftEdge + m_scale.origin.x()) / m_scale.worldSize - right),
                std::floor((rightEdge + m_scale.origin.x()) / m_scale.worldSize - left)};
    }

    QPainter& m_painter;
    PictureScale m_scale;
    QRectF m_picture;
    std::vector<RouteStroke> m_strokes;
    std::unordered_set<std::pair<double, double>, PlaceHash> m_taken;
    std::vector<std::pair<QPointF, QImage>> m_pins;
};

} // namespace

QImage overlayPicture(const OverlaySnapshot& snapshot, const OverlayFrame& frame, const std::atomic<bool>& stop)
{
    QImage image(frame.size * frame.devicePixelRatio, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.setDevicePixelRatio(frame.devicePixelRatio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    OverlayPainter overlay(painter, frame);
    for (const OverlaySnapshot::Line& line : snapshot.lines) {
        if (stop)
            return {};
        overlay.paint(line);
    }
    for (auto pin = snapshot.pins.rbegin(); pin != snapshot.pins.rend(); ++pin)
        overlay.choose(*pin);
    overlay.paintChosen();
    return image;
}

} // namespace cardreel
