#include "media/MediaLibrary.h"

#include "media/DCFAsyncParser.h"
#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "names/ConstClass.h"
#include "platform/files/Files.h"
#include "platform/image/ImageProperties.h"
#include "platform/text/Pattern.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace cardreel {

namespace {

void walkMatchingFiles(const QString& rootPath, const QString& folderPattern, const QString& filePattern,
                       const std::function<void(const QString& relativePath)>& found)
{
    Pattern folderName(folderPattern);
    Pattern fileName(filePattern);
    bool inMatchingFolder = false;
    files::walk(rootPath, [&](const QString& relativePath, bool isFolder) {
        if (isFolder)
            inMatchingFolder = folderName.matchesWhole(relativePath);
        else if (inMatchingFolder && fileName.matchesWhole(files::nameOf(relativePath)))
            found(relativePath);
    });
}

/// Pixels a point of the main screen; 1 where there is no screen, as on the command line.
double backingScale()
{
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    const QScreen* screen = application ? QGuiApplication::primaryScreen() : nullptr;
    return screen ? screen->devicePixelRatio() : 1.0;
}

} // namespace

MediaLibrary::MediaLibrary(QObject* parent)
    : QObject(parent)
{
}

MediaLibrary::~MediaLibrary()
{
    cancelParse();
}

MediaLibrary::DCFList MediaLibrary::eventTree() const
{
    DCFList events;
    std::copy_if(m_mediaTree.begin(), m_mediaTree.end(), std::back_inserter(events),
                 [](const std::shared_ptr<DCFInfo>& dcf) { return dcf->isEventDCF(); });
    return events;
}

bool MediaLibrary::mediaTreeSyncAtRootPath(const QString& rootPath)
{
    if (!m_canReloadMedia)
        return false;
    cancelParse();
    m_mediaTree.clear();
    m_pictureTree.clear();
    m_currentDCF.reset();
    m_rootPath = rootPath;
    if (!mediaIsDCF(rootPath) && mediaIsLM90(rootPath)) {
        m_pictureTree = pictures(rootPath, ConstClass::REG_ALTER_FOLDER, ConstClass::REG_LM90_FILE_PIC);
        m_mediaTree = getFileListAtRootPath(rootPath, ConstClass::REG_ALTER_FOLDER, ConstClass::REG_LM90_FILE_VIDEO,
                                            m_pictureTree);
    }
    m_hasSecondary = std::any_of(m_mediaTree.begin(), m_mediaTree.end(),
                                 [](const std::shared_ptr<DCFInfo>& dcf) { return !dcf->secondaryFilePath.isEmpty(); });
    Q_EMIT mediaTreeDidSync(!m_mediaTree.empty() || !m_pictureTree.empty());
    return true;
}

void MediaLibrary::reparseAtIndex(size_t index)
{
    cancelParse();
    if (m_mediaTree.empty())
        return;
    m_currentParser = std::make_shared<DCFAsyncParser>(backingScale());
    // The parser reports nothing once it is cancelled, and this object cancels it before it goes.
    m_currentParser->setUpDCFAsync(
        m_mediaTree, index, [this](const std::shared_ptr<DCFInfo>& dcf) { Q_EMIT recordingDidParse(dcf); },
        [this] { Q_EMIT parseDidFinish(); });
}

void MediaLibrary::volumeRenameToPath(const QString& newRoot, const QString& fromPath)
{
    if (m_mediaTree.empty() || m_mediaTree.front()->rootPath != fromPath)
        return;
    cancelParse();
    Q_EMIT jobsShouldCancel();
    for (const std::shared_ptr<DCFInfo>& dcf : m_mediaTree)
        dcf->changeWithRootPath(newRoot);
    for (const std::shared_ptr<PictureInfo>& picture : m_pictureTree) {
        if (picture->rootPath != newRoot)
            picture->changeWithRootPath(newRoot);
    }
    m_rootPath = newRoot;
    Q_EMIT didChangeRoot();
    const auto inView = std::find(m_mediaTree.begin(), m_mediaTree.end(), m_currentDCF);
    reparseAtIndex(inView == m_mediaTree.end() ? 0 : static_cast<size_t>(inView - m_mediaTree.begin()));
}

void MediaLibrary::cancelParse()
{
    if (m_currentParser)
        m_currentParser->cancelFlag = true;
    m_currentParser.reset();
}

MediaLibrary::DCFList MediaLibrary::resultDCFs(const QString& rootPath, const QString& foldernameRegexPattern,
                                               const QString& videoFilenameRegexPattern)
{
    DCFList result;
    walkMatchingFiles(rootPath, foldernameRegexPattern, videoFilenameRegexPattern, [&](const QString& relativePath) {
        result.push_back(std::make_shared<DCFInfo>(rootPath, relativePath));
    });
    std::sort(result.begin(), result.end(),
              [](const auto& a, const auto& b) { return a->dcfFileNumber < b->dcfFileNumber; });
    return result;
}

MediaLibrary::PictureList MediaLibrary::pictures(const QString& rootPath, const QString& foldernameRegexPattern,
                                                 const QString& pictureFilenameRegexPattern)
{
    PictureList result;
    walkMatchingFiles(rootPath, foldernameRegexPattern, pictureFilenameRegexPattern, [&](const QString& relativePath) {
        std::optional<QVariantMap> properties = imageProperties(files::join(rootPath, relativePath));
        if (!properties)
            return;
        auto picture = std::make_shared<PictureInfo>(rootPath, relativePath, *std::move(properties));
        picture->pictureThumbnailPath = picture->filePath;
        result.push_back(std::move(picture));
    });
    std::sort(result.begin(), result.end(),
              [](const auto& a, const auto& b) { return a->picFileNumber < b->picFileNumber; });
    return result;
}

MediaLibrary::DCFList MediaLibrary::getFileListAtRootPath(const QString& rootPath,
                                                          const QString& foldernameRegexPattern,
                                                          const QString& videoFilenameRegexPattern,
                                                          const PictureList& pictureInfos)
{
    DCFList recordings = resultDCFs(rootPath, foldernameRegexPattern, videoFilenameRegexPattern);
    // A recording is the first that ended after a moment exactly when it raises the latest end so far above it; and the
    // latest ends so far only rise, however the recordings' own dates jump.
    std::vector<Instant> latestEnds;
    latestEnds.reserve(recordings.size());
    for (const std::shared_ptr<DCFInfo>& dcf : recordings)
        latestEnds.push_back(latestEnds.empty() ? dcf->fileDate : std::max(latestEnds.back(), dcf->fileDate));
    for (const std::shared_ptr<PictureInfo>& picture : pictureInfos) {
        const auto after = std::upper_bound(latestEnds.begin(), latestEnds.end(), picture->fileDate);
        if (after == latestEnds.end())
            continue;
        const std::shared_ptr<DCFInfo>& during = recordings[static_cast<size_t>(after - latestEnds.begin())];
        picture->parentDCFInfo = during;
        during->pictures.push_back(picture);
    }
    return recordings;
}

} // namespace cardreel
