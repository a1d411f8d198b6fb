#pragma once

#include "media/MediaLibrary.h"
#include "playback/PlayerPair.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QSet>
#include <QTimer>

#include <memory>

class QLabel;
class QMenu;
class QStackedWidget;

namespace cardreel {

class CardChip;
class LibraryPanel;
class ReadoutBar;
class TransportBar;
class VideoPane;
class VideoSplitter;

/// One card's window: its lists at the left, its two cameras, what moves them, and the moment shown in words. Without a
/// card it invites to open one. Owned by CardApplication; interface thread.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    /// The card shown; empty when there is none.
    const QString& cardPath() const { return m_library.rootPath(); }
    /// Reads a folder that CardLayout::mediaIsAvailable() and chooses its first recording. Whether there was anything
    /// on it.
    bool openCard(const QString& rootPath);

    /// The submenu of cards opened before; CardApplication fills it.
    QMenu* recentMenu() const { return m_recentMenu; }

Q_SIGNALS:
    /// The user asks for a card: by a dialog, ...
    void openRequested();
    /// ... by dropping a folder.
    void cardDropped(const QString& path);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* makeStartPage();
    QWidget* makeCardPage();
    void makeMenus();
    void makeAppearanceMenu(QMenu& viewMenu);
    void showRecording(const std::shared_ptr<DCFInfo>& dcf);
    void showPicture(const std::shared_ptr<PictureInfo>& picture);
    void showMoment(double seconds);
    void showParseProgress(qsizetype done);
    void setMuted(bool muted);
    void lookAfterCard();

    MediaLibrary m_library;
    PlayerPair m_players;
    QStackedWidget* m_pages = nullptr;
    QMenu* m_recentMenu = nullptr;
    CardChip* m_chip = nullptr;
    LibraryPanel* m_panel = nullptr;
    VideoPane* m_frontPane = nullptr;
    VideoPane* m_rearPane = nullptr;
    VideoSplitter* m_videoSplitter = nullptr;
    TransportBar* m_transport = nullptr;
    ReadoutBar* m_readout = nullptr;
    QLabel* m_contents = nullptr;
    QLabel* m_progress = nullptr;
    QSet<const DCFInfo*> m_parsed; ///< the recordings of this card that the background parse reported
    QElapsedTimer m_progressShown;
    QTimer m_cardWatch;
    bool m_isCardGone = false;
    bool m_isMuted = false;
};

} // namespace cardreel
