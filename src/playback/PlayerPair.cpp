#include "playback/PlayerPair.h"

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr double toleratedDriftSeconds = 0.2;

} // namespace

PlayerPair::PlayerPair(QObject* parent)
    : QObject(parent)
    , m_rear(VideoPlayer::AudioOutput::None)
{
    connect(&m_front, &VideoPlayer::positionChanged, this, [this](double seconds) {
        keepRearInStep(seconds);
        Q_EMIT positionChanged(seconds);
    });
    connect(&m_front, &VideoPlayer::durationChanged, this, &PlayerPair::durationChanged);
    connect(&m_front, &VideoPlayer::endReached, this, &PlayerPair::endReached);
    connect(&m_front, &VideoPlayer::playingChanged, this, [this](bool playing) {
        if (m_hasRear && playing)
            m_rear.play();
        else if (m_hasRear)
            m_rear.pause();
        Q_EMIT playingChanged(playing);
    });
}

void PlayerPair::open(const QString& frontPath, const QString& rearPath)
{
    m_hasRear = !rearPath.isEmpty();
    if (m_hasRear)
        m_rear.open(rearPath);
    else
        m_rear.stop();
    m_front.open(frontPath);
    play();
}

void PlayerPair::stop()
{
    m_hasRear = false;
    m_front.stop();
    m_rear.stop();
}

void PlayerPair::play()
{
    if (m_front.status() == VideoPlayer::Status::Ended)
        seek(0);
    m_front.play();
    // A front video that can't play leads nobody.
    if (m_hasRear && isPlaying())
        m_rear.play();
}

void PlayerPair::pause()
{
    m_front.pause();
    // They were started one after the other: only now do both have to show the same moment.
    if (m_hasRear) {
        m_rear.pause();
        m_rear.seek(m_front.position());
    }
}

void PlayerPair::togglePlaying()
{
    if (isPlaying() && m_front.status() != VideoPlayer::Status::Ended)
        pause();
    else
        play();
}

void PlayerPair::seek(double seconds)
{
    m_front.seek(seconds);
    if (m_hasRear)
        m_rear.seek(seconds);
}

void PlayerPair::keepRearInStep(double seconds)
{
    if (!m_hasRear || !isPlaying() || m_front.isSeeking() || m_rear.isSeeking() ||
        m_rear.status() != VideoPlayer::Status::Ready)
        return;
    const double wanted = std::min(seconds, m_rear.duration());
    if (std::abs(m_rear.position() - wanted) > toleratedDriftSeconds)
        m_rear.seek(wanted);
}

} // namespace cardreel
