#include "export/BackUpCopier.h"

#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "names/ConstClass.h"
#include "platform/files/FileSteps.h"
#include "platform/files/Files.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

using Code = FileError::Code;
using Result = BackUpCopier::Result;

bool isNoSuchFile(const Result& error)
{
    return error && error->code == Code::NoSuchFile;
}

/// A card that was pulled looks like one whose files are all missing, which is no error of any single file.
Result checkCard(const BackUpSource& source)
{
    if (!files::names(source.rootPath).empty())
        return {};
    return FileError{Code::CannotRead, source.rootPath, FileError::tr("The card is gone")};
}

/// A card's folders, each after the one that it is in.
QStringList layoutOfCards()
{
    using C = ConstClass;
    const QStringList kinds = {C::REG_LM90_FOLDER_NORMAL, C::REG_LM90_FOLDER_MANUAL, C::REG_LM90_FOLDER_EVENT,
                               C::REG_LM90_FOLDER_PARKING};
    QStringList folders = kinds;
    folders << C::REG_LM90_FOLDER_PICTURE << C::REG_ALTER_FOLDER_REAR << C::REG_LM90_FOLDER_SYSTEM;
    for (const QString& kind : kinds)
        folders << files::join(C::REG_LM90_FOLDER_SYSTEM + u"/NMEA"_s, kind);
    for (const QString& kind : kinds)
        folders << files::join(C::REG_ALTER_FOLDER_REAR, kind);
    folders << files::join(C::REG_ALTER_FOLDER_REAR, C::REG_LM90_FOLDER_PICTURE);
    return folders;
}

} // namespace

BackUpSource::BackUpSource(const DCFInfo& info)
    : rootPath(info.rootPath)
    , deltaPath(info.deltaPath)
    , filePath(info.filePath)
    , secondaryFilePath(info.secondaryFilePath)
    , infoFilePath(info.infoFilePath)
{
}

BackUpSource::BackUpSource(const PictureInfo& picture)
    : rootPath(picture.rootPath)
    , deltaPath(picture.deltaPath)
    , filePath(picture.filePath)
    , secondaryFilePath(picture.secondaryFilePath)
{
}

BackUpCopier::BackUpCopier(const QString& target, ReadBack readBack, FileSteps& steps)
    : m_target(target)
    , m_readBack(readBack)
    , m_steps(steps)
{
}

Result BackUpCopier::makeLayout()
{
    Result error = makeFolders(u"/"_s, m_target, &m_madeFolders);
    for (const QString& folder : layoutOfCards()) {
        Result made = makeFolders(m_target, folder);
        if (!error)
            error = std::move(made);
    }
    return error;
}

Result BackUpCopier::copy(const BackUpSource& source)
{
    if (source.filePath.isEmpty())
        return {};
    Result error = source.recording ? copyRecording(source, source.recording->infoFilePathWithRootPath(m_target))
                                    : copyPicture(source);
    return error ? error : checkCard(source);
}

// A step follows a missing file, but none follows another error.

Result BackUpCopier::copyRecording(const BackUpSource& source, const QString& infoTarget)
{
    Result error = copyFront(source);
    if (error && !isNoSuchFile(error))
        return error;
    error = copyFile(source.infoFilePath, infoTarget, m_steps, m_readBack);
    if (error && !isNoSuchFile(error))
        return error;
    return copyRear(source);
}

Result BackUpCopier::copyPicture(const BackUpSource& source)
{
    Result error = copyFront(source);
    if (source.secondaryFilePath.isEmpty() || (error && !isNoSuchFile(error)))
        return error;
    return copyRear(source);
}

Result BackUpCopier::copyFront(const BackUpSource& source)
{
    Result error = copyTo(source.filePath, source.deltaPath);
    if (isNoSuchFile(error))
        m_leftOut << source.filePath;
    return error;
}

/// Nothing when there is no rear file, or none any more.
Result BackUpCopier::copyRear(const BackUpSource& source) const
{
    if (source.secondaryFilePath.isEmpty())
        return {};
    const QString folder = files::join(ConstClass::REG_ALTER_FOLDER_REAR, files::folderOf(source.deltaPath));
    Result error = copyTo(source.secondaryFilePath, files::join(folder, files::nameOf(source.secondaryFilePath)));
    return isNoSuchFile(error) ? Result() : error;
}

/// `relative` in the target folder; some layouts have folders that were not made beforehand.
Result BackUpCopier::copyTo(const QString& source, const QString& relative) const
{
    if (Result error = makeFolders(m_target, files::folderOf(relative)))
        return error;
    return copyFile(source, files::join(m_target, relative), m_steps, m_readBack);
}

Result BackUpCopier::syncDisk()
{
    if (m_steps.syncDisk(files::nativePath(m_target)) == 0)
        return {};
    return FileError{Code::CannotWrite, m_target, QString::fromLocal8Bit(std::strerror(errno))};
}

void BackUpCopier::removeMadeFolders() const
{
    for (auto folder = m_madeFolders.rbegin(); folder != m_madeFolders.rend(); ++folder)
        rmdir(files::nativePath(*folder).constData());
}

} // namespace cardreel
