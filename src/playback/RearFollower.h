#pragma once

#include "platform/video/VideoPlayer.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>

namespace cardreel {

/// Keeps one player with another more finely than the window's clock does, which only acts when they are seconds apart:
/// playing, the follower runs a little faster or slower until it is level; standing, it shows the frame of the very
/// same moment. The same moment is the same fraction of both files. Owned by the pair of panes; interface thread.
class RearFollower : public QObject
{
    Q_OBJECT

public:
    explicit RearFollower(QObject* parent = nullptr);

    /// Either may be null. The follower must be one without sound, for its pace changes.
    void setPlayers(VideoPlayer* leader, VideoPlayer* follower);

    /// How to make up for a distance: so much faster or slower, for so many seconds.
    struct Correction
    {
        double pace = 1;
        double seconds = 0;
    };
    /// For a follower that is so many seconds behind (above 0) or ahead; pace 1 where it isn't worth it. A change of
    /// pace shows only after a while, so it is reckoned once and carried out, not steered by what is seen meanwhile.
    static Correction correctionFor(double secondsBehind);

private:
    void adjust();
    void beginAnew();
    void adjustPlaying();
    void adjustStanding();
    bool isLevelKnown() const;
    /// Files of different lengths go by at different paces, for both begin and end together.
    double levelPace() const;
    /// Seconds of the follower's item that are the leader's present moment.
    double wantedTime() const;

    QPointer<VideoPlayer> m_leader;
    QPointer<VideoPlayer> m_follower;
    QTimer m_timer;
    enum class Phase { Measuring, Correcting, Settling } m_phase = Phase::Measuring;
    std::chrono::steady_clock::time_point m_phaseEnd;
    double m_behindSum = 0;
    int m_measured = 0;
};

} // namespace cardreel
