#include "views/map/RouteFitting.h"

#include <cmath>

namespace cardreel {

namespace {

constexpr double halfTheWorld = 0.5;

} // namespace

MapRect totalMapRect(const std::vector<std::shared_ptr<const CustomMapPolyline>>& routes)
{
    MapRect plain;
    MapRect across; // what lies in the world's western half is taken a turn further east
    for (const std::shared_ptr<const CustomMapPolyline>& route : routes) {
        const MapRect& rect = route->boundingMapRect();
        if (rect.isNull())
            continue;
        plain = plain.united(rect);
        across = across.united(rect.center().x < halfTheWorld ? rect.translated(1) : rect);
    }
    return plain.width() > halfTheWorld && across.width() < plain.width() ? across : plain;
}

TracingStart tracingStart(const MapRect& visible, const MapRect& routes)
{
    if (visible.isNull() || routes.isNull())
        return TracingStart::Nothing;
    const MapRect near = routes.translated(std::round(visible.center().x - routes.center().x));
    if (visible.contains(near)) {
        const bool isNoLarger = visible.width() <= near.width() && visible.height() <= near.height();
        return isNoLarger ? TracingStart::CenterOnPosition : TracingStart::Nothing;
    }
    return visible.intersects(near) ? TracingStart::Nothing : TracingStart::FitRoutes;
}

} // namespace cardreel
