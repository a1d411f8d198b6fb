#pragma once

#include "platform/map/TileSource.h"

#include <QHash>
#include <QSet>

#include <optional>
#include <vector>

namespace cardreel {

/// How patient a loader is with a source that fails.
struct TileRetryTimes
{
    qint64 firstMs = 2'000;         ///< after the first failure; doubles with each further one
    qint64 longestMs = 300'000;     ///< of one tile
    qint64 longestPauseMs = 60'000; ///< of the whole source
    /// So many tiles must fail, and none be answered, before the whole source is left alone.
    int failuresBeforePause = 3;
};

/// Which tile is asked for next, and when: the most urgent first, but bad ones after good ones; what failed after a
/// pause that doubles; and while a source gives nothing but failures one single probe at a time. Knows neither clock
/// nor source: times are milliseconds of a clock of the caller's. Belongs to a TileWorker.
class TilePlan
{
public:
    explicit TilePlan(const TileRetryTimes& times = {});

    /// How many may be under way at a time.
    void setParallel(int tiles) { m_parallel = tiles; }
    /// Replaces what is wanted, the most urgent first; returns what is under way and isn't wanted any more.
    std::vector<TileKey> setWanted(std::vector<TileKey> keys);
    const std::vector<TileKey>& wanted() const { return m_wanted; }

    /// Begins one that is due.
    std::optional<TileKey> next(qint64 nowMs);
    /// When next() will give one; nothing when that depends on an answer or another wish.
    std::optional<qint64> nextDueMs() const;

    bool isUnderway(const TileKey& key) const { return m_underway.contains(key); }
    /// The source answered: there is a tile, or there is none.
    void didAnswer(const TileKey& key);
    /// Came from elsewhere; says nothing of the source.
    void didObtain(const TileKey& key);
    /// With a `pauseMs` the source as a whole is left alone for at least so long.
    void didFail(const TileKey& key, qint64 nowMs, qint64 pauseMs = 0);

    /// Whether the source as a whole is left alone, but for probes.
    bool isPaused() const { return m_isRefused || m_failedSinceAnswer.size() >= m_times.failuresBeforePause; }
    /// Whether nothing came for all that is wanted, also when tried again.
    bool isUnreachable() const;

private:
    struct Failures
    {
        int count = 0;
        qint64 dueMs = 0;
    };

    qint64 delayMs(int failures, qint64 longestMs) const;
    void forgetOldFailures();

    TileRetryTimes m_times;
    int m_parallel = 1;
    std::vector<TileKey> m_wanted;
    QSet<TileKey> m_underway;
    QHash<TileKey, Failures> m_failures; ///< also of tiles that aren't wanted: moving to and fro must not ask again
    QSet<TileKey> m_failedSinceAnswer;
    bool m_isRefused = false; ///< the source asked for the pause
    int m_probes = 0;         ///< in this pause
    qint64 m_pauseEndMs = 0;
};

} // namespace cardreel
