#include "platform/map/TileMailbox.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace cardreel {

TileMailbox::TileMailbox(QObject* receiver)
    : m_receiver(receiver)
{
}

bool TileMailbox::putWish(std::vector<TileKey> keys)
{
    const std::lock_guard lock(m_mutex);
    const bool isFirst = !m_wish;
    m_wish = Wish{std::move(keys), m_takenCount};
    return isFirst;
}

TileMailbox::Delivery TileMailbox::takeDelivery()
{
    const std::lock_guard lock(m_mutex);
    m_takenCount = m_putCount;
    return std::exchange(m_delivery, {});
}

void TileMailbox::close()
{
    const std::lock_guard lock(m_mutex);
    m_receiver = nullptr;
}

std::optional<TileMailbox::Wish> TileMailbox::takeWish()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_wish, {});
}

quint64 TileMailbox::put(Result result)
{
    const std::lock_guard lock(m_mutex);
    wake();
    m_delivery.results.push_back(std::move(result));
    return ++m_putCount;
}

void TileMailbox::put(Condition condition)
{
    const std::lock_guard lock(m_mutex);
    wake();
    m_delivery.condition = std::move(condition);
}

void TileMailbox::wake()
{
    // Posted under the lock, the event can't meet a receiver that is gone; its end removes the event. A plain event,
    // for of a call's parameters the thread sanitizer can't see that Qt hands them over safely.
    if (m_receiver && m_delivery.results.empty() && !m_delivery.condition)
        QCoreApplication::postEvent(m_receiver, new QEvent(QEvent::User));
}

} // namespace cardreel
