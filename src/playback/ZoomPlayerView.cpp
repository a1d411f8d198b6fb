#include "platform/files/Files.h"
#include "platform/video/VideoAsset.h"
#include "platform/video/VideoItem.h"
#include "playback/PaneControls.h"
#include "playback/StillPicture.h"
#include "playback/ZoomPlayerViewController.h"

#include <QAction>
#include <QActionGroup>
#include <QEvent>
#include <QLocale>

#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int changeAssetDidFinishMs = 250;
/// A frame of another size costs a rendering: one is asked for when the zoom rests, not at each step of it.
constexpr int renderSizeDelayMs = 100;
constexpr double inactiveOpacity = 0.35;
constexpr double keyZoomFactor = 1.25;

} // namespace

ZoomPlayerViewController::ZoomPlayerViewController(const QString& cameraName, VideoPlayer::AudioOutput audio,
                                                   QWidget* parent)
    : QWidget(parent)
    , m_audio(audio)
    , m_callbacks(std::make_shared<const Callbacks>())
    , m_playerScrollView(new PlayerScrollView(this))
    , m_name(new ChipLabel(this))
    , m_overlay(new ChipLabel(this))
{
    setAccessibleName(cameraName);
    m_playerScrollView->setAccessibleName(cameraName);
    m_name->setText(cameraName);
    m_overlay->hide();
    m_changeAssetDidFinish.setSingleShot(true);
    m_changeAssetDidFinish.setInterval(changeAssetDidFinishMs);
    connect(&m_changeAssetDidFinish, &QTimer::timeout, this, [this] { m_isChangeingAsset = false; });
    m_renderSizeTimer.setSingleShot(true);
    m_renderSizeTimer.setInterval(renderSizeDelayMs);
    connect(&m_renderSizeTimer, &QTimer::timeout, this, &ZoomPlayerViewController::updateRenderSize);
    makeActions();
    installBlocks();
    connect(this, &ZoomPlayerViewController::playingDidChange, this, &ZoomPlayerViewController::updateControls);
    resetZoomPlayerView();
    updateControls();
}

ZoomPlayerViewController::~ZoomPlayerViewController()
{
    const QSignalBlocker blocker(this);
    dispose();
}

void ZoomPlayerViewController::makeActions()
{
    m_rateChangeButton = new QAction(this);
    m_rateChangeButton->setToolTip(tr("Play rate"));
    connect(m_rateChangeButton, &QAction::triggered, this, &ZoomPlayerViewController::incrementPlaybackRate);

    const std::array<QString, 6> names = {tr("Whole picture"),      tr("Middle"),
                                          tr("Upper left quarter"), tr("Upper right quarter"),
                                          tr("Lower left quarter"), tr("Lower right quarter")};
    auto* group = new QActionGroup(this);
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    std::vector<QAction*> chips;
    for (int segment = ZoomGeometry::firstSegment; segment <= ZoomGeometry::lastSegment; ++segment) {
        const auto index = static_cast<std::size_t>(segment - 1);
        auto* action = new QAction(names[index], group);
        action->setObjectName(u"zoom-%1"_s.arg(segment));
        action->setToolTip(u"%1 (%2)"_s.arg(names[index]).arg(segment));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, segment] { segmentDidChange(segment); });
        m_segments[index] = action;
        chips.push_back(action);
    }
    m_mirrorButton = new QAction(tr("Mirror"), this);
    m_mirrorButton->setObjectName(u"mirror"_s);
    m_mirrorButton->setToolTip(u"%1 (%2)"_s.arg(tr("Swap left and right"), u"H"_s));
    m_mirrorButton->setCheckable(true);
    connect(m_mirrorButton, &QAction::toggled, this, &ZoomPlayerViewController::mirrorButtonPressed);
    chips.push_back(m_mirrorButton);
    m_snapButton = new QAction(tr("Capture"), this);
    m_snapButton->setObjectName(u"camera"_s);
    m_snapButton->setToolTip(u"%1 (%2)"_s.arg(tr("Save this picture"), u"C"_s));
    connect(m_snapButton, &QAction::triggered, this, &ZoomPlayerViewController::snapButtonPressed);
    connect(this, &ZoomPlayerViewController::progressDidChange, this, &ZoomPlayerViewController::prepareSnapFrame);
    chips.push_back(m_snapButton);
    m_subControlBaseView = new PaneControls(chips, this);
}

void ZoomPlayerViewController::installBlocks()
{
    m_playerScrollView->setSingleClickBlock([this](PlayerScrollView& view) {
        if (m_isPrimaryPlayer)
            view.setFocus(Qt::MouseFocusReason);
    });
    m_playerScrollView->setDoubleClickBlock([this](PlayerScrollView& /*view*/) { playPauseSwitch(); });
    m_playerScrollView->setToggleMuteBlock([this](PlayerScrollView& view) { audioMuteEnable(view.shouldMute()); });
    connect(m_playerScrollView, &PlayerScrollView::boundsDidChange, this, &ZoomPlayerViewController::didScroll);
    connect(m_playerScrollView, &PlayerScrollView::didResize, this, &ZoomPlayerViewController::updateRenderSize);
    connect(m_playerScrollView, &PlayerScrollView::panned, this, &ZoomPlayerViewController::panAction);
    connect(m_playerScrollView, &PlayerScrollView::tripleTapDetected, this,
            &ZoomPlayerViewController::tripleTapDetected);
    connect(m_playerScrollView, &PlayerScrollView::pointerMoved, m_subControlBaseView, &PaneControls::pointerMoved);
}

void ZoomPlayerViewController::becomePrimaryPlayer()
{
    m_isPrimaryPlayer = true;
    updateControls();
}

void ZoomPlayerViewController::resetZoomPlayerView()
{
    if (m_targetRate != 1 && m_asset)
        updatePlayerViewRate(1);
    setTargetRate(1);
    m_scrollBySegment = true;
    m_playerScrollView->moveTo(m_playerScrollView->geometryNow().segment(1), PlayerScrollView::Transition::AtOnce);
    m_scrollBySegment = false;
    selectSegment(1);
}

QAction* ZoomPlayerViewController::segmentAction(int segment) const
{
    Q_ASSERT(segment >= ZoomGeometry::firstSegment && segment <= ZoomGeometry::lastSegment);
    return m_segments[static_cast<std::size_t>(segment - 1)];
}

void ZoomPlayerViewController::selectSegment(int segment)
{
    m_lastSelectedSegment = segment;
    for (int i = ZoomGeometry::firstSegment; i <= ZoomGeometry::lastSegment; ++i)
        segmentAction(i)->setChecked(i == segment);
    showMagnification();
}

void ZoomPlayerViewController::segmentDidChange(int segment)
{
    const bool isChoice = segment >= ZoomGeometry::firstSegment && segment <= ZoomGeometry::lastSegment;
    if (!isChoice || !m_playerScrollView->scrollingEnabled()) {
        selectSegment(m_lastSelectedSegment);
        return;
    }
    m_playerScrollView->stopMoving();
    const ZoomGeometry& now = m_playerScrollView->geometryNow();
    // To the middle only what is whole goes smoothly.
    const bool isSmooth = segment != 2 || now.magnification == 1;
    m_scrollBySegment = true;
    selectSegment(segment);
    m_playerScrollView->moveTo(now.segment(segment),
                               isSmooth ? PlayerScrollView::Transition::Animated : PlayerScrollView::Transition::AtOnce,
                               [this] { m_scrollBySegment = false; });
}

void ZoomPlayerViewController::didScroll()
{
    m_isInitialPosition = m_playerScrollView->geometryNow().isInitialPosition();
    if (!m_scrollBySegment)
        selectSegment(m_isInitialPosition ? 1 : 0);
    // Back at the whole picture the larger frames are only a burden.
    if (!m_renderSizeTimer.isActive())
        m_renderSizeTimer.start();
}

void ZoomPlayerViewController::showMagnification()
{
    const double magnification = m_playerScrollView->magnification();
    m_subControlBaseView->setMagnificationText(
        m_lastSelectedSegment == 0 ? locale().toString(magnification, 'f', 1) + u"×"_s : QString());
    placeChips();
}

void ZoomPlayerViewController::panAction(PlayerScrollView::PanPhase phase, QPointF translation)
{
    switch (phase) {
    case PlayerScrollView::PanPhase::Began:
        m_panOffset = m_playerScrollView->geometryNow().origin;
        m_playerScrollView->setMouseIsDown(true);
        break;
    case PlayerScrollView::PanPhase::Changed: {
        const QPointF wanted = m_panOffset - translation;
        if (const auto shown = ZoomGeometry::bottomBarWish(wanted))
            Q_EMIT bottomBarRequested(*shown);
        if (m_playerScrollView->magnification() > 1)
            m_playerScrollView->scrollToPoint(wanted);
        break;
    }
    case PlayerScrollView::PanPhase::Ended:
        m_playerScrollView->setMouseIsDown(false);
        break;
    }
}

bool ZoomPlayerViewController::isMirror() const
{
    return m_mirrorButton->isChecked();
}

void ZoomPlayerViewController::mirrorButtonPressed()
{
    m_playerScrollView->setMirrored(isMirror());
}

void ZoomPlayerViewController::zoomIn()
{
    if (m_playerScrollView->scrollingEnabled())
        m_playerScrollView->magnifyBy(keyZoomFactor, m_playerScrollView->zoomPoint());
}

void ZoomPlayerViewController::zoomOut()
{
    if (m_playerScrollView->scrollingEnabled())
        m_playerScrollView->magnifyBy(1 / keyZoomFactor, m_playerScrollView->zoomPoint());
}

void ZoomPlayerViewController::resetZoom()
{
    segmentDidChange(1);
}

void ZoomPlayerViewController::playerViewIsError(bool isError)
{
    if (isError) {
        if (!std::exchange(m_viewIsSaved, true)) {
            m_contentRect = m_playerScrollView->geometryNow().unitRect();
            m_isMirrorMode = isMirror();
        }
        m_playerScrollView->setMagnification(1, {});
        m_mirrorButton->setChecked(false);
    }
    m_playerIsError = isError;
    updateControls();
}

/// Zoom and mirror as they were before an error took them away.
void ZoomPlayerViewController::restoreView()
{
    if (m_playerIsError || !std::exchange(m_viewIsSaved, false))
        return;
    ZoomGeometry view = m_playerScrollView->geometryNow();
    view.setUnitRect(m_contentRect);
    m_playerScrollView->moveTo(view, PlayerScrollView::Transition::AtOnce);
    m_mirrorButton->setChecked(m_isMirrorMode);
}

void ZoomPlayerViewController::playerIsActive(bool active)
{
    m_isActive = active;
    playerViewIsError(false);
    didScroll();
    m_playerScrollView->setContentOpacity(active ? 1 : inactiveOpacity);
    updateMessage();
}

void ZoomPlayerViewController::pictureViewIsActive(bool active)
{
    m_pictureIsActive = active;
    m_playerScrollView->setPictureShown(active);
    m_playerScrollView->setVideoShown(!active);
    if (!active)
        m_playerScrollView->setPicture({});
    updateControls();
}

void ZoomPlayerViewController::showImageWithPath(const QString& path)
{
    m_pictureJob.cancel();
    m_pictureError.clear();
    playerIsActive(true);
    m_playerScrollView->setPicture({});
    if (path.isEmpty()) {
        pictureIsRead(path, {});
        return;
    }
    // Whether it can be read is known later; until then there is nothing but black.
    pictureViewIsActive(true);
    m_pictureJob.start(
        [this, path] { return [this, path, picture = readStillPicture(path)] { pictureIsRead(path, picture); }; });
}

void ZoomPlayerViewController::pictureIsRead(const QString& path, const QImage& picture)
{
    if (!picture.isNull()) {
        m_playerScrollView->setPicture(picture);
        return;
    }
    if (!path.isEmpty())
        m_pictureError = tr("This picture can't be read: %1").arg(files::displayPath(files::nameOf(path)));
    pictureViewIsActive(false);
    playerIsActive(false);
}

void ZoomPlayerViewController::updateControls()
{
    const bool enabled = m_isActive && !m_playerIsError;
    m_playerScrollView->setScrollingEnabled(enabled);
    for (QAction* segment : m_segments)
        segment->setEnabled(enabled);
    m_mirrorButton->setEnabled(enabled);
    m_snapButton->setEnabled(enabled && !m_isLoading && currentItem());
    m_rateChangeButton->setEnabled(enabled && m_isPrimaryPlayer && !m_pictureIsActive);
}

void ZoomPlayerViewController::setMessage(const QString& message)
{
    m_message = message;
    updateMessage();
}

void ZoomPlayerViewController::updateMessage()
{
    const std::shared_ptr<VideoItem> item = m_isLoading ? nullptr : currentItem();
    QString text = item ? item->errorText() : QString();
    for (const QString* next : {&m_pictureError, &m_assetError, &m_message}) {
        if (text.isEmpty())
            text = *next;
    }
    m_playerScrollView->setMessage(m_isLoading ? QString() : text);
}

void ZoomPlayerViewController::setOverlayText(const QString& text)
{
    if (text == m_overlay->text())
        return;
    m_overlay->setText(text);
    m_overlay->setVisible(!text.isEmpty());
    placeChips();
}

void ZoomPlayerViewController::updateRenderSize()
{
    m_renderSizeTimer.stop();
    if (m_player)
        m_player->setRenderSize(
            m_playerScrollView->geometryNow().renderSize(devicePixelRatio(), m_asset ? m_asset->trackSize() : QSize()));
}

void ZoomPlayerViewController::placeChips()
{
    m_subControlBaseView->place(*m_name);
    const QSize size = m_overlay->sizeHint().boundedTo({width() - 2 * ChipLayout::margin, height()});
    m_overlay->setGeometry(ChipLayout::margin, height() - ChipLayout::margin - size.height(), size.width(),
                           size.height());
}

bool ZoomPlayerViewController::event(QEvent* event)
{
    if (event->type() == QEvent::ScreenChangeInternal)
        updateRenderSize();
    return QWidget::event(event);
}

void ZoomPlayerViewController::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_playerScrollView->setGeometry(rect());
    placeChips();
}

void ZoomPlayerViewController::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!currentItem() && !m_isLoading && !m_pictureIsActive)
        playerIsActive(false);
}

} // namespace cardreel
