#include "export/DCFAsyncKMLBuilder.h"

#include "export/ExportRoute.h"
#include "export/GpxDocument.h"
#include "export/KmlDocument.h"
#include "export/StagedFile.h"
#include "export/TaskWrapper.h"
#include "media/DCFInfo.h"
#include "media/ThumbnailCache.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/files/Files.h"
#include "platform/files/Places.h"
#include "platform/text/Localization.h"
#include "telemetry/NMEAData.h"

#include <QLoggingCategory>
#include <QStandardPaths>

#include <algorithm>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

Q_LOGGING_CATEGORY(logExport, "cardreel.export", QtInfoMsg)

constexpr double almostDone = 0.99; // the bar is full only when the file is there

enum class Format { Kml, Kmz, Gpx };

Format formatOf(const QString& path)
{
    if (path.endsWith(u".kmz"_s, Qt::CaseInsensitive))
        return Format::Kmz;
    return path.endsWith(u".gpx"_s, Qt::CaseInsensitive) ? Format::Gpx : Format::Kml;
}

/// By this thread, by another, or long ago.
void ensureParsed(NMEAData& nmea)
{
    nmea.waitUntilParsed();
    // What held nothing is read again: perhaps it was not there at the time.
    if (nmea.snapshot()->GOPs().empty()) {
        nmea.setup();
        nmea.waitUntilParsed();
    }
}

bool isOnACard(const QString& path, const std::vector<QString>& roots)
{
    return std::any_of(roots.begin(), roots.end(), [&path](const QString& root) { return wouldLieWithin(path, root); });
}

/// Why the zip program made no archive, from what it printed.
QString zipProblem(const std::optional<QByteArray>& output)
{
    if (!output)
        return localizedText(QT_TRANSLATE_NOOP("Keys", "The program csh, which starts zip, can't be started"));
    if (QStandardPaths::findExecutable(u"zip"_s).isEmpty())
        return localizedText(QT_TRANSLATE_NOOP("Keys", "The program zip is not installed"));
    // Its first line about it has the system's reason, the second the name of a file that the user never sees.
    const QString said = QString::fromLocal8Bit(*output);
    const qsizetype begin = said.indexOf(u"error: "_s);
    const QString reason = begin < 0 ? QString() : said.sliced(begin + 7).section(u'\n', 0, 0);
    return localizedText(QT_TRANSLATE_NOOP("Keys", "The archive can't be made: %@")).replace(u"%@"_s, reason);
}

/// Nothing when it went well, or why it didn't.
std::optional<QString> zipDocument(const QByteArray& text, StagedFile& target)
{
    // The archive's entry has the name of the file that is packed, so all exports share one.
    static std::mutex oneAtATime;
    const std::lock_guard<std::mutex> lock(oneAtATime);
    const QString folder = ThumbnailCache::cachesDirectoryPath();
    if (folder.isEmpty())
        return localizedText(QT_TRANSLATE_NOOP("Keys", "There is no folder for caches"));
    const QString documentPath = files::join(folder, u"route.kml"_s);
    StagedFile document(documentPath);
    QString error;
    if (!document.write(text, error) || !document.commit(error))
        return error;
    const auto output = DCFAsyncKMLBuilder::compressUsingZipWithSourcePath(documentPath, target.path());
    if (!files::exists(target.path()))
        return zipProblem(output);
    return target.sync(error) ? std::nullopt : std::optional(error);
}

/// Writes the document, as the target's extension has it, to the staged file; nothing when it went well.
std::optional<QString> writeDocument(const ExportRoute& route, Format format, StagedFile& file)
{
    const QByteArray text = format == Format::Gpx ? GpxDocument::text(route) : KmlDocument::text(route);
    if (format == Format::Kmz)
        return zipDocument(text, file);
    QString error;
    return file.write(text, error) ? std::nullopt : std::optional(error);
}

} // namespace

void DCFAsyncKMLBuilder::kmlBuildAsync(const DCFList& infos, const QString& targetFilePath, ProgressBlock progress,
                                       DidFinishBlock didFinish)
{
    if (isRunning.exchange(true) || infos.empty())
        return;
    Job job{{}, {}, targetFilePath, std::move(progress), std::move(didFinish)};
    job.items.reserve(infos.size());
    for (const std::shared_ptr<DCFInfo>& info : infos) {
        const auto eventName = info->isEventDCF() ? std::optional(info->eventName()) : std::nullopt;
        job.items.push_back({info, info->nmea, eventName});
        if (job.roots.empty() || job.roots.back() != info->rootPath)
            job.roots.push_back(info->rootPath);
    }
    BackgroundQueue::start([self = weak_from_this(), job = std::move(job)] { run(self, job); });
}

QString DCFAsyncKMLBuilder::zipCommandLine(const QString& sourcePath, const QString& targetPath)
{
    return u"zip -j "_s + quotedForCShell(targetPath) + u' ' + quotedForCShell(sourcePath);
}

std::optional<QByteArray> DCFAsyncKMLBuilder::compressUsingZipWithSourcePath(const QString& sourcePath,
                                                                             const QString& targetPath)
{
    return TaskWrapper::syncProcessWithArguments(
        TaskWrapper::argsWithCommandLineString(zipCommandLine(sourcePath, targetPath)));
}

bool DCFAsyncKMLBuilder::isCancelled(const Self& self)
{
    const std::shared_ptr<DCFAsyncKMLBuilder> builder = self.lock();
    return !builder || builder->cancelFlag;
}

/// Whoever drops or cancels the builder is told no more, so both are looked at again on the interface thread. While it
/// waits, the job doesn't hold the builder.
bool DCFAsyncKMLBuilder::handOver(const Self& self, const std::function<void(DCFAsyncKMLBuilder&)>& call)
{
    return InterfaceThread::callAndWait([&] {
        const std::shared_ptr<DCFAsyncKMLBuilder> builder = self.lock();
        if (builder && !builder->cancelFlag)
            call(*builder);
    });
}

void DCFAsyncKMLBuilder::run(const Self& self, const Job& job)
{
    if (!readTelemetry(self, job))
        return;
    const std::optional<ExportRoute> route = collectRoute(self, job);
    if (route && !isCancelled(self))
        output(self, job, *route);
}

/// False when it was cancelled.
bool DCFAsyncKMLBuilder::readTelemetry(const Self& self, const Job& job)
{
    const double count = static_cast<double>(job.items.size());
    for (std::size_t i = 0; i < job.items.size(); ++i) {
        if (isCancelled(self))
            return false;
        const Item& item = job.items[i];
        ensureParsed(*item.nmea);
        const bool isLast = i + 1 == job.items.size();
        const double fraction = isLast ? almostDone : static_cast<double>(i + 1) / count;
        const bool isHeard = handOver(self, [&](const DCFAsyncKMLBuilder&) {
            if (job.progress)
                job.progress(item.info, fraction);
        });
        if (!isHeard)
            return false;
    }
    return true;
}

/// Nothing when it was cancelled.
std::optional<ExportRoute> DCFAsyncKMLBuilder::collectRoute(const Self& self, const Job& job)
{
    ExportRoute route;
    for (const Item& item : job.items) {
        if (isCancelled(self))
            return std::nullopt;
        route.add(*item.nmea->snapshot(), item.eventName);
    }
    return route;
}

/// Everything that takes time happens here, beside the target; what is left for the interface thread, which alone
/// knows of a cancel for sure, is to give the file its name.
void DCFAsyncKMLBuilder::output(const Self& self, const Job& job, const ExportRoute& route)
{
    StagedFile file(job.targetPath);
    std::optional<QString> error;
    if (isOnACard(job.targetPath, job.roots))
        error = localizedText(QT_TRANSLATE_NOOP("Keys", "The card is never changed; choose a place elsewhere"));
    else
        error = writeDocument(route, formatOf(job.targetPath), file);
    handOver(self, [&](DCFAsyncKMLBuilder& builder) { builder.finish(job, file, std::move(error)); });
}

void DCFAsyncKMLBuilder::finish(const Job& job, StagedFile& file, std::optional<QString> error)
{
    QString reason;
    if (!error && !file.commit(reason))
        error = reason;
    file.discard(); // whoever hears of the end finds nothing unfinished
    if (error)
        qCWarning(logExport).noquote() << "not written:" << files::displayPath(job.targetPath) << *error;
    m_outputError = std::move(error);
    if (job.didFinish)
        job.didFinish(std::nullopt);
}

} // namespace cardreel
