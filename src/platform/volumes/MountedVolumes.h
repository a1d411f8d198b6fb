#pragma once

#include "platform/NewestJob.h"
#include "platform/volumes/MountTable.h"
#include "platform/volumes/MountedVolume.h"
#include "platform/volumes/UDisks.h"

#include <QDBusConnection>
#include <QFile>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QSocketNotifier;

namespace cardreel {

/// The removable volumes that are mounted, as they come and go. The kernel's table says what is mounted; what is
/// removable UDisks2 knows, and the kernel where that doesn't answer. No volume is waited for: one that hangs has no
/// size, and the others do. Interface thread.
class MountedVolumes : public QObject
{
    Q_OBJECT

public:
    struct Space
    {
        qint64 bytesTotal = -1;
        qint64 bytesFree = -1;
    };
    /// Where it looks, for tests.
    struct Surroundings
    {
        QString mountTable = QStringLiteral("/proc/self/mountinfo");
        DeviceTree devices;
        QDBusConnection bus = QDBusConnection::systemBus();
        /// Called in the background; may take as long as the volume does.
        std::function<std::optional<Space>(const QString& rootPath)> space = spaceOf;
    };

    explicit MountedVolumes(QObject* parent = nullptr);
    explicit MountedVolumes(Surroundings surroundings, QObject* parent = nullptr);
    ~MountedVolumes() override;

    /// In the order in which they were mounted.
    std::vector<MountedVolume> volumes() const;

    /// Looks again, and asks for the sizes, which change unannounced.
    void refresh();

    /// What the file system says; nothing when it can't. Waits for the volume; any thread.
    static std::optional<Space> spaceOf(const QString& rootPath);

Q_SIGNALS:
    /// A volume came, went or was named anew, or a size is known.
    void didChange();
    /// A volume is mounted under another path than before. Before didChange().
    void didMove(const QString& from, const QString& to);

private:
    struct Entry
    {
        MountedVolume volume;
        std::unique_ptr<NewestJob> spaceJob; ///< one for each, so that none waits for another's volume
    };

    void watchTable();
    void look();
    std::optional<MountedVolume> volumeOf(const Mount& mount) const;
    void setVolumes(const std::vector<MountedVolume>& found);
    void askForSpace(Entry& entry);
    void setSpace(const QString& rootPath, const Space& space);

    Surroundings m_surroundings;
    QFile m_table;
    std::unique_ptr<QSocketNotifier> m_notifier; ///< of m_table
    UDisks m_disks;
    VolumeMoves m_moves;
    std::vector<Entry> m_entries;
};

} // namespace cardreel
