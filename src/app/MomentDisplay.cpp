#include "app/MomentDisplay.h"

#include "app/ReadoutBar.h"
#include "app/TransportBar.h"
#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "platform/text/RecorderTime.h"
#include "playback/MediaController.h"
#include "playback/ZoomPlayerViewController.h"
#include "telemetry/FixLookup.h"
#include "telemetry/NMEAData.h"

#include <cmath>

namespace cardreel {

namespace {

constexpr int pauseMs = 100;
constexpr double availableWithinSeconds = 3.0; // a fix further away says nothing about the moment shown

} // namespace

MomentDisplay::MomentDisplay(MediaController& controller, ZoomPlayerViewController& front,
                             ZoomPlayerViewController& rear, TransportBar& transport, ReadoutBar& readout,
                             QObject* parent)
    : QObject(parent)
    , m_controller(controller)
    , m_front(front)
    , m_rear(rear)
    , m_transport(transport)
    , m_readout(readout)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMs);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isStale)
            tick();
    });
    connect(&controller, &MediaController::currentDidChange, this, &MomentDisplay::currentDidChange);
    connect(&controller, &MediaController::didTick, this, &MomentDisplay::tick);
    connect(&controller, &MediaLibrary::recordingDidParse, this, [this](const std::shared_ptr<DCFInfo>& dcf) {
        if (dcf == m_controller.currentDCF())
            tick();
    });
    connect(&front, &ZoomPlayerViewController::progressDidChange, this, &MomentDisplay::showTransport);
    connect(&front, &ZoomPlayerViewController::playingDidChange, this, &MomentDisplay::showTransport);
}

void MomentDisplay::clear()
{
    m_pause.stop();
    m_isStale = false;
    m_transport.clear();
    m_readout.clear();
    m_front.setOverlayText({});
}

void MomentDisplay::currentDidChange()
{
    clear();
    const std::shared_ptr<DCFInfo>& dcf = m_controller.currentDCF();
    const bool lacksRear = dcf && dcf->secondaryFilePath.isEmpty() && !m_controller.currentPicture();
    m_front.setMessage({});
    m_rear.setMessage(lacksRear ? tr("This recording has no rear video.") : QString());
    if (m_controller.currentPicture())
        showPicture();
}

void MomentDisplay::tick()
{
    showTransport();
    m_isStale = m_pause.isActive();
    if (m_isStale)
        return;
    showReadouts();
    m_pause.start();
}

void MomentDisplay::showTransport()
{
    const std::shared_ptr<DCFInfo>& dcf = m_controller.currentDCF();
    if (!dcf)
        return;
    const double length = m_front.originalTotalTime();
    m_transport.setRecording(length, length > 0 ? MediaController::startOf(*dcf, length) : std::nullopt);
    m_transport.setPosition(m_front.progress());
    m_transport.setPlaying(m_front.isPlaying());
}

void MomentDisplay::showReadouts()
{
    const std::shared_ptr<DCFInfo>& dcf = m_controller.currentDCF();
    if (m_controller.currentPicture())
        return showPicture();
    if (!dcf || m_front.originalTotalTime() <= 0)
        return;
    const double date = m_controller.userDate();
    const QString clock = recorderDateTimeText(Instant(std::chrono::milliseconds(std::llround(date * 1000))));
    m_readout.setClock(clock);
    m_front.setOverlayText(clock);
    if (dcf->nmea->isParsing())
        m_readout.setFix(nullptr, tr("Reading telemetry…"));
    else
        showFix(date);
}

void MomentDisplay::showFix(double date)
{
    const std::shared_ptr<const Telemetry> telemetry = m_controller.currentDCF()->nmea->snapshot();
    const CustomLocation* fix = nearestFix(telemetry->varidLocations(), date);
    const bool available =
        fix && fix->isValid() && std::abs(secondsSince1970(fix->timestamp) - date) < availableWithinSeconds;
    m_readout.setFix(available ? fix : nullptr, tr("No GPS position at this moment."));
}

void MomentDisplay::showPicture()
{
    const PictureInfo& picture = *m_controller.currentPicture();
    m_front.setOverlayText(picture.pictureDateString);
    m_readout.setClock(picture.pictureDateString);
    const CustomLocation& location = picture.location;
    m_readout.setPlace(location.isValid() ? &location : nullptr, tr("This picture carries no position."));
}

} // namespace cardreel
