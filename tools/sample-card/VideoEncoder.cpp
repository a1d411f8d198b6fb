#include "sample-card/VideoEncoder.h"

#include <QFile>

#include <sys/mman.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

constexpr int SOUND_RATE = 48'000;
constexpr int SOUND_FRAME = 1024; // samples that AAC packs together
constexpr int PIPE_BYTES = 1 << 20;

QString systemError(int number)
{
    return QString::fromLocal8Bit(std::strerror(number));
}

} // namespace

VideoEncoder::VideoEncoder(QString ffmpeg_, QString path_, VideoFormat format_)
    : ffmpeg(std::move(ffmpeg_))
    , path(std::move(path_))
    , format(std::move(format_))
{
}

VideoEncoder::~VideoEncoder()
{
    if (input >= 0)
        close(input);
    if (process > 0) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    if (errors >= 0)
        close(errors);
}

QStringList VideoEncoder::arguments() const
{
    // An engine's hum, and a tick at each whole second by which sound and picture can be compared.
    const QString sound = format.side == CameraSide::Front
                              ? u"0.05*sin(515*t)+0.03*sin(773*t)+0.25*sin(6283*t)*lt(mod(t,1),0.03)"_s
                              : u"0.05*sin(402*t)+0.02*sin(603*t)+0.25*sin(4712*t)*lt(mod(t,1),0.03)"_s;
    // A whole number of sound frames that ends within the pictures, so that the file is as long as its pictures. The
    // encoder prepends one frame of its own.
    const qint64 soundFrames = std::max<qint64>(1, qint64{format.seconds} * SOUND_RATE / SOUND_FRAME - 1);
    const QString soundSeconds = QString::number(static_cast<double>(soundFrames * SOUND_FRAME) / SOUND_RATE, 'f', 6);
    // A key frame each half second, as recorders do.
    const int keyInterval = std::max(1, static_cast<int>(std::lround(format.rate.perSecond() / 2)));
    return {
        u"-nostdin"_s,
        u"-hide_banner"_s,
        u"-loglevel"_s,
        u"error"_s,
        u"-y"_s,
        u"-f"_s,
        u"rawvideo"_s,
        u"-pixel_format"_s,
        u"bgr0"_s,
        u"-video_size"_s,
        u"%1x%2"_s.arg(format.size.width()).arg(format.size.height()),
        u"-framerate"_s,
        format.rate.text(),
        u"-i"_s,
        u"pipe:0"_s,
        u"-f"_s,
        u"lavfi"_s,
        u"-t"_s,
        soundSeconds,
        u"-i"_s,
        u"aevalsrc='%1':s=%2"_s.arg(sound).arg(SOUND_RATE),
        u"-map"_s,
        u"0:v"_s,
        u"-map"_s,
        u"1:a"_s,
        u"-vf"_s,
        u"scale=out_color_matrix=bt709:flags=fast_bilinear,format=yuv420p"_s,
        u"-c:v"_s,
        u"libx264"_s,
        u"-preset"_s,
        u"ultrafast"_s,
        u"-threads"_s,
        u"1"_s,
        u"-b:v"_s,
        format.bitrate,
        u"-g"_s,
        QString::number(keyInterval),
        u"-sc_threshold"_s,
        u"0"_s,
        u"-bf"_s,
        u"0"_s,
        u"-colorspace"_s,
        u"bt709"_s,
        u"-color_primaries"_s,
        u"bt709"_s,
        u"-color_trc"_s,
        u"bt709"_s,
        u"-c:a"_s,
        u"aac"_s,
        u"-b:a"_s,
        u"64k"_s,
        u"-video_track_timescale"_s,
        QString::number(format.rate.numerator * 100),
        u"-fflags"_s,
        u"+bitexact"_s,
        u"-movflags"_s,
        u"+faststart"_s,
        u"-f"_s,
        u"mp4"_s,
        u"file:"_s + path,
    };
}

Problem VideoEncoder::start()
{
    // Closed in children: another thread's ffmpeg must not keep this one's input open.
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0)
        return u"can't make a pipe: %1"_s.arg(systemError(errno));
    input = ends[1];
    fcntl(input, F_SETPIPE_SZ, PIPE_BYTES); // fewer switches between painter and encoder; smaller works too
    errors = memfd_create("ffmpeg-errors", MFD_CLOEXEC);

    std::vector<QByteArray> words = {QFile::encodeName(ffmpeg)};
    for (const QString& argument : arguments())
        words.push_back(QFile::encodeName(argument));
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (QByteArray& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[0], STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    if (errors >= 0)
        posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
    const int failed = posix_spawn(&process, words.front().constData(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[0]);
    if (failed != 0) {
        process = -1;
        return u"can't start %1: %2"_s.arg(ffmpeg, systemError(failed));
    }
    return std::nullopt;
}

Problem VideoEncoder::write(std::span<const std::byte> frame)
{
    while (!frame.empty()) {
        const ssize_t written = ::write(input, frame.data(), frame.size());
        if (written >= 0) {
            frame = frame.subspan(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            // It has given up; what it said tells more than the broken pipe.
            const int number = errno;
            const Problem problem = finish();
            return problem ? problem : u"can't encode %1: %2"_s.arg(path, systemError(number));
        }
    }
    return std::nullopt;
}

Problem VideoEncoder::finish()
{
    close(std::exchange(input, -1));
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    process = -1;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return std::nullopt;
    return u"ffmpeg can't make %1: %2"_s.arg(path, lastWords());
}

QString VideoEncoder::lastWords() const
{
    QByteArray text(4096, '\0');
    const off_t size = errors >= 0 ? lseek(errors, 0, SEEK_END) : 0;
    const ssize_t got = size > 0 ? pread(errors, text.data(), static_cast<std::size_t>(text.size()),
                                         std::max<off_t>(0, size - text.size()))
                                 : 0;
    text.truncate(std::max<ssize_t>(0, got));
    const QByteArray line = text.trimmed().split('\n').last().trimmed();
    return line.isEmpty() ? u"it ended unexpectedly"_s : QString::fromLocal8Bit(line);
}

} // namespace cardreel
