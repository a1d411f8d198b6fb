#pragma once

#include "platform/NewestJob.h"
#include "platform/video/VideoPlayer.h"
#include "playback/Panes.h"
#include "playback/PlayerScrollView.h"
#include "playback/SnapFrame.h"

#include <QPointF>
#include <QRectF>
#include <QTimer>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>
#include <optional>

class QAction;

namespace cardreel {

class ChipLabel;
class PaneControls;
class VideoAsset;
class VideoItem;

/// One video pane: plays a file, or shows a still picture, in a view that can be magnified and panned. Rates other than
/// the recorder's own are time-scaled copies of the file that play at rate 1, so positions leave the pane in the file's
/// own time or as fractions of its length. Owned by its window's split view; interface thread, which reading a file
/// doesn't hold.
class ZoomPlayerViewController : public QWidget, public PlayerPane
{
    Q_OBJECT

public:
    static constexpr double lowestRate = 0.5;
    static constexpr double highestRate = 16;
    static constexpr double highestSynchronizedRate = 8;

    /// What the user wants to keep as a picture.
    struct SnapRequest
    {
        std::shared_ptr<VideoItem> item; ///< what the pane showed
        QSize frameSize;                 ///< of the file's frames as shown, in pixels
        double requestTime = 0;          ///< seconds of the item as it played
    };

    /// `cameraName` is shown in the corner and read to the blind.
    explicit ZoomPlayerViewController(const QString& cameraName,
                                      VideoPlayer::AudioOutput audio = VideoPlayer::AudioOutput::Device,
                                      QWidget* parent = nullptr);
    ~ZoomPlayerViewController() override;

    // PlayerPane. The file is read elsewhere: from a call of playWithPath() until its item is in, nothing plays, no
    // callback runs, and play(), pause(), rates and fractions are kept for it.
    void playWithPath(const QString& path, Callback willStartPlay, Callback progress, Callback didStopPlaying) override;
    void showImageWithPath(const QString& path) override;
    void play() override;
    void mutePlay() override;
    void pause() override;
    bool isPlaying() const override;
    void setCurrentProgress(double fraction) override;
    double progress() const override { return m_progress; }
    double playbackRate() const override { return m_targetRate; }
    void updatePlaybackRate(double rate) override;
    double totalTime() const override { return m_totalTime; }
    double originalTotalTime() const override { return m_currentItemOriginalDuration; }
    double originalCurrentTime() const override { return m_currentItemOriginalDuration * m_progress; }
    void audioMuteEnable(bool enable) override;

    void playPauseSwitch();
    /// Seconds of the item as it plays. Nothing happens while there is none.
    void setCurrentDuration(double seconds);
    /// Seconds of the item as it plays.
    double currentTime() const { return m_currentTime; }
    /// Pauses and shows the next or the previous frame of the file; nothing without an item.
    void stepFrame(VideoPlayer::FrameStep step);

    /// The front pane of a window; only it may change the rate.
    bool isPrimaryPlayer() const { return m_isPrimaryPlayer; }
    void becomePrimaryPlayer();
    /// Rate 1, nothing magnified.
    void resetZoomPlayerView();
    /// Removes the observers and gives the player up; the pane is done with.
    void dispose();

    /// Twice the rate; past the limit 0.5 again, from 0 on 1.
    void incrementPlaybackRate();
    /// Twice the rate up to the limit, without starting over.
    void raisePlaybackRate();
    /// Half the rate down to 0.5.
    void decrementPlaybackRate();
    /// 16, in synchronised play 8.
    double rateLimit() const { return m_rateLimit; }
    void setSynchronizedPlay(bool synchronized);

    /// From 0 to 1; kept from file to file.
    double volume() const { return m_volume; }
    void setVolume(double volume);
    bool isMuted() const { return m_isMuted; }

    /// Null until the first file and after dispose(). Dropped and made anew after a file that failed; see
    /// playerDidChange().
    VideoPlayer* player() const { return m_player.get(); }
    /// What the player plays; null without.
    std::shared_ptr<VideoItem> currentItem() const;
    QString currentItemPath() const { return m_currentItemPath; }
    /// A file was asked for and its item isn't in yet.
    bool isLoading() const { return m_isLoading; }
    bool isActive() const { return m_isActive; }
    bool playerIsError() const { return m_playerIsError; }
    /// While set, ticks and requests for rates are passed over; cleared 0.25 s after each change of readiness.
    bool isChangeingAsset() const { return m_isChangeingAsset; }
    void setIsChangeingAsset(bool changeing) { m_isChangeingAsset = changeing; }

    // Controls, for menus too. The chips draw them by their objectName(), the name of a drawing in resources/images.
    /// Its text is the rate asked for ("x2").
    QAction* rateChangeButton() const { return m_rateChangeButton; }
    QAction* mirrorButton() const { return m_mirrorButton; }
    /// Enabled while there is a frame to capture.
    QAction* snapButton() const { return m_snapButton; }
    /// Zoom choice 1 to 6: whole, middle, and the quarters upper left, upper right, lower left, lower right.
    QAction* segmentAction(int segment) const;
    /// Carries a choice out. 0, free zoom, can't be chosen: nothing happens.
    void segmentDidChange(int segment);
    /// 0 to 6; 0 while zoomed freely.
    int lastSelectedSegment() const { return m_lastSelectedSegment; }
    bool scrollBySegment() const { return m_scrollBySegment; }
    bool isMirror() const;
    /// Nothing is magnified.
    bool isInitialPosition() const { return m_isInitialPosition; }

    /// About the pointer when it is over the video, else the middle.
    void zoomIn();
    void zoomOut();
    void resetZoom();

    PlayerScrollView* playerScrollView() const { return m_playerScrollView; }

    /// Pauses, begins to decode the frame shown, and asks for it to be kept: snapRequested(). Nothing while there is no
    /// item.
    void snapButtonPressed();
    /// Whether the frame that was asked for is decoded, so that its picture is made at once.
    bool isSnapReady() const;
    /// Whoever was asked is done with it.
    void forgetSnap();
    /// What makes the picture: the file's own frame, mirrored as the pane is; magnified, or with a still picture over
    /// the video, what is seen of it now. Takes as long as the card takes, on any thread; a null picture when there is
    /// none.
    std::function<QImage()> snapshot(const SnapRequest& request) const;
    /// The camera among the chips.
    QWidget* snapChip() const;

    /// The sentence shown while there is nothing to show; what is the matter with a file comes before it.
    void setMessage(const QString& message);
    /// The text at the lower left, the time of day; empty for none.
    void setOverlayText(const QString& text);

    QSize sizeHint() const override { return {480, 270}; }
    QSize minimumSizeHint() const override { return {160, 90}; }

Q_SIGNALS:
    /// player() was made or dropped.
    void playerDidChange();
    /// isPlaying() may have changed.
    void playingDidChange();
    /// progress(), totalTime() or playbackRate() changed: on each tick, seek and file.
    void progressDidChange();
    void muteDidChange(bool muted);
    /// A triple click on the video or Escape: the window goes to full screen or back.
    void tripleTapDetected();
    /// A pan wants the window's bottom bar shown or hidden.
    void bottomBarRequested(bool shown);
    void snapRequested(const cardreel::ZoomPlayerViewController::SnapRequest& request);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    struct Callbacks
    {
        Callback willStartPlay, progress, didStopPlaying;
    };

    // Files and playing: ZoomPlayerViewController.cpp
    void playAtPath(const QString& path);
    void assetIsRead(std::shared_ptr<const VideoAsset> asset);
    std::shared_ptr<VideoItem> itemWithPath();
    void playItem();
    void emptyPane();
    void makePlayer();
    void dropPlayer();
    void resetTimes();
    void statusChanged(VideoPlayer::Status status);
    void tick(double seconds);
    void updateProgress();
    void handleEndPlay(const std::shared_ptr<VideoItem>& item);
    void willStartPlay();
    void updatePlayerViewRate(double rate);
    void setTargetRate(double rate);
    bool canChangeRate() const;
    /// Playing, or going to once what loads is in.
    bool wantsToPlay() const;

    // What is seen and clicked: ZoomPlayerView.cpp
    void makeActions();
    void installBlocks();
    void selectSegment(int segment);
    void didScroll();
    void panAction(PlayerScrollView::PanPhase phase, QPointF translation);
    void showMagnification();
    void restoreView();
    void mirrorButtonPressed();
    void playerViewIsError(bool isError);
    void playerIsActive(bool active);
    void pictureViewIsActive(bool active);
    void pictureIsRead(const QString& path, const QImage& picture);
    void updateControls();
    void updateMessage();
    void updateRenderSize();
    void placeChips();

    // What is kept as a picture: ZoomPlayerSnap.cpp
    void prepareSnapFrame();
    bool snapsView() const;
    double standingTime(const SnapRequest& request) const;
    SnapFrame::Place snapPlace(const SnapRequest& request) const;

    std::unique_ptr<VideoPlayer> m_player;
    const VideoPlayer::AudioOutput m_audio;
    int m_timeObserver = 0;
    std::shared_ptr<const VideoAsset> m_asset; ///< of m_currentItemPath
    std::shared_ptr<VideoItem> m_changingAsset;
    std::shared_ptr<const Callbacks> m_callbacks;
    NewestJob m_assetJob;
    QTimer m_changeAssetDidFinish;

    double m_progress = 0;
    double m_totalTime = 0;
    double m_currentTime = 0;
    double m_targetRate = 1;
    double m_rateLimit = highestRate;
    double m_volume = 1;
    double m_currentItemOriginalDuration = 0;
    QString m_currentItemPath;
    std::optional<double> m_pendingFraction; ///< asked for before the length was known
    bool m_isLoading = false;
    bool m_playsAfterLoading = false;
    bool m_mutePlaysAfterLoading = false;
    bool m_observesEnd = false;
    bool m_playerWasReady = false;
    bool m_isMuted = false;
    bool m_isPrimaryPlayer = false;
    bool m_isChangeingAsset = false;

    PlayerScrollView* m_playerScrollView;
    PaneControls* m_subControlBaseView = nullptr;
    ChipLabel* m_name;
    ChipLabel* m_overlay;
    NewestJob m_pictureJob;
    SnapFrame m_snapFrame;
    SnapRequest m_snapRequest; ///< the last, without an item once it was dealt with
    QAction* m_rateChangeButton = nullptr;
    QAction* m_mirrorButton = nullptr;
    QAction* m_snapButton = nullptr;
    std::array<QAction*, 6> m_segments{};
    QTimer m_renderSizeTimer;
    QString m_message;
    QString m_assetError;
    QString m_pictureError;
    QPointF m_panOffset;
    QRectF m_contentRect{0, 0, 1, 1}; ///< visible part when the error came, in fractions of the content
    int m_lastSelectedSegment = 1;
    bool m_scrollBySegment = false;
    bool m_isInitialPosition = true;
    bool m_isMirrorMode = false;
    bool m_viewIsSaved = false; ///< m_contentRect and m_isMirrorMode wait for a player without error
    bool m_playerIsError = false;
    bool m_isActive = true;
    bool m_pictureIsActive = false;
};

} // namespace cardreel
