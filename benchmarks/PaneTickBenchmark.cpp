// What a tick of the playback clock costs with the real graph and the real map, their repaints included: a recording of
// 180 s with 1,800 samples plays for 60 s of its own time, as fast as the panes can follow. Fails when the mean is over
// half a millisecond.

#include "media/DCFInfo.h"
#include "media/RouteBuilder.h"
#include "platform/Instant.h"
#include "playback/MediaController.h"
#include "playback/Panes.h"
#include "telemetry/NMEAData.h"
#include "views/graph/GraphLayerView.h"
#include "views/graph/GraphViewController.h"
#include "views/map/MapVewController.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <utility>
#include <vector>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr double recordingSeconds = 180;
constexpr int fixesPerRecording = 180;
constexpr int samplesPerFix = 10;
constexpr double tickSeconds = 0.01;
constexpr int ticks = 6000;
constexpr double allowedMeanMs = 0.5;

/// Plays a file that has only a length.
class SimulatedPlayer : public PlayerPane
{
public:
    void start() { m_willStartPlay(); }
    void advance(double seconds)
    {
        m_position += seconds;
        m_progress();
    }

    void playWithPath(const QString&, Callback willStartPlay, Callback progress, Callback) override
    {
        m_willStartPlay = std::move(willStartPlay);
        m_progress = std::move(progress);
    }
    void showImageWithPath(const QString&) override {}
    void play() override { m_isPlaying = true; }
    void mutePlay() override { m_isPlaying = true; }
    void pause() override { m_isPlaying = false; }
    bool isPlaying() const override { return m_isPlaying; }
    void setCurrentProgress(double fraction) override { m_position = fraction * recordingSeconds; }
    double progress() const override { return m_position / recordingSeconds; }
    double playbackRate() const override { return 1; }
    void updatePlaybackRate(double) override {}
    double totalTime() const override { return recordingSeconds; }
    double originalTotalTime() const override { return recordingSeconds; }
    double originalCurrentTime() const override { return m_position; }
    void audioMuteEnable(bool) override {}

private:
    Callback m_willStartPlay;
    Callback m_progress;
    double m_position = 0;
    bool m_isPlaying = false;
};

/// A drive round a bend with a fix a second and ten samples a fix.
QByteArray sideFile(const QDateTime& start)
{
    QByteArray text = "$GTRIP,TRIP0001,1.0\r\n";
    for (int i = 0; i < fixesPerRecording; ++i) {
        const double angle = i * 0.01;
        const QDateTime time = start.addSecs(i);
        const auto minutes = [](double value) { return QByteArray::number(value, 'f', 4).rightJustified(7, '0'); };
        text += "$GPRMC," + time.toString(u"HHmmss.zzz"_s).toLatin1() + ",A,35" + minutes(30 + std::sin(angle)) +
                ",N,139" + minutes(40 + std::cos(angle)) + ",E," + QByteArray::number(25 + 10 * std::sin(angle * 5)) +
                ',' + QByteArray::number(i * 2) + ',' + time.toString(u"ddMMyy"_s).toLatin1() + ",,,A*00\r\n";
        for (int sample = 0; sample < samplesPerFix; ++sample)
            text += "$GSENS," + QByteArray::number(std::sin(i + sample * 0.1) / 3) + ",0.02,1.0\r\n";
    }
    return text;
}

void write(const QString& path, const QByteArray& bytes, const QDateTime& modified)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() ||
        !file.setFileTime(modified, QFileDevice::FileModificationTime))
        std::abort();
}

QString makeCard(const QTemporaryDir& folder)
{
    const QDateTime start(QDate(2020, 1, 1), QTime(12, 0), Qt::UTC);
    const QDateTime end = start.addSecs(static_cast<qint64>(recordingSeconds));
    QDir(folder.path()).mkpath(u"card/NORMAL"_s);
    write(folder.filePath(u"card/NORMAL/200101120000.MP4"_s), "x", end);
    write(folder.filePath(u"card/NORMAL/200101120000.NMEA"_s), sideFile(start), end);
    return folder.filePath(u"card"_s);
}

/// As the background parse leaves it.
void parse(MediaController& controller)
{
    const std::shared_ptr<DCFInfo>& dcf = controller.mediaTree().front();
    dcf->routeLine = {RouteBuilder::polylineForDCFInfos(controller.mediaTree(), 0)};
    dcf->annotation = {RouteBuilder::annotationForDCFInfo(dcf)};
    dcf->thumbnailPath = u"thumbnail"_s;
    if (dcf->nmea->snapshot()->motions().size() != fixesPerRecording * samplesPerFix)
        std::abort();
    Q_EMIT controller.recordingDidParse(dcf);
}

/// Counts the repaints of what it is installed on.
struct Repaints : QObject
{
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

struct Window
{
    Repaints repaints;
    Clock::time_point playTime{}; ///< goes with the player, not with the computer
    MediaController controller;
    SimulatedPlayer front;
    QWidget widget;
    GraphViewController* graph = new GraphViewController(controller);
    MapVewController* map = new MapVewController(controller, nullptr, [this] { return playTime; });

    explicit Window(const QString& card)
    {
        auto* layout = new QHBoxLayout(&widget);
        layout->addWidget(graph, 3);
        layout->addWidget(map, 2);
        widget.resize(1200, 440);
        widget.show();
        controller.setPlayerVC(&front);
        controller.setGraphVC(graph);
        controller.setMapVC(map);
        controller.mediaTreeSyncAtRootPath(card);
        parse(controller);
        controller.updateCurrentDCF(controller.mediaTree().front(), true, nullptr);
        front.start();
        graph->graphView()->installEventFilter(&repaints);
        map->mapView()->viewport()->installEventFilter(&repaints);
        while (!map->mapView()->isOverlayCurrent())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    double tickMs()
    {
        playTime += std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(tickSeconds));
        const Clock::time_point begin = Clock::now();
        front.advance(tickSeconds);
        QCoreApplication::processEvents();
        // Windows wait some milliseconds for more to repaint; here every tick bears its own.
        QEvent repaint(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&widget, &repaint);
        return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
    }
};

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir folder;
    // Not the user's own settings.
    qputenv("XDG_CONFIG_HOME", folder.filePath(u"config"_s).toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", qEnvironmentVariable("QT_QPA_PLATFORM", u"offscreen"_s).toLocal8Bit());
    const QApplication application(argc, argv);
    Window window(makeCard(folder));
    std::vector<double> costs(ticks);
    int moves = 0;
    const CustomPointAnnotation* former = nullptr;
    for (double& cost : costs) {
        cost = window.tickMs();
        moves += std::exchange(former, window.map->userLocation()) != former ? 1 : 0;
    }
    const double mean = std::accumulate(costs.begin(), costs.end(), 0.0) / ticks;
    std::sort(costs.begin(), costs.end());
    std::printf("%d ticks, %d moves of the position, %d repaints: mean %.3f ms, median %.3f, 99th percentile %.3f, "
                "longest %.3f\n",
                ticks, moves, window.repaints.count, mean, costs[ticks / 2], costs[ticks * 99 / 100], costs.back());
    if (moves < 50 || window.repaints.count < moves || window.graph->progress() < 0.3) {
        std::printf("the panes didn't follow\n");
        return 1;
    }
    return mean < allowedMeanMs ? 0 : 1;
}
