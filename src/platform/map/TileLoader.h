#pragma once

#include "platform/map/TilePlan.h"
#include "platform/map/TileSource.h"

#include <QImage>
#include <QObject>

#include <memory>
#include <vector>

namespace cardreel {

class TileMailbox;
class TileThread;
class TileWorker;

/// Brings the tiles that a map shows: what isn't wanted any more isn't asked for any more, what failed is asked for
/// again after a pause that grows. Network, disk and the decoding of pictures are a background thread's. Belongs to a
/// map; interface thread.
class TileLoader : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Working,     ///< nothing is wrong, as far as is known
        Unreachable, ///< nothing came for what was asked last, and something will be tried again
    };

    explicit TileLoader(const TileSettings& settings, QObject* parent = nullptr, const TileRetryTimes& times = {});
    /// Doesn't wait for what is under way; BackgroundThread::wait(), called by whoever ends the program before the
    /// application object goes, does.
    ~TileLoader() override;

    /// The tiles that would be shown, the most urgent first; those that were delivered before and that nobody holds any
    /// more may be named again. Replaces what was wanted before.
    void setWanted(std::vector<TileKey> keys);
    State state() const { return m_state; }
    /// The deepest level there is; 19 until the source has said.
    int maxZoom() const { return m_maxZoom; }
    /// Plain text; empty when there is nothing to say.
    const QString& attribution() const { return m_attribution; }

Q_SIGNALS:
    /// Of any size up to 1024x1024, in a format that paints fast. Also for a tile that isn't wanted any more.
    void tileDidLoad(const cardreel::TileKey& key, const QImage& image);
    /// There is no such tile.
    void tileIsMissing(const cardreel::TileKey& key);
    /// State, deepest level or attribution changed.
    void stateDidChange();

private:
    void customEvent(QEvent* event) override;

    State m_state = State::Working;
    int m_maxZoom = 19;
    QString m_attribution;
    std::shared_ptr<TileMailbox> m_mailbox;
    std::shared_ptr<TileThread> m_thread; ///< null without a location
    std::shared_ptr<TileWorker> m_worker; ///< lives and ends on that thread
};

} // namespace cardreel
