#pragma once

#include "platform/Instant.h"
#include "platform/files/Files.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace cardreel {

struct CustomPointAnnotation;
class CustomMapPolyline;
class NMEAData;
class PictureInfo;

/// One recording of a card: a front video, perhaps a rear one, and a telemetry side file. Built by the scan from the
/// card's root and the video's path below it; afterwards it belongs to the interface thread, but for `nmea`, which
/// guards itself.
class DCFInfo
{
public:
    /// Never fails: what is missing on the card gives an empty path, a size of 0 or the present time.
    DCFInfo(const QString& root, const QString& delta);

    QString rootPath;
    QString deltaPath;         ///< of the front video, relative to the root
    QString filePath;          ///< of the front video
    QString secondaryFilePath; ///< of the rear video; empty when there is none
    QString folderName;        ///< of the folder that holds the front video
    Instant fileDate;          ///< modification time of the front video, which is the end of the recording
    /// Start of the recording; empty, so that recordings are placed in time by `fileDate`.
    std::optional<Instant> startDate;
    quint64 fileSize = 0; ///< bytes of both videos and the side file
    QString infoFilePath; ///< of the side file; where it would be when there is none
    std::shared_ptr<NMEAData> nmea;
    double duration = 0; ///< seconds; 0 until it was played
    QString tripID;
    QString dcfName;            ///< two lines for a list: the date and what kind of record it is
    QString dcfDateString;      ///< the recorder's clock at the start, in the user's locale
    QString thumbnailPath;      ///< empty until the background parse made it
    qint64 dcfFileNumber = 0;   ///< the stem as a number; 10000 when it is none
    qint64 dcfFolderNumber = 0; ///< the folder's name as a number; 1000 when it is none
    std::vector<std::shared_ptr<CustomMapPolyline>> routeLine;
    std::vector<std::shared_ptr<CustomPointAnnotation>> annotation;
    std::vector<std::shared_ptr<PictureInfo>> pictures; ///< stills taken during this recording

    /// The card came back under another path: paths follow, dates, numbers and texts stay.
    void changeWithRootPath(const QString& newRoot);
    /// Where this recording's side file would be on a card mounted at `root`.
    QString infoFilePathWithRootPath(const QString& root) const;

    /// Whether the front video is locked against deletion. Asks the file system at each call.
    bool isProtected() const;
    /// One of ConstClass::DCF_EVENTNAME_….
    QString eventName() const;
    /// Whether the recorder kept it for a reason: everything but ordinary recordings.
    bool isEventDCF() const;
};

/// The rear camera's file for a front camera's: "REAR/" put before the first of `folders` that the path contains, at
/// its very beginning when it contains none; empty when there is no such file. `status`, when given, receives that of
/// the file, which is asked for anyway.
QString rearTwinPath(const QString& filePath, const std::vector<QString>& folders, files::Status* status = nullptr);

} // namespace cardreel
