#pragma once

#include "platform/map/TileCache.h"

#include <QHash>
#include <QNetworkAccessManager>
#include <QUrl>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace cardreel {

/// What is asked of a server, and put up with, at most.
struct HttpLimits
{
    int parallel = 2;
    int silenceMs = 15'000; ///< nothing comes
    int totalMs = 60'000;   ///< something comes, too slowly
    qint64 bytes = 1 << 20;
    int redirects = 5;
};

/// Fetches small files by HTTP for all map sources of a thread together, politely: a few at a time, under the
/// program's own name, through the cache, without cookies or passwords, and never on from https to http. Owned by the
/// sources; lives on their thread.
class HttpClient
{
public:
    struct Answer
    {
        int status = 0; ///< as HTTP counts; 0 when there is no whole answer
        QByteArray body;
        QUrl url;                ///< after redirects
        qint64 retryAfterMs = 0; ///< asked for by the server
    };
    using Handler = std::function<void(const Answer&)>;
    using Id = quint64;

    /// Without a cache for an empty folder.
    explicit HttpClient(const QString& cacheFolder, const HttpLimits& limits = {});
    /// What is under way is given up without an answer.
    ~HttpClient();
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    /// This thread's one for the folder.
    static std::shared_ptr<HttpClient> shared(const QString& cacheFolder);

    /// Answers later, once, unless cancelled.
    Id get(const QUrl& url, Handler handler);
    void cancel(Id id);

    TileCache* cache() { return m_cache; }
    int parallel() const { return m_limits.parallel; }

private:
    struct Request
    {
        Id id;
        QUrl url;
        Handler handler;
    };

    void startWaiting();
    void start(const Request& request);
    void didFinish(Id id, const Handler& handler);
    void drop(Id id);

    const HttpLimits m_limits;
    QNetworkAccessManager m_manager;
    TileCache* m_cache = nullptr; ///< the manager's
    std::deque<Request> m_waiting;
    QHash<Id, QNetworkReply*> m_open;
    Id m_lastId = 0;
};

} // namespace cardreel
