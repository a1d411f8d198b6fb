#include "settings/SettingStore.h"

#include "platform/files/Files.h"
#include "settings/SettingFileBuilder.h"
#include "settings/SettingFileParser.h"

#include <QCryptographicHash>
#include <QLoggingCategory>

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

Q_LOGGING_CATEGORY(lcSettings, "cardreel.settings")

struct FileRead
{
    SettingCardState::File identity;
    std::optional<QByteArray> bytes; ///< nothing when it couldn't be read
    QString error;
};

FileRead readFile(const QString& path)
{
    FileRead result;
    struct stat found
    {
    };
    if (stat(files::nativePath(path).constData(), &found) != 0) {
        result.error = QString::fromLocal8Bit(std::strerror(errno));
        return result;
    }
    result.identity.exists = true;
    result.identity.size = static_cast<quint64>(found.st_size);
    result.identity.modifiedNs = found.st_mtim.tv_sec * 1'000'000'000LL + found.st_mtim.tv_nsec;
    const auto file = files::openForReading(path, &result.error);
    if (!file)
        return result;
    if (file->size() > SettingStore::largestFile) {
        result.error = u"it is too large for a settings file"_s;
        return result;
    }
    const QByteArray bytes = file->read(SettingStore::largestFile);
    if (file->error() != QFileDevice::NoError) {
        result.error = file->errorString();
        return result;
    }
    result.identity.hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    result.bytes = bytes;
    return result;
}

QString systemFolder(const QString& root)
{
    return files::join(root, u"SYSTEM/"_s);
}

/// Where the path leads, links followed; empty when it leads nowhere.
QByteArray realPath(const QByteArray& path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.constData(), nullptr), &std::free);
    return QByteArray(real.get());
}

bool liesWithin(const QByteArray& path, const QByteArray& folder)
{
    return path.startsWith(folder.endsWith('/') ? folder : folder + '/');
}

/// The file that has to be replaced, in `target`; otherwise why it can't be. A link is followed and stays: in a copied
/// card it leads to where its owner keeps the file. Not out of the card, though, where a card that somebody prepared
/// could have any of the user's files replaced.
std::optional<QString> findTarget(const QString& root, QByteArray& target)
{
    const QByteArray realRoot = realPath(files::nativePath(root));
    const QByteArray folder = realPath(files::nativePath(systemFolder(root)));
    if (realRoot.isEmpty() || folder.isEmpty())
        return u"the card has no folder SYSTEM"_s;
    target = folder + "/settings.bin";
    struct stat found
    {
    };
    if (lstat(target.constData(), &found) == 0) {
        target = realPath(target);
        if (target.isEmpty())
            return u"it is a link that leads nowhere"_s;
        if (stat(target.constData(), &found) != 0 || !S_ISREG(found.st_mode))
            return S_ISDIR(found.st_mode) ? u"it is a folder"_s : u"it is no regular file"_s;
        // Replacing a file asks for no permission to write it.
        if (files::isLocked(files::fromNativePath(target)))
            return u"it is locked"_s;
    }
    if (!liesWithin(target, realRoot))
        return u"it is a link that leads out of the card"_s;
    return std::nullopt;
}

/// It would be read in place of what was just written.
void removeBackup(const QString& root, FileSteps& steps)
{
    const QByteArray path = files::nativePath(SettingStore::oldPath(root));
    const bool isRemoved = steps.remove(path) == 0;
    if (isRemoved && steps.syncFolder(files::nativePath(systemFolder(root))) == 0)
        return;
    const int reason = errno; // asking whether it is to be logged changes it
    if (isRemoved || reason != ENOENT)
        qCWarning(lcSettings, "%s: %s", path.constData(), std::strerror(reason));
}

} // namespace

bool SettingCardState::File::operator==(const File& other) const
{
    if (!hash.isEmpty() && !other.hash.isEmpty())
        return hash == other.hash;
    return exists == other.exists && size == other.size && modifiedNs == other.modifiedNs;
}

QString SettingStore::binPath(const QString& fileRootPath)
{
    return systemFolder(fileRootPath) + u"settings.bin"_s;
}

QString SettingStore::oldPath(const QString& fileRootPath)
{
    return systemFolder(fileRootPath) + u"settings.old"_s;
}

bool SettingStore::importUnitSettingInfo(SettingFileInfo& info, const QString& fileRootPath)
{
    const SettingLoad result = load(fileRootPath);
    if (result.info)
        info = *result.info;
    return result.info.has_value();
}

SettingLoad SettingStore::load(const QString& fileRootPath)
{
    const FileRead bin = readFile(binPath(fileRootPath));
    const FileRead old = readFile(oldPath(fileRootPath));
    SettingLoad result;
    result.state = {bin.identity, old.identity};
    if (!bin.identity.exists && !old.identity.exists) {
        result.error = u"the card has no settings file"_s;
        return result;
    }
    // The backup comes first: it is what was good before somebody began to write the other.
    const FileRead& chosen = old.identity.exists ? old : bin;
    result.source = old.identity.exists ? oldPath(fileRootPath) : binPath(fileRootPath);
    result.error = chosen.error;
    if (!chosen.bytes)
        return result;
    SettingFileParser parser(*chosen.bytes);
    if (parser.parse())
        result.info = parser.info();
    else
        result.error = u"it is too short for a settings file"_s;
    return result;
}

SettingCardState SettingStore::state(const QString& fileRootPath)
{
    return {readFile(binPath(fileRootPath)).identity, readFile(oldPath(fileRootPath)).identity};
}

bool SettingStore::exportUnitSettingInfo(const SettingFileInfo& info, const QString& rootFilePath)
{
    return !save(info, rootFilePath, {});
}

std::optional<QString> SettingStore::save(const SettingFileInfo& info, const QString& rootFilePath,
                                          const Surroundings& surroundings)
{
    FileSteps system;
    FileSteps& steps = surroundings.steps ? *surroundings.steps : system;
    const QByteArray bytes = SettingFileBuilder(info, surroundings.clock).build();
    if (bytes.isEmpty())
        return u"there is nothing to write"_s;
    QByteArray target;
    if (auto problem = findTarget(rootFilePath, target))
        return problem;
    QString error;
    if (!replaceFile(target, bytes, steps, error))
        return error;
    removeBackup(rootFilePath, steps);
    return std::nullopt;
}

} // namespace cardreel
