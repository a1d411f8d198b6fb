#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace cardreel {

/// One line of the system's table of mounts.
struct Mount
{
    quint32 id = 0;
    quint32 parentID = 0; ///< of the mount that this one lies on
    QString path;         ///< as in platform/files/Files.h
    QString device;       ///< what is mounted; not always a path
    quint64 number = 0;   ///< the device's, as stat() has it
    QByteArray root;      ///< the folder within the file system that is seen; "/" unless it is a bind mount
    QByteArray fileSystem;
    bool isReadOnly = false;

    bool operator==(const Mount&) const = default;
};

/// The lines of /proc/self/mountinfo, in its order; those that can't be understood are left out. Any thread.
std::vector<Mount> mountsFromTable(const QByteArray& mountinfo);

/// Those through which a card may be seen, each device once: left out are what no block device stands behind (also
/// network and program-made file systems), files mounted as devices, folders mounted elsewhere, what another mount
/// hides, and the system's own places. Any thread.
std::vector<Mount> mountsOfDevices(const std::vector<Mount>& mounts);

/// What the kernel tells of devices, for where nobody knows more. Any thread.
class DeviceTree
{
public:
    /// The folders are given by tests.
    explicit DeviceTree(QString systemFolder = QStringLiteral("/sys"),
                        QString uuidFolder = QStringLiteral("/dev/disk/by-uuid"));

    /// Whether the device or its medium is made to be taken out: a card, or a disk on a USB port.
    bool isRemovable(quint64 number) const;
    /// Of the device's file system; empty when it isn't known.
    QString uuid(const QString& device) const;

private:
    QString m_systemFolder;
    QString m_uuidFolder;
};

} // namespace cardreel
