#pragma once

#include "platform/map/TileSource.h"

#include <QHash>
#include <QNetworkDiskCache>
#include <QUrl>

#include <optional>

namespace cardreel {

/// What tile servers sent, kept on disk for as long as they allow. Only whole answers with status 200 get in; and what
/// is in stays until something better comes, because an old tile is better than none without a network. Belongs to an
/// HttpClient, on its thread.
class TileCache : public QNetworkDiskCache
{
    Q_OBJECT

public:
    static constexpr qint64 largestBytes = qint64(256) << 20;

    explicit TileCache(const QString& folder);

    std::optional<TileSource::Held> find(const QUrl& url);
    void discard(const QUrl& url);

    QIODevice* prepare(const QNetworkCacheMetaData& metaData) override;
    void insert(QIODevice* device) override;
    /// Only drops what is about to be inserted. The network classes call this for refusals (403), too, and
    /// would take the old tile away just when it is needed.
    bool remove(const QUrl& url) override;

private:
    QHash<QIODevice*, QUrl> m_inserting;
};

} // namespace cardreel
