// What a tick of the playback clock costs, with panes that do as little as panes can. With --leak it lets a window play
// for two hours and fails when that takes memory.

#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "playback/MediaController.h"
#include "playback/MediaControllerManager.h"
#include "playback/Panes.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <new>
#include <string_view>
#include <unistd.h>
#include <utility>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

std::atomic<size_t> allocations = 0;

} // namespace

void* operator new(size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, size_t) noexcept
{
    std::free(memory);
}

namespace {

constexpr double recordingSeconds = 180;
constexpr double ticksPerSecond = 100;

/// Plays a file that has only a length.
class SimulatedPlayer : public PlayerPane
{
public:
    /// The time of the drive moves on, and the callbacks run as those of a real player do.
    void advance(double seconds)
    {
        if (std::exchange(m_isLoading, false)) {
            m_length = recordingSeconds;
            m_willStartPlay();
        }
        if (m_isPlaying)
            m_position = std::min(m_length, m_position + seconds * m_rate);
        m_progress();
        if (m_isPlaying && m_position >= m_length && !m_isLoading)
            m_didStopPlaying();
    }

    void playWithPath(const QString& path, Callback willStartPlay, Callback progress, Callback didStopPlaying) override
    {
        const auto orNothing = [](Callback callback) { return callback ? std::move(callback) : Callback([] {}); };
        m_path = path;
        m_willStartPlay = orNothing(std::move(willStartPlay));
        m_progress = orNothing(std::move(progress));
        m_didStopPlaying = orNothing(std::move(didStopPlaying));
        m_position = 0;
        m_length = 0;
        m_isLoading = true;
        ++loads;
    }
    void showImageWithPath(const QString&) override {}
    void play() override { m_isPlaying = true; }
    void mutePlay() override { m_isPlaying = true; }
    void pause() override { m_isPlaying = false; }
    bool isPlaying() const override { return m_isPlaying; }
    void setCurrentProgress(double fraction) override
    {
        m_position = fraction * m_length;
        ++seeks;
    }
    double progress() const override { return m_length > 0 ? m_position / m_length : 0; }
    double playbackRate() const override { return m_rate; }
    void updatePlaybackRate(double rate) override { m_rate = rate; }
    double totalTime() const override { return m_length / m_rate; }
    double originalTotalTime() const override { return m_length; }
    double originalCurrentTime() const override { return m_position; }
    void audioMuteEnable(bool) override {}

    int loads = 0;
    int seeks = 0;

private:
    QString m_path;
    Callback m_willStartPlay;
    Callback m_progress = [] {};
    Callback m_didStopPlaying;
    double m_position = 0;
    double m_length = 0;
    double m_rate = 1;
    bool m_isPlaying = false;
    bool m_isLoading = false;
};

class SilentGraph : public GraphPane
{
public:
    void setProgressMax(double) override {}
    void setProgressMin(double) override {}
    void updateProgress(double fraction) override { benchmark::DoNotOptimize(fraction); }
    void drawGraphWithCurrentDCFInfo(const std::shared_ptr<DCFInfo>&) override {}
    void setCurrentSpeed(double speed) override { benchmark::DoNotOptimize(speed); }
    bool userControlIsActive() const override { return false; }
};

class SilentMap : public MapPane
{
public:
    void updateDCF(const std::shared_ptr<DCFInfo>&, double seconds, double) override
    {
        benchmark::DoNotOptimize(seconds);
    }
    void upDateWithCenterLocation(const CustomLocation&) override {}
    const CustomPointAnnotation* userLocation() const override { return &m_marker; }

private:
    CustomPointAnnotation m_marker;
};

class WrappingList : public RecordingsList
{
public:
    explicit WrappingList(MediaController& controller)
        : m_controller(controller)
    {
    }

    void selectCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) override
    {
        m_controller.updateCurrentDCF(dcf, true, nullptr);
    }
    void selectNextDCFWithCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) override
    {
        const auto& all = m_controller.mediaTree();
        const auto at = std::find(all.begin(), all.end(), dcf);
        selectCurrentDCF(at == all.end() || at + 1 == all.end() ? all.front() : *(at + 1));
    }

private:
    MediaController& m_controller;
};

struct Window
{
    MediaController controller;
    SimulatedPlayer front;
    SimulatedPlayer rear;
    SilentGraph graph;
    SilentMap map;
    WrappingList list{controller};

    explicit Window(const QString& card)
    {
        controller.setDcfListVC(&list);
        controller.setPlayerVC(&front);
        controller.setPlayerVCSecondary(&rear);
        controller.setGraphVC(&graph);
        controller.setMapVC(&map);
        controller.mediaTreeSyncAtRootPath(card);
        for (const std::shared_ptr<DCFInfo>& dcf : controller.mediaTree())
            dcf->thumbnailPath = u"thumbnail"_s; // as after the background parse
    }
    void start(size_t index)
    {
        controller.updateCurrentDCF(controller.mediaTree().at(index), true, nullptr);
        for (int i = 0; i < 10; ++i)
            tick();
    }
    void tick()
    {
        front.advance(1 / ticksPerSecond);
        rear.advance(1 / ticksPerSecond);
    }
};

/// A card of so many recordings that follow each other.
class Card
{
public:
    explicit Card(int recordings)
    {
        QDir(m_folder.path()).mkdir(u"NORMAL"_s);
        const QDateTime start(QDate(2020, 1, 1), QTime(12, 0), Qt::UTC);
        for (int i = 0; i < recordings; ++i) {
            const QDateTime begin = start.addSecs(i * static_cast<qint64>(recordingSeconds));
            const QDateTime end = begin.addSecs(static_cast<qint64>(recordingSeconds));
            QFile file(m_folder.filePath(u"NORMAL/"_s + begin.toString(u"yyMMddHHmmss"_s) + u".MP4"_s));
            if (!file.open(QIODevice::WriteOnly) || !file.setFileTime(end, QFileDevice::FileModificationTime))
                std::abort();
        }
    }
    QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

void reportAllocations(benchmark::State& state, size_t before)
{
    const size_t made = allocations - before;
    state.counters["allocations"] = static_cast<double>(made);
    if (made != 0)
        state.SkipWithError("the tick allocates");
}

void tickOfAWindow(benchmark::State& state)
{
    const Card card(3);
    Window window(card.path());
    window.start(1);
    const bool isMaster = state.range(0) != 0;
    MediaControllerManager::sharedInstance().updateMasterController(isMaster ? &window.controller : nullptr);
    const size_t before = allocations;
    while (state.KeepRunning())
        window.controller.progressAction(&window.front);
    reportAllocations(state, before);
}
BENCHMARK(tickOfAWindow)->ArgName("master")->Arg(0)->Arg(1);

/// The master's time comes in; the recording stands at that place of the follower's 5,000.
void tickOfAFollower(benchmark::State& state)
{
    const Card card(5000);
    Window window(card.path());
    const auto index = static_cast<size_t>(state.range(0));
    if (window.controller.mediaTree().size() != 5000) {
        state.SkipWithError("recordings are missing");
        return;
    }
    for (const std::shared_ptr<DCFInfo>& dcf : window.controller.mediaTree())
        dcf->duration = recordingSeconds;
    window.start(index);
    const double date = window.controller.userDate();
    const int loads = window.front.loads;
    const int seeks = window.front.seeks;
    const size_t before = allocations;
    while (state.KeepRunning())
        window.controller.updateCurrentDate(date);
    reportAllocations(state, before);
    if (window.front.loads != loads || window.front.seeks != seeks)
        state.SkipWithError("the follower was elsewhere");
}
BENCHMARK(tickOfAFollower)->ArgName("place")->Arg(0)->Arg(4999);

struct Memory
{
    size_t inUseKiB;
    size_t residentKiB;
};

Memory memoryNow()
{
    size_t total = 0;
    size_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    const struct mallinfo2 heap = mallinfo2();
    return {(heap.uordblks + heap.hblkhd) / 1024, resident * static_cast<size_t>(sysconf(_SC_PAGESIZE)) / 1024};
}

/// A window that leads and one that follows play for two hours, a recording of 180 s after the other, again and again.
int playForTwoHours()
{
    constexpr int minuteTicks = static_cast<int>(60 * ticksPerSecond);
    constexpr size_t allowedKiB = 64;
    const Card card(3);
    Window master(card.path());
    Window follower(card.path());
    MediaControllerManager::sharedInstance().updateMasterController(&master.controller);
    master.start(0);
    Memory first{};
    for (int tick = 1; tick <= 120 * minuteTicks; ++tick) {
        master.tick();
        follower.tick();
        if (tick == minuteTicks)
            first = memoryNow();
    }
    const Memory last = memoryNow();
    std::printf("recordings loaded: %d by the master, %d by the follower; rear players sought %d and %d times\n",
                master.front.loads, follower.front.loads, master.rear.seeks, follower.rear.seeks);
    std::printf("after a minute: %zu KiB in use, %zu KiB resident\n", first.inUseKiB, first.residentKiB);
    std::printf("after two hours: %zu KiB in use, %zu KiB resident\n", last.inUseKiB, last.residentKiB);
    if (master.front.loads < 40 || follower.front.loads < 40) {
        std::printf("playback didn't go on\n");
        return 1;
    }
    return last.inUseKiB > first.inUseKiB + allowedKiB ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::string_view(argv[1]) == "--leak")
        return playForTwoHours();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
}
