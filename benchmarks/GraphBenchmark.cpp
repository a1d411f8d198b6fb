// What the graph costs: drawing a recording's curves anew, and following the clock. Each benchmark fails when nothing
// was drawn.

#include "media/DCFInfo.h"
#include "playback/MediaController.h"
#include "telemetry/NMEAData.h"
#include "views/graph/GraphColors.h"
#include "views/graph/GraphLayerView.h"
#include "views/graph/GraphViewController.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <random>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize plotSize(1200, 300);
constexpr int samplesPerSecond = 10;
constexpr int secondsPerWarning = 30;

QByteArray fixSentence(int second)
{
    const int knots = static_cast<int>(30 + 10 * std::sin(second / 20.0));
    return QString::asprintf("$GPRMC,%02d%02d%02d,A,3500.0000,N,13900.0000,E,%d.0,0.0,010120,,,A\r\n",
                             second / 3600 % 24, second / 60 % 60, second % 60, knots)
        .toLatin1();
}

/// A recording that has only a side file: noise like a moving car's, and a warning now and then.
class Recording
{
public:
    explicit Recording(int seconds)
    {
        QDir(m_card.path()).mkdir(u"NORMAL"_s);
        write(u"NORMAL/200101120000.MP4"_s, "x");
        info = std::make_shared<DCFInfo>(m_card.path(), u"NORMAL/200101120000.MP4"_s);
        info->nmea->setFilePath(m_card.filePath(u"side.nmea"_s));
        write(u"side.nmea"_s, sideFile(seconds));
        info->nmea->setup();
        if (info->nmea->snapshot()->motions().size() != static_cast<size_t>(seconds * samplesPerSecond))
            std::abort();
    }

    std::shared_ptr<DCFInfo> info;

private:
    static QByteArray sideFile(int seconds)
    {
        std::mt19937 random(1);
        std::normal_distribution<double> noise(0, 0.08);
        QByteArray text = "$GTRIP,TRIP0001,1.0\r\n";
        for (int second = 0; second < seconds; ++second) {
            text += fixSentence(second);
            text += second % secondsPerWarning == 0 ? "$QVDSA,,,,,,5,1,,,,,,,,,\r\n" : "$QVDSA,,,,,,,,,,,,,,,,\r\n";
            for (int i = 0; i < samplesPerSecond; ++i)
                text += QString::asprintf("$GSENS,%.4f,%.4f,%.4f\r\n", noise(random), noise(random), noise(random))
                            .toLatin1();
        }
        return text;
    }
    void write(const QString& name, const QByteArray& bytes)
    {
        QFile file(m_card.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            std::abort();
    }

    QTemporaryDir m_card;
};

/// Whether all three curves and a marker are on the picture.
bool showsCurves(const QImage& picture)
{
    for (const QColor& color : {graphGXColor, graphGYColor, graphGZColor, adasForwardCollisionColor}) {
        bool isThere = false;
        for (int y = 0; y < picture.height() && !isThere; ++y) {
            for (int x = 0; x < picture.width() && !isThere; ++x)
                isThere = picture.pixel(x, y) == color.rgb();
        }
        if (!isThere)
            return false;
    }
    return true;
}

void fullRedraw(benchmark::State& state)
{
    const Recording recording(static_cast<int>(state.range(0)));
    const auto scale = static_cast<double>(state.range(1));
    GraphLayerDrawer drawer;
    drawer.setCurrentGOPs(recording.info->nmea->snapshot(), 120, 1);
    QImage picture(plotSize * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    while (state.KeepRunning()) {
        picture.fill(graphBackGroundColor);
        QPainter painter(&picture);
        drawer.draw(painter, plotSize);
    }
    if (!showsCurves(picture))
        state.SkipWithError("the curves are missing");
}
BENCHMARK(fullRedraw)
    ->ArgNames({"seconds", "scale"})
    ->ArgsProduct({{180, 3600, 36000}, {1, 2}})
    ->Unit(benchmark::kMillisecond);

void newRecording(benchmark::State& state)
{
    const Recording recording(static_cast<int>(state.range(0)));
    MediaController controller;
    GraphViewController graph(controller);
    while (state.KeepRunning())
        graph.drawGraphWithCurrentDCFInfo(recording.info);
    if (!graph.graphView()->message().isEmpty())
        state.SkipWithError("the recording wasn't read");
}
BENCHMARK(newRecording)->ArgName("seconds")->Arg(180)->Arg(36000)->Unit(benchmark::kMillisecond);

/// What the clock tells a hundred times a second, and the repaint that follows.
void tick(benchmark::State& state)
{
    const Recording recording(180);
    MediaController controller;
    GraphViewController graph(controller);
    graph.resize(900, 400);
    graph.show();
    graph.drawGraphWithCurrentDCFInfo(recording.info);
    QCoreApplication::processEvents();
    const int drawings = graph.graphView()->drawer().drawings();
    double fraction = 0;
    while (state.KeepRunning()) {
        fraction = std::fmod(fraction + 0.01 / 180, 1);
        graph.updateProgress(fraction);
        graph.setCurrentSpeed(0);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    if (drawings != 1 || graph.graphView()->drawer().drawings() != drawings)
        state.SkipWithError("a tick draws the curves");
    if (!showsCurves(graph.grab().toImage()))
        state.SkipWithError("the curves are missing");
}
BENCHMARK(tick)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
}
