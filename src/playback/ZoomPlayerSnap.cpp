// The camera of a pane: what is shown, as a picture to keep.

#include "export/ImageCapture.h"
#include "platform/video/VideoAsset.h"
#include "platform/video/VideoItem.h"
#include "playback/PaneControls.h"
#include "playback/ZoomPlayerViewController.h"

#include <cmath>

namespace cardreel {

namespace {

constexpr QSize sizeWithoutTrack(240, 135);
/// A pause shows in a frame or two, a camera that follows the other a little later.
constexpr double settlingSeconds = 0.25;

} // namespace

void ZoomPlayerViewController::snapButtonPressed()
{
    const std::shared_ptr<VideoItem> item = m_isLoading ? nullptr : currentItem();
    if (!item)
        return;
    pause();
    if (currentItem() != item) // whoever heard of the pause may have shown something else
        return;
    const QSize track = item->asset()->trackSize();
    m_snapRequest = {item, track.isEmpty() ? sizeWithoutTrack : track, m_player->currentTime()};
    prepareSnapFrame();
    Q_EMIT snapRequested(m_snapRequest);
}

bool ZoomPlayerViewController::isSnapReady() const
{
    return m_snapRequest.item && !m_snapFrame.image(snapPlace(m_snapRequest)).isNull();
}

void ZoomPlayerViewController::forgetSnap()
{
    m_snapRequest = {};
    m_snapFrame.clear();
}

/// Also when the pause has settled on another frame than that of the press.
void ZoomPlayerViewController::prepareSnapFrame()
{
    if (m_snapRequest.item && !snapsView())
        m_snapFrame.prepare(snapPlace(m_snapRequest));
}

bool ZoomPlayerViewController::snapsView() const
{
    return m_playerScrollView->magnification() > 1 || m_pictureIsActive;
}

SnapFrame::Place ZoomPlayerViewController::snapPlace(const SnapRequest& request) const
{
    return {request.item->asset()->path(), standingTime(request) * request.item->speed(), request.frameSize};
}

/// Seconds of the item. The frame that the pause left on the screen, which the user sees while naming the file, may be
/// one after that of the press.
double ZoomPlayerViewController::standingTime(const SnapRequest& request) const
{
    if (request.item != currentItem() || isPlaying())
        return request.requestTime;
    const double standing = m_player->currentTime();
    return std::abs(standing - request.requestTime) <= settlingSeconds ? standing : request.requestTime;
}

std::function<QImage()> ZoomPlayerViewController::snapshot(const SnapRequest& request) const
{
    if (!request.item || request.item->status() == VideoItem::Status::Failed)
        return [] { return QImage(); };
    if (snapsView())
        return [image = m_playerScrollView->visibleImage()] { return image; };
    const SnapFrame::Place place = snapPlace(request);
    return [place, ready = m_snapFrame.image(place), isMirror = isMirror()] {
        const QImage image = ready.isNull() ? SnapFrame::taken(place) : ready;
        return isMirror ? ImageCapture::flipImageHorizontally(image) : image;
    };
}

QWidget* ZoomPlayerViewController::snapChip() const
{
    return m_subControlBaseView->chipOf(m_snapButton);
}

} // namespace cardreel
