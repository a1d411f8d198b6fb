#include "platform/video/VideoItem.h"

#include "platform/video/VideoAsset.h"
#include "platform/video/VideoComposition.h"

#include <utility>

namespace cardreel {

VideoItem::VideoItem(std::shared_ptr<const VideoAsset> asset)
    : m_asset(std::move(asset))
    , m_duration(m_asset->duration())
{
}

VideoItem::VideoItem(const VideoComposition& composition)
    : m_asset(composition.asset())
    , m_duration(composition.duration())
    , m_speed(composition.speed())
    , m_hasAudio(composition.hasAudio())
{
}

void VideoItem::setFailed(const QString& errorText)
{
    m_status = Status::Failed;
    m_errorText = errorText;
}

} // namespace cardreel
