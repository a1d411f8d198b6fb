// Times what a capture takes: to decode the exact frame, which the window begins at the press of the camera's button,
// and, once the file is named, to encode it as JPEG with a place and write it through to the disk. Usage:
// capture-benchmark FILE FOLDER; captures forty frames, each the last one before a key frame, and prints the median and
// the worst milliseconds of both. Fails when the second takes over 150 at worst, or the first as a median over a
// second.
#include "export/ImageCapture.h"
#include "platform/video/VideoAsset.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace Qt::StringLiterals;
using namespace cardreel;

namespace {

constexpr int captures = 40;
constexpr double aimMs = 150;
constexpr double namingMs = 1000; // nobody names a file faster

struct Spent
{
    std::vector<double> decoding, writing; ///< milliseconds
};

double millisecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

bool capture(const VideoAsset& video, double seconds, const QString& path, Spent& spent)
{
    const CustomLocation location({35.5, 139.7}, 0, 1.0, 0, 90, 10, Instant{});
    const auto pressed = std::chrono::steady_clock::now();
    const QImage image = ImageCapture::screenshotFromFile(video.path(), seconds, video.trackSize(),
                                                          QRect({}, video.trackSize()), Flip::None);
    spent.decoding.push_back(millisecondsSince(pressed));
    const auto named = std::chrono::steady_clock::now();
    const auto error = ImageCapture::writeFileWithCaptureImage(image, location, path);
    spent.writing.push_back(millisecondsSince(named));
    if (error)
        std::fprintf(stderr, "%s\n", qUtf8Printable(error->text()));
    return !error;
}

void print(const char* what, std::vector<double>& spent)
{
    std::sort(spent.begin(), spent.end());
    std::printf("  %-36s median %4.0f ms, worst %4.0f ms of %d\n", what, spent[spent.size() / 2], spent.back(),
                captures);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: capture-benchmark FILE FOLDER\n", stderr);
        return 2;
    }
    const VideoAsset video(arguments[1]);
    const int seconds = static_cast<int>(video.duration());
    const QString path = arguments[2] + u"/capture.jpg"_s;
    Spent spent;
    for (int i = 0; i < captures && seconds > 0; ++i) {
        const double lastFrame = i % seconds + 1 - 0.5 / video.frameRate();
        QFile::remove(path);
        if (!capture(video, lastFrame, path, spent))
            return 1;
    }
    if (spent.writing.empty()) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(video.errorText()));
        return 1;
    }
    std::printf("%dx%d\n", video.trackSize().width(), video.trackSize().height());
    print("decoding, while the file is named", spent.decoding);
    print("from the name to the disk", spent.writing);
    return spent.writing.back() <= aimMs && spent.decoding[spent.decoding.size() / 2] <= namingMs ? 0 : 1;
}
