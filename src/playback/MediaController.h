#pragma once

#include "export/DCFAsyncBackUp.h"
#include "media/MediaLibrary.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>

namespace cardreel {

class DCFAsyncKMLBuilder;
class GraphPane;
class MapPane;
class PlayerPane;
class ProgressPane;
class RecordingsList;

/// The hub of one card window: its library and its playback clock. It starts the players on what the list selects,
/// turns the front player's position into the time of day of the drive, tells it to the panes, keeps the rear player in
/// step, goes on to the next recording at the end of a file, and follows the window that leads. Owned by its window;
/// interface thread.
///
/// Panes are the window's; each may be missing, and what would be told to it is left out. They outlive the controller
/// or its dispose(). Players and the list may answer at once, from within a call, and what they answer with may select
/// something else, dispose of this controller or destroy it; graph and map just take what they are told.
///
/// Dates are seconds since 1970. A recording's start is its `startDate`, else its `fileDate` less its length. A
/// `fileDate` that was never set (Instant{}: recorders and cards know no date before 1980) counts as none.
class MediaController : public MediaLibrary
{
    Q_OBJECT

public:
    /// Subscribes to the master's time.
    explicit MediaController(QObject* parent = nullptr);
    /// Disposes.
    ~MediaController() override;

    /// Ends the controller's work: cancels the parse, forgets the panes, unsubscribes, and is the master no more. From
    /// then on it calls nothing and announces nothing. May be called again, and from within a pane's callback.
    void dispose();

    // Null takes a pane away; not from within a call into that pane.
    void setDcfListVC(RecordingsList* list) { m_dcfListVC = list; }
    /// Another one than before starts with the next selection.
    void setPlayerVC(PlayerPane* front);
    void setPlayerVCSecondary(PlayerPane* rear) { m_playerVCSecondary = rear; }
    /// Loads the rear file of the recording in view, for a rear pane that was set after it.
    void loadSecondary();
    void setGraphVC(GraphPane* graph) { m_graphVC = graph; }
    void setMapVC(MapPane* map) { m_mapVC = map; }
    PlayerPane* playerVC() const { return m_playerVC; }
    PlayerPane* playerVCSecondary() const { return m_playerVCSecondary; }
    /// The front and the rear player; null where there is none.
    std::array<PlayerPane*, 2> playerVCs() const { return {m_playerVC, m_playerVCSecondary}; }
    /// The other player of the pair; null when there is none.
    PlayerPane* targetVCWithSourceVC(const PlayerPane* player) const;

    /// Where a recording of this length begins; none without any date.
    static std::optional<double> startOf(const DCFInfo& dcf, double lengthSeconds);

    /// Time of day of the frame that the front player shows; 0 before the first tick and for a recording without dates.
    double userDate() const { return m_userDate; }
    /// Whether the next start of the front player has to play: from a selection in the list to that start.
    bool listDidSelect() const { return m_listDidSelect; }
    /// The still picture that is shown instead of a moment of the video; null when there is none.
    const std::shared_ptr<PictureInfo>& currentPicture() const { return m_currentPicture; }
    /// The recordings selected in the list, for backup and export.
    const DCFList& selectedDCFs() const { return m_selectedDCFs; }
    /// Pauses both players when there are several.
    void updateSelectedDCFs(DCFList dcfs);

    /// Shows a recording, a picture or a picture within its recording. The lists call it with `fromDCFListVC` true;
    /// with false the recordings list is asked to select the recording, which then calls back with true. Without a
    /// recording the picture is shown alone; without either the panes are cleared, while currentDCF() stays the one
    /// loaded.
    void updateCurrentDCF(std::shared_ptr<DCFInfo> dcf, bool fromDCFListVC,
                          std::shared_ptr<PictureInfo> currentPicture);
    /// Shows currentPicture() alone and takes it off its recording for good.
    void showCurrentPictureWithoutDCF();
    /// Sets both players to a fraction of their length.
    void updateProgress(double fraction);

    // What the front player's callbacks lead to; null is ignored.

    /// The tick. A tick that is caused by what a tick does is left out.
    void progressAction(PlayerPane* player);
    /// Gives the other player the starting one's rate.
    void willStartAction(PlayerPane* player);
    /// Asks the list for the recording after this one.
    void didStopPlayingAction();

    // Jobs on the card, one at a time, so that another is ignored while one's sheet is open: MediaControllerJobs.cpp.
    // Until the sheet is closed canReloadMedia() is false, which whoever opens the panel before it has set already, and
    // the background parse rests unless a recording is chosen that needs it. The sheet, which may be missing, may close
    // itself from within any call.

    /// Writes the route of the recordings to a KML, KMZ or GPX file and shows how far it is; nothing begins for no
    /// recordings.
    void exportInfos(const DCFList& infos, const QString& targetFilePath, ProgressPane* sheet);
    /// Copies the items into a folder that opens like a card; nothing begins for no items.
    void backUpSelectedInfos(const BackUpList& items, const QString& targetRootDirPath, ReadBack readBack,
                             ProgressPane* sheet);
    /// The sheet is closed: cancels what still runs, and the parse goes on at the recording in view. Nothing without a
    /// sheet or job.
    void closeProgress();
    /// Null once closed.
    const std::shared_ptr<DCFAsyncBackUp>& currentBackUp() const { return m_currentBackUp; }
    const std::shared_ptr<DCFAsyncKMLBuilder>& currentKmlBuilder() const { return m_currentKmlBuilder; }
    ProgressPane* currentProgressVC() const { return m_currentProgressVC; }
    /// Between a job's start and its end.
    bool isJobRunning() const { return m_isJobRunning; }

    bool isMasterController() const;
    /// Follows the master's time; ignored by the master itself and while canReloadMedia() is false. Without a recording
    /// of that time everything stays as it is.
    void updateCurrentDate(double date);
    /// Subscribes to the master's time; done at construction.
    void addNotification();
    void removeNotification();

public Q_SLOTS:
    void masterMediaControllerDateDidUpdate(double date);

Q_SIGNALS:
    /// The panes have been told the moment, whatever was shown. About a hundred times a second while playing.
    void didTick();
    /// Another recording or lone picture, or nothing, is shown now: see currentDCF() and currentPicture().
    void currentDidChange();

private:
    /// What is left of a controller after a call that may have led anywhere.
    class Survival;
    using PlayerAction = void (MediaController::*)(PlayerPane*);

    std::function<void()> callback(PlayerAction action, PlayerPane* player);
    void loadCurrentDCF();
    void frontWillStart(PlayerPane* front);
    void frontDidStop(PlayerPane* front);
    void rearDidProgress(PlayerPane* rear);
    void tickWithPicture(PlayerPane* player, const Survival& survival);
    void tickWithVideo(PlayerPane* player, const Survival& survival);
    void pauseForGraph(PlayerPane* player, const Survival& survival);
    void keepInStep(PlayerPane* player, const Survival& survival);
    void jumpTo(double date, double fraction);
    void followMastersRate();

    bool beginJob(ProgressPane* sheet);
    void showJobsItem(double fraction, const QString& path);
    void jobDidEnd(const QString& text, const QString& path, const QString& problem);
    void cancelJobs();
    void jobsHaveToEnd();

    RecordingsList* m_dcfListVC = nullptr;
    PlayerPane* m_playerVC = nullptr;
    PlayerPane* m_playerVCSecondary = nullptr;
    GraphPane* m_graphVC = nullptr;
    MapPane* m_mapVC = nullptr;
    ProgressPane* m_currentProgressVC = nullptr;
    std::shared_ptr<DCFAsyncBackUp> m_currentBackUp;
    std::shared_ptr<DCFAsyncKMLBuilder> m_currentKmlBuilder;
    std::shared_ptr<PictureInfo> m_currentPicture;
    DCFList m_selectedDCFs;
    double m_userDate = 0;
    bool m_listDidSelect = false;
    bool m_isDisposed = false;
    bool m_isJobRunning = false;
    quint64 m_load = 1;        ///< counts what was loaded; callbacks of an earlier load are ignored
    quint64 m_tickingLoad = 0; ///< the load whose tick is under way; 0 for none
};

} // namespace cardreel
