#include "app/PlaybackActions.h"

#include "app/LibraryPanel.h"
#include "playback/MediaController.h"
#include "playback/ZoomPlayerSplitViewController.h"
#include "playback/ZoomPlayerViewController.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

namespace cardreel {

namespace {

constexpr double longStepSeconds = 5;
constexpr double shortStepSeconds = 1;
constexpr double volumeStep = 0.1;

} // namespace

PlaybackActions::PlaybackActions(MediaController& controller, ZoomPlayerSplitViewController& panes, LibraryPanel& panel,
                                 QWidget& window)
    : QObject(&window)
    , m_controller(controller)
    , m_panes(panes)
    , m_panel(panel)
    , m_window(window)
{
}

template<typename Function>
QAction* PlaybackActions::add(QMenu& menu, const QString& text, const QList<QKeySequence>& keys, Function function)
{
    QAction* action = menu.addAction(text, this, function);
    action->setShortcuts(keys);
    // Keys of menus alone rest while the menu bar is hidden.
    m_window.addAction(action);
    return action;
}

void PlaybackActions::fillPlaybackMenu(QMenu& menu)
{
    add(menu, tr("&Play or Pause"), {Qt::Key_Space, Qt::Key_K}, [this] { playPause(); });
    add(menu, tr("&Faster"), {Qt::Key_L}, [this] { front().raisePlaybackRate(); });
    add(menu, tr("&Slower"), {Qt::Key_J}, [this] { front().decrementPlaybackRate(); });
    menu.addSeparator();
    add(menu, tr("5 Seconds &Back"), {Qt::Key_Left}, [this] { seekBy(-longStepSeconds); });
    add(menu, tr("5 Seconds For&ward"), {Qt::Key_Right}, [this] { seekBy(longStepSeconds); });
    add(menu, tr("1 Second Back"), {Qt::SHIFT | Qt::Key_Left}, [this] { seekBy(-shortStepSeconds); });
    add(menu, tr("1 Second Forward"), {Qt::SHIFT | Qt::Key_Right}, [this] { seekBy(shortStepSeconds); });
    add(menu, tr("Previous F&rame"), {Qt::Key_Comma}, [this] { stepFrame(VideoPlayer::FrameStep::Backward); });
    add(menu, tr("Next Fra&me"), {Qt::Key_Period}, [this] { stepFrame(VideoPlayer::FrameStep::Forward); });
    add(menu, tr("Be&ginning of the Recording"), {Qt::Key_Home}, [this] { seekTo(0); });
    add(menu, tr("&End of the Recording"), {Qt::Key_End}, [this] { seekToEnd(); });
    menu.addSeparator();
    add(menu, tr("Pre&vious Recording"), {Qt::Key_PageUp}, [this] { m_panel.selectPrevious(); });
    add(menu, tr("&Next Recording"), {Qt::Key_PageDown}, [this] { m_panel.selectNext(); });
    menu.addSeparator();
    add(menu, tr("&Capture Picture…"), {Qt::Key_C}, [this] { paneInHand().snapButton()->trigger(); })
        ->setAutoRepeat(false);
    menu.addSeparator();
    add(menu, tr("L&ouder"), {Qt::CTRL | Qt::Key_Up}, [this] { Q_EMIT volumeStepRequested(volumeStep); });
    add(menu, tr("&Quieter"), {Qt::CTRL | Qt::Key_Down}, [this] { Q_EMIT volumeStepRequested(-volumeStep); });
    add(menu, tr("M&ute"), {Qt::Key_M}, [this] { Q_EMIT muteRequested(); })->setAutoRepeat(false);
}

void PlaybackActions::fillZoomMenu(QMenu& menu)
{
    const QString texts[] = {tr("&Whole Picture"),      tr("&Middle"),
                             tr("Upper &Left Quarter"), tr("Upper &Right Quarter"),
                             tr("Lower L&eft Quarter"), tr("Lower Ri&ght Quarter")};
    for (int segment = 1; segment <= 6; ++segment) {
        add(menu, texts[segment - 1], {Qt::Key_0 + segment},
            [this, segment] { paneInHand().segmentAction(segment)->trigger(); });
    }
    menu.addSeparator();
    add(menu, tr("Zoom &In"), {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal}, [this] { paneInHand().zoomIn(); });
    add(menu, tr("Zoom &Out"), {Qt::CTRL | Qt::Key_Minus}, [this] { paneInHand().zoomOut(); });
    add(menu, tr("Reset &Zoom"), {Qt::CTRL | Qt::Key_0}, [this] { paneInHand().resetZoom(); });
    menu.addSeparator();
    add(menu, tr("Mirror Left to Righ&t"), {Qt::Key_H}, [this] { paneInHand().mirrorButton()->trigger(); });
}

ZoomPlayerViewController& PlaybackActions::front() const
{
    return *m_panes.primaryPlayerItem();
}

ZoomPlayerViewController& PlaybackActions::paneInHand() const
{
    const auto& panes = m_panes.playerVCs();
    const auto pointed = std::find_if(panes.begin(), panes.end(),
                                      [](const ZoomPlayerViewController* pane) { return pane->underMouse(); });
    return pointed == panes.end() ? front() : **pointed;
}

void PlaybackActions::playPause()
{
    if (!m_controller.currentPicture())
        return front().playPauseSwitch();
    if (!m_controller.currentDCF())
        return;
    const double moment = front().progress();
    m_controller.updateCurrentDCF(m_controller.currentDCF(), false, nullptr);
    m_controller.updateProgress(moment);
}

void PlaybackActions::seekBy(double seconds)
{
    if (const double length = front().originalTotalTime(); length > 0)
        seekTo(std::clamp(front().progress() + seconds / length, 0.0, 1.0));
}

void PlaybackActions::seekTo(double fraction)
{
    m_controller.updateProgress(fraction);
}

void PlaybackActions::seekToEnd()
{
    // Else the next recording would begin before anybody saw the end.
    for (PlayerPane* player : m_controller.playerVCs()) {
        if (player)
            player->pause();
    }
    seekTo(1);
}

void PlaybackActions::stepFrame(VideoPlayer::FrameStep step)
{
    front().stepFrame(step);
}

} // namespace cardreel
