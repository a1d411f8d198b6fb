#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"
#include "app/cli/JsonOutput.h"
#include "app/lists/RecordingListModel.h"
#include "media/DCFInfo.h"
#include "media/MediaLibrary.h"
#include "media/PictureInfo.h"
#include "platform/files/Files.h"
#include "platform/text/UnitText.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <cstring>
namespace cardreel::CommandLine {

namespace {

void writeRecording(JsonOutput& json, const DCFInfo& dcf)
{
    json.beginObject();
    json.member("deltaPath", dcf.deltaPath);
    json.member("filePath", dcf.filePath);
    json.member("secondaryFilePath", dcf.secondaryFilePath);
    json.member("infoFilePath", dcf.infoFilePath);
    json.member("folderName", dcf.folderName);
    json.member("eventName", dcf.eventName());
    json.member("isEventDCF", dcf.isEventDCF());
    json.member("isProtected", dcf.isProtected());
    json.member("fileDate", dcf.fileDate);
    json.member("fileSize", static_cast<qint64>(dcf.fileSize));
    json.member("dcfFileNumber", dcf.dcfFileNumber);
    json.member("dcfFolderNumber", dcf.dcfFolderNumber);
    json.member("dcfDateString", dcf.dcfDateString);
    json.member("dcfName", dcf.dcfName);
    json.key("pictures");
    json.beginArray();
    for (const std::shared_ptr<PictureInfo>& picture : dcf.pictures)
        json.value(picture->deltaPath);
    json.endArray();
    json.endObject();
}

void writePicture(JsonOutput& json, const PictureInfo& picture)
{
    json.beginObject();
    json.member("deltaPath", picture.deltaPath);
    json.member("filePath", picture.filePath);
    json.member("secondaryFilePath", picture.secondaryFilePath);
    json.member("picFileNumber", picture.picFileNumber);
    json.member("fileDate", picture.fileDate);
    json.member("fileSize", static_cast<qint64>(picture.fileSize));
    json.member("pictureName", picture.pictureName);
    json.member("isProtected", picture.isProtected());
    json.member("latitude", picture.location.latitude);
    json.member("longitude", picture.location.longitude);
    json.key("parent");
    if (const std::shared_ptr<DCFInfo> parent = picture.parentDCFInfo.lock())
        json.value(parent->deltaPath);
    else
        json.null();
    json.endObject();
}

void writeJson(const MediaLibrary& library)
{
    JsonOutput json;
    json.beginObject();
    json.member("rootPath", library.rootPath());
    json.member("available", MediaLibrary::mediaIsAvailable(library.rootPath()));
    json.member("hasSecondary", library.hasSecondary());
    json.key("recordings");
    json.beginArray();
    for (const std::shared_ptr<DCFInfo>& dcf : library.mediaTree())
        writeRecording(json, *dcf);
    json.endArray();
    json.key("pictures");
    json.beginArray();
    for (const std::shared_ptr<PictureInfo>& picture : library.pictureTree())
        writePicture(json, *picture);
    json.endArray();
    json.endObject();
}

void printRow(const QString& date, const QString& kind, quint64 bytes, bool isProtected, const QString& path)
{
    // The date comes last but one: its width depends on the locale and, in Japanese, on the terminal's font.
    std::printf("%10s  %-6s  %s  %s%s%s\n", dataSizeText(bytes).toLocal8Bit().constData(), isProtected ? "locked" : "",
                date.toLocal8Bit().constData(), files::nativePath(path).constData(), kind.isEmpty() ? "" : "  ",
                kind.toLocal8Bit().constData());
}

void printTable(const MediaLibrary& library)
{
    if (!MediaLibrary::mediaIsAvailable(library.rootPath())) {
        std::puts(QCoreApplication::translate("CommandLine", "This folder is no card of a drive recorder.")
                      .toLocal8Bit()
                      .constData());
        return;
    }
    for (const std::shared_ptr<DCFInfo>& dcf : library.mediaTree())
        printRow(dcf->dcfDateString, kindText(dcf->eventName()), dcf->fileSize, dcf->isProtected(), dcf->deltaPath);
    for (const std::shared_ptr<PictureInfo>& picture : library.pictureTree())
        printRow(picture->pictureDateString, {}, picture->fileSize, picture->isProtected(), picture->deltaPath);
    std::puts(QCoreApplication::translate("CommandLine", "%1 recordings, %2 pictures")
                  .arg(library.mediaTree().size())
                  .arg(library.pictureTree().size())
                  .toLocal8Bit()
                  .constData());
}

} // namespace

int failure(const QString& path, const QString& why)
{
    std::fprintf(stderr, "cardreel: %s: %s\n", files::nativePath(path).constData(), why.toLocal8Bit().constData());
    return Failure;
}

int listCard(const Options& options)
{
    const QString& cardPath = options.arguments.first();
    if (!files::isReadableFolder(cardPath))
        return failure(cardPath, QString::fromLocal8Bit(std::strerror(errno)));

    MediaLibrary library;
    library.mediaTreeSyncAtRootPath(files::absolutePath(cardPath));
    if (options.json)
        writeJson(library);
    else
        printTable(library);
    return Success;
}

} // namespace cardreel::CommandLine
