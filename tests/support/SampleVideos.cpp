#include "SampleVideos.h"

#include "sample-card/FrameNumber.h"

#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QTransform>

#include <sys/stat.h>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

const QStringList h264{u"-c:v"_s,          u"libx264"_s, u"-preset"_s,     u"ultrafast"_s, u"-pix_fmt"_s,
                       u"yuv420p"_s,       u"-g"_s,      u"30"_s,          u"-bf"_s,       u"2"_s,
                       u"-sc_threshold"_s, u"0"_s,       u"-b_strategy"_s, u"0"_s};

bool run(const QStringList& arguments, const std::function<void(QProcess&)>& feed = {})
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-y"_s} + arguments);
    if (!process.waitForStarted())
        return false;
    if (feed)
        feed(process);
    process.closeWriteChannel();
    return process.waitForFinished(120'000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray firstPart(const QString& path, double part)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.read(static_cast<qint64>(static_cast<double>(file.size()) * part));
}

// Ten frames at 30 a second, then a pause of eight frames' length, and so on.
double variableStart(int frame)
{
    return (frame + 7 * (frame / 10)) / 30.0;
}

} // namespace

int SampleVideo::frameAt(double seconds) const
{
    int found = 0;
    for (int i = 0; i < static_cast<int>(starts.size()); ++i) {
        if (starts[static_cast<std::size_t>(i)] <= seconds)
            found = i;
    }
    return found;
}

std::optional<int> SampleVideo::numberIn(const QImage& picture) const
{
    if (picture.isNull())
        return std::nullopt;
    return readFrameNumber(rotation == 0 ? picture : picture.transformed(QTransform().rotate(-rotation)));
}

QList<QByteArray> SampleVideos::kinds()
{
    return {"h264",       "sound", "one-gop",    "variable", "rotated90", "rotated180",
            "rotated270", "hevc",  "late-start", "matroska", "transport"};
}

QList<QByteArray> SampleVideos::badKinds()
{
    return {"missing",  "empty",  "text", "no-moov",    "header-only",
            "playlist", "folder", "pipe", "audio-only", "garbage"};
}

bool SampleVideos::encode(const QString& path, const QStringList& encoder, const QStringList& filters)
{
    const QStringList input{
        u"-f"_s, u"rawvideo"_s, u"-pix_fmt"_s, u"bgra"_s, u"-s"_s, u"%1x%2"_s.arg(width).arg(height),
        u"-r"_s, u"30"_s,       u"-i"_s,       u"-"_s};
    return run(input + filters + encoder + QStringList{path}, [](QProcess& process) {
        for (int i = 0; i < frameCount; ++i) {
            QImage frame(width, height, QImage::Format_RGB32);
            frame.fill(QColor::fromHsv(i * 3 % 360, 120, 160));
            QPainter painter(&frame);
            paintFrameNumber(painter, frame.size(), i);
            painter.end();
            process.write(reinterpret_cast<const char*>(frame.constBits()), frame.sizeInBytes());
            process.waitForBytesWritten();
        }
    });
}

const SampleVideo& SampleVideos::good(const QByteArray& kind)
{
    const auto [place, isNew] = m_made.try_emplace(kind);
    SampleVideo& video = place->second;
    if (!isNew)
        return video;
    QString path = file(QString::fromLatin1(kind) + u".MP4"_s);
    for (int i = 0; i < frameCount; ++i)
        video.starts.push_back(kind == "variable" ? variableStart(i) : i / (kind == "27.5" ? 27.5 : 30.0));

    bool isMade = false;
    if (kind == "h264") {
        isMade = encode(path, h264, {});
    } else if (kind == "sound") {
        isMade = run({u"-i"_s, good("h264").path, u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine"_s, u"-c:v"_s, u"copy"_s,
                      u"-c:a"_s, u"aac"_s, u"-shortest"_s, path});
    } else if (kind == "one-gop") {
        isMade = encode(path, h264 + QStringList{u"-g"_s, u"1000"_s, u"-bf"_s, u"3"_s}, {});
    } else if (kind == "variable") {
        isMade = encode(path, h264, {u"-vf"_s, u"setpts=N+7*floor(N/10)"_s, u"-fps_mode"_s, u"passthrough"_s});
    } else if (kind == "27.5") {
        isMade = encode(path, h264 + QStringList{u"-enc_time_base"_s, u"1/27500"_s},
                        {u"-vf"_s, u"settb=1/27500,setpts=N*1000"_s, u"-fps_mode"_s, u"passthrough"_s});
    } else if (kind == "shorter") {
        video.starts.resize(83);
        isMade = encode(path, h264, {u"-frames:v"_s, u"83"_s});
    } else if (kind.startsWith("rotated")) {
        video.rotation = kind.mid(7).toInt();
        isMade = run({u"-i"_s, good("h264").path, u"-c"_s, u"copy"_s, u"-metadata:s:v:0"_s,
                      u"rotate=%1"_s.arg(360 - video.rotation), path});
    } else if (kind == "hevc") {
        isMade = encode(path,
                        {u"-c:v"_s, u"libx265"_s, u"-preset"_s, u"ultrafast"_s, u"-pix_fmt"_s, u"yuv420p"_s,
                         u"-x265-params"_s, u"keyint=30:bframes=3:log-level=none"_s},
                        {});
    } else if (kind == "late-start") {
        // As recorders do it that know no edit lists: the first picture comes when the first B-frames are due.
        isMade = run({u"-i"_s, good("h264").path, u"-c"_s, u"copy"_s, u"-use_editlist"_s, u"0"_s, path});
        for (double& start : video.starts)
            start += 2 / 30.0;
    } else if (kind == "raw") {
        isMade = run({u"-i"_s, good("h264").path, u"-c"_s, u"copy"_s, u"-f"_s, u"h264"_s, path});
    } else if (kind == "matroska" || kind == "transport") {
        path = file(kind == "matroska" ? u"matroska.mkv"_s : u"transport.ts"_s);
        isMade = run({u"-i"_s, good("h264").path, u"-c"_s, u"copy"_s, path});
    }
    video.duration = video.starts.back() + 1 / 30.0;
    if (isMade)
        video.path = path;
    return video;
}

QString SampleVideos::bad(const QByteArray& kind)
{
    const QString path = file(u"bad-"_s + QString::fromLatin1(kind) + u".MP4"_s);
    bool isMade = true;
    if (kind == "empty") {
        isMade = write(path, {});
    } else if (kind == "text") {
        isMade = write(path, QByteArray("no video here, only words\n").repeated(500));
    } else if (kind == "no-moov") {
        // ffmpeg writes the index last, as a recorder does whose power was cut.
        isMade = write(path, firstPart(good("h264").path, 0.6));
    } else if (kind == "header-only") {
        isMade = run({u"-i"_s, good("h264").path, u"-c"_s, u"copy"_s, u"-movflags"_s, u"faststart"_s, path});
        QFile whole(path);
        isMade = isMade && whole.open(QIODevice::ReadWrite);
        const qsizetype data = isMade ? whole.readAll().indexOf("mdat") : -1;
        isMade = data > 0 && whole.resize(data + 8);
    } else if (kind == "playlist") {
        isMade = write(path, "#EXTM3U\n#EXT-X-TARGETDURATION:4\n#EXTINF:4,\n" + good("h264").path.toUtf8() + "\n");
    } else if (kind == "folder") {
        isMade = ::mkdir(QFile::encodeName(path).constData(), 0755) == 0 || QFile::exists(path);
    } else if (kind == "pipe") {
        isMade = ::mkfifo(QFile::encodeName(path).constData(), 0644) == 0 || QFile::exists(path);
    } else if (kind == "audio-only") {
        isMade = run({u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=2"_s, u"-c:a"_s, u"aac"_s, path});
    } else if (kind == "garbage") {
        // A sound index, and nothing but noise where the pictures were.
        isMade = run({u"-i"_s, good("h264").path, u"-c"_s, u"copy"_s, u"-movflags"_s, u"faststart"_s, path});
        QFile whole(path);
        isMade = isMade && whole.open(QIODevice::ReadWrite);
        QByteArray bytes = isMade ? whole.readAll() : QByteArray();
        const qsizetype data = bytes.indexOf("mdat");
        isMade = data > 0;
        quint32 noise = 1;
        for (qsizetype i = data + 8; i < bytes.size() && isMade; ++i) {
            noise = noise * 1664525 + 1013904223;
            bytes[i] = static_cast<char>(noise >> 24);
        }
        isMade = isMade && whole.seek(0) && whole.write(bytes) == bytes.size();
    }
    return isMade ? path : QString();
}

const SampleVideo& SampleVideos::cut()
{
    const auto [place, isNew] = m_made.try_emplace("cut");
    SampleVideo& video = place->second;
    if (!isNew)
        return video;
    const SampleVideo& whole = good("h264");
    const QString front = file(u"index-first.MP4"_s);
    const QString path = file(u"cut.MP4"_s);
    video.starts = whole.starts;
    video.duration = whole.duration;
    if (run({u"-i"_s, whole.path, u"-c"_s, u"copy"_s, u"-movflags"_s, u"faststart"_s, front}) &&
        write(path, firstPart(front, 0.6)))
        video.path = path;
    return video;
}

} // namespace cardreel
