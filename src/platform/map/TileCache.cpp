#include "platform/map/TileCache.h"

#include "platform/map/HttpDate.h"

#include <QDateTime>
#include <QIODevice>
#include <QNetworkRequest>

#include <algorithm>
#include <chrono>
#include <memory>

namespace cardreel {
namespace {

// For servers that say nothing. Tiles change slowly, and asking at each sight would be a burden to them.
constexpr std::chrono::seconds ownLifetime = std::chrono::days(7);
constexpr std::chrono::seconds longestLifetime = std::chrono::days(365);

QByteArray header(const QNetworkCacheMetaData& metaData, const char* name)
{
    for (const auto& [key, value] : metaData.rawHeaders()) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

std::optional<qint64> maxAge(const QByteArray& cacheControl)
{
    for (const QByteArray& part : cacheControl.toLower().split(',')) {
        const QByteArray directive = part.trimmed();
        if (directive.startsWith("max-age="))
            return std::clamp<qint64>(directive.mid(8).replace('"', "").toLongLong(), 0, longestLifetime.count());
    }
    return {};
}

/// Until when an answer that came now may be used without asking.
QDateTime expiry(const QNetworkCacheMetaData& metaData, const QDateTime& now)
{
    const QByteArray expires = header(metaData, "Expires");
    const QByteArray cacheControl = header(metaData, "Cache-Control");
    qint64 lifetime = ownLifetime.count();
    if (cacheControl.toLower().contains("no-cache")) {
        lifetime = 0;
    } else if (const std::optional<qint64> age = maxAge(cacheControl)) {
        lifetime = *age;
    } else if (!expires.isEmpty()) {
        // What isn't a date has passed: so servers spell "at once" (Expires: 0).
        const QDateTime sent = httpDate(header(metaData, "Date"));
        const QDateTime end = httpDate(expires);
        lifetime = end.isValid() ? (sent.isValid() ? sent : now).secsTo(end) : 0;
    }
    lifetime -= std::clamp<qint64>(header(metaData, "Age").toLongLong(), 0, longestLifetime.count());
    return now.addSecs(std::min<qint64>(lifetime, longestLifetime.count()));
}

// Kept here instead of in expirationDate(), which is left in the past: the network classes then ask the server whenever
// they are asked themselves. Their own reckoning takes "no-cache" for nothing and the second of the end for fresh,
// "must-revalidate" for never fresh, and leaves out the time that an answer has spent in caches on its way.
constexpr auto expiryAttribute = QNetworkRequest::User;

bool mayBeUsedOld(const QNetworkCacheMetaData& metaData)
{
    return !header(metaData, "Cache-Control").toLower().contains("must-revalidate");
}

} // namespace

TileCache::TileCache(const QString& folder)
{
    setCacheDirectory(folder);
    setMaximumCacheSize(largestBytes);
}

std::optional<TileSource::Held> TileCache::find(const QUrl& url)
{
    const QNetworkCacheMetaData found = metaData(url);
    if (!found.isValid())
        return {};
    const bool isCurrent = QDateTime::currentDateTimeUtc() < found.attributes().value(expiryAttribute).toDateTime();
    const std::unique_ptr<QIODevice> device(isCurrent || mayBeUsedOld(found) ? data(url) : nullptr);
    if (!device)
        return {};
    return TileSource::Held{device->readAll(), isCurrent};
}

void TileCache::discard(const QUrl& url)
{
    QNetworkDiskCache::remove(url);
}

QIODevice* TileCache::prepare(const QNetworkCacheMetaData& metaData)
{
    if (metaData.attributes().value(QNetworkRequest::HttpStatusCodeAttribute).toInt() != 200)
        return nullptr;
    if (!metaData.saveToDisk()) {
        discard(metaData.url()); // the server changed its mind
        return nullptr;
    }
    QNetworkCacheMetaData kept = metaData;
    QNetworkCacheMetaData::AttributesMap attributes = metaData.attributes();
    attributes.insert(expiryAttribute, expiry(metaData, QDateTime::currentDateTimeUtc()));
    kept.setAttributes(attributes);
    kept.setExpirationDate(QDateTime::fromSecsSinceEpoch(0, Qt::UTC));
    QIODevice* const device = QNetworkDiskCache::prepare(kept);
    if (device)
        m_inserting.insert(device, metaData.url());
    return device;
}

void TileCache::insert(QIODevice* device)
{
    m_inserting.remove(device);
    QNetworkDiskCache::insert(device);
}

bool TileCache::remove(const QUrl& url)
{
    const bool isInserting = m_inserting.removeIf([&url](const auto& entry) { return entry.value() == url; }) > 0;
    return isInserting && QNetworkDiskCache::remove(url);
}

} // namespace cardreel
