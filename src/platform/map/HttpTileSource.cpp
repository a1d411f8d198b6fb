#include "platform/map/HttpTileSource.h"

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

QUrl filledIn(QString location, const TileKey& key)
{
    for (const auto& [name, number] : {std::pair{"{z}"_L1, key.z}, {"{x}"_L1, key.x}, {"{y}"_L1, key.y}}) {
        const QString text = QString::number(number);
        location.replace(u'$' + name, text).replace(name, text);
    }
    return QUrl(location, QUrl::StrictMode);
}

TileSource::Status statusOf(const HttpClient::Answer& answer)
{
    switch (answer.status) {
    case 200:
        return TileSource::Status::Found;
    case 204: // how some servers answer for the sea
    case 404:
    case 410:
        return TileSource::Status::Missing;
    default:
        return TileSource::Status::Failed;
    }
}

} // namespace

bool HttpTileSource::isTemplate(const QString& location)
{
    // Each part must make a difference, and none may be the server's name.
    const QUrl base = filledIn(location, {1, 1, 1});
    for (const TileKey& key : {TileKey{2, 1, 1}, TileKey{1, 2, 1}, TileKey{1, 1, 2}}) {
        const QUrl url = filledIn(location, key);
        if (url == base || url.authority() != base.authority())
            return false;
    }
    // A password in the settings would end in the cache's files and in logs of others.
    return base.isValid() && (base.scheme() == "http"_L1 || base.scheme() == "https"_L1) && !base.host().isEmpty() &&
           base.userInfo().isEmpty();
}

HttpTileSource::HttpTileSource(const QString& location, std::shared_ptr<HttpClient> client)
    : m_template(location)
    , m_client(std::move(client))
{
}

HttpTileSource::~HttpTileSource()
{
    for (const HttpClient::Id id : std::as_const(m_underway))
        m_client->cancel(id);
}

std::optional<TileSource::Held> HttpTileSource::atHand(const TileKey& key)
{
    return m_client->cache() ? m_client->cache()->find(url(key)) : std::nullopt;
}

void HttpTileSource::fetch(const TileKey& key, Answer answer)
{
    cancel(key);
    m_underway.insert(key, m_client->get(url(key), [this, key, answer = std::move(answer)](const auto& answered) {
        didAnswer(key, answer, answered);
    }));
}

void HttpTileSource::didAnswer(const TileKey& key, const Answer& answer, const HttpClient::Answer& answered)
{
    m_underway.remove(key);
    m_pauseMs = answered.retryAfterMs;
    m_lastFound = {key, answered.url};
    const Status status = statusOf(answered);
    if (status == Status::Missing)
        reject(key);
    answer(status, status == Status::Found ? answered.body : QByteArray());
}

void HttpTileSource::cancel(const TileKey& key)
{
    const auto found = m_underway.constFind(key);
    if (found == m_underway.cend())
        return;
    const HttpClient::Id id = *found;
    m_underway.erase(found);
    m_client->cancel(id);
}

void HttpTileSource::reject(const TileKey& key)
{
    if (!m_client->cache())
        return;
    m_client->cache()->discard(url(key));
    if (m_lastFound.first == key)
        m_client->cache()->discard(m_lastFound.second);
}

QUrl HttpTileSource::url(const TileKey& key) const
{
    return filledIn(m_template, key);
}

} // namespace cardreel
