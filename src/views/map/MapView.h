#pragma once

#include "media/CustomMapPolyline.h"
#include "media/CustomPointAnnotation.h"
#include "platform/map/TileSource.h"

#include <QGraphicsView>

#include <memory>
#include <vector>

namespace cardreel {

class TileLoader;

/// A slippy map: tiles or a graticule, routes above the roads, markers above the routes, a scale bar, the attribution.
/// It is moved by mouse, wheel, pinch and keys, and repeats to both sides of the antimeridian. Routes and markers are
/// drawn in the background into one picture that follows the map, so that thousands of them move smoothly. Interface
/// thread.
class MapView : public QGraphicsView
{
    Q_OBJECT

public:
    using Route = std::shared_ptr<const CustomMapPolyline>;
    using Marker = std::shared_ptr<const CustomPointAnnotation>;
    enum class Animation { None, Animated };

    static constexpr double lineWidth = 5.0; ///< points

    explicit MapView(QWidget* parent = nullptr);
    ~MapView() override;

    /// Another source of tiles; without a location there is the graticule.
    void setTileSettings(const TileSettings& settings);

    // What lies on the map. Adding what is there and removing what isn't does nothing.
    void addRoute(const Route& route);
    void removeRoute(const Route& route);
    bool hasRoute(const Route& route) const;
    /// Lines that are not shown stay on the map, drawn clear; they answer no pointer.
    void setRoutesShown(bool shown);
    void addMarker(const Marker& marker);
    void removeMarker(const Marker& marker);
    bool hasMarker(const Marker& marker) const;
    /// Routes and markers.
    void clear();

    /// What is to be seen. x may leave 0 to 1.
    MapRect visibleMapRect() const;
    /// Fits the rectangle into the view less `edgePadding` points on each side; of a point, or nearly one, its
    /// surroundings. Nothing for the null rectangle.
    void setVisibleMapRect(const MapRect& rect, double edgePadding, Animation animation);
    /// The zoom stays. Nothing for a coordinate that isn't one.
    void setCenter(const Coordinate& coordinate, Animation animation);
    Coordinate center() const;
    /// log2 of how many points the world is wide, less 8: 0 shows it in 256 points.
    double zoom() const;
    void setZoom(double zoom, Animation animation);
    void zoomBy(double levels, Animation animation);

    /// The markers that the user chose: one or none.
    std::vector<Marker> selectedMarkers() const;
    /// Shows this widget, which the map takes, above the marker, and moves it along.
    void selectMarker(const Marker& marker, std::unique_ptr<QWidget> callout);
    void deselectMarker(Animation animation);

    /// Whether the picture of routes and markers is the one of what is to be seen. For tests and benchmarks.
    bool isOverlayCurrent() const;

Q_SIGNALS:
    /// The user clicked a marker, or chose it by keys. Whoever wants a callout calls selectMarker().
    void markerDidActivate(const cardreel::MapView::Marker& marker);
    /// The user closed the callout, by Escape or by a click elsewhere.
    void markerDidDeselect();
    /// A click on a line: between which coordinates (`after` and the next), and how far, 0 to 1.
    void routeClicked(const cardreel::MapView::Route& route, size_t after, double fraction);
    /// The pointer is over a line, as above; null when it left. Positions are in the view's own coordinates.
    void routeHovered(const cardreel::MapView::Route& route, size_t after, double fraction, const QPoint& position);
    /// The user moved the map by hand.
    void userDidMove();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace cardreel
