// Plays a card in two real panes of a window, under the window's clock, and reads the frame numbers out of what the
// panes paint. Usage: playback-benchmark CARD MEASUREMENT; benchmarks/playback.sh runs it and knows what the figures
// are to be.
//   play     a recording at its own rate: frames apart between the panes, frames left out, processor time
//   rates    2 and 4 for ten seconds, 8 and 16 to the end of the recording: the rate kept, pictures a second
//   seek     exact seeks from a standstill and steps, until both panes show the very frame
//   scrub    a slider dragged back and forth: pictures a second in each pane
//   choose   another recording, until both panes show its first frame

#include "media/DCFInfo.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/video/VideoItem.h"
#include "playback/MediaController.h"
#include "playback/ZoomPlayerSplitViewController.h"
#include "playback/ZoomPlayerViewController.h"
#include "sample-card/FrameNumber.h"

#include <QApplication>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <numeric>
#include <vector>

using namespace Qt::StringLiterals;
using namespace cardreel;

namespace {

using Clock = std::chrono::steady_clock;

constexpr double framesPerSecond = 30;

double secondsBetween(Clock::time_point from, Clock::time_point to)
{
    return std::chrono::duration<double>(to - from).count();
}

double processorSeconds()
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](timeval time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? -1 : values[values.size() / 2];
}

/// The list of a window that has none to show.
class PlainList : public RecordingsList
{
public:
    explicit PlainList(MediaController& controller)
        : m_controller(controller)
    {
    }

    void selectCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) override
    {
        m_controller.updateCurrentDCF(dcf, true, nullptr);
    }
    void selectNextDCFWithCurrentDCF(const std::shared_ptr<DCFInfo>& /*dcf*/) override { ++ends; }

    int ends = 0;

private:
    MediaController& m_controller;
};

/// Both panes in a window, and what they painted.
class Bench
{
public:
    struct Painted
    {
        Clock::time_point at;
        int number;
    };

    explicit Bench(const QString& card)
        : list(controller)
        , panes(new ZoomPlayerViewController(u"Front"_s),
                new ZoomPlayerViewController(u"Rear"_s, VideoPlayer::AudioOutput::None))
    {
        controller.setDcfListVC(&list);
        controller.setPlayerVC(panes.primaryPlayerItem());
        controller.setPlayerVCSecondary(panes.secondaryPlayerItem());
        for (std::size_t i = 0; i < 2; ++i) {
            ZoomPlayerViewController* const pane = panes.playerVCs()[i];
            // The player is made with the first file; the pane connects to it before it tells.
            QObject::connect(pane, &ZoomPlayerViewController::playerDidChange, pane, [this, pane, i] {
                pane->playerScrollView()->setFrameSource([this, player = pane->player(), i] {
                    const QImage picture = player ? player->currentFrame() : QImage();
                    note(i, picture);
                    return picture;
                });
            });
        }
        panes.resize(1440, 405);
        panes.show();
        controller.mediaTreeSyncAtRootPath(card);
        controller.cancelParse();
    }

    ~Bench() { controller.dispose(); }

    /// Lets events go by until something is so; false after a minute and a half.
    static bool until(const std::function<bool()>& condition, double patienceSeconds = 90)
    {
        const Clock::time_point start = Clock::now();
        QTimer waking; // so that waiting takes no processor time
        waking.start(4);
        while (!condition()) {
            if (secondsBetween(start, Clock::now()) > patienceSeconds)
                return false;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return true;
    }

    void choose(std::size_t index)
    {
        controller.updateCurrentDCF(controller.mediaTree().at(index), true, nullptr);
        controller.cancelParse(); // what is measured is the playing
    }

    bool shows(int front, int rear) const { return last[0] == front && last[1] == rear; }
    ZoomPlayerViewController& front() { return *panes.primaryPlayerItem(); }

    MediaController controller;
    PlainList list;
    ZoomPlayerSplitViewController panes;
    std::array<std::vector<Painted>, 2> painted;
    std::array<int, 2> last{-1, -1};

private:
    void note(std::size_t pane, const QImage& picture)
    {
        const int number = picture.isNull() ? -1 : readFrameNumber(picture).value_or(-2);
        last[pane] = number;
        if (painted[pane].empty() || painted[pane].back().number != number)
            painted[pane].push_back({Clock::now(), number});
    }
};

/// How far apart the panes' frames were at most once the first second was over, and for how much of the time by more
/// than one.
void reportDistance(const std::array<std::vector<Bench::Painted>, 2>& painted, Clock::time_point from,
                    Clock::time_point to)
{
    std::size_t front = 0;
    std::size_t rear = 0;
    int most = 0;
    double apart = 0;
    Clock::time_point before = from;
    const auto at = [](const std::vector<Bench::Painted>& list, std::size_t i) {
        return i < list.size() ? list[i].at : Clock::time_point::max();
    };
    int distance = 0;
    for (;;) {
        const Clock::time_point next = std::min({at(painted[0], front), at(painted[1], rear), to});
        if (next > from) {
            most = std::max(most, distance);
            if (distance > 1)
                apart += secondsBetween(std::max(before, from), next);
        }
        if (next == to)
            break;
        before = next;
        ++(at(painted[0], front) == next ? front : rear);
        if (front > 0 && rear > 0)
            distance = std::abs(painted[0][front - 1].number - painted[1][rear - 1].number);
    }
    std::printf("frames-apart %d\nmore-than-one-ms %.0f\n", most, apart * 1000);
}

int framesLeftOut(const std::vector<Bench::Painted>& painted, Clock::time_point from, Clock::time_point to)
{
    int left = 0;
    for (std::size_t i = 1; i < painted.size(); ++i) {
        if (painted[i - 1].at > from && painted[i].at < to)
            left += std::max(0, painted[i].number - painted[i - 1].number - 1);
    }
    return left;
}

bool startPlaying(Bench& bench, std::size_t recording)
{
    bench.choose(recording);
    return bench.until([&] { return bench.front().isPlaying() && bench.last[0] > 2 && bench.last[1] > 2; });
}

bool play(Bench& bench)
{
    const double before = processorSeconds();
    const Clock::time_point start = Clock::now();
    if (!startPlaying(bench, 0))
        return false;
    const double length = bench.front().originalTotalTime();
    bench.until([&] { return bench.list.ends > 0; });
    const Clock::time_point end = Clock::now();
    std::printf("seconds %.2f\nlength %.2f\nprocessor %.2f\n", secondsBetween(start, end), length,
                processorSeconds() - before);
    const Clock::time_point from = start + std::chrono::seconds(1);
    const Clock::time_point to = end - std::chrono::milliseconds(100);
    reportDistance(bench.painted, from, to);
    std::printf("front-left-out %d\nrear-left-out %d\n", framesLeftOut(bench.painted[0], from, to),
                framesLeftOut(bench.painted[1], from, to));
    return bench.list.ends == 1;
}

bool rates(Bench& bench)
{
    for (const double rate : {2.0, 4.0}) {
        if (!startPlaying(bench, 0))
            return false;
        bench.front().updatePlaybackRate(rate);
        // The player begins anew; measured is how it goes on from there.
        const double begin = bench.front().originalCurrentTime() + rate;
        bench.until([&] { return bench.front().originalCurrentTime() > begin; });
        for (auto& list : bench.painted)
            list.clear();
        const Clock::time_point start = Clock::now();
        const double from = bench.front().originalCurrentTime();
        const std::array<int, 2> first = bench.last;
        bench.until([&] { return secondsBetween(start, Clock::now()) > 10; });
        const double seconds = secondsBetween(start, Clock::now());
        std::printf("rate-%.0f %.4f\n", rate, (bench.front().originalCurrentTime() - from) / seconds);
        for (std::size_t i = 0; i < 2; ++i)
            std::printf("rate-%.0f-%s %.4f\npictures-%.0f-%s %.1f\n", rate, i == 0 ? "front" : "rear",
                        (bench.last[i] - first[i]) / framesPerSecond / seconds, rate, i == 0 ? "front" : "rear",
                        static_cast<double>(bench.painted[i].size()) / seconds);
        reportDistance(bench.painted, start, Clock::now());
        bench.front().updatePlaybackRate(1);
    }
    for (const double rate : {8.0, 16.0}) {
        bench.choose(1);
        bench.front().pause();
        bench.front().updatePlaybackRate(rate);
        if (!bench.until([&] { return !bench.front().isLoading() && bench.last[0] >= 0 && bench.last[1] >= 0; }))
            return false;
        bench.front().pause();
        bench.controller.updateProgress(0);
        bench.until([&] { return bench.shows(0, 0); });
        for (auto& list : bench.painted)
            list.clear();
        bench.list.ends = 0;
        ZoomPlayerViewController& rear = *bench.panes.secondaryPlayerItem();
        std::array<double, 2> ended{-1, -1};
        const Clock::time_point start = Clock::now();
        bench.front().play();
        bench.until(
            [&] {
                const double now = secondsBetween(start, Clock::now());
                if (ended[0] < 0 && bench.list.ends > 0)
                    ended[0] = now;
                if (ended[1] < 0 && rear.player()->status() == VideoPlayer::Status::Ended)
                    ended[1] = now;
                return ended[0] >= 0 && ended[1] >= 0;
            },
            40);
        std::printf("length %.3f\n", bench.front().originalTotalTime());
        for (std::size_t i = 0; i < 2; ++i)
            std::printf("end-%.0f-%s %.3f\npictures-%.0f-%s %.1f\n", rate, i == 0 ? "front" : "rear", ended[i], rate,
                        i == 0 ? "front" : "rear", static_cast<double>(bench.painted[i].size()) / ended[i]);
        bench.front().updatePlaybackRate(1);
    }
    return true;
}

bool standAt(Bench& bench, double seconds)
{
    bench.controller.updateProgress(seconds / bench.front().originalTotalTime());
    const int frame = static_cast<int>(seconds * framesPerSecond);
    return bench.until([&] { return bench.shows(frame, frame); }, 10);
}

bool seek(Bench& bench)
{
    if (!startPlaying(bench, 0))
        return false;
    bench.front().pause();
    standAt(bench, 1);
    std::vector<double> taken;
    unsigned noise = 7;
    int missed = 0;
    for (int i = 0; i < 100; ++i) {
        noise = noise * 1664525 + 1013904223;
        const double to = 0.505 + (noise >> 8) % 5800 / 100.0; // never on the edge of a frame
        const Clock::time_point start = Clock::now();
        missed += standAt(bench, to) ? 0 : 1;
        taken.push_back(secondsBetween(start, Clock::now()) * 1000);
    }
    std::printf("seek-ms %.1f\nseek-worst-ms %.1f\nseek-missed %d\n", median(taken),
                *std::max_element(taken.begin(), taken.end()), missed);
    taken.clear();
    missed = 0;
    standAt(bench, 20.05);
    int frame = bench.last[0];
    for (int i = 0; i < 60; ++i) {
        const bool isOn = i % 3 != 2;
        frame += isOn ? 1 : -1;
        const Clock::time_point start = Clock::now();
        bench.front().stepFrame(isOn ? VideoPlayer::FrameStep::Forward : VideoPlayer::FrameStep::Backward);
        missed += bench.until([&] { return bench.shows(frame, frame); }, 10) ? 0 : 1;
        taken.push_back(secondsBetween(start, Clock::now()) * 1000);
    }
    std::printf("step-ms %.1f\nstep-missed %d\n", median(taken), missed);
    missed = 0;
    for (int i = 0; i < 20; ++i) {
        bench.front().play();
        const double from = bench.front().originalCurrentTime();
        bench.until([&] { return bench.front().originalCurrentTime() > from + 0.3 + i * 0.013; });
        bench.front().pause();
        const auto isLevel = [&] {
            return !bench.front().player()->isSeeking() && bench.last[0] == bench.last[1] &&
                   bench.last[0] == static_cast<int>(bench.front().originalCurrentTime() * framesPerSecond + 1e-3);
        };
        missed += bench.until(isLevel, 10) ? 0 : 1;
    }
    std::printf("pause-missed %d\n", missed);
    return true;
}

bool scrub(Bench& bench)
{
    if (!startPlaying(bench, 0))
        return false;
    bench.front().pause();
    standAt(bench, 30);
    for (auto& list : bench.painted)
        list.clear();
    constexpr double seconds = 10;
    const Clock::time_point start = Clock::now();
    QTimer hand;
    double position = 30;
    QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
        position = 30 + 25 * std::sin(secondsBetween(start, Clock::now()) * 1.3);
        bench.controller.updateProgress(position / bench.front().originalTotalTime());
    });
    hand.start(16);
    bench.until([&] { return secondsBetween(start, Clock::now()) > seconds; });
    hand.stop();
    for (std::size_t i = 0; i < 2; ++i) {
        double gap = 0;
        for (std::size_t p = 1; p < bench.painted[i].size(); ++p)
            gap = std::max(gap, secondsBetween(bench.painted[i][p - 1].at, bench.painted[i][p].at));
        std::printf("scrub-pictures-%s %.1f\nscrub-longest-%s-ms %.0f\n", i == 0 ? "front" : "rear",
                    static_cast<double>(bench.painted[i].size()) / seconds, i == 0 ? "front" : "rear", gap * 1000);
    }
    const int frame = static_cast<int>(position * framesPerSecond);
    const bool rests = bench.until([&] { return bench.shows(frame, frame); }, 10);
    std::printf("scrub-rests-exactly %d\n", rests ? 1 : 0);
    return true;
}

bool choose(Bench& bench)
{
    std::vector<double> taken;
    const std::size_t count = bench.controller.mediaTree().size();
    for (std::size_t i = 0; i < 40; ++i) {
        bench.front().pause();
        for (auto& list : bench.painted)
            list.clear();
        const Clock::time_point start = Clock::now();
        bench.choose((i * 7 + 1) % count);
        // Numbers below those that the former recording had come to.
        const auto isFirst = [&] {
            return std::all_of(bench.painted.begin(), bench.painted.end(), [](const std::vector<Bench::Painted>& list) {
                return std::any_of(list.begin(), list.end(),
                                   [](const Bench::Painted& one) { return one.number >= 0 && one.number < 15; });
            });
        };
        if (!bench.until(isFirst, 10))
            return false;
        taken.push_back(secondsBetween(start, Clock::now()) * 1000);
        bench.until([&] { return bench.last[0] > 20 && bench.last[1] > 20; }, 10);
    }
    std::printf("choose-ms %.1f\nchoose-worst-ms %.1f\n", median(taken), *std::max_element(taken.begin(), taken.end()));
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setApplicationName(u"cardreel"_s);
    QCoreApplication::setOrganizationName(u"Cardreel"_s);
    QApplication application(argc, argv);
    const QString measurement = argc == 3 ? QString::fromLocal8Bit(argv[2]) : QString();
    const std::pair<QString, bool (*)(Bench&)> measurements[] = {
        {u"play"_s, play}, {u"rates"_s, rates}, {u"seek"_s, seek}, {u"scrub"_s, scrub}, {u"choose"_s, choose}};
    bool isDone = false;
    for (const auto& [name, measure] : measurements) {
        if (name != measurement)
            continue;
        Bench bench(QString::fromLocal8Bit(argv[1]));
        isDone = bench.controller.mediaTree().size() > 1 && measure(bench);
    }
    InterfaceThread::close();
    BackgroundQueue::waitForDone();
    VideoPlayer::waitForShutdown();
    if (!isDone)
        std::fputs("usage: playback-benchmark CARD play|rates|seek|scrub|choose\n"
                   "The card needs two recordings with rear videos, of 30 frames a second with their numbers.\n",
                   stderr);
    return isDone ? 0 : 1;
}
