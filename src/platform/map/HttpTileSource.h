#pragma once

#include "platform/map/HttpClient.h"
#include "platform/map/TileSource.h"

#include <QHash>
#include <QUrl>

#include <memory>
#include <utility>

namespace cardreel {

/// Tiles of a server, named by a URL template. Owned by whoever shows them; lives on one thread, with an event loop.
class HttpTileSource : public TileSource
{
public:
    /// Whether it is an http or https URL with {z}, {x} and {y} (or ${z} and so on) behind the host.
    static bool isTemplate(const QString& location);

    HttpTileSource(const QString& location, std::shared_ptr<HttpClient> client);
    ~HttpTileSource() override;

    std::optional<Held> atHand(const TileKey& key) override;
    void fetch(const TileKey& key, Answer answer) override;
    void cancel(const TileKey& key) override;
    void reject(const TileKey& key) override;
    int parallelFetches() const override { return m_client->parallel(); }
    int maxZoom() const override { return 19; }
    qint64 pauseMs() const override { return m_pauseMs; }
    QString attribution() const override { return {}; }

private:
    QUrl url(const TileKey& key) const;
    void didAnswer(const TileKey& key, const Answer& answer, const HttpClient::Answer& answered);

    const QString m_template;
    const std::shared_ptr<HttpClient> m_client;
    QHash<TileKey, HttpClient::Id> m_underway;
    std::pair<TileKey, QUrl> m_lastFound; ///< where a redirected tile came from
    qint64 m_pauseMs = 0;
};

} // namespace cardreel
