#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <atomic>
#include <optional>
#include <vector>

namespace cardreel {

/// The thumbnails kept in the user's caches folder from one run to the next, under names made of what identifies a
/// video. No state; any thread.
class ThumbnailCache
{
public:
    /// The program's own folder below the user's caches, made when it is missing; empty when it can't be.
    static QString cachesDirectoryPath();
    /// The thumbnails kept there.
    static std::vector<QString> cacheFiles();
    /// For the end of the program: removes exports left behind and the oldest thumbnails over
    /// ConstClass::MAX_THUMB_CACHE.
    static void cacheCleaning();
};

/// Makes one video's thumbnail. Any thread; the scale and the flag are read, never written.
class ThumbnailMaker
{
public:
    /// `backingScale` is the screen's pixels a point; a set `cancelFlag` ends a frame in the making.
    ThumbnailMaker(double backingScale, const std::atomic<bool>& cancelFlag);

    /// The path of the video's thumbnail, which is made when the cache doesn't hold it. Nothing when there is no cache
    /// folder, no such video, or nothing could be written.
    std::optional<QString> getThumbnailPathWithSourceFilePath(const QString& path) const;
    /// The frame at one second within `maximumSize` pixels; the picture of a broken film when there is none.
    QImage thumbnailWithContentAtPath(const QString& path, const QSize& maximumSize) const;
    /// Folder, stem, size and creation time in one name, so that a changed recording gets a new thumbnail.
    static QString cacheFileNameWithSourceFilePath(const QString& path);
    /// Local time, "yyyyMMddhhmmss". File systems that keep no creation time give their modification time.
    static QString fileCreationDateString(const QString& path);
    /// Bytes in ten digits.
    static QString fileSizeString(const QString& path);

private:
    QSize m_maximumSize;
    const std::atomic<bool>& m_cancelFlag;
};

} // namespace cardreel
