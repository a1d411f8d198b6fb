#include "media/ThumbnailCache.h"

#include "names/ConstClass.h"
#include "platform/files/Files.h"
#include "platform/image/ApplicationImage.h"
#include "platform/text/DateText.h"
#include "platform/video/FrameGenerator.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const QString bundleIdentifier = u"org.cardreel.Cardreel"_s;

QString extensionOf(const QString& name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot <= 0 ? QString() : name.sliced(dot + 1);
}

Instant creationDate(const QString& path)
{
    const files::Status found = files::status(path);
    return found.created.value_or(found.modified);
}

/// Whether a thumbnail is there from its first marker to its last.
bool isWholeJpeg(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.read(2) != "\xFF\xD8")
        return false;
    return file.seek(file.size() - 2) && file.read(2) == "\xFF\xD9";
}

bool writeJpeg(const QImage& image, const QString& path)
{
    // Encoded before it is written: the image writer says nothing of a disk that is full.
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(false);
    if (!writer.write(image))
        return false;
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() && file.commit();
}

} // namespace

QString ThumbnailCache::cachesDirectoryPath()
{
    const QString caches = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    if (caches.isEmpty())
        return {};
    const QString folder = files::join(caches, bundleIdentifier);
    return QDir().mkpath(folder) ? folder : QString();
}

std::vector<QString> ThumbnailCache::cacheFiles()
{
    const QString folder = cachesDirectoryPath();
    std::vector<QString> result;
    for (const QString& name : files::names(folder)) {
        if (extensionOf(name) == u"jpg")
            result.push_back(files::join(folder, name));
    }
    return result;
}

void ThumbnailCache::cacheCleaning()
{
    const QString folder = cachesDirectoryPath();
    for (const QString& name : files::names(folder)) {
        const QString extension = extensionOf(name);
        if (extension == u"kml" || extension == u"KML" || extension == u"kmz" || extension == u"KMZ")
            QFile::remove(files::join(folder, name));
    }

    std::vector<QString> thumbnails = cacheFiles();
    constexpr auto kept = static_cast<size_t>(ConstClass::MAX_THUMB_CACHE);
    if (thumbnails.size() <= kept)
        return;
    std::vector<std::pair<Instant, QString>> byAge;
    byAge.reserve(thumbnails.size());
    for (QString& path : thumbnails)
        byAge.emplace_back(creationDate(path), std::move(path));
    std::sort(byAge.begin(), byAge.end());
    byAge.resize(byAge.size() - kept);
    for (const auto& [created, path] : byAge)
        QFile::remove(path);
}

ThumbnailMaker::ThumbnailMaker(double backingScale, const std::atomic<bool>& cancelFlag)
    : m_maximumSize((QSizeF(1920, 1080) * backingScale * 0.125).toSize())
    , m_cancelFlag(cancelFlag)
{
}

std::optional<QString> ThumbnailMaker::getThumbnailPathWithSourceFilePath(const QString& path) const
{
    const QString folder = ThumbnailCache::cachesDirectoryPath();
    // A video that is gone (a pulled card takes all of them with it) must not fill the cache with broken pictures.
    if (folder.isEmpty() || !files::exists(path))
        return std::nullopt;
    const QString name = cacheFileNameWithSourceFilePath(path);
    // Stray bytes of the video's name are left out of the cache file's, so that Qt can write it.
    const QString cached = files::join(folder, files::displayPath(name));
    if (isWholeJpeg(cached))
        return cached;
    const QImage image = thumbnailWithContentAtPath(path, m_maximumSize);
    // It may have gone, or become unreadable, while the frame was made: then the name isn't its any more.
    if (m_cancelFlag || image.isNull() || !files::openForReading(path) || cacheFileNameWithSourceFilePath(path) != name)
        return std::nullopt;
    return writeJpeg(image, cached) ? std::optional(cached) : std::nullopt;
}

QImage ThumbnailMaker::thumbnailWithContentAtPath(const QString& path, const QSize& maximumSize) const
{
    const VideoFrame result = FrameGenerator::frame(path, 1.0, maximumSize, &m_cancelFlag);
    if (!result.image.isNull() || m_cancelFlag)
        return result.image;
    return applicationImage(u"broken_mov"_s, maximumSize);
}

QString ThumbnailMaker::cacheFileNameWithSourceFilePath(const QString& path)
{
    return files::nameOf(files::folderOf(path)) + files::stemOf(path) + fileSizeString(path) +
           fileCreationDateString(path) + u".jpg"_s;
}

QString ThumbnailMaker::fileCreationDateString(const QString& path)
{
    thread_local const DateText format = DateText::patterned(u"yyyyMMddhhmmss"_s, u"ja_JP"_s, TimeZone::Local);
    return format.text(creationDate(path));
}

QString ThumbnailMaker::fileSizeString(const QString& path)
{
    return QString::number(files::status(path).size).rightJustified(10, u'0');
}

} // namespace cardreel
