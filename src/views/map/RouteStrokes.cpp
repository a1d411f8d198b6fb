#include "views/map/RouteStrokes.h"

#include "media/CustomMapPolyline.h"
#include "views/map/MapHitTest.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cardreel {

namespace {

constexpr double nearestPoints = 1.0; ///< points nearer than this to the last one drawn are left out

/// Narrows the part `from` to `to` of a segment to where start + part * delta is between low and high.
bool clipAxis(double start, double delta, double low, double high, double& from, double& to)
{
    if (delta == 0)
        return start >= low && start <= high;
    double enter = (low - start) / delta;
    double leave = (high - start) / delta;
    if (enter > leave)
        std::swap(enter, leave);
    from = std::max(from, enter);
    to = std::min(to, leave);
    return from <= to;
}

/// Strings segments together to strokes, as long as one goes on where the last ended.
class StrokeBuilder
{
public:
    StrokeBuilder(std::vector<RouteStroke>& strokes, const QRectF& clip)
        : m_strokes(strokes)
        , m_clip(clip)
    {
    }

    void add(const QPointF& a, const QPointF& b, bool isGap)
    {
        const double length = std::hypot(b.x() - a.x(), b.y() - a.y());
        if (isGap != m_isGap)
            m_length = 0;
        double from = 0;
        double to = 1;
        if (clipAxis(a.x(), b.x() - a.x(), m_clip.left(), m_clip.right(), from, to) &&
            clipAxis(a.y(), b.y() - a.y(), m_clip.top(), m_clip.bottom(), from, to))
            append(a + (b - a) * from, a + (b - a) * to, from == 0, isGap, m_length + from * length);
        else
            m_isOpen = false;
        if (to < 1)
            m_isOpen = false;
        m_isGap = isGap;
        m_length += length;
    }

private:
    void append(const QPointF& a, const QPointF& b, bool startsWhole, bool isGap, double start)
    {
        if (!m_isOpen || !startsWhole || isGap != m_isGap)
            m_strokes.push_back({{a}, isGap, start});
        m_strokes.back().points.append(b);
        m_isOpen = true;
    }

    std::vector<RouteStroke>& m_strokes;
    QRectF m_clip;
    bool m_isOpen = false;
    bool m_isGap = false;
    double m_length = 0; ///< of the run of gaps or of line so far
};

bool areNear(const QPointF& a, const QPointF& b)
{
    return std::abs(a.x() - b.x()) < nearestPoints && std::abs(a.y() - b.y()) < nearestPoints;
}

} // namespace

void appendRouteStrokes(std::vector<RouteStroke>& strokes, const CustomMapPolyline& route, const PictureScale& scale,
                        double copy, const QRectF& clip)
{
    const std::vector<MapPoint>& points = route.mapPoints();
    StrokeBuilder builder(strokes, clip);
    auto gap = route.gaps().begin();
    bool isFirst = true;
    bool isDot = true;
    bool gapLeadsOn = false; // from the last usable point
    bool gapLedHere = false; // to it
    QPointF drawn;
    QPointF last;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (isFinite(points[i])) {
            last = scale.at(points[i], copy);
            if (std::exchange(isFirst, false))
                drawn = last;
            gapLedHere = std::exchange(gapLeadsOn, false);
            // What lies between points nearer than these is nothing that could be seen to be a gap.
            if (!areNear(drawn, last)) {
                builder.add(drawn, last, gapLedHere);
                drawn = last;
                isDot = false;
            }
        }
        if (gap != route.gaps().end() && *gap == i) {
            gapLeadsOn = true;
            ++gap;
        }
    }
    if (!isDot && drawn != last)
        builder.add(drawn, last, gapLedHere);
    if (isDot && !isFirst && clip.contains(last))
        strokes.push_back({{last}, false, 0});
}

} // namespace cardreel
