// side-file-cost FILE: reads one side file several times and prints the best time in seconds, then what the result
// holds in memory: bytes per sample, bytes per fix (its place in the lists of fixes and groups), and the counts.

#include "telemetry/NMEAData.h"

#include <QFile>
#include <QString>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <memory>

using namespace cardreel;

namespace {

double allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

} // namespace

int main(int argc, char** argv)
{
    constexpr int ROUNDS = 5;
    if (argc != 2) {
        std::fputs("usage: side-file-cost FILE\n", stderr);
        return 2;
    }
    const QString path = QFile::decodeName(argv[1]);
    double best = 0;
    double bytes = 0;
    std::unique_ptr<NMEAData> nmea;
    for (int round = 0; round < ROUNDS; ++round) {
        nmea.reset();
        const double before = allocatedBytes();
        const auto start = std::chrono::steady_clock::now();
        nmea = std::make_unique<NMEAData>(path);
        nmea->setup();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        best = round == 0 ? taken.count() : std::min(best, taken.count());
        bytes = allocatedBytes() - before;
    }
    const std::shared_ptr<const Telemetry> telemetry = nmea->snapshot();
    const auto samples = static_cast<double>(telemetry->motions().size());
    const auto fixes = static_cast<double>(telemetry->totalLocations().size());
    if (samples == 0 || fixes == 0) {
        std::fputs("side-file-cost: no samples or no fixes in the file\n", stderr);
        return 1;
    }
    // Everything that isn't a sample is put on the fixes' account, so that nothing hides between the two figures.
    const double sampleBytes = sizeof(MotionData);
    std::printf("%.4f %.1f %.1f %.0f %.0f\n", best, sampleBytes, (bytes - samples * sampleBytes) / fixes, samples,
                fixes);
    return 0;
}
