// Feeds raw frames to the ffmpeg program, which makes an H.264 MP4 with a sound track of them. One object a video; the
// caller's thread blocks while ffmpeg is busy.
#pragma once

#include "sample-card/FileOutput.h"
#include "sample-card/Options.h"
#include "sample-card/SceneBackdrop.h"

#include <QString>

#include <sys/types.h>

#include <cstddef>
#include <span>

namespace cardreel {

struct VideoFormat
{
    QSize size;
    FrameRate rate;
    int seconds = 0; // of the sound
    QString bitrate;
    CameraSide side = CameraSide::Front; // its sound differs
};

class VideoEncoder
{
public:
    VideoEncoder(QString ffmpeg, QString path, VideoFormat format);
    // Ends an encoder that was not finished, and waits for it.
    ~VideoEncoder();
    VideoEncoder(const VideoEncoder&) = delete;
    VideoEncoder& operator=(const VideoEncoder&) = delete;

    Problem start();
    // One whole frame, 4 bytes a pixel (blue, green, red, unused), without padding.
    Problem write(std::span<const std::byte> frame);
    // After the last frame: waits until the file is complete.
    Problem finish();

private:
    QStringList arguments() const;
    // What ffmpeg said last, after it has ended.
    QString lastWords() const;

    QString ffmpeg;
    QString path;
    VideoFormat format;
    int input = -1;  // to ffmpeg
    int errors = -1; // a nameless file that ffmpeg complains into: a pipe could fill and block it
    pid_t process = -1;
};

} // namespace cardreel
