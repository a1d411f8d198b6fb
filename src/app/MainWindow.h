#pragma once

#include "app/CardWatch.h"
#include "app/SynchronizedPlay.h"
#include "app/export/CardJobs.h"
#include "app/settings/RecorderSettings.h"
#include "playback/MediaController.h"
#include "playback/ZoomPlayerSplitViewController.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QSet>

class QLabel;
class QMenu;
class QSplitter;
class QStackedWidget;

namespace cardreel {

class CardChip;
class FullScreenMode;
class GraphViewController;
class LeadButton;
class LibraryPanel;
class LowerPanes;
class MapVewController;
class MomentDisplay;
class PlaybackActions;
class ReadoutBar;
class TransportBar;
class VideoSplitter;
class ZoomPlayerViewController;
struct TileSettings;

/// One card's window: its lists at the left, its two cameras, what moves them, the graph and the map, and the moment
/// shown in words. Without a card it invites to open one. Owned by CardApplication; interface thread.
class MainWindow : public QMainWindow, public SynchronizedWindow
{
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    /// The card shown; empty when there is none.
    const QString& cardPath() const { return m_controller.rootPath(); }
    /// Reads a folder that CardLayout::mediaIsAvailable() and chooses its first recording. Whether there was anything
    /// on it. False, with nothing changed, while an export or backup is under way.
    bool openCard(const QString& rootPath);

    /// Its exports and backups.
    CardJobs& jobs() { return m_jobs; }

    /// The submenu of cards opened before; CardApplication fills it.
    QMenu* recentMenu() const { return m_recentMenu; }

    MediaController& mediaController() override { return m_controller; }
    bool hasCard() const override { return !cardPath().isEmpty(); }
    bool isRearCameraOn() const override;
    void setSynchronized(bool synchronized) override;
    void setSilenced(bool silenced) override;
    void setLeading(bool leading) override;
    void tellSynchronizationCanceled() override;
    void tellToSelectMedia() override;

Q_SIGNALS:
    /// The user asks for a card: by a dialog, ...
    void openRequested();
    /// ... by dropping a folder.
    void cardDropped(const QString& path);
    void newWindowRequested();
    void quitRequested();
    /// The user switched the lead of other windows.
    void leadRequested(bool leading);
    /// The keyboard came to this window or its dialogs, or left them.
    void didBecomeKey();
    void didResignKey();
    /// Another card is shown, or the rear camera was switched.
    void didChange();
    /// It is closed or destroyed.
    void didClose();

protected:
    bool event(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // Parts and menus: MainWindowParts.cpp
    QWidget* makeToolRow();
    QWidget* makeStartPage();
    QWidget* makeCardPage();
    void makeMenus();
    void makeAppearanceMenu(QMenu& viewMenu);
    void connectPanes();
    void connectTransport();
    void makeLowerPanes();
    void addLowerPanesTo(QMenu& viewMenu);
    void lowerPanesDidChange();
    void showShortcuts();
    void editRecorderSettings();
    void showMapBackgroundSheet();

    /// A dialog of this window speaks for it.
    bool isOwnDialog(const QWidget* window) const;
    void emptyPanes();
    void showRearCamera(ZoomPlayerSplitViewController::Animation animation);
    void showParseProgress();
    void setMuted(bool muted);
    void setVolume(double volume);
    void paneDidMute(bool muted);
    void cardIsGone();
    void cardReturned(const QString& rootPath);
    void jobsDidEnd();
    void saveLayout();

    MediaController m_controller;
    QWidget* m_toolRow = nullptr;
    QStackedWidget* m_pages = nullptr;
    QMenu* m_recentMenu = nullptr;
    QAction* m_rearCamera = nullptr;
    QAction* m_toggleFullScreen = nullptr;
    QAction* m_leaveFullScreen = nullptr;
    CardChip* m_chip = nullptr;
    LeadButton* m_leadButton = nullptr;
    LibraryPanel* m_panel = nullptr;
    ZoomPlayerViewController* m_frontPane = nullptr;
    ZoomPlayerViewController* m_rearPane = nullptr;
    ZoomPlayerSplitViewController* m_panes = nullptr;
    QSplitter* m_split = nullptr;
    VideoSplitter* m_videoSplitter = nullptr;
    QWidget* m_below = nullptr; ///< what stands under the videos
    TransportBar* m_transport = nullptr;
    GraphViewController* m_graph = nullptr;
    MapVewController* m_map = nullptr;
    LowerPanes* m_lowerPanes = nullptr;
    ReadoutBar* m_readout = nullptr;
    FullScreenMode* m_fullScreen = nullptr;
    PlaybackActions* m_actions = nullptr;
    MomentDisplay* m_moment = nullptr;
    QLabel* m_contents = nullptr;
    QLabel* m_progress = nullptr;
    QSet<const DCFInfo*> m_parsed; ///< the recordings of this card that the background parse reported
    QElapsedTimer m_progressShown;
    CardWatch m_cardWatch{this};
    double m_volume = 1;
    bool m_isMuted = false;    ///< by the user
    bool m_isSilenced = false; ///< because another window is in front
    QString m_returnedCard;    ///< waits for the end of an export or backup
    // The last: gone before what they lie over.
    RecorderSettings m_recorderSettings{*this};
    CardJobs m_jobs{m_controller, *this};
};

} // namespace cardreel
