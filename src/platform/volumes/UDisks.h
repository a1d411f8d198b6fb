#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QHash>
#include <QMap>
#include <QObject>
#include <QString>
#include <QVariantMap>

namespace cardreel {

/// What the system's service of disks, UDisks2, tells of block devices, kept up to date. Asks and is answered without
/// waiting. Owned by MountedVolumes; interface thread.
class UDisks : public QObject
{
    Q_OBJECT

public:
    struct Block
    {
        QString label; ///< empty when it has none
        QString uuid;  ///< likewise
        bool isRemovable = false;

        bool operator==(const Block&) const = default;
    };
    using Blocks = QHash<quint64, Block>; ///< by the device's number, as stat() has it
    using Properties = QMap<QString, QVariantMap>;
    using Objects = QMap<QDBusObjectPath, Properties>;

    explicit UDisks(const QDBusConnection& bus, QObject* parent = nullptr);

    /// Empty until the service has answered, and when there is none.
    const Blocks& blocks() const { return m_blocks; }

    /// From the service's own list of its objects.
    static Blocks blocksOf(const Objects& objects);

Q_SIGNALS:
    void didChange();

private Q_SLOTS:
    void ask();
    void forget();

private:
    void setBlocks(const Blocks& blocks);

    QDBusConnection m_bus;
    Blocks m_blocks;
    bool m_isAsking = false;
    bool m_isOutdated = false; ///< what is being asked
};

} // namespace cardreel
