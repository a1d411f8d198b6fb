#pragma once

#include "platform/Instant.h"
#include "telemetry/CustomLocation.h"

#include <QString>
#include <QVariantMap>

#include <memory>

namespace cardreel {

class DCFInfo;

/// One still picture of a card. Built by the scan; afterwards it belongs to the interface thread.
class PictureInfo
{
public:
    /// The file must be one that can be opened: handing over another is a programming error that ends the program.
    PictureInfo(const QString& root, const QString& delta);
    /// With the properties that imageProperties() found in the file.
    PictureInfo(const QString& root, const QString& delta, QVariantMap properties);

    QString rootPath;
    QString deltaPath; ///< relative to the root
    QString filePath;
    QString secondaryFilePath;            ///< the rear camera's picture; empty when there is none
    qint64 picFileNumber = 0;             ///< the stem as a number; 10000 when it is none
    Instant fileDate;                     ///< modification time; the present when it can't be read
    quint64 fileSize = 0;                 ///< bytes
    QString pictureName;                  ///< for a list
    QString pictureDateString;            ///< the recorder's clock in the name, in the user's locale
    QString pictureThumbnailPath;         ///< empty until the scan sets it
    QVariantMap exifDict;                 ///< as imageProperties() gives it; empty when the file holds no picture
    CustomLocation location;              ///< the placeholder fix when the picture carries no position
    std::weak_ptr<DCFInfo> parentDCFInfo; ///< the recording during which it was taken, once attached

    /// The card came back under another path: paths follow, dates, numbers and texts stay.
    void changeWithRootPath(const QString& newRoot);

    /// Whether the file is locked against deletion. Asks the file system at each call.
    bool isProtected() const;
};

} // namespace cardreel
