#include "platform/volumes/MountTable.h"

#include "platform/files/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/sysmacros.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

/// Blanks and the like are written as a backslash and three octal digits.
QByteArray unescaped(const QByteArray& field)
{
    QByteArray result;
    for (qsizetype i = 0; i < field.size(); ++i) {
        bool isNumber = false;
        const int byte = field.at(i) == '\\' ? field.mid(i + 1, 3).toInt(&isNumber, 8) : 0;
        if (isNumber && i + 3 < field.size() && byte >= 0 && byte <= 0xFF) {
            result += static_cast<char>(byte);
            i += 3;
        } else {
            result += field.at(i);
        }
    }
    return result;
}

std::optional<quint64> deviceNumber(const QByteArray& field)
{
    const QByteArrayList parts = field.split(':');
    if (parts.size() != 2)
        return std::nullopt;
    bool isMajor = false;
    bool isMinor = false;
    const uint major = parts[0].toUInt(&isMajor);
    const uint minor = parts[1].toUInt(&isMinor);
    return isMajor && isMinor ? std::optional<quint64>(makedev(major, minor)) : std::nullopt;
}

bool isReadOnly(const QByteArray& options)
{
    return options.split(',').contains("ro");
}

/// Number, parent, major:minor, root, path, options, any number of tags, "-", type, source, options of the whole.
std::optional<Mount> mountFromLine(const QByteArray& line)
{
    const QByteArrayList fields = line.split(' ');
    const qsizetype separator = fields.indexOf("-", 6);
    if (separator < 0 || separator + 3 >= fields.size())
        return std::nullopt;
    const auto number = deviceNumber(fields[2]);
    if (!number)
        return std::nullopt;
    Mount mount;
    mount.id = fields[0].toUInt();
    mount.parentID = fields[1].toUInt();
    mount.path = files::fromNativePath(unescaped(fields[4]));
    mount.device = files::fromNativePath(unescaped(fields[separator + 2]));
    mount.number = *number;
    mount.root = unescaped(fields[3]);
    mount.fileSystem = fields[separator + 1];
    mount.isReadOnly = isReadOnly(fields[5]) || isReadOnly(fields[separator + 3]);
    return mount;
}

bool isWithin(const QString& path, QStringView folder)
{
    return path.startsWith(folder) && (path.size() == folder.size() || path.at(folder.size()) == u'/');
}

/// Where no card is mounted by anybody who wants to see it; a live system runs from a removable disk.
bool isSystemsOwn(const QString& path)
{
    static constexpr std::array<QStringView, 6> places = {u"/boot", u"/efi", u"/snap", u"/var/lib", u"/nix", u"/usr"};
    return path == u"/" || std::any_of(places.begin(), places.end(), [&](QStringView p) { return isWithin(path, p); });
}

bool mayShowCard(const Mount& mount)
{
    return mount.device.startsWith(u"/dev/") && !mount.device.startsWith(u"/dev/loop") && mount.root == "/" &&
           !mount.fileSystem.startsWith("fuse.") && !isSystemsOwn(mount.path);
}

QByteArray firstLine(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readLine(64).trimmed() : QByteArray();
}

} // namespace

std::vector<Mount> mountsFromTable(const QByteArray& mountinfo)
{
    std::vector<Mount> mounts;
    for (const QByteArray& line : mountinfo.split('\n')) {
        if (auto mount = mountFromLine(line))
            mounts.push_back(std::move(*mount));
    }
    return mounts;
}

std::vector<Mount> mountsOfDevices(const std::vector<Mount>& mounts)
{
    std::vector<Mount> result;
    for (const Mount& mount : mounts) {
        const auto hides = [&](const Mount& other) { return other.parentID == mount.id && other.path == mount.path; };
        const auto isOfSameDevice = [&](const Mount& earlier) { return earlier.number == mount.number; };
        if (mayShowCard(mount) && std::none_of(mounts.begin(), mounts.end(), hides) &&
            std::none_of(result.begin(), result.end(), isOfSameDevice))
            result.push_back(mount);
    }
    return result;
}

DeviceTree::DeviceTree(QString systemFolder, QString uuidFolder)
    : m_systemFolder(std::move(systemFolder))
    , m_uuidFolder(std::move(uuidFolder))
{
}

bool DeviceTree::isRemovable(quint64 number) const
{
    const QString link = u"%1/dev/block/%2:%3"_s.arg(m_systemFolder).arg(major(number)).arg(minor(number));
    QString disk = QFileInfo(link).canonicalFilePath();
    if (disk.isEmpty())
        return false;
    if (QFile::exists(disk + u"/partition"_s))
        disk = files::folderOf(disk);
    // A reader that is built in calls itself fixed, and so does a disk on a USB port.
    return firstLine(disk + u"/removable"_s) == "1" || firstLine(disk + u"/device/type"_s) == "SD" ||
           disk.contains(u"/usb");
}

QString DeviceTree::uuid(const QString& device) const
{
    const QDir folder(m_uuidFolder);
    for (const QString& name : folder.entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot)) {
        if (QFileInfo(folder.filePath(name)).canonicalFilePath() == device)
            return name;
    }
    return {};
}

} // namespace cardreel
