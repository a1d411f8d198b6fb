// scan-benchmark CARD: scans a card once, as opening it does, and prints the milliseconds of the whole scan and of
// reading its pictures' properties alone, then what was found: recordings, those with a rear video, those with a side
// file, pictures. benchmarks/scan.sh runs it.

#include "media/DCFInfo.h"
#include "media/MediaLibrary.h"
#include "media/PictureInfo.h"
#include "platform/files/Files.h"
#include "platform/image/ImageProperties.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace cardreel;

namespace {

double millisecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: scan-benchmark CARD\n", stderr);
        return 2;
    }
    MediaLibrary library;
    const auto scanStart = std::chrono::steady_clock::now();
    library.mediaTreeSyncAtRootPath(files::fromNativePath(argv[1]));
    const double scan = millisecondsSince(scanStart);

    // The same files once more, so that what the scan spends on them can be taken off.
    const auto pictureStart = std::chrono::steady_clock::now();
    for (const auto& picture : library.pictureTree()) {
        if (!imageProperties(picture->filePath)) {
            std::fputs("scan-benchmark: a picture can't be opened\n", stderr);
            return 1;
        }
    }
    const double pictures = millisecondsSince(pictureStart);

    const auto& recordings = library.mediaTree();
    const auto withRear = std::count_if(recordings.begin(), recordings.end(),
                                        [](const auto& dcf) { return !dcf->secondaryFilePath.isEmpty(); });
    const auto withSideFile = std::count_if(recordings.begin(), recordings.end(),
                                            [](const auto& dcf) { return files::exists(dcf->infoFilePath); });
    std::printf("%.2f %.2f %zu %td %td %zu\n", scan, pictures, recordings.size(), withRear, withSideFile,
                library.pictureTree().size());
    return 0;
}
