// Parsing of side files of several lengths, made in memory and put into a temporary file, which is read from the
// system's cache.

#include "telemetry/NMEAData.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryFile>

#include <benchmark/benchmark.h>

using namespace cardreel;

namespace {

/// A side file of so many seconds: a fix, ten samples and a silent assistance sentence each.
QByteArray sideFile(int seconds)
{
    QByteArray text = "$GTRIP,00000001,1.04\r\n";
    for (int second = 0; second < seconds; ++second) {
        text +=
            QString::asprintf("$GPRMC,%02d%02d%02d.00,A,35%02d.%04d,N,139%02d.%04d,E,%d.%02d,%d.%d,140625,,,A*42\r\n",
                              second / 3600 % 24, second / 60 % 60, second % 60, second % 60, second % 10000,
                              second % 60, second % 10000, second % 60, second % 100, second % 360, second % 10)
                .toLatin1();
        for (int sample = 0; sample < 10; ++sample) {
            text +=
                QString::asprintf("$GSENS,%.4f,%.4f,%.4f\r\n", (second + sample) % 97 / 100.0 - 0.4,
                                  (second * 7 + sample) % 89 / 100.0 - 0.4, (second * 3 + sample) % 83 / 100.0 - 0.4)
                    .toLatin1();
        }
        text += "$QVDSA,,,,,,,,,,,,,,,,\r\n";
    }
    return text;
}

void parseSideFile(benchmark::State& state)
{
    const QByteArray text = sideFile(static_cast<int>(state.range(0)));
    QTemporaryFile file;
    if (!file.open() || file.write(text) != text.size() || !file.flush()) {
        state.SkipWithError("no temporary file");
        return;
    }
    while (state.KeepRunning()) {
        NMEAData nmea(file.fileName());
        nmea.setup();
        if (nmea.snapshot()->motions().size() != static_cast<std::size_t>(state.range(0)) * 10)
            state.SkipWithError("samples are missing");
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}

// A minute, which is a usual recording, an hour, a day.
BENCHMARK(parseSideFile)->Arg(60)->Arg(3600)->Arg(86400)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
