#pragma once

#include "platform/files/FileCopy.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace cardreel {

class DCFInfo;
class PictureInfo;

/// What is copied of one recording or picture, as it was when the job started: its record goes on living on the
/// interface thread.
struct BackUpSource
{
    BackUpSource() = default; ///< of something that isn't copied
    explicit BackUpSource(const DCFInfo& info);
    explicit BackUpSource(const PictureInfo& picture);

    QString rootPath;
    QString deltaPath;
    QString filePath; ///< of the front camera
    QString secondaryFilePath;
    QString infoFilePath;
    std::shared_ptr<const DCFInfo> recording; ///< for infoFilePathWithRootPath() only, which reads what never changes
};

/// Fills one folder with copies of recordings and pictures, laid out as a card. Made and used by one job on its own
/// thread.
class BackUpCopier
{
public:
    using Result = std::optional<FileError>;

    /// `steps` outlives it.
    BackUpCopier(const QString& target, ReadBack readBack, FileSteps& steps);

    /// Makes the target with the folders above it and those of a card below it; the first error.
    Result makeLayout();
    /// Copies an item; nothing of one that isn't a recording or a picture. A card that was pulled is an error.
    Result copy(const BackUpSource& source);
    /// Whatever of a recording isn't there is left out, the front video too. `infoTarget`: where the side file goes.
    Result copyRecording(const BackUpSource& source, const QString& infoTarget);
    /// A front picture that isn't there is left out when there is a rear one, else an error.
    Result copyPicture(const BackUpSource& source);
    /// Waits until everything has reached the disk.
    Result syncDisk();
    /// Removes the folders that makeLayout() made, as far as nothing is in them any more.
    void removeMadeFolders() const;

    /// Front files that weren't there and are missing in the copy.
    const QStringList& leftOut() const { return m_leftOut; }

private:
    Result copyTo(const QString& source, const QString& relative) const;
    Result copyFront(const BackUpSource& source);
    Result copyRear(const BackUpSource& source) const;

    QString m_target;
    ReadBack m_readBack;
    FileSteps& m_steps;
    QStringList m_madeFolders;
    QStringList m_leftOut;
};

} // namespace cardreel
