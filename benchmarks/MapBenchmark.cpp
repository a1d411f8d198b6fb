// map-benchmark: a map of 1200x800 points with 5,000 routes of 180 fixes and as many markers, most around one city,
// some that jump between continents. First without tiles, then with tiles from a folder that it makes. Builds the
// routes beside the interface thread, drags and zooms for some seconds, and prints how long frames take from the input
// to the end of the painting, how long until the picture of the routes is exact once the map rests, how late events
// were handled while routes came, and what is held in memory. Fails when a target is missed.

#include "media/CustomMapPolyline.h"
#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "media/RouteColors.h"
#include "names/ConstClass.h"
#include "platform/InterfaceThread.h"
#include "views/map/MapView.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QTemporaryDir>
#include <QWheelEvent>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <random>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int routeCount = 5000;
constexpr int fixCount = 180;
constexpr Coordinate city = {35.68, 139.75};
constexpr double cityRadius = 0.25; ///< degrees
constexpr auto frameInterval = milliseconds(16);

bool failed = false;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double residentMiB()
{
    malloc_trim(0);
    long pages = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

void row(const char* what, double value, const char* unit, double target = 0)
{
    std::printf("%-62s %8.2f %-3s", what, value, unit);
    if (target > 0)
        std::printf("  (target %g)%s", target, value > target ? "  MISSED" : "");
    std::printf("\n");
    std::fflush(stdout);
    failed = failed || (target > 0 && value > target);
}

double percentile(std::vector<double> values, double part)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[static_cast<size_t>(part * static_cast<double>(values.size() - 1))];
}

/// Drives one after another, each of which goes on where the last ended, at 15 m/s with turns.
class Drives
{
public:
    std::vector<Coordinate> next()
    {
        const bool jumps = ++m_count % 250 == 0;
        std::vector<Coordinate> line;
        line.reserve(fixCount);
        for (int i = 0; i < fixCount; ++i)
            line.push_back(jumps ? Coordinate{m_latitude(m_random), m_longitude(m_random)} : step());
        return line;
    }

private:
    Coordinate step()
    {
        m_heading += m_turn(m_random);
        m_place.latitude += 0.000'135 * std::cos(m_heading);
        m_place.longitude += 0.000'166 * std::sin(m_heading);
        if (std::hypot(m_place.latitude - city.latitude, m_place.longitude - city.longitude) > cityRadius)
            m_heading = std::atan2(city.longitude - m_place.longitude, city.latitude - m_place.latitude);
        return m_place;
    }

    std::mt19937 m_random{1};
    std::normal_distribution<double> m_turn{0, 0.15};
    std::uniform_real_distribution<double> m_latitude{-60, 70};
    std::uniform_real_distribution<double> m_longitude{-180, 180};
    Coordinate m_place = city;
    double m_heading = 0;
    int m_count = 0;
};

/// Notes how late the interface thread handles what is posted to it every few milliseconds.
class Probe : public QObject
{
public:
    Probe()
    {
        m_thread = std::thread([this] {
            while (!m_stop) {
                const Clock::time_point sent = Clock::now();
                QMetaObject::invokeMethod(
                    this, [this, sent] { latest = std::max(latest, millisecondsSince(sent)); }, Qt::QueuedConnection);
                std::this_thread::sleep_for(milliseconds(5));
            }
        });
    }
    ~Probe() override
    {
        m_stop = true;
        m_thread.join();
    }

    double latest = 0; ///< milliseconds

private:
    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

class PaintWatch : public QObject
{
public:
    int paints = 0;

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

class Run
{
public:
    Run()
    {
        m_view.resize(1200, 800);
        m_view.viewport()->installEventFilter(&m_watch);
        m_view.setCenter(city, MapView::Animation::None);
        m_view.setZoom(11, MapView::Animation::None);
        m_view.show();
        runFor(milliseconds(300));
    }

    void useTiles(const QString& folder)
    {
        m_view.setTileSettings({folder, {}, {}});
        runFor(milliseconds(1000));
    }

    void showOrdinaryCard();
    void addEverything();
    void recolor();
    void point();
    void moveAround(const char* name);
    void rest(const char* name)
    {
        const Clock::time_point start = Clock::now();
        while (!m_view.isOverlayCurrent())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        row(name, millisecondsSince(start), "ms");
    }

private:
    static void runFor(milliseconds time)
    {
        const Clock::time_point start = Clock::now();
        while (Clock::now() - start < time) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    }

    template<typename Input>
    void frames(int count, std::vector<double>& times, Input input)
    {
        for (int i = 0; i < count; ++i) {
            const Clock::time_point start = Clock::now();
            const int before = m_watch.paints;
            input(i);
            while (m_watch.paints == before)
                QCoreApplication::processEvents(QEventLoop::AllEvents);
            times.push_back(millisecondsSince(start));
            // What comes from the background is handled in between, as in the program.
            while (Clock::now() - start < frameInterval) {
                QCoreApplication::processEvents(QEventLoop::AllEvents);
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            }
        }
    }

    void mouse(QEvent::Type type, QPointF position)
    {
        const Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, position, m_view.viewport()->mapToGlobal(position),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(m_view.viewport(), &event);
    }

    void wheel(QPointF position, int turn)
    {
        QWheelEvent event(position, m_view.viewport()->mapToGlobal(position), {}, {0, turn}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_view.viewport(), &event);
    }

    PaintWatch m_watch;
    MapView m_view;
    std::vector<std::shared_ptr<CustomMapPolyline>> m_routes;
    std::vector<std::shared_ptr<DCFInfo>> m_recordings;
};

void Run::addEverything()
{
    // Recordings of every kind, which the markers only observe.
    for (const QString& kind : {u"NORMAL"_s, u"EVENT"_s, u"MANUAL"_s, u"PARKING"_s})
        m_recordings.push_back(std::make_shared<DCFInfo>(u"/card"_s, kind + u"/250614080310.MP4"_s));
    m_routes.reserve(routeCount);
    std::atomic<bool> isDone = false;
    Probe probe;
    const Clock::time_point start = Clock::now();
    std::thread builder([this, &isDone] {
        Drives drives;
        for (int i = 0; i < routeCount; ++i) {
            auto route = std::make_shared<CustomMapPolyline>(drives.next(), std::vector<uint32_t>{60, 120});
            route->lineColor = routeColors.front();
            auto marker = std::make_shared<CustomPointAnnotation>();
            marker->coordinate = route->coordinates().front();
            marker->info = m_recordings[static_cast<size_t>(i % 10 < 7 ? 0 : i % 10 - 6)];
            InterfaceThread::callAndWait([&] {
                m_view.addRoute(route);
                m_view.addMarker(marker);
                m_routes.push_back(route);
            });
        }
        isDone = true;
    });
    while (!isDone)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    builder.join();
    row("5,000 routes and markers built and added", millisecondsSince(start), "ms");
    recolor();
    rest("until all of them can be seen");
    row("latest event meanwhile", probe.latest, "ms", 50);
}

/// A hundred routes, as most cards have: how long after the map has jumped its picture follows.
void Run::showOrdinaryCard()
{
    Drives drives;
    for (int i = 0; i < 100; ++i)
        m_view.addRoute(std::make_shared<CustomMapPolyline>(drives.next()));
    std::vector<double> times;
    for (int i = 0; i < 40; ++i) {
        runFor(milliseconds(50));
        const Clock::time_point start = Clock::now();
        m_view.setZoom(10 + i % 7 * 0.7, MapView::Animation::None);
        while (!m_view.isOverlayCurrent())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        times.push_back(millisecondsSince(start));
    }
    row("100 routes: until they are exact at another zoom, median", percentile(times, 0.5), "ms", 33);
    m_view.clear();
}

/// What it takes to tell what is under the pointer; a click on nothing looks for both markers and routes.
void Run::point()
{
    std::vector<double> times;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> x(0, 1200);
    std::uniform_real_distribution<double> y(0, 800);
    for (int i = 0; i < 200; ++i) {
        const QPointF position(x(random), y(random));
        mouse(QEvent::MouseButtonPress, position);
        const Clock::time_point start = Clock::now();
        mouse(QEvent::MouseButtonRelease, position);
        times.push_back(millisecondsSince(start));
    }
    row("telling what is under the pointer, median", percentile(times, 0.5), "ms", 1);
}

/// As after the parse: each day's routes in the colour of the day.
void Run::recolor()
{
    for (size_t i = 0; i < m_routes.size(); ++i) {
        m_view.removeRoute(m_routes[i]);
        m_routes[i]->lineColor = routeColors[i / 40 % routeColors.size()];
        m_view.addRoute(m_routes[i]);
    }
}

void Run::moveAround(const char* name)
{
    std::printf("%s\n", name);
    std::vector<double> panning;
    std::vector<double> zooming;
    const QPointF middle(600, 400);
    for (const double zoom : {4.0, 11.0, 14.0}) {
        m_view.setCenter(city, MapView::Animation::None);
        m_view.setZoom(zoom, MapView::Animation::None);
        runFor(milliseconds(1500));
        mouse(QEvent::MouseButtonPress, middle);
        frames(150, panning, [&](int i) {
            const double angle = (i + 1) / 12.0;
            mouse(QEvent::MouseMove, middle + QPointF(300 * std::sin(angle), 200 * std::sin(2 * angle) + i));
        });
        mouse(QEvent::MouseButtonRelease, middle);
        rest("  until the routes are exact after dragging");
        frames(150, zooming, [&](int i) { wheel({500, 300}, i % 60 < 30 ? 15 : -16); });
        rest("  until the routes are exact after zooming");
    }
    row("  frame while dragging, median", percentile(panning, 0.5), "ms", 16);
    row("  frame while dragging, 99 of 100", percentile(panning, 0.99), "ms", 33);
    row("  frame while zooming, median", percentile(zooming, 0.5), "ms", 16);
    row("  frame while zooming, 99 of 100", percentile(zooming, 0.99), "ms", 33);
}

/// Twelve pictures that look like a map, under the names of all tiles around the city.
void makeTiles(const QString& folder)
{
    std::vector<QString> files;
    for (int i = 0; i < 12; ++i) {
        QImage image(256, 256, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(40 + i * 10, 20, 235));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::white, 5));
        for (int line = 0; line < 6; ++line)
            painter.drawLine(0, line * 50 + i, 256, line * 43);
        painter.end();
        files.push_back(folder + u"/%1.png"_s.arg(i));
        image.save(files.back());
    }
    for (int z = 0; z <= 14; ++z) {
        const double count = std::exp2(z);
        const MapPoint from = mapPoint(city.latitude + cityRadius * 1.2, city.longitude - cityRadius * 1.2);
        const MapPoint to = mapPoint(city.latitude - cityRadius * 1.2, city.longitude + cityRadius * 1.2);
        for (int x = static_cast<int>(from.x * count); x <= static_cast<int>(to.x * count); ++x) {
            const QString column = folder + u"/tiles/%1/%2"_s.arg(z).arg(x);
            QDir().mkpath(column);
            for (int y = static_cast<int>(from.y * count); y <= static_cast<int>(to.y * count); ++y)
                QFile::link(files[static_cast<size_t>((x * 5 + y) % 12)], column + u"/%1.png"_s.arg(y));
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QTemporaryDir folder;
    makeTiles(folder.path());
    const auto run = std::make_unique<Run>();
    run->showOrdinaryCard();
    const double before = residentMiB();
    run->addEverything();
    run->point();
    run->moveAround("without tiles");
    row("held by routes, markers and map", residentMiB() - before, "MiB", 150);
    run->useTiles(folder.filePath(u"tiles"_s));
    run->moveAround("with tiles of a folder");
    row("held by routes, markers, map and tiles", residentMiB() - before, "MiB", 150);
    return failed ? 1 : 0;
}
