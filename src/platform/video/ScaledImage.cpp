#include "platform/video/ScaledImage.h"

#include <QTransform>

#include <algorithm>
#include <cmath>

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/mem.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace cardreel {
namespace {

// Files often don't say which matrix they use; players agree on this guess.
int colorMatrix(const AVFrame& frame)
{
    switch (frame.colorspace) {
    case AVCOL_SPC_BT709:
    case AVCOL_SPC_FCC:
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
    case AVCOL_SPC_SMPTE240M:
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL:
        return frame.colorspace;
    default:
        return frame.width >= 1280 || frame.height > 576 ? SWS_CS_ITU709 : SWS_CS_ITU601;
    }
}

bool isFullRange(const AVFrame& frame)
{
    switch (frame.format) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ444P:
    case AV_PIX_FMT_YUVJ440P:
        return true;
    default:
        return frame.color_range == AVCOL_RANGE_JPEG;
    }
}

} // namespace

ScaledImage::~ScaledImage()
{
    sws_freeContext(m_scaler);
}

QSize ScaledImage::shownSize(QSize coded, double pixelAspect, int rotation, QSize maximum)
{
    double width = coded.width();
    double height = coded.height();
    if (pixelAspect > 1)
        width *= pixelAspect;
    else
        height /= pixelAspect;
    if (rotation % 180 != 0)
        std::swap(width, height);
    double scale = 1;
    if (!maximum.isEmpty())
        scale = std::min({1.0, maximum.width() / width, maximum.height() / height});
    return {std::max(1, static_cast<int>(std::lround(width * scale))),
            std::max(1, static_cast<int>(std::lround(height * scale)))};
}

QImage ScaledImage::image(const AVFrame& frame, QSize shown, int rotation)
{
    const QSize size = rotation % 180 == 0 ? shown : shown.transposed();
    // Averaging is the right way to shrink; in natural size nothing is interpolated but the colour planes.
    const int method = size.width() < frame.width ? SWS_AREA : SWS_BICUBIC;
    m_scaler = sws_getCachedContext(m_scaler, frame.width, frame.height, static_cast<AVPixelFormat>(frame.format),
                                    size.width(), size.height(), AV_PIX_FMT_RGB32, method, nullptr, nullptr, nullptr);
    if (!m_scaler)
        return {};
    const int* const matrix = sws_getCoefficients(colorMatrix(frame));
    sws_setColorspaceDetails(m_scaler, matrix, isFullRange(frame) ? 1 : 0, matrix, 1, 0, 1 << 16, 1 << 16);

    // The scaler works in whole vectors and may write a little past a row's end, which a QImage of its own doesn't
    // allow.
    constexpr int alignment = 64;
    const qsizetype bytesPerLine = (qsizetype{size.width()} * 4 + alignment - 1) / alignment * alignment;
    auto* const pixels =
        static_cast<uchar*>(av_malloc(static_cast<std::size_t>(bytesPerLine * size.height() + alignment)));
    if (!pixels)
        return {};
    QImage scaled(pixels, size.width(), size.height(), bytesPerLine, QImage::Format_RGB32, &av_free, pixels);
    std::uint8_t* const planes[4] = {pixels, nullptr, nullptr, nullptr};
    const int strides[4] = {static_cast<int>(bytesPerLine), 0, 0, 0};
    if (scaled.isNull() || sws_scale(m_scaler, frame.data, frame.linesize, 0, frame.height, planes, strides) <= 0)
        return {};
    return rotation == 0 ? scaled : scaled.transformed(QTransform().rotate(rotation));
}

} // namespace cardreel
