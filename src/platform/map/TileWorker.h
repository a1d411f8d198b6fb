#pragma once

#include "platform/map/TileMailbox.h"
#include "platform/map/TilePlan.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSet>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace cardreel {

/// A loader's half on the tile thread: asks the source for what is wanted, as the plan says, decodes what comes and
/// leaves it in the mailbox. One thing at each turn of the event loop, so that newer wishes are heard in between.
class TileWorker
{
public:
    /// Any thread; everything else on the tile thread, the end included.
    TileWorker(const TileSettings& settings, const TileRetryTimes& times, std::shared_ptr<TileMailbox> mailbox);
    ~TileWorker();
    TileWorker(const TileWorker&) = delete;
    TileWorker& operator=(const TileWorker&) = delete;

    void start();
    void takeWish();

private:
    bool makeSource();
    void turn();
    void scheduleTurn();
    void lookUp(const TileKey& key);
    void fetch(const TileKey& key);
    void didFetch(const TileKey& key, TileSource::Status status, const QByteArray& bytes);
    void didFail(const TileKey& key, qint64 pauseMs);
    bool giveOld(const TileKey& key);
    void giveMissing(const TileKey& key);
    void give(const TileKey& key, const QImage& image);
    void tellCondition();

    const TileSettings m_settings;
    const std::shared_ptr<TileMailbox> m_mailbox;
    std::unique_ptr<TileSource> m_source; ///< null also while it isn't there
    TilePlan m_plan;
    QElapsedTimer m_clock;
    std::unique_ptr<QTimer> m_turn;
    std::vector<TileKey> m_toLookUp; ///< the most urgent last
    QSet<TileKey> m_notAtHand;       ///< of what is wanted
    QSet<TileKey> m_missing;
    QHash<TileKey, quint64> m_given; ///< by number, as long as the loader may not have received them
    std::optional<TileMailbox::Condition> m_told;
};

} // namespace cardreel
