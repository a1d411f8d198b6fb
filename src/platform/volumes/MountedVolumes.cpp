#include "platform/volumes/MountedVolumes.h"

#include "platform/files/Files.h"

#include <QSocketNotifier>

#include <sys/statvfs.h>

#include <algorithm>
#include <utility>

namespace cardreel {

MountedVolumes::MountedVolumes(QObject* parent)
    : MountedVolumes(Surroundings(), parent)
{
}

MountedVolumes::MountedVolumes(Surroundings surroundings, QObject* parent)
    : QObject(parent)
    , m_surroundings(std::move(surroundings))
    , m_disks(m_surroundings.bus)
{
    connect(&m_disks, &UDisks::didChange, this, &MountedVolumes::look);
    watchTable();
    look();
}

MountedVolumes::~MountedVolumes() = default;

void MountedVolumes::watchTable()
{
    // The table is no ordinary file: each change of it is an exceptional condition of whoever has it open.
    m_table.setFileName(m_surroundings.mountTable);
    if (!m_table.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_table.handle(), QSocketNotifier::Exception);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &MountedVolumes::look);
}

void MountedVolumes::look()
{
    QFile table(m_surroundings.mountTable);
    std::vector<MountedVolume> found;
    if (table.open(QIODevice::ReadOnly)) {
        for (const Mount& mount : mountsOfDevices(mountsFromTable(table.readAll()))) {
            if (auto volume = volumeOf(mount))
                found.push_back(std::move(*volume));
        }
    }
    setVolumes(found);
}

std::optional<MountedVolume> MountedVolumes::volumeOf(const Mount& mount) const
{
    const auto block = m_disks.blocks().constFind(mount.number);
    const bool isKnown = block != m_disks.blocks().constEnd();
    if (!(isKnown ? block->isRemovable : m_surroundings.devices.isRemovable(mount.number)))
        return std::nullopt;
    MountedVolume volume;
    volume.name = isKnown && !block->label.isEmpty() ? block->label : files::nameOf(mount.path);
    volume.rootPath = mount.path;
    volume.device = mount.device;
    volume.uuid = isKnown ? block->uuid : m_surroundings.devices.uuid(mount.device);
    volume.isReadOnly = mount.isReadOnly;
    return volume;
}

void MountedVolumes::setVolumes(const std::vector<MountedVolume>& found)
{
    const std::vector<MountedVolume> before = volumes();
    std::vector<Entry> entries;
    for (const MountedVolume& volume : found) {
        const auto former = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
            return entry.volume.rootPath == volume.rootPath && entry.volume.device == volume.device &&
                   entry.volume.uuid == volume.uuid;
        });
        const bool isNew = former == m_entries.end();
        Entry entry{volume, isNew ? std::make_unique<NewestJob>() : std::move(former->spaceJob)};
        if (isNew) {
            askForSpace(entry);
        } else {
            entry.volume.bytesTotal = former->volume.bytesTotal;
            entry.volume.bytesFree = former->volume.bytesFree;
        }
        entries.push_back(std::move(entry));
    }
    m_entries = std::move(entries);
    for (const VolumeMoves::Move& move : m_moves.update(found))
        Q_EMIT didMove(move.from, move.to);
    if (volumes() != before)
        Q_EMIT didChange();
}

std::vector<MountedVolume> MountedVolumes::volumes() const
{
    std::vector<MountedVolume> result;
    for (const Entry& entry : m_entries)
        result.push_back(entry.volume);
    return result;
}

void MountedVolumes::refresh()
{
    look();
    for (Entry& entry : m_entries)
        askForSpace(entry);
}

void MountedVolumes::askForSpace(Entry& entry)
{
    entry.spaceJob->start([this, ask = m_surroundings.space, path = entry.volume.rootPath] {
        // Answers reach `this` only while the entry is there.
        return [this, path, space = ask(path)] { setSpace(path, space.value_or(Space())); };
    });
}

void MountedVolumes::setSpace(const QString& rootPath, const Space& space)
{
    const auto entry =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& e) { return e.volume.rootPath == rootPath; });
    if (entry == m_entries.end() ||
        (entry->volume.bytesTotal == space.bytesTotal && entry->volume.bytesFree == space.bytesFree))
        return;
    entry->volume.bytesTotal = space.bytesTotal;
    entry->volume.bytesFree = space.bytesFree;
    Q_EMIT didChange();
}

std::optional<MountedVolumes::Space> MountedVolumes::spaceOf(const QString& rootPath)
{
    struct statvfs found
    {
    };
    if (statvfs(files::nativePath(rootPath).constData(), &found) != 0)
        return std::nullopt;
    return Space{static_cast<qint64>(found.f_blocks * found.f_frsize),
                 static_cast<qint64>(found.f_bavail * found.f_frsize)};
}

} // namespace cardreel
