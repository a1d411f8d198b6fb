#include "platform/video/VideoAsset.h"

#include "platform/files/Files.h"
#include "platform/video/ScaledImage.h"
#include "platform/video/VideoSource.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace cardreel {

VideoAsset::VideoAsset(const QString& path)
    : m_path(path)
{
    const VideoSource source(path, nullptr);
    m_error = source.error();
    m_errorText = source.errorText();
    m_exists = m_error == FrameError::None || files::exists(path);
    if (m_error != FrameError::None)
        return;
    const AVCodecParameters* const parameters = source.stream()->codecpar;
    m_rotation = source.rotation();
    m_trackSize = ScaledImage::shownSize({parameters->width, parameters->height}, source.pixelAspect(), m_rotation, {});
    m_duration = source.duration();
    m_frameRate = source.frameRate();
}

} // namespace cardreel
