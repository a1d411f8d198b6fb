#pragma once

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
class NMEAData;
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

    /// Interface thread. Starts the job unless it was started before; nothing at all happens for no recordings.
    /// `progress` is called on the interface thread after each recording, with a fraction over 0 and below 1; then
    /// `didFinish` when the target was written or couldn't be, always without an error: who must know asks
    /// outputError(). Neither after a cancel. The target's extension decides: "kmz", "gpx", and KML for all others.
    /// What is at the target is replaced by the whole new file or stays as it is.
    void kmlBuildAsync(const DCFList& infos, const QString& targetFilePath, ProgressBlock progress,
                       DidFinishBlock didFinish);

    /// Interface thread, once `didFinish` was called: why the target couldn't be written.
    const std::optional<QString>& outputError() const { return m_outputError; }

    /// Packs the file by the zip program into an archive without folders and waits for it. An archive that is there
    /// keeps its other entries. What the program printed; nothing when it couldn't be started. Not for the interface
    /// thread.
    static std::optional<QByteArray> compressUsingZipWithSourcePath(const QString& sourcePath,
                                                                    const QString& targetPath);
    /// The command line for that.
    static QString zipCommandLine(const QString& sourcePath, const QString& targetPath);

private:
    /// What the job needs to know of one recording, copied on the interface thread: the record itself may change there.
    struct Item
    {
        std::shared_ptr<DCFInfo> info;
        std::shared_ptr<NMEAData> nmea;
        std::optional<QString> eventName; ///< of an event recording
    };
    struct Job
    {
        std::vector<Item> items;
        std::vector<QString> roots; ///< of the cards that the recordings are on
        QString targetPath;
        ProgressBlock progress;
        DidFinishBlock didFinish;
    };
    using Self = std::weak_ptr<DCFAsyncKMLBuilder>;

    static bool isCancelled(const Self& self);
    static bool handOver(const Self& self, const std::function<void(DCFAsyncKMLBuilder&)>& call);
    static void run(const Self& self, const Job& job);
    static bool readTelemetry(const Self& self, const Job& job);
    static std::optional<ExportRoute> collectRoute(const Self& self, const Job& job);
    static void output(const Self& self, const Job& job, const ExportRoute& route);
    void finish(const Job& job, StagedFile& file, std::optional<QString> error);

    std::optional<QString> m_outputError;
};

} // namespace cardreel
