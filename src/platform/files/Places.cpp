#include "platform/files/Places.h"

#include "platform/files/Files.h"

#include <filesystem>
#include <system_error>

namespace cardreel {

namespace {

std::filesystem::path resolved(const QString& path)
{
    const std::filesystem::path absolute = files::nativePath(files::absolutePath(path)).toStdString();
    std::error_code ignored;
    const std::filesystem::path result = std::filesystem::weakly_canonical(absolute, ignored);
    return result.empty() ? absolute : result;
}

/// A card may be mounted at two places: the same folder then, by another path.
bool isIn(const std::filesystem::path& inner, const std::filesystem::path& outer)
{
    for (std::filesystem::path path = inner;; path = path.parent_path()) {
        std::error_code ignored;
        if (path == outer || std::filesystem::equivalent(path, outer, ignored))
            return true;
        if (path == path.root_path())
            return false;
    }
}

} // namespace

QString resolvedPath(const QString& path)
{
    return files::fromNativePath(QByteArray::fromStdString(resolved(path).string()));
}

bool foldersOverlap(const QString& a, const QString& b)
{
    const std::filesystem::path first = resolved(a);
    const std::filesystem::path second = resolved(b);
    return isIn(first, second) || isIn(second, first);
}

bool wouldLieWithin(const QString& filePath, const QString& folder)
{
    if (folder.isEmpty())
        return false;
    const std::filesystem::path place = resolved(folder);
    return isIn(resolved(filePath), place) || isIn(resolved(files::folderOf(files::absolutePath(filePath))), place);
}

} // namespace cardreel
