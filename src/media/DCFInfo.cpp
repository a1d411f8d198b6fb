#include "media/DCFInfo.h"

#include "media/CardLayout.h"
#include "media/PictureInfo.h"
#include "names/ConstClass.h"
#include "platform/files/Files.h"
#include "platform/text/Localization.h"
#include "telemetry/NMEAData.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

/// `relative` seen from `base`: each leading ".." takes one component off, the rest is appended.
QString resolvedFolder(const QString& base, const QString& relative)
{
    QString folder = base;
    QStringList rest = relative.split(u'/', Qt::SkipEmptyParts);
    while (!rest.isEmpty() && rest.first() == u"..") {
        folder = files::folderOf(folder);
        rest.removeFirst();
    }
    if (folder.isEmpty() && base.startsWith(u'/'))
        folder = u"/"_s; // nothing is above the top
    return files::join(folder, rest.join(u'/'));
}

struct FoundFile
{
    QString path;
    files::Status status;
};

/// The side file of a video; where it would be when there is none. Asking for the status tells at the same time whether
/// a file is there, which on a card of thousands of recordings is noticed.
FoundFile sideFile(const QString& videoPath)
{
    const QString folder = files::folderOf(videoPath);
    const QString stem = files::stemOf(videoPath);
    const QString first = files::join(folder, stem + ConstClass::INFO_FILE_EXT_LM90);
    FoundFile result;
    const auto isAt = [&](const QString& candidate) {
        result = {candidate, files::status(candidate)};
        return result.status.exists;
    };
    const auto inRecorderLayout = [&] {
        return files::join(
            files::join(resolvedFolder(folder, ConstClass::DIRECTORY_INFO_FILE_LM90), files::nameOf(folder)),
            stem + ConstClass::INFO_FILE_EXT_LM90);
    };
    if (isAt(first) || isAt(files::join(folder, stem + ConstClass::INFO_FILE_EXT)) || isAt(inRecorderLayout()) ||
        isAt(files::join(resolvedFolder(folder, ConstClass::DIRECTORY_INFO_FILE), stem + ConstClass::INFO_FILE_EXT)))
        return result;
    return {first, {}};
}

const std::vector<QString>& recordingFolders()
{
    static const std::vector<QString> folders = {ConstClass::REG_LM90_FOLDER_EVENT, ConstClass::REG_LM90_FOLDER_MANUAL,
                                                 ConstClass::REG_LM90_FOLDER_NORMAL,
                                                 ConstClass::REG_LM90_FOLDER_PARKING};
    return folders;
}

QString recordLabel(const QString& folderName)
{
    const QString kind = eventNameOfFolder(folderName);
    if (kind == ConstClass::DCF_EVENTNAME_EVENT)
        //: イベント記録 プレースマーク名称
        return localizedText(QT_TRANSLATE_NOOP("Keys", "EVENT RECORD"));
    if (kind == ConstClass::DCF_EVENTNAME_MANUAL)
        //: 手動記録 プレースマーク名称
        return localizedText(QT_TRANSLATE_NOOP("Keys", "MANUAL RECORD"));
    if (kind == ConstClass::DCF_EVENTNAME_PARKING)
        //: 駐車記録 プレースマーク名称
        return localizedText(QT_TRANSLATE_NOOP("Keys", "PARKING RECORD"));
    return {};
}

} // namespace

QString rearTwinPath(const QString& filePath, const std::vector<QString>& folders, files::Status* status)
{
    // The whole path is searched, the root included: cards have been kept in folders of such names for so long that
    // their rear files are where this rule puts them.
    qsizetype at = -1;
    for (const QString& folder : folders) {
        at = filePath.indexOf(folder);
        if (at >= 0)
            break;
    }
    QString twin = filePath;
    twin.insert(std::max<qsizetype>(at, 0), ConstClass::REG_ALTER_FOLDER_REAR + u'/');
    const files::Status found = files::status(twin);
    if (status)
        *status = found;
    return found.exists ? twin : QString();
}

DCFInfo::DCFInfo(const QString& root, const QString& delta)
    : rootPath(root)
    , deltaPath(delta)
    , filePath(files::join(root, delta))
    , folderName(files::nameOf(files::folderOf(filePath)))
    , dcfDateString(recordingDateText(filePath))
    , dcfFileNumber(decimalInteger(files::stemOf(filePath)).value_or(10000))
    , dcfFolderNumber(decimalInteger(folderName).value_or(1000))
{
    const files::Status video = files::status(filePath);
    fileDate = video.exists ? video.modified : now();
    files::Status rear;
    secondaryFilePath = rearTwinPath(filePath, recordingFolders(), &rear);
    const FoundFile side = sideFile(filePath);
    infoFilePath = side.path;
    nmea = std::make_shared<NMEAData>(infoFilePath);
    fileSize = video.size + rear.size + side.status.size;
    dcfName = dcfDateString + u'\n' + recordLabel(folderName);
}

void DCFInfo::changeWithRootPath(const QString& newRoot)
{
    rootPath = newRoot;
    filePath = files::join(newRoot, deltaPath);
    secondaryFilePath = rearTwinPath(filePath, recordingFolders());
    infoFilePath = sideFile(filePath).path;
    nmea->setFilePath(infoFilePath);
    for (const std::shared_ptr<PictureInfo>& picture : pictures)
        picture->changeWithRootPath(newRoot);
}

QString DCFInfo::infoFilePathWithRootPath(const QString& root) const
{
    return sideFile(files::join(root, deltaPath)).path;
}

bool DCFInfo::isProtected() const
{
    return files::isLocked(filePath);
}

QString DCFInfo::eventName() const
{
    return eventNameOfFolder(folderName);
}

bool DCFInfo::isEventDCF() const
{
    return eventName() != ConstClass::DCF_EVENTNAME_NORMAL;
}

} // namespace cardreel
