#pragma once

#include "media/RouteBuilder.h"
#include "playback/FakePanes.h"
#include "telemetry/NMEAData.h"
#include "views/map/MapVewController.h"

#include <array>
#include <cmath>

namespace cardreel::test {

/// Recordings of a minute from noon on: two ordinary ones, one of each other kind, and one without positions. The first
/// five have a fix in each of their first ten seconds.
struct Card : CardBuilder
{
    static constexpr std::array folders = {"NORMAL", "NORMAL", "EVENT", "MANUAL", "PARKING", "NORMAL"};

    Card()
    {
        for (size_t i = 0; i < folders.size(); ++i) {
            const QString stem = QLatin1StringView(folders[i]) + QStringLiteral("/20010112000%1").arg(i);
            file(stem + QStringLiteral(".MP4"), "x", noon + std::chrono::minutes(i + 1));
            if (i < 5)
                file(stem + QStringLiteral(".NMEA"), sideFile(noon + std::chrono::minutes(i), 10));
        }
    }
};

/// A map pane in a window whose other panes are fakes, and whose card is parsed by hand.
struct Pane
{
    Card card;
    FakeWindow window;
    Throttle::Clock::time_point now{};
    std::unique_ptr<MapVewController> map;

    Pane()
    {
        map = std::make_unique<MapVewController>(*window.controller, nullptr, [this] { return now; });
        map->resize(600, 400);
        window.controller->setMapVC(map.get());
        window.open(card.root());
    }
    /// The first so many recordings.
    void parse(size_t count = 6)
    {
        const RouteBuilder::DCFList& all = window.controller->mediaTree();
        for (size_t i = 0; i < count; ++i) {
            if (const auto line = RouteBuilder::polylineForDCFInfos(all, i); !line->coordinates().empty())
                all[i]->routeLine.push_back(line);
            if (const auto marker = RouteBuilder::annotationForDCFInfo(all[i]))
                all[i]->annotation.push_back(marker);
            Q_EMIT window.controller->recordingDidParse(all[i]);
        }
    }
    /// The clock's tick, so many milliseconds of the pane's own time from the beginning.
    void tickAt(int ms, double seconds)
    {
        now = Throttle::Clock::time_point(std::chrono::milliseconds(ms));
        map->updateDCF(window.recording(0), seconds, 60);
    }
    /// Which of a recording's fixes the position marker stands on; -1 for none.
    long place() const
    {
        const CustomPointAnnotation* marker = map->userLocation();
        return marker ? std::lround((marker->coordinate.latitude - 35) * 60 / 0.005) : -1;
    }
    MapView::Marker marker(size_t index) const { return window.recording(index)->annotation.front(); }
    MapView::Route route(size_t index) const { return window.recording(index)->routeLine.front(); }
};

inline bool isCenteredOn(const MapVewController& map, double latitude)
{
    return std::abs(map.mapView()->center().latitude - latitude) < 1e-6;
}

} // namespace cardreel::test
