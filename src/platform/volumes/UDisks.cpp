#include "platform/volumes/UDisks.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const QString service = u"org.freedesktop.UDisks2"_s;
const QString rootObject = u"/org/freedesktop/UDisks2"_s;
const QString objectManager = u"org.freedesktop.DBus.ObjectManager"_s;

bool isRemovableDrive(const QVariantMap& drive)
{
    const QString bus = drive[u"ConnectionBus"_s].toString();
    return drive[u"Removable"_s].toBool() || drive[u"MediaRemovable"_s].toBool() || bus == u"usb" || bus == u"sdio";
}

} // namespace

UDisks::UDisks(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
    , m_bus(bus)
{
    if (!m_bus.isConnected())
        return;
    qDBusRegisterMetaType<Properties>();
    qDBusRegisterMetaType<Objects>();
    m_bus.connect(service, rootObject, objectManager, u"InterfacesAdded"_s, this, SLOT(ask()));
    m_bus.connect(service, rootObject, objectManager, u"InterfacesRemoved"_s, this, SLOT(ask()));
    m_bus.connect(service, QString(), u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s, this, SLOT(ask()));
    auto* const watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &UDisks::ask);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &UDisks::forget);
    ask();
}

void UDisks::ask()
{
    // A card that comes in is many changes at once.
    m_isOutdated = m_isAsking;
    if (std::exchange(m_isAsking, true))
        return;
    const auto call = QDBusMessage::createMethodCall(service, rootObject, objectManager, u"GetManagedObjects"_s);
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        m_isAsking = false;
        const QDBusPendingReply<Objects> reply = *watcher;
        setBlocks(reply.isValid() ? blocksOf(reply.value()) : Blocks());
        if (m_isOutdated)
            ask();
    });
}

void UDisks::forget()
{
    setBlocks({});
}

void UDisks::setBlocks(const Blocks& blocks)
{
    if (m_blocks == blocks)
        return;
    m_blocks = blocks;
    Q_EMIT didChange();
}

UDisks::Blocks UDisks::blocksOf(const Objects& objects)
{
    Blocks blocks;
    for (const Properties& interfaces : objects) {
        const QVariantMap block = interfaces.value(u"org.freedesktop.UDisks2.Block"_s);
        if (block.isEmpty())
            continue;
        const auto drivePath = block[u"Drive"_s].value<QDBusObjectPath>();
        const QVariantMap drive = objects.value(drivePath).value(u"org.freedesktop.UDisks2.Drive"_s);
        const QString hint = block[u"HintName"_s].toString();
        Block result;
        result.label = hint.isEmpty() ? block[u"IdLabel"_s].toString() : hint;
        result.uuid = block[u"IdUUID"_s].toString();
        result.isRemovable =
            isRemovableDrive(drive) && !block[u"HintIgnore"_s].toBool() && !block[u"HintSystem"_s].toBool();
        blocks.insert(block[u"DeviceNumber"_s].toULongLong(), result);
    }
    return blocks;
}

} // namespace cardreel
