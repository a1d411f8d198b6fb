#include "export/BackUpOptions.h"

#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "platform/files/Files.h"
#include "platform/text/UnitText.h"

namespace cardreel {

namespace {

constexpr quint64 marginBytes = 1'048'576;

void appendPictures(const DCFInfoList& recordings, BackUpList& list)
{
    for (const std::shared_ptr<DCFInfo>& recording : recordings)
        list.insert(list.end(), recording->pictures.begin(), recording->pictures.end());
}

quint64 sizeOf(const BackUpItem& item)
{
    if (const auto* recording = std::get_if<std::shared_ptr<DCFInfo>>(&item))
        return (*recording)->fileSize;
    if (const auto* picture = std::get_if<std::shared_ptr<PictureInfo>>(&item))
        return (*picture)->fileSize;
    return 0;
}

} // namespace

BackUpList selectedObjectsForOptionState(const BackUpOptionState& state, const DCFInfoList& arranged,
                                         const DCFInfoList& selected)
{
    BackUpList result;
    if (state.backUpOptionAllPicture) {
        appendPictures(arranged, result);
        result.insert(result.end(), selected.begin(), selected.end());
    } else if (state.backUpOptionNoPicture) {
        result.insert(result.end(), selected.begin(), selected.end());
    } else if (state.backUpOptionOnlyPicture) {
        appendPictures(arranged, result);
    }
    return result;
}

quint64 totalSelectedFileSizeForInfos(const BackUpList& infos)
{
    quint64 result = 0;
    for (const BackUpItem& item : infos)
        result += sizeOf(item);
    return result;
}

quint64 freeSizeAtVolume(const QString& path)
{
    QString folder = files::absolutePath(path);
    while (!folder.isEmpty() && !files::exists(folder))
        folder = files::folderOf(folder);
    return files::freeBytes(folder.isEmpty() ? QStringLiteral("/") : folder).value_or(0);
}

bool volumeAtPathHasFreeForTargetSize(const QString& path, quint64 targetSize)
{
    return hasFreeForTargetSize(freeSizeAtVolume(path), targetSize);
}

bool hasFreeForTargetSize(quint64 freeSize, quint64 targetSize)
{
    return freeSize > marginBytes && freeSize - marginBytes > targetSize;
}

QString freeSizeDisplayAtPath(const QString& path)
{
    return dataSizeText(freeSizeAtVolume(path));
}

QString selectedFileSizeDisplay(const BackUpList& infos)
{
    return dataSizeText(totalSelectedFileSizeForInfos(infos));
}

} // namespace cardreel
