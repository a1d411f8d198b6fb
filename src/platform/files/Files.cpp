#include "platform/files/Files.h"

#include <QStringList>
#include <QUtf8StringView>

#include <linux/stat.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace cardreel::files {

namespace {

constexpr char16_t strayBase = 0xDC00; // + the byte itself, 0x80 to 0xFF

bool isStray(QChar c)
{
    return c.unicode() >= strayBase + 0x80 && c.unicode() <= strayBase + 0xFF;
}

/// How many bytes of well-formed UTF-8 stand at `bytes[0]`; 0 when none do.
qsizetype sequenceLength(const char* bytes, qsizetype available)
{
    for (qsizetype length = 1; length <= std::min<qsizetype>(4, available); ++length) {
        if (QUtf8StringView(bytes, length).isValidUtf8())
            return length;
    }
    return 0;
}

Instant toInstant(const struct statx_timestamp& stamp)
{
    using namespace std::chrono;
    return Instant(floor<milliseconds>(seconds(stamp.tv_sec) + nanoseconds(stamp.tv_nsec)));
}

struct DirCloser
{
    void operator()(DIR* dir) const { closedir(dir); }
};
using Dir = std::unique_ptr<DIR, DirCloser>;

bool isDotEntry(const char* name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

/// Whether the entry is a folder, links followed; `isLink` says whether it is a link itself.
bool entryIsFolder(int folder, const dirent& entry, bool& isLink)
{
    unsigned char type = entry.d_type;
    struct stat found
    {
    };
    if (type == DT_UNKNOWN && fstatat(folder, entry.d_name, &found, AT_SYMLINK_NOFOLLOW) == 0)
        type = static_cast<unsigned char>(IFTODT(found.st_mode));
    isLink = type == DT_LNK;
    if (isLink)
        return fstatat(folder, entry.d_name, &found, 0) == 0 && S_ISDIR(found.st_mode);
    return type == DT_DIR;
}

/// One folder being read, and where its path ends in the walker's shared path buffer.
struct Level
{
    Dir dir;
    qsizetype pathLength;
};

} // namespace

QByteArray nativePath(const QString& path)
{
    QByteArray result;
    qsizetype from = 0;
    for (qsizetype i = 0; i < path.size(); ++i) {
        const bool isPair = i > 0 && path[i - 1].isHighSurrogate();
        if (isPair || !isStray(path[i]))
            continue;
        result += QStringView(path).sliced(from, i - from).toUtf8();
        result += static_cast<char>(path[i].unicode() - strayBase);
        from = i + 1;
    }
    return from == 0 ? path.toUtf8() : result + QStringView(path).sliced(from).toUtf8();
}

QString fromNativePath(const QByteArray& bytes)
{
    if (QUtf8StringView(bytes).isValidUtf8())
        return QString::fromUtf8(bytes);
    QString result;
    for (qsizetype i = 0; i < bytes.size();) {
        const qsizetype length = sequenceLength(bytes.constData() + i, bytes.size() - i);
        if (length > 0) {
            result += QString::fromUtf8(bytes.constData() + i, length);
            i += length;
        } else {
            result += QChar(static_cast<char16_t>(strayBase + static_cast<unsigned char>(bytes[i])));
            ++i;
        }
    }
    return result;
}

QString displayPath(const QString& path)
{
    QString result = path;
    for (qsizetype i = 0; i < result.size(); ++i) {
        if (isStray(result[i]) && !(i > 0 && result[i - 1].isHighSurrogate()))
            result[i] = QChar::ReplacementCharacter;
    }
    return result;
}

Status status(const QString& path)
{
    struct statx found
    {
    };
    Status result;
    if (statx(AT_FDCWD, nativePath(path).constData(), 0, STATX_BASIC_STATS | STATX_BTIME, &found) != 0)
        return result;
    result.exists = true;
    result.isFolder = S_ISDIR(found.stx_mode);
    result.size = found.stx_size;
    result.modified = toInstant(found.stx_mtime);
    if (found.stx_mask & STATX_BTIME)
        result.created = toInstant(found.stx_btime);
    return result;
}

bool exists(const QString& path)
{
    return access(nativePath(path).constData(), F_OK) == 0;
}

bool isFolder(const QString& path)
{
    return status(path).isFolder;
}

bool isLocked(const QString& path)
{
    struct statx found
    {
    };
    if (statx(AT_FDCWD, nativePath(path).constData(), 0, STATX_BASIC_STATS, &found) != 0)
        return false;
    const bool immutable = (found.stx_attributes & STATX_ATTR_IMMUTABLE) != 0;
    return immutable || (found.stx_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

std::optional<quint64> freeBytes(const QString& path)
{
    struct statvfs volume
    {
    };
    if (statvfs(nativePath(path).constData(), &volume) != 0)
        return std::nullopt;
    return static_cast<quint64>(volume.f_bavail) * volume.f_frsize;
}

std::vector<QString> names(const QString& folder)
{
    std::vector<QString> result;
    const Dir dir(opendir(nativePath(folder).constData()));
    while (dir) {
        const dirent* entry = readdir(dir.get());
        if (!entry)
            break;
        if (!isDotEntry(entry->d_name))
            result.push_back(fromNativePath(entry->d_name));
    }
    return result;
}

void walk(const QString& root, const std::function<void(const QString& relativePath, bool isFolder)>& visit)
{
    std::vector<Level> levels;
    QByteArray path;
    if (Dir top{opendir(nativePath(root).constData())})
        levels.push_back({std::move(top), 0});
    while (!levels.empty()) {
        DIR* dir = levels.back().dir.get();
        const dirent* entry = readdir(dir);
        if (!entry) {
            levels.pop_back();
            continue;
        }
        if (isDotEntry(entry->d_name))
            continue;
        path.truncate(levels.back().pathLength);
        path += entry->d_name;
        bool isLink = false;
        const bool folder = entryIsFolder(dirfd(dir), *entry, isLink);
        // A link can lead back up; what it leads to is on the card once already or isn't on it.
        if (folder && isLink)
            continue;
        visit(fromNativePath(path), folder);
        if (!folder)
            continue;
        const int opened = openat(dirfd(dir), entry->d_name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (opened < 0)
            continue;
        if (DIR* below = fdopendir(opened)) {
            path += '/';
            levels.push_back({Dir(below), path.size()});
        } else {
            ::close(opened);
        }
    }
}

bool isReadableFolder(const QString& path)
{
    return Dir(opendir(nativePath(path).constData())) != nullptr;
}

bool isSameFile(const QString& a, const QString& b)
{
    struct stat first
    {
    };
    struct stat second
    {
    };
    return stat(nativePath(a).constData(), &first) == 0 && stat(nativePath(b).constData(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

QString absolutePath(const QString& path)
{
    QString base;
    if (!path.startsWith(u'/')) {
        const std::unique_ptr<char, decltype(&std::free)> current(getcwd(nullptr, 0), &std::free);
        base = fromNativePath(current.get()) + u'/';
    }
    QStringList parts = (base + path).split(u'/', Qt::SkipEmptyParts);
    parts.removeAll(u"."_s);
    const QString absolute = u'/' + parts.join(u'/');
    if (!parts.contains(u".."_s))
        return absolute;
    // Behind a link, ".." isn't the folder before it in the text.
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(nativePath(absolute).constData(), nullptr),
                                                           &std::free);
    return real ? fromNativePath(real.get()) : absolute;
}

QString join(const QString& folder, const QString& relative)
{
    if (folder.isEmpty())
        return relative;
    if (relative.isEmpty())
        return folder;
    const bool folderEnds = folder.endsWith(u'/');
    const bool relativeBegins = relative.startsWith(u'/');
    if (folderEnds && relativeBegins)
        return folder + relative.sliced(1);
    return folderEnds || relativeBegins ? folder + relative : folder + u'/' + relative;
}

QString folderOf(const QString& path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash < 0 ? QString() : path.first(slash);
}

QString nameOf(const QString& path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

QString stemOf(const QString& path)
{
    const QString name = nameOf(path);
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot <= 0 ? name : name.first(dot);
}

QString extensionOf(const QString& path)
{
    return nameOf(path).sliced(stemOf(path).size()).mid(1).toLower();
}

std::unique_ptr<QFile> openForReading(const QString& path, QString* error)
{
    const auto fail = [error](int code) {
        if (error)
            *error = QString::fromLocal8Bit(std::strerror(code));
        return nullptr;
    };
    // Not blocking, so that a pipe somebody put on a card doesn't hang the program.
    const int opened = ::open(nativePath(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (opened < 0)
        return fail(errno);
    struct stat found
    {
    };
    if (fstat(opened, &found) != 0 || !S_ISREG(found.st_mode)) {
        ::close(opened);
        if (error)
            *error = S_ISDIR(found.st_mode) ? u"it is a folder"_s : u"it is no regular file"_s;
        return nullptr;
    }
    auto file = std::make_unique<QFile>();
    if (!file->open(opened, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(opened);
        return fail(EIO);
    }
    return file;
}

} // namespace cardreel::files
