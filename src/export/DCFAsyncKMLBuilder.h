#pragma once

#include "export/JobHandOver.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace cardreel {

class DCFInfo;
class ExportRoute;
class KmzPackage;
class StagedFile;

/// The background job that writes the route and the events of recordings into one KML, KMZ or GPX document. Runs once,
/// on the BackgroundQueue, and tells the interface thread of its progress, which it waits for. Held by a shared
/// pointer: dropping it ends the job.
class DCFAsyncKMLBuilder : public std::enable_shared_from_this<DCFAsyncKMLBuilder>
{
public:
    using DCFList = std::vector<std::shared_ptr<DCFInfo>>;
    using ProgressBlock = std::function<void(const std::shared_ptr<DCFInfo>&, double fraction)>;
    using DidFinishBlock = std::function<void(const std::optional<QString>& error)>;

    /// Set by anyone, from any thread: the job stops at the next recording or phase, reports no more, and the target
    /// stays as it was.
    std::atomic<bool> cancelFlag = false;
    /// Set when the job starts and never cleared.
    std::atomic<bool> isRunning = false;

    ProgressBlock progressBlock;   ///< after each recording, with a fraction over 0 and below 1
    DidFinishBlock didFinishBlock; ///< once; nothing unfinished is left by then

    /// Interface thread, where both callbacks are made, too. Starts the job unless it was started before; nothing at
    /// all happens for no recordings. The end is told when the target was written or couldn't be, always without an
    /// error: who must know asks outputError(). Nothing is told after a cancel. The target's extension decides on the
    /// format, as formatOf() has it. What is at the target is replaced by the whole new file or stays as it is; of a
    /// link that is what it leads to. A recording whose side file can't be read is left out like one that has none, but
    /// a card that was pulled before all was read is an error.
    void kmlBuildAsync(const DCFList& infos, const QString& targetFilePath, ProgressBlock progress,
                       DidFinishBlock didFinish);

    /// Interface thread, once the end was told: why the target couldn't be written.
    const std::optional<QString>& outputError() const { return m_outputError; }

    /// Packs the file by the zip program into an archive without folders and waits for it. An archive that is there
    /// keeps its other entries. What the program printed; nothing when it couldn't be started. Not for the interface
    /// thread.
    static std::optional<QByteArray> compressUsingZipWithSourcePath(const QString& sourcePath,
                                                                    const QString& targetPath);
    /// The command line for that.
    static QString zipCommandLine(const QString& sourcePath, const QString& targetPath);

private:
    struct Item;
    struct Job;
    using HandOver = JobHandOver<DCFAsyncKMLBuilder>;
    using Problem = std::optional<QString>; ///< nothing when all goes well

    static void run(const HandOver& builder, const Job& job);
    static bool collectRoute(const HandOver& builder, const Job& job, ExportRoute& route, Problem& problem);
    static void output(const HandOver& builder, const Job& job, const ExportRoute& route, Problem problem);
    void finish(const Job& job, StagedFile& file, KmzPackage& package, Problem problem);

    Problem m_outputError;
};

} // namespace cardreel
