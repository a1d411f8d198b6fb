#include "media/PictureInfo.h"

#include "media/CardLayout.h"
#include "media/DCFInfo.h"
#include "names/ConstClass.h"
#include "platform/files/Files.h"
#include "platform/image/ImageProperties.h"

#include <QtGlobal>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

QVariantMap propertiesOrEnd(const QString& path)
{
    std::optional<QVariantMap> properties = imageProperties(path);
    if (!properties)
        qFatal("no picture can be opened at %s", files::nativePath(path).constData());
    return *std::move(properties);
}

/// The coordinates in a picture's GPS block; the placeholder when one of them is missing.
CustomLocation locationOf(const QVariantMap& properties)
{
    const QVariantMap gps = properties.value(u"{GPS}"_s).toMap();
    const auto latitude = gps.constFind(u"Latitude"_s);
    const auto longitude = gps.constFind(u"Longitude"_s);
    CustomLocation location = CustomLocation::placeholder();
    if (latitude == gps.constEnd() || longitude == gps.constEnd())
        return location;
    const bool south = gps.value(u"LatitudeRef"_s).toString() == u"S";
    const bool west = gps.value(u"LongitudeRef"_s).toString() == u"W";
    location.latitude = south ? -latitude->toDouble() : latitude->toDouble();
    location.longitude = west ? -longitude->toDouble() : longitude->toDouble();
    return location;
}

const std::vector<QString>& pictureFolders()
{
    static const std::vector<QString> folders = {ConstClass::REG_LM90_FOLDER_PICTURE};
    return folders;
}

} // namespace

PictureInfo::PictureInfo(const QString& root, const QString& delta)
    : PictureInfo(root, delta, propertiesOrEnd(files::join(root, delta)))
{
}

PictureInfo::PictureInfo(const QString& root, const QString& delta, QVariantMap properties)
    : rootPath(root)
    , deltaPath(delta)
    , filePath(files::join(root, delta))
    , secondaryFilePath(rearTwinPath(filePath, pictureFolders()))
    , picFileNumber(decimalInteger(files::stemOf(filePath)).value_or(10000))
    , pictureName(recordingDateText(filePath))
    , pictureDateString(pictureName)
    , exifDict(std::move(properties))
    , location(locationOf(exifDict))
{
    const files::Status found = files::status(filePath);
    fileDate = found.exists ? found.modified : now();
    fileSize = found.size;
}

void PictureInfo::changeWithRootPath(const QString& newRoot)
{
    const bool isItsOwnThumbnail = pictureThumbnailPath == filePath;
    rootPath = newRoot;
    filePath = files::join(newRoot, deltaPath);
    secondaryFilePath = rearTwinPath(filePath, pictureFolders());
    if (isItsOwnThumbnail)
        pictureThumbnailPath = filePath;
}

bool PictureInfo::isProtected() const
{
    return files::isLocked(filePath);
}

} // namespace cardreel
