#include "media/RouteBuilder.h"

#include "media/DCFInfo.h"
#include "media/RouteColors.h"
#include "telemetry/NMEAData.h"

#include <utility>

namespace cardreel {

namespace {

/// Recorders write a fix a second: after a longer silence the straight line to the next fix is a guess.
constexpr std::chrono::seconds longestKnownStretch(10);

std::optional<Instant> firstDate(const Telemetry& telemetry)
{
    if (telemetry.varidLocations().empty())
        return std::nullopt;
    return telemetry.varidLocations().front().timestamp;
}

std::optional<Instant> lastDate(const Telemetry& telemetry)
{
    if (telemetry.varidLocations().empty())
        return std::nullopt;
    return telemetry.varidLocations().back().timestamp;
}

/// Whether the drive goes on from one recording to the next: both have fixes and no midnight lies between.
bool continues(const Telemetry& recording, const Telemetry& next)
{
    const std::optional<Instant> end = lastDate(recording);
    const std::optional<Instant> start = firstDate(next);
    return start && end && !shouldChangeRouteColor(start, end);
}

Coordinate coordinateOf(const CustomLocation& location)
{
    return {location.latitude, location.longitude};
}

/// A line in the making, fix by fix.
class LineOfFixes
{
public:
    explicit LineOfFixes(size_t expected) { m_coordinates.reserve(expected); }

    /// A valid fix can still lack a readable coordinate: it is left out.
    void add(const CustomLocation& fix)
    {
        if (!fix.isValid())
            return;
        // A fix without a readable date doesn't tell how long its way took; the next that has one does.
        const bool isDated = fix.timestamp != Instant{};
        // Clocks that are set while driving jump either way.
        const bool follows = isDated && m_lastDate != Instant{};
        if (follows && std::chrono::abs(fix.timestamp - m_lastDate) > longestKnownStretch)
            m_gaps.push_back(static_cast<uint32_t>(m_coordinates.size() - 1));
        m_coordinates.push_back(coordinateOf(fix));
        if (isDated)
            m_lastDate = fix.timestamp;
    }
    bool empty() const { return m_coordinates.empty(); }
    std::shared_ptr<CustomMapPolyline> polyline() &&
    {
        return std::make_shared<CustomMapPolyline>(std::move(m_coordinates), std::move(m_gaps));
    }

private:
    std::vector<Coordinate> m_coordinates;
    std::vector<uint32_t> m_gaps;
    Instant m_lastDate{}; ///< of the last fix that has one
};

} // namespace

std::shared_ptr<CustomMapPolyline> RouteBuilder::polylineForDCFInfos(const DCFList& dcfs, size_t AtIndex)
{
    const DCFInfo& dcf = *dcfs[AtIndex];
    std::shared_ptr<const Telemetry> own = dcf.nmea->parsedSnapshot();
    if (AtIndex > 0) {
        const std::shared_ptr<const Telemetry> before = dcfs[AtIndex - 1]->nmea->parsedSnapshot();
        if (continues(*before, *own)) {
            dcf.nmea->carryOver(before->lastValidSpeedLocation(), before->lastValidHeadingLocation());
            own = dcf.nmea->snapshot();
        }
    }

    LineOfFixes line(own->varidLocations().size() + 1);
    for (const CustomLocation& location : own->varidLocations())
        line.add(location);
    if (!line.empty() && AtIndex + 1 < dcfs.size()) {
        const std::shared_ptr<const Telemetry> next = dcfs[AtIndex + 1]->nmea->parsedSnapshot();
        if (continues(*own, *next))
            line.add(next->varidLocations().front());
    }
    const std::shared_ptr<CustomMapPolyline> route = std::move(line).polyline();
    route->lineColor = routeColors.front();
    return route;
}

std::shared_ptr<CustomPointAnnotation> RouteBuilder::annotationForDCFInfo(const std::shared_ptr<DCFInfo>& dcf)
{
    const std::shared_ptr<const Telemetry> telemetry = dcf->nmea->parsedSnapshot();
    for (const CustomLocation& location : telemetry->varidLocations()) {
        if (!location.isValid())
            continue;
        auto marker = std::make_shared<CustomPointAnnotation>();
        marker->coordinate = coordinateOf(location);
        marker->GPSEnable = true;
        marker->direction = location.course;
        marker->speed = static_cast<float>(location.speed);
        marker->info = dcf;
        return marker;
    }
    return nullptr;
}

std::vector<QColor> RouteBuilder::dayColors(const DCFList& dcfs)
{
    std::vector<QColor> colors(dcfs.size());
    size_t group = 0;
    std::optional<Instant> groupStart;
    for (size_t i = 0; i < dcfs.size(); ++i) {
        const std::optional<Instant> start = firstDate(*dcfs[i]->nmea->snapshot());
        if (!start)
            continue;
        if (!groupStart) {
            groupStart = start;
        } else if (shouldChangeRouteColor(start, groupStart)) {
            groupStart = start;
            ++group;
        }
        colors[i] = routeColors[group % routeColors.size()];
    }
    return colors;
}

} // namespace cardreel
