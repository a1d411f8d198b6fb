#include "platform/map/TilePlan.h"

#include <algorithm>
#include <utility>

namespace cardreel {
namespace {

constexpr qsizetype rememberedFailures = 4096;

} // namespace

TilePlan::TilePlan(const TileRetryTimes& times)
    : m_times(times)
{
}

std::vector<TileKey> TilePlan::setWanted(std::vector<TileKey> keys)
{
    m_wanted = std::move(keys);
    forgetOldFailures();
    // A probe runs to its end: dropped with each movement of the map, it would never tell whether the source is back.
    if (isPaused())
        return {};
    const QSet<TileKey> wanted(m_wanted.begin(), m_wanted.end());
    std::vector<TileKey> dropped;
    for (const TileKey& key : std::as_const(m_underway)) {
        if (!wanted.contains(key))
            dropped.push_back(key);
    }
    for (const TileKey& key : dropped)
        m_underway.remove(key);
    return dropped;
}

std::optional<TileKey> TilePlan::next(qint64 nowMs)
{
    if (m_underway.size() >= m_parallel || (isPaused() && (!m_underway.isEmpty() || nowMs < m_pauseEndMs)))
        return {};
    std::optional<TileKey> best;
    int fewest = 0;
    for (const TileKey& key : m_wanted) {
        const Failures failures = m_failures.value(key);
        // A probe needn't be due for itself.
        if (m_underway.contains(key) || (!isPaused() && failures.dueMs > nowMs))
            continue;
        if (!best || failures.count < fewest) {
            best = key;
            fewest = failures.count;
        }
    }
    if (best)
        m_underway.insert(*best);
    return best;
}

std::optional<qint64> TilePlan::nextDueMs() const
{
    if (m_wanted.empty() || m_underway.size() >= m_parallel)
        return {};
    if (isPaused())
        return m_underway.isEmpty() ? std::optional(m_pauseEndMs) : std::nullopt;
    std::optional<qint64> first;
    for (const TileKey& key : m_wanted) {
        if (m_underway.contains(key))
            continue;
        const qint64 due = m_failures.value(key).dueMs;
        first = std::min(first.value_or(due), due);
    }
    return first;
}

void TilePlan::didAnswer(const TileKey& key)
{
    m_failedSinceAnswer.clear();
    m_isRefused = false;
    m_probes = 0;
    didObtain(key);
}

void TilePlan::didObtain(const TileKey& key)
{
    m_failures.remove(key);
    m_underway.remove(key);
    std::erase(m_wanted, key);
}

void TilePlan::didFail(const TileKey& key, qint64 nowMs, qint64 pauseMs)
{
    m_underway.remove(key);
    m_failedSinceAnswer.insert(key);
    Failures& failures = m_failures[key];
    ++failures.count;
    failures.dueMs = nowMs + delayMs(failures.count, m_times.longestMs);

    m_isRefused = m_isRefused || pauseMs > 0;
    if (isPaused())
        ++m_probes;
    const qint64 own = isPaused() ? delayMs(m_probes, m_times.longestPauseMs) : 0;
    m_pauseEndMs = std::max(m_pauseEndMs, nowMs + std::max(own, pauseMs));
}

bool TilePlan::isUnreachable() const
{
    if (m_wanted.empty())
        return false;
    return isPaused() || std::all_of(m_wanted.begin(), m_wanted.end(), [this](const TileKey& key) {
               return m_failedSinceAnswer.contains(key) && m_failures.value(key).count > 1;
           });
}

qint64 TilePlan::delayMs(int failures, qint64 longestMs) const
{
    constexpr int enoughDoublings = 20;
    return std::min(m_times.firstMs << std::clamp(failures - 1, 0, enoughDoublings), longestMs);
}

void TilePlan::forgetOldFailures()
{
    if (m_failures.size() <= rememberedFailures)
        return;
    const QSet<TileKey> wanted(m_wanted.begin(), m_wanted.end());
    m_failures.removeIf([&wanted](const auto& entry) { return !wanted.contains(entry.key()); });
}

} // namespace cardreel
