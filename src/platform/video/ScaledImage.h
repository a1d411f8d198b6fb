#pragma once

#include <QImage>
#include <QSize>

struct AVFrame;
struct SwsContext;

namespace cardreel {

/// Turns decoded frames into pictures of one size, keeping FFmpeg's scaler between frames. Used by FrameGenerator.
class ScaledImage
{
public:
    ScaledImage() = default;
    ~ScaledImage();
    ScaledImage(const ScaledImage&) = delete;
    ScaledImage& operator=(const ScaledImage&) = delete;

    /// The size in which a frame of `coded` size is shown: pixel shape and clockwise rotation applied, shrunk to fit
    /// `maximum` unless that is empty.
    static QSize shownSize(QSize coded, double pixelAspect, int rotation, QSize maximum);

    /// The frame in Format_RGB32; null when memory or the pixel format doesn't allow it.
    QImage image(const AVFrame& frame, QSize shown, int rotation);

private:
    SwsContext* m_scaler = nullptr;
};

} // namespace cardreel
