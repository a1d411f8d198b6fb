#include "export/DCFAsyncKMLBuilder.h"

#include "export/ExportFormat.h"
#include "export/ExportRoute.h"
#include "export/GpxDocument.h"
#include "export/KmlDocument.h"
#include "export/KmzPackage.h"
#include "export/StagedFile.h"
#include "export/TaskWrapper.h"
#include "media/DCFInfo.h"
#include "platform/BackgroundQueue.h"
#include "platform/files/FileCopy.h"
#include "platform/files/Files.h"
#include "platform/files/Places.h"
#include "platform/text/Localization.h"
#include "telemetry/NMEAData.h"

#include <QLoggingCategory>

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

Q_LOGGING_CATEGORY(logExport, "cardreel.export", QtInfoMsg)

constexpr double almostDone = 0.99; // the bar is full only when the file is there

bool isOnACard(const QString& path, const std::set<QString>& roots)
{
    return std::any_of(roots.begin(), roots.end(), [&path](const QString& root) { return wouldLieWithin(path, root); });
}

/// Writes the document, as the target's extension has it, to the staged file; nothing when it went well.
std::optional<QString> writeDocument(const ExportRoute& route, ExportFormat format, StagedFile& file,
                                     KmzPackage& package)
{
    const QByteArray text = format == ExportFormat::Gpx ? GpxDocument::text(route) : KmlDocument::text(route);
    if (format != ExportFormat::Kmz)
        return file.write(text);
    QByteArray archive;
    std::optional<QString> problem = package.pack(text, archive);
    return problem ? problem : file.write(archive);
}

} // namespace

/// What the job needs to know of one recording, copied on the interface thread: the record itself may change there.
struct DCFAsyncKMLBuilder::Item
{
    std::shared_ptr<DCFInfo> info;
    std::shared_ptr<NMEAData> nmea;
    QString root;
    std::optional<QString> eventName; ///< of an event recording
};

struct DCFAsyncKMLBuilder::Job
{
    std::vector<Item> items;
    std::set<QString> roots; ///< of the cards that the recordings are on
    QString targetPath;
};

void DCFAsyncKMLBuilder::kmlBuildAsync(const DCFList& infos, const QString& targetFilePath, ProgressBlock progress,
                                       DidFinishBlock didFinish)
{
    if (isRunning.exchange(true) || infos.empty())
        return;
    progressBlock = progress ? std::move(progress) : [](const std::shared_ptr<DCFInfo>&, double) {};
    didFinishBlock = didFinish ? std::move(didFinish) : [](const std::optional<QString>&) {};
    Job job{{}, {}, targetFilePath};
    job.items.reserve(infos.size());
    for (const std::shared_ptr<DCFInfo>& info : infos) {
        const auto eventName = info->isEventDCF() ? std::optional(info->eventName()) : std::nullopt;
        job.items.push_back({info, info->nmea, info->rootPath, eventName});
        job.roots.insert(info->rootPath);
    }
    BackgroundQueue::start([builder = HandOver(weak_from_this()), job = std::move(job)] { run(builder, job); });
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

void DCFAsyncKMLBuilder::run(const HandOver& builder, const Job& job)
{
    ExportRoute route;
    Problem problem;
    if (collectRoute(builder, job, route, problem) && !builder.isCancelled())
        output(builder, job, route, std::move(problem));
}

/// False when it was cancelled.
bool DCFAsyncKMLBuilder::collectRoute(const HandOver& builder, const Job& job, ExportRoute& route, Problem& problem)
{
    const double count = static_cast<double>(job.items.size());
    for (std::size_t i = 0; i < job.items.size(); ++i) {
        if (builder.isCancelled())
            return false;
        const Item& item = job.items[i];
        const std::shared_ptr<const Telemetry> telemetry = item.nmea->parsedSnapshot();
        // Of a card that was pulled nothing can be read any more; what was read before needs no card.
        if (telemetry->GOPs().empty() && files::names(item.root).empty()) {
            problem = FileError::tr("The card is gone");
            return true;
        }
        route.add(*telemetry, item.eventName);
        const bool isLast = i + 1 == job.items.size();
        const double fraction = isLast ? almostDone : static_cast<double>(i + 1) / count;
        if (!builder.tell([&](const DCFAsyncKMLBuilder& self) { self.progressBlock(item.info, fraction); }))
            return false;
    }
    return true;
}

/// Everything that takes time happens here, beside the target; what is left for the interface thread, which alone
/// knows of a cancel for sure, is to give the file its name.
void DCFAsyncKMLBuilder::output(const HandOver& builder, const Job& job, const ExportRoute& route, Problem problem)
{
    StagedFile file(job.targetPath);
    KmzPackage package;
    if (!problem && isOnACard(job.targetPath, job.roots))
        problem = localizedText(QT_TRANSLATE_NOOP("Keys", "The card is never changed; choose a place elsewhere"));
    if (!problem)
        problem = writeDocument(route, formatOf(job.targetPath), file, package);
    const bool isTold = builder.tell([&](DCFAsyncKMLBuilder& self) { self.finish(job, file, package, problem); });
    if (isTold)
        file.syncFolder();
}

void DCFAsyncKMLBuilder::finish(const Job& job, StagedFile& file, KmzPackage& package, Problem problem)
{
    if (!problem)
        problem = file.commit();
    file.discard();
    package.close(problem ? KmzPackage::Document::Drop : KmzPackage::Document::Keep);
    if (problem)
        qCWarning(logExport).noquote() << "not written:" << files::displayPath(job.targetPath) << *problem;
    m_outputError = std::move(problem);
    didFinishBlock(std::nullopt);
}

} // namespace cardreel
