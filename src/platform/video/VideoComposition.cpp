#include "platform/video/VideoComposition.h"

#include "platform/video/VideoAsset.h"

#include <cmath>
#include <utility>

namespace cardreel {

bool VideoComposition::insertTimeRange(std::shared_ptr<const VideoAsset> asset)
{
    if (!asset || asset->error() != FrameError::None || !(asset->duration() > 0))
        return false;
    m_asset = std::move(asset);
    m_duration = m_asset->duration();
    return true;
}

bool VideoComposition::scaleTimeRange(double fromSeconds, double toSeconds)
{
    if (!m_asset || fromSeconds != m_duration || !std::isfinite(toSeconds) || !(toSeconds > 0))
        return false;
    m_duration = toSeconds;
    return true;
}

double VideoComposition::speed() const
{
    return m_asset ? m_asset->duration() / m_duration : 1;
}

} // namespace cardreel
