#include "app/CardWatch.h"

#include "media/CardLayout.h"
#include "platform/files/Files.h"

namespace cardreel {

namespace {

constexpr int intervalMs = 2000;

} // namespace

CardWatch::CardWatch(QObject* parent)
    : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &CardWatch::look);
}

void CardWatch::setCard(const QString& rootPath)
{
    m_rootPath = rootPath;
    m_isGone = false;
    m_timer.start(intervalMs);
}

void CardWatch::look()
{
    const bool isThere = files::isFolder(m_rootPath);
    if (isThere && m_isGone && CardLayout::mediaIsAvailable(m_rootPath)) {
        m_isGone = false;
        Q_EMIT returned(QString(m_rootPath));
    } else if (!isThere && !m_isGone) {
        m_isGone = true;
        Q_EMIT removed();
    }
}

} // namespace cardreel
