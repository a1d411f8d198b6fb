#include "platform/map/HttpClient.h"

#include "platform/map/HttpDate.h"

#include <QDateTime>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <algorithm>
#include <map>
#include <utility>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 longestRetryAfterMs = 86'400'000;

/// Seconds, or a date.
qint64 retryAfterMs(const QNetworkReply& reply)
{
    const QByteArray text = reply.rawHeader("Retry-After").trimmed();
    bool isNumber = false;
    qint64 seconds = text.toLongLong(&isNumber);
    if (!isNumber) {
        const QDateTime date = httpDate(text);
        seconds = date.isValid() ? QDateTime::currentDateTimeUtc().secsTo(date) : 0;
    }
    return std::clamp<qint64>(seconds, 0, longestRetryAfterMs / 1000) * 1000;
}

HttpClient::Answer answerOf(QNetworkReply& reply)
{
    HttpClient::Answer answer;
    answer.url = reply.url();
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    // Refusals are errors, too, but of those the status tells more.
    if (reply.error() != QNetworkReply::NoError && status < 400)
        return answer;
    answer.status = status;
    answer.body = reply.readAll();
    if (status == 429 || status == 503)
        answer.retryAfterMs = retryAfterMs(reply);
    return answer;
}

} // namespace

HttpClient::HttpClient(const QString& cacheFolder, const HttpLimits& limits)
    : m_limits(limits)
{
    if (cacheFolder.isEmpty())
        return;
    m_cache = new TileCache(cacheFolder);
    m_manager.setCache(m_cache);
}

HttpClient::~HttpClient()
{
    m_waiting.clear();
    for (const Id id : m_open.keys())
        drop(id);
}

std::shared_ptr<HttpClient> HttpClient::shared(const QString& cacheFolder)
{
    static thread_local std::map<QString, std::weak_ptr<HttpClient>> clients;
    std::weak_ptr<HttpClient>& known = clients[cacheFolder];
    std::shared_ptr<HttpClient> client = known.lock();
    if (!client) {
        client = std::make_shared<HttpClient>(cacheFolder);
        known = client;
    }
    return client;
}

HttpClient::Id HttpClient::get(const QUrl& url, Handler handler)
{
    m_waiting.push_back({++m_lastId, url, std::move(handler)});
    const Id id = m_lastId;
    startWaiting();
    return id;
}

void HttpClient::cancel(Id id)
{
    std::erase_if(m_waiting, [id](const Request& request) { return request.id == id; });
    drop(id);
    startWaiting();
}

void HttpClient::startWaiting()
{
    while (!m_waiting.empty() && m_open.size() < m_limits.parallel) {
        const Request request = std::move(m_waiting.front());
        m_waiting.pop_front();
        start(request);
    }
}

void HttpClient::start(const Request& request)
{
    QNetworkRequest asked(request.url);
    asked.setHeader(QNetworkRequest::UserAgentHeader, u"Cardreel/" CARDREEL_VERSION " (" CARDREEL_CONTACT ")"_s);
    // Pictures are packed already; so a packed answer that unpacks to gigabytes never comes up.
    asked.setRawHeader("Accept-Encoding", "identity");
    asked.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    asked.setMaximumRedirectsAllowed(m_limits.redirects);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        asked.setAttribute(attribute, QNetworkRequest::Manual);
    asked.setTransferTimeout(m_limits.silenceMs);

    QNetworkReply* const reply = m_manager.get(asked);
    m_open.insert(request.id, reply);
    QTimer::singleShot(m_limits.totalMs, reply, &QNetworkReply::abort);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, limit = m_limits.bytes] {
        if (reply->bytesAvailable() > limit)
            reply->abort();
    });
    QObject::connect(reply, &QNetworkReply::finished, &m_manager,
                     [this, id = request.id, handler = request.handler] { didFinish(id, handler); });
}

void HttpClient::didFinish(Id id, const Handler& handler)
{
    QNetworkReply* const reply = m_open.take(id);
    reply->deleteLater();
    const Answer answer = answerOf(*reply);
    startWaiting();
    handler(answer);
}

void HttpClient::drop(Id id)
{
    QNetworkReply* const reply = m_open.take(id);
    if (!reply)
        return;
    reply->disconnect(&m_manager);
    reply->abort();
    reply->deleteLater();
}

} // namespace cardreel
