#pragma once

#include "media/RouteBuilder.h"
#include "media/ThumbnailCache.h"

#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace cardreel {

/// The background job that reads the telemetry of a card's recordings and makes their routes, markers and thumbnails,
/// the recording in view first. Runs once, on the BackgroundQueue; each result is handed to the interface thread,
/// which is waited for, so that the job is never more than one recording ahead. Held by a shared pointer: dropping it
/// ends the job.
class DCFAsyncParser : public std::enable_shared_from_this<DCFAsyncParser>, public RouteBuilder, public ThumbnailMaker
{
public:
    using ProgressBlock = std::function<void(const std::shared_ptr<DCFInfo>&)>;
    using DidFinishBlock = std::function<void()>;

    /// `backingScale`: the main screen's pixels a point, for the size of thumbnails.
    explicit DCFAsyncParser(double backingScale);

    /// Set by anyone, from any thread: the job stops at the next recording and reports no more.
    std::atomic<bool> cancelFlag = false;
    /// Set when the job starts and never cleared.
    std::atomic<bool> isRunning = false;

    /// Interface thread. Starts the job unless it was started before. `progress` is called on the interface thread
    /// after each recording, `didFinish` when all are done and coloured; neither after a cancel.
    void setUpDCFAsync(const DCFList& dcfs, size_t startIndex, ProgressBlock progress, DidFinishBlock didFinish);

    /// Interface thread. The rectangle around all routes reported so far.
    MapRect totalRect;

private:
    /// What the job needs to know of one recording, copied on the interface thread: the record itself may change there.
    struct Item
    {
        size_t index;
        QString filePath;
        bool wantsRoute;
        bool wantsAnnotation;
    };
    struct Job
    {
        DCFList dcfs;
        std::vector<Item> items;
        ProgressBlock progress;
        DidFinishBlock didFinish;
    };
    /// What the job found out about one recording, on its way to the interface thread.
    struct Result
    {
        std::optional<QString> thumbnail;
        std::shared_ptr<CustomMapPolyline> route;
        std::shared_ptr<CustomPointAnnotation> marker;
    };
    static void run(const std::weak_ptr<DCFAsyncParser>& parser, const Job& job);
    static std::optional<Result> parse(const std::weak_ptr<DCFAsyncParser>& parser, const Job& job, const Item& item);
    void take(const Job& job, const Item& item, const Result& result);
    void finish(const Job& job, const std::vector<QColor>& colors);
};

} // namespace cardreel
