#include "views/map/RouteJump.h"

#include "media/DCFInfo.h"
#include "playback/MediaController.h"
#include "playback/Panes.h"

#include <algorithm>
#include <optional>

namespace cardreel {

RouteJump::RouteJump(MediaController& controller, QObject* parent)
    : QObject(parent)
    , m_controller(&controller)
{
    connect(&controller, &MediaController::currentDidChange, this, &RouteJump::currentDidChange);
    connect(&controller, &MediaController::didTick, this, &RouteJump::seekWhenLoaded);
}

void RouteJump::jumpTo(const std::shared_ptr<DCFInfo>& dcf, double time)
{
    if (!dcf || !m_controller)
        return;
    m_dcf = dcf;
    m_time = time;
    // What is selected is loaded anew, and tells its length with its first tick.
    if (isInView(dcf))
        seekWhenLoaded();
    else
        m_controller->updateCurrentDCF(dcf, false, nullptr);
}

bool RouteJump::isInView(const std::shared_ptr<DCFInfo>& dcf) const
{
    return m_controller->currentDCF() == dcf && !m_controller->currentPicture();
}

void RouteJump::currentDidChange()
{
    if (const std::shared_ptr<DCFInfo> dcf = m_dcf.lock(); !dcf || !isInView(dcf))
        cancel();
}

void RouteJump::seekWhenLoaded()
{
    const std::shared_ptr<DCFInfo> dcf = m_dcf.lock();
    if (!dcf || !m_controller || !isInView(dcf))
        return;
    const PlayerPane* front = m_controller->playerVC();
    const double length = front ? front->originalTotalTime() : 0;
    if (!(length > 0))
        return;
    cancel();
    // Without a date there is no telling where in the recording the moment lies.
    if (const std::optional<double> start = MediaController::startOf(*dcf, length))
        m_controller->updateProgress(std::clamp((m_time - *start) / length, 0.0, 1.0));
}

} // namespace cardreel
