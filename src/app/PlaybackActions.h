#pragma once

#include "platform/video/VideoPlayer.h"

#include <QKeySequence>
#include <QObject>

class QAction;
class QMenu;
class QWidget;

namespace cardreel {

class LibraryPanel;
class MediaController;
class ZoomPlayerSplitViewController;
class ZoomPlayerViewController;

/// What keys and menus do to a window's playing and to what its panes show of it. Owned by the window; interface
/// thread.
class PlaybackActions : public QObject
{
    Q_OBJECT

public:
    /// The keys work in `window`, which is the parent, whether its menu bar is to be seen or not. The others outlive
    /// the actions.
    PlaybackActions(MediaController& controller, ZoomPlayerSplitViewController& panes, LibraryPanel& panel,
                    QWidget& window);

    void fillPlaybackMenu(QMenu& menu);
    /// Zoom and mirror of the pane under the pointer, else of the front one.
    void fillZoomMenu(QMenu& menu);

    /// From a still picture the recording goes on at the picture's moment; from the end of a recording it goes on with
    /// the next.
    void playPause();
    /// From where a seek that is under way leads.
    void seekBy(double seconds);
    /// Both panes, to a fraction of the recording.
    void seekTo(double fraction);
    /// Both panes: the front one steps and the rear one follows.
    void stepFrame(VideoPlayer::FrameStep step);

Q_SIGNALS:
    void muteRequested();
    /// So much of the whole volume more, or less.
    void volumeStepRequested(double step);

private:
    template<typename Function>
    QAction* add(QMenu& menu, const QString& text, const QList<QKeySequence>& keys, Function function);
    ZoomPlayerViewController& front() const;
    ZoomPlayerViewController& paneInHand() const;
    void seekToEnd();

    MediaController& m_controller;
    ZoomPlayerSplitViewController& m_panes;
    LibraryPanel& m_panel;
    QWidget& m_window;
};

} // namespace cardreel
