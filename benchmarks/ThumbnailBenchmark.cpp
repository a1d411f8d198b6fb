// Times this program's thumbnails, made as the library makes them: open the file, take the frame at one second, shrink
// it, encode it as JPEG. Usage: thumbnail-benchmark [--at SECONDS] FILE...; prints the mean milliseconds a file.
#include "platform/video/FrameGenerator.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QStringList>

#include <chrono>
#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QStringList files = QCoreApplication::arguments().mid(1);
    double seconds = 1;
    if (files.size() > 1 && files.first() == u"--at"_s) {
        seconds = files.at(1).toDouble();
        files = files.mid(2);
    }
    if (files.isEmpty()) {
        std::fputs("usage: thumbnail-benchmark [--at SECONDS] FILE...\n", stderr);
        return 2;
    }
    const auto start = std::chrono::steady_clock::now();
    for (const QString& file : std::as_const(files)) {
        const cardreel::VideoFrame frame = cardreel::FrameGenerator::frame(file, seconds, QSize(240, 135));
        QBuffer jpeg;
        jpeg.open(QIODevice::WriteOnly);
        if (frame.image.isNull() || !frame.image.save(&jpeg, "JPG")) {
            std::fprintf(stderr, "%s: %s\n", qUtf8Printable(file), qUtf8Printable(frame.errorText));
            return 1;
        }
    }
    const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
    std::printf("%.2f\n", spent.count() / static_cast<double>(files.size()));
    return 0;
}
