#include "views/graph/GraphViewController.h"

#include "media/DCFInfo.h"
#include "playback/MediaController.h"
#include "telemetry/NMEAData.h"
#include "views/PaneTip.h"
#include "views/graph/GraphColors.h"
#include "views/graph/GraphLayerView.h"
#include "views/graph/NeedleView.h"
#include "views/graph/PointerText.h"
#include "views/graph/ReadoutView.h"
#include "views/graph/WarningChip.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace cardreel {

namespace {

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

GraphViewController::GraphViewController(MediaController& controller, QWidget* parent)
    : QWidget(parent)
    , m_controller(&controller)
    , m_graph(new GraphLayerView(this))
    , m_needle(new NeedleView(this))
    , m_readouts(new ReadoutView(this))
    , m_warning(new WarningChip(this))
    , m_tip(new PaneTip(this))
    , m_clock(&steadySeconds)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Speed and acceleration"));
    setAccessibleDescription(
        tr("Curves of the whole recording, and the figures of the moment. Click or drag on the curves to go there."));
    m_catchUp.setSingleShot(true);
    m_catchUp.setInterval(static_cast<int>(ProgressThrottle::pauseSeconds * 1000));
    connect(&m_catchUp, &QTimer::timeout, this, [this] {
        if (m_leftOut && !m_isDragged) {
            m_throttle.didApply(m_clock());
            applyProgress(*m_leftOut);
            showMoment();
        }
    });
    connect(m_graph, &GraphLayerView::seekBegan, this, &GraphViewController::beginDrag);
    connect(m_graph, &GraphLayerView::seekMoved, this, &GraphViewController::drag);
    connect(m_graph, &GraphLayerView::seekEnded, this, &GraphViewController::endDrag);
    connect(m_graph, &GraphLayerView::pointed, this, &GraphViewController::showTip);
    connect(m_graph, &GraphLayerView::unpointed, m_tip, &QWidget::hide);
    readTelemetry();
}

GraphViewController::~GraphViewController()
{
    // The plot goes after this object has; a drag that ends with it is nobody's business any more.
    disconnect(m_graph, nullptr, this, nullptr);
}

void GraphViewController::updateProgress(double fraction)
{
    const PlayerPane* player = m_controller ? m_controller->playerVC() : nullptr;
    if (m_throttle.admits(player ? player->playbackRate() : 1, m_clock())) {
        applyProgress(fraction);
        return;
    }
    m_leftOut = fraction;
    if (!m_catchUp.isActive())
        m_catchUp.start();
}

void GraphViewController::applyProgress(double fraction)
{
    m_leftOut.reset();
    m_catchUp.stop();
    if (std::isnan(fraction))
        return;
    m_progress = std::clamp(fraction, m_progressMin, std::max(m_progressMin, m_progressMax));
    updateCurrentPositionWithProgress(m_progress);
}

void GraphViewController::updateCurrentPositionWithProgress(double progress)
{
    m_graph->setPosition(m_currentInfo ? std::optional(progress) : std::nullopt);
}

void GraphViewController::drawGraphWithCurrentDCFInfo(const std::shared_ptr<DCFInfo>& dcf)
{
    // What was dragged is gone; the recording that comes says itself whether it plays.
    m_playsAfterDrag = false;
    endDrag();
    m_tip->hide();
    m_currentInfo = dcf;
    m_warningTimer.reset();
    m_shownWarning.reset();
    m_warning->hide();
    applyProgress(m_progressMin);
    readTelemetry();
}

void GraphViewController::recordingDidParse(const std::shared_ptr<DCFInfo>& dcf)
{
    if (dcf && dcf == m_currentInfo)
        readTelemetry();
}

void GraphViewController::readTelemetry()
{
    const QString state = stateText();
    const bool isRead = m_currentInfo && !m_currentInfo->nmea->isParsing() && m_currentInfo->nmea->wasParsed();
    m_telemetry = isRead ? m_currentInfo->nmea->snapshot() : nullptr;
    const double maxSpeed = speedLabelMaxValue(m_telemetry ? m_telemetry->maxSpeed() : 0);
    const double maxMotionABS = motionLabelMaxABSValue(m_telemetry ? m_telemetry->maxMotionABS() : 0);
    updateDrawerWithDCFInfo(m_telemetry, maxSpeed, maxMotionABS);
    updateLabelsWithMaxSpeed(maxSpeed, maxMotionABS);
    m_graph->setMessage(state);
    m_needle->setUnit(CustomLocation::unitForCurrentLocale());
    if (!m_telemetry || m_telemetry->GOPs().empty())
        m_needle->updateLayerWithSpeed(0);
    showMoment();
}

QString GraphViewController::stateText() const
{
    if (!m_currentInfo)
        return tr("No recording is shown.");
    if (m_currentInfo->nmea->isParsing() || !m_currentInfo->nmea->wasParsed())
        return tr("Reading telemetry…");
    return m_currentInfo->nmea->snapshot()->GOPs().empty() ? tr("This recording has no telemetry.") : QString();
}

void GraphViewController::updateLabelsWithMaxSpeed(double maxSpeed, double maxMotionABS)
{
    m_graph->setLabels(speedLabels(maxSpeed), motionLabels(maxMotionABS));
}

void GraphViewController::updateDrawerWithDCFInfo(std::shared_ptr<const Telemetry> telemetry, double maxSpeed,
                                                  double maxMotionABS)
{
    m_graph->drawer().setCurrentGOPs(std::move(telemetry), maxSpeed, maxMotionABS);
    m_graph->redraw();
}

void GraphViewController::setCurrentSpeed(double /*speed*/)
{
    showMoment();
}

TelemetryMoment GraphViewController::moment() const
{
    return m_telemetry ? TelemetryMoment(*m_telemetry, m_progress) : TelemetryMoment();
}

const DriveSupportData* GraphViewController::currentDriveSupport() const
{
    const std::optional<std::size_t> record = moment().driveSupport;
    return record ? &m_telemetry->driveSupports()[*record] : nullptr;
}

void GraphViewController::showMoment()
{
    const TelemetryMoment now = moment();
    m_readouts->setTexts(now.readouts());
    m_needle->updateLayerWithSpeed(now.speed().value_or(0.0F));
    showWarning(now.driveSupport);
}

void GraphViewController::showWarning(std::optional<std::size_t> record)
{
    const auto supports = m_telemetry ? m_telemetry->driveSupports() : IndexedList<DriveSupportData>();
    const bool warns = record && !supports[*record].appearanceImageName().isEmpty();
    const std::optional<std::size_t> shown = m_warningTimer.update(record, warns, isPlaying(), m_clock());
    if (shown == m_shownWarning)
        return;
    m_shownWarning = shown;
    if (!shown) {
        m_warning->hide();
        return;
    }
    const DriveSupportData& support = supports[*shown];
    m_warning->showWarning(support.appearanceImageName(), support.appearanceEventName(), support.appearanceColor());
}

bool GraphViewController::isPlaying() const
{
    const PlayerPane* player = m_controller ? m_controller->playerVC() : nullptr;
    return player && player->isPlaying();
}

void GraphViewController::beginDrag(double fraction)
{
    if (!m_currentInfo || !m_controller)
        return;
    m_isDragged = true;
    m_playsAfterDrag = isPlaying();
    drag(fraction);
}

void GraphViewController::drag(double fraction)
{
    if (!m_isDragged || !m_controller)
        return;
    applyProgress(fraction);
    showMoment();
    m_controller->updateProgress(fraction);
}

void GraphViewController::endDrag()
{
    if (!std::exchange(m_isDragged, false))
        return;
    PlayerPane* player = m_controller ? m_controller->playerVC() : nullptr;
    if (std::exchange(m_playsAfterDrag, false) && player && !player->isPlaying())
        player->play();
}

void GraphViewController::showTip(double fraction, const QPoint& place)
{
    if (!m_currentInfo || !m_controller)
        return;
    const PlayerPane* player = m_controller->playerVC();
    const double played = player ? player->originalTotalTime() : 0;
    const double length = played > 0 ? played : m_currentInfo->duration;
    const QString text =
        pointerText(m_telemetry.get(), fraction, length, MediaController::startOf(*m_currentInfo, length));
    if (text.isEmpty())
        m_tip->hide();
    else
        m_tip->showText(text, m_graph->mapTo(this, place));
}

void GraphViewController::arrange()
{
    m_layout = GraphPaneLayout::fitted(size(), ReadoutView::cellSize(m_readouts->font()));
    m_graph->setGeometry(m_layout.plot);
    m_needle->setGeometry(m_layout.dial);
    m_needle->setVisible(!m_layout.dial.isEmpty());
    m_readouts->setColumns(m_layout.readoutColumns);
    m_readouts->setGeometry(m_layout.readouts);
    m_warning->setRoom(m_layout.warning);
}

void GraphViewController::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), graphBackGroundColor);
    painter.fillRect(m_layout.hairline, graphHairlineColor);
}

void GraphViewController::resizeEvent(QResizeEvent* /*event*/)
{
    arrange();
}

bool GraphViewController::event(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        arrange();
    if (event->type() == QEvent::Hide)
        m_tip->hide();
    return QWidget::event(event);
}

} // namespace cardreel
