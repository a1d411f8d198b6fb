#include "playback/RearFollower.h"

#include "platform/video/VideoItem.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace cardreel {

namespace {

constexpr auto interval = std::chrono::milliseconds(40);
// Reports of the players' times are uneven by some milliseconds: so many are averaged.
constexpr int measurements = 5;
// A fifth of a frame is worth a correction.
constexpr double worthSeconds = 0.006;
constexpr double gentleCorrection = 0.1;
constexpr double hastyCorrection = 0.5;
constexpr double hastyBeyondSeconds = 0.05;
constexpr double longestSeconds = 2;
// Until a change of pace shows in the times that a player reports.
constexpr auto settlingTime = std::chrono::milliseconds(400);
constexpr double sameTimeSeconds = 1e-5;

bool isShowing(const VideoPlayer& player)
{
    return player.status() == VideoPlayer::Status::Ready || player.status() == VideoPlayer::Status::Ended;
}

} // namespace

RearFollower::RearFollower(QObject* parent)
    : QObject(parent)
{
    m_timer.setInterval(interval);
    connect(&m_timer, &QTimer::timeout, this, &RearFollower::adjust);
}

void RearFollower::setPlayers(VideoPlayer* leader, VideoPlayer* follower)
{
    for (VideoPlayer* former : {m_leader.data(), m_follower.data()}) {
        if (former)
            former->disconnect(this);
    }
    if (m_follower)
        m_follower->setAimsAhead(false);
    m_leader = leader;
    m_follower = follower;
    if (follower)
        follower->setAimsAhead(true);
    m_timer.stop();
    if (!leader || !follower)
        return;
    for (VideoPlayer* player : {leader, follower}) {
        connect(player, &VideoPlayer::seekFinished, this, &RearFollower::beginAnew);
        connect(player, &VideoPlayer::rateChanged, this, &RearFollower::beginAnew);
        connect(player, &VideoPlayer::statusChanged, this, &RearFollower::beginAnew);
    }
    beginAnew();
}

RearFollower::Correction RearFollower::correctionFor(double secondsBehind)
{
    const double distance = std::abs(secondsBehind);
    if (distance < worthSeconds)
        return {};
    const double correction = distance > hastyBeyondSeconds ? hastyCorrection : gentleCorrection;
    return {1 + std::copysign(correction, secondsBehind), std::min(distance / correction, longestSeconds)};
}

bool RearFollower::isLevelKnown() const
{
    return m_leader && m_follower && isShowing(*m_leader) && isShowing(*m_follower) && !m_leader->isSeeking() &&
           !m_follower->isSeeking() && m_leader->currentItem()->duration() > 0 &&
           m_follower->currentItem()->duration() > 0;
}

double RearFollower::wantedTime() const
{
    return m_leader->currentTime() / m_leader->currentItem()->duration() * m_follower->currentItem()->duration();
}

double RearFollower::levelPace() const
{
    return m_follower->currentItem()->duration() / m_leader->currentItem()->duration();
}

void RearFollower::beginAnew()
{
    m_phase = Phase::Measuring;
    m_behindSum = 0;
    m_measured = 0;
    const bool isPlaying = m_leader && m_follower && m_leader->rate() > 0 && m_follower->rate() > 0;
    if (isPlaying)
        m_timer.start();
    else
        m_timer.stop();
    if (isPlaying && isLevelKnown())
        m_follower->setPace(levelPace());
    adjust();
}

void RearFollower::adjust()
{
    if (!isLevelKnown())
        return;
    if (m_leader->rate() > 0 && m_follower->rate() > 0)
        adjustPlaying();
    else if (m_leader->rate() == 0 && m_follower->rate() == 0)
        adjustStanding();
}

void RearFollower::adjustPlaying()
{
    if (m_leader->status() != VideoPlayer::Status::Ready || m_follower->status() != VideoPlayer::Status::Ready)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (m_phase != Phase::Measuring) {
        if (now < m_phaseEnd)
            return;
        const bool wasCorrecting = m_phase == Phase::Correcting;
        m_phase = wasCorrecting ? Phase::Settling : Phase::Measuring;
        m_phaseEnd = now + settlingTime;
        if (wasCorrecting)
            m_follower->setPace(levelPace());
        return;
    }
    m_behindSum += wantedTime() - m_follower->currentTime();
    if (++m_measured < measurements)
        return;
    const Correction correction = correctionFor(m_behindSum / m_measured);
    m_behindSum = 0;
    m_measured = 0;
    if (correction.pace == 1)
        return;
    m_follower->setPace(levelPace() * correction.pace);
    m_phase = Phase::Correcting;
    m_phaseEnd = now + std::chrono::microseconds(std::llround(correction.seconds * 1e6));
}

void RearFollower::adjustStanding()
{
    const double wanted = wantedTime();
    if (std::abs(m_follower->currentTime() - wanted) > sameTimeSeconds)
        m_follower->seek(wanted);
}

} // namespace cardreel
