#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace cardreel {

class DCFInfo;
struct CustomLocation;
struct CustomPointAnnotation;

// What the clock of a window uses of its panes: no more than these operations. Each may be missing. Panes belong to the
// window and live on the interface thread, on which everything here is called.

/// A video pane. Fractions are of the file's length, 0 to 1; seconds are the file's own unless said otherwise.
class PlayerPane
{
public:
    using Callback = std::function<void()>;

    virtual ~PlayerPane() = default;

    /// Loads a file and keeps the callbacks until the next call; an empty one does nothing. An empty path, or one where
    /// there is no file, empties the pane, and no callback runs.
    virtual void playWithPath(const QString& path, Callback willStartPlay, Callback progress,
                              Callback didStopPlaying) = 0;
    /// Shows a still picture over the video; an empty or unreadable one leaves the pane without any.
    virtual void showImageWithPath(const QString& path) = 0;
    /// Nothing without a file.
    virtual void play() = 0;
    /// Plays without sound.
    virtual void mutePlay() = 0;
    virtual void pause() = 0;
    virtual bool isPlaying() const = 0;
    /// Brought into 0 to 1.
    virtual void setCurrentProgress(double fraction) = 0;
    /// 0 while the length is unknown.
    virtual double progress() const = 0;
    /// The rate asked for: 1 is the recorder's own, 0 stands still.
    virtual double playbackRate() const = 0;
    virtual void updatePlaybackRate(double rate) = 0;
    /// Seconds that playing the whole file takes at the present rate; 0 while unknown.
    virtual double totalTime() const = 0;
    virtual double originalTotalTime() const = 0;
    virtual double originalCurrentTime() const = 0;
    /// Silences the pane; its volume stays what it is.
    virtual void audioMuteEnable(bool enable) = 0;
};

/// The graph of speed and acceleration.
class GraphPane
{
public:
    virtual ~GraphPane() = default;

    virtual void setProgressMax(double fraction) = 0;
    virtual void setProgressMin(double fraction) = 0;
    /// Moves the position line to a fraction of the recording.
    virtual void updateProgress(double fraction) = 0;
    /// Draws a recording's curves; null clears them.
    virtual void drawGraphWithCurrentDCFInfo(const std::shared_ptr<DCFInfo>& dcf) = 0;
    /// Refreshes the readouts of the moment; the speed is that of the map's marker, -1 for none.
    virtual void setCurrentSpeed(double speed) = 0;
    /// Whether the user is dragging on the graph.
    virtual bool userControlIsActive() const = 0;
};

/// The map.
class MapPane
{
public:
    virtual ~MapPane() = default;

    /// Follows a moment of a recording, in seconds from its start.
    virtual void updateDCF(const std::shared_ptr<DCFInfo>& dcf, double currentDCFTime, double totalDCFTime) = 0;
    virtual void upDateWithCenterLocation(const CustomLocation& location) = 0;
    /// The marker of the vehicle's place, whether it is to be seen or not; null when there is none.
    virtual const CustomPointAnnotation* userLocation() const = 0;
};

/// The list of recordings. What it selects comes back through MediaController::updateCurrentDCF().
class RecordingsList
{
public:
    virtual ~RecordingsList() = default;

    virtual void selectCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) = 0;
    /// Selects the recording after this one in the displayed order: after the last the first, and the first when this
    /// one isn't in the list. A list of one selects its recording anew.
    virtual void selectNextDCFWithCurrentDCF(const std::shared_ptr<DCFInfo>& dcf) = 0;
};

/// The sheet that shows how far a job on the card has come. It outlives the job, or closes it before it goes
/// (MediaController::closeProgress()).
class ProgressPane
{
public:
    virtual ~ProgressPane() = default;

    /// From 0 to 1.
    virtual void setProgress(double fraction) = 0;
    /// The item at work, each once.
    virtual void setItem(const QString& name) = 0;
    /// What stands in the place of an item: nothing at first, at the end how it went.
    virtual void setInfoText(const QString& text) = 0;
    /// The job is over. `path`: the file or folder that is there now, empty when there is none. `problem`: why not, or
    /// what is missing in it, for the user; empty when it went well.
    virtual void jobDidEnd(const QString& path, const QString& problem) = 0;
    /// Closes it, for the job was cancelled by something else than the user.
    virtual void dismiss() = 0;
};

} // namespace cardreel
