#include "platform/map/TileLoader.h"

#include "platform/map/TileMailbox.h"
#include "platform/map/TileThread.h"
#include "platform/map/TileWorker.h"

#include <QPointer>

#include <utility>

namespace cardreel {

TileLoader::TileLoader(const TileSettings& settings, QObject* parent, const TileRetryTimes& times)
    : QObject(parent)
    , m_attribution(settings.attribution)
    , m_mailbox(std::make_shared<TileMailbox>(this))
{
    if (settings.location.isEmpty())
        return;
    m_thread = TileThread::shared();
    m_worker = std::make_shared<TileWorker>(settings, times, m_mailbox);
    m_thread->post([worker = m_worker] { worker->start(); });
}

TileLoader::~TileLoader()
{
    m_mailbox->close();
    if (!m_thread)
        return;
    // The job that ends the worker holds the last reference: those before it have run by then.
    m_thread->post([worker = std::exchange(m_worker, nullptr)]() mutable { worker = nullptr; });
}

void TileLoader::setWanted(std::vector<TileKey> keys)
{
    if (m_worker && m_mailbox->putWish(std::move(keys)))
        m_thread->post([worker = m_worker] { worker->takeWish(); });
}

void TileLoader::customEvent(QEvent*)
{
    TileMailbox::Delivery delivery = m_mailbox->takeDelivery();
    const QPointer<TileLoader> self(this);
    if (delivery.condition) {
        m_state = delivery.condition->state;
        m_maxZoom = delivery.condition->maxZoom;
        m_attribution = delivery.condition->attribution;
        Q_EMIT stateDidChange();
    }
    for (const TileMailbox::Result& result : delivery.results) {
        // A receiver may put another loader in this one's place.
        if (!self)
            return;
        if (result.image.isNull())
            Q_EMIT tileIsMissing(result.key);
        else
            Q_EMIT tileDidLoad(result.key, result.image);
    }
}

} // namespace cardreel
