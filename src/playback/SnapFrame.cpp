#include "playback/SnapFrame.h"

#include "export/ImageCapture.h"

namespace cardreel {

QImage SnapFrame::taken(const Place& place)
{
    return ImageCapture::screenshotFromFile(place.path, place.seconds, place.size, QRect({}, place.size), Flip::None);
}

void SnapFrame::prepare(const Place& place)
{
    if (place == m_place)
        return;
    m_place = place;
    m_image = {};
    m_job.start([this, place]() -> NewestJob::Answer { return [this, image = taken(place)] { m_image = image; }; });
}

void SnapFrame::clear()
{
    m_job.cancel();
    m_place = {};
    m_image = {};
}

} // namespace cardreel
