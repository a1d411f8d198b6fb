#include "app/cli/CardSelection.h"
#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"
#include "app/cli/Interrupts.h"
#include "export/ImageCapture.h"
#include "media/CustomPointAnnotation.h"
#include "media/DCFInfo.h"
#include "platform/files/Files.h"
#include "platform/files/Places.h"
#include "platform/video/FrameGenerator.h"
#include "telemetry/FixLookup.h"
#include "telemetry/NMEAData.h"
#include "views/map/PositionMarker.h"

#include <QCoreApplication>

#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel::CommandLine {

namespace {

QString translated(const char* english)
{
    return QCoreApplication::translate("CommandLine", english);
}

/// Seconds from 0 on, in the notation of every locale; nothing for anything else.
std::optional<double> secondsFrom(const QString& text)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    return isNumber && std::isfinite(seconds) && seconds >= 0 ? std::optional(seconds) : std::nullopt;
}

/// What the window's map would have as the present position then, stamped with the clock over the picture.
std::optional<CustomLocation> locationAt(const DCFInfo& recording, double seconds, double length)
{
    recording.nmea->setup();
    const std::shared_ptr<const Telemetry> telemetry = recording.nmea->snapshot();
    const double date = timeOfDay(recording, seconds, length);
    const CustomLocation* fix = nearestFix(telemetry->varidLocations(), date);
    const bool isAvailable = fix && std::abs(secondsSince1970(fix->timestamp) - date) < availableWithinSeconds;
    const std::optional<CustomPointAnnotation> marker = movedMarker(fix, isAvailable, nullptr);
    const Instant moment(std::chrono::milliseconds(std::llround(date * 1000)));
    return ImageCapture::locationOf(marker ? &*marker : nullptr, moment);
}

struct Capture
{
    const DCFInfo& recording;
    const Options& options;
    double seconds;
};

/// The frame on screen at that moment. No picture, with a line on standard error, when there is none.
QImage frameOf(const Capture& capture, FrameGenerator& front)
{
    const bool isRear = capture.options.rear;
    const QString& path = isRear ? capture.recording.secondaryFilePath : capture.recording.filePath;
    std::optional<FrameGenerator> rear;
    double pace = 1;
    if (isRear) {
        rear.emplace(path);
        // The same moment is the same fraction of both files.
        if (front.duration() > 0 && rear->duration() > 0)
            pace = rear->duration() / front.duration();
    }
    const VideoFrame frame = (rear ? *rear : front).frame(capture.seconds * pace);
    if (frame.image.isNull())
        failure(path, frame.errorText);
    return capture.options.mirror ? ImageCapture::flipImageHorizontally(frame.image) : frame.image;
}

int save(const Capture& capture)
{
    const DCFInfo& recording = capture.recording;
    const QString& target = *capture.options.out;
    if (capture.options.rear && recording.secondaryFilePath.isEmpty())
        return failure(recording.filePath, translated(QT_TRANSLATE_NOOP("CommandLine", "It has no rear video.")));
    FrameGenerator front(recording.filePath);
    const double length = front.duration();
    if (length > 0 && capture.seconds > length)
        return wrongUsage(u"--at takes at most %1, the recording's seconds"_s.arg(length));
    const QImage picture = frameOf(capture, front);
    if (picture.isNull())
        return Failure;
    const auto location = length > 0 ? locationAt(recording, capture.seconds, length) : std::nullopt;
    Interrupts::hold(); // a signal before leaves nothing behind, one during the writing waits
    if (const auto error = ImageCapture::writeFileWithCaptureImage(picture, location, target))
        return failure(error->path, error->reason);
    return Success;
}

} // namespace

int captureFrame(const Options& options)
{
    if (!options.at || !options.out)
        return wrongUsage(u"capture takes --at SECONDS and --out FILE"_s);
    const std::optional<double> seconds = secondsFrom(*options.at);
    if (!seconds)
        return wrongUsage(u"--at takes seconds from 0 on, not %1"_s.arg(files::displayPath(*options.at)));
    if (!ImageCapture::fileTypes().contains(files::extensionOf(*options.out)))
        return wrongUsage(u"capture writes files named .jpg, .jpeg or .png"_s);
    Interrupts::endProgram();
    MediaLibrary library;
    if (!openCard(library, options.arguments.first()))
        return Failure;
    const QString& name = options.arguments.last();
    const auto recordings = namedRecordings(library, {name});
    if (!recordings)
        return WrongUsage;
    if (recordings->size() > 1)
        return wrongUsage(u"several recordings are named %1: give one's path below the card"_s.arg(name));
    if (wouldLieWithin(*options.out, library.rootPath()))
        return failure(*options.out, translated(QT_TRANSLATE_NOOP("CommandLine",
                                                                  "It would be on the card, which is never changed.")));
    return save({*recordings->front(), options, *seconds});
}

} // namespace cardreel::CommandLine
