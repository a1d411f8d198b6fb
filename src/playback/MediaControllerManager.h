#pragma once

#include <QObject>
#include <QPointer>

#include <optional>

namespace cardreel {

class MediaController;

/// Names the window that the others follow and relays its time to them. One per process, made at first use and never
/// destroyed, because windows unsubscribe from it until the very end; interface thread.
class MediaControllerManager : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("playback/MediaController.h")

public:
    static MediaControllerManager& sharedInstance();

    /// Null when no window leads. Held weakly: a master that is destroyed is one no more.
    MediaController* masterController() const;
    /// Null for none, which is not announced.
    void updateMasterController(MediaController* controller);

    /// Seconds since 1970 by the master's clock. Announced when the sender is the master and has a date, else ignored.
    void updateReferenceTime(std::optional<double> date, const MediaController* sender);

Q_SIGNALS:
    void masterMediaControllerDidChange(cardreel::MediaController* master);
    /// Seconds since 1970; at every tick of the master, about a hundred times a second while it plays.
    void masterMediaControllerDateDidUpdate(double date);

private:
    MediaControllerManager() = default;

    QPointer<MediaController> m_masterController;
};

} // namespace cardreel
