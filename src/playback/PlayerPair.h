#pragma once

#include "platform/video/VideoPlayer.h"

#include <QObject>

namespace cardreel {

/// The front and the rear player of a window, told everything together. The front one leads: position, length and end
/// are its; the rear one is silent and is brought back when it drifts. Interface thread.
class PlayerPair : public QObject
{
    Q_OBJECT

public:
    explicit PlayerPair(QObject* parent = nullptr);

    VideoPlayer& front() { return m_front; }
    VideoPlayer& rear() { return m_rear; }

    /// Opens a recording's files and starts playing once the front one is there. No rear path: the rear pane is empty.
    void open(const QString& frontPath, const QString& rearPath);
    void stop();

    void play();
    void pause();
    void togglePlaying();
    bool isPlaying() const { return m_front.isPlaying(); }

    /// Seconds from the recording's start, exact to the frame in both files.
    void seek(double seconds);

    double position() const { return m_front.position(); }
    double duration() const { return m_front.duration(); }

Q_SIGNALS:
    void positionChanged(double seconds);
    void durationChanged(double seconds);
    void playingChanged(bool playing);
    void endReached();

private:
    void keepRearInStep(double seconds);

    VideoPlayer m_front;
    VideoPlayer m_rear;
    bool m_hasRear = false;
};

} // namespace cardreel
