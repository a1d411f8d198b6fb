// export-benchmark CARD OUT: scans a card and exports all its recordings to OUT, as the program does, and prints the
// milliseconds of the scan and of the export, and the most memory the process ever had, in megabytes.
// benchmarks/export.sh runs it.

#include "export/DCFAsyncKMLBuilder.h"
#include "media/MediaLibrary.h"
#include "platform/BackgroundQueue.h"
#include "platform/files/Files.h"

#include <QCoreApplication>

#include <sys/resource.h>

#include <chrono>
#include <cstdio>

using namespace cardreel;

namespace {

double millisecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024 / 1e6; // Linux counts in KiB
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: export-benchmark CARD OUT\n", stderr);
        return 2;
    }
    MediaLibrary library;
    const auto scanStart = std::chrono::steady_clock::now();
    library.mediaTreeSyncAtRootPath(files::fromNativePath(argv[1]));
    const double scan = millisecondsSince(scanStart);
    if (library.mediaTree().empty()) {
        std::fputs("export-benchmark: no recordings\n", stderr);
        return 1;
    }

    const auto exportStart = std::chrono::steady_clock::now();
    const auto builder = std::make_shared<DCFAsyncKMLBuilder>();
    builder->kmlBuildAsync(library.mediaTree(), files::fromNativePath(argv[2]), {},
                           [](const std::optional<QString>&) { QCoreApplication::quit(); });
    QCoreApplication::exec();
    const double taken = millisecondsSince(exportStart);
    BackgroundQueue::waitForDone();
    if (builder->outputError()) {
        std::fprintf(stderr, "export-benchmark: %s\n", qUtf8Printable(*builder->outputError()));
        return 1;
    }
    std::printf("%.1f %.1f %.1f\n", scan, taken, peakMegabytes());
    return 0;
}
