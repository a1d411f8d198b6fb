#include "media/DCFAsyncParser.h"

#include "media/DCFInfo.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"

#include <utility>

namespace cardreel {

DCFAsyncParser::DCFAsyncParser(double backingScale)
    : ThumbnailMaker(backingScale, cancelFlag)
{
}

void DCFAsyncParser::setUpDCFAsync(const DCFList& dcfs, size_t startIndex, ProgressBlock progress,
                                   DidFinishBlock didFinish)
{
    if (isRunning.exchange(true) || dcfs.empty())
        return;
    Job job{dcfs, {}, std::move(progress), std::move(didFinish)};
    job.items.reserve(dcfs.size());
    for (size_t i = 0; i < dcfs.size(); ++i) {
        const size_t index = (startIndex + i) % dcfs.size();
        const DCFInfo& dcf = *dcfs[index];
        job.items.push_back({index, dcf.filePath, dcf.routeLine.empty(), dcf.annotation.empty()});
    }
    BackgroundQueue::start([parser = weak_from_this(), job = std::move(job)] { run(parser, job); });
}

void DCFAsyncParser::run(const std::weak_ptr<DCFAsyncParser>& parser, const Job& job)
{
    // Whoever drops or cancels the parser is told no more, so both are looked at again at each hand-over. While it
    // waits for one, the job doesn't hold the parser.
    const auto handOver = [&parser](const std::function<void(DCFAsyncParser&)>& call) {
        return InterfaceThread::callAndWait([&] {
            const std::shared_ptr<DCFAsyncParser> self = parser.lock();
            if (self && !self->cancelFlag)
                call(*self);
        });
    };
    for (const Item& item : job.items) {
        const std::optional<Result> result = parse(parser, job, item);
        if (!result || !handOver([&](DCFAsyncParser& self) { self.take(job, item, *result); }))
            return;
    }
    if (const std::shared_ptr<DCFAsyncParser> self = parser.lock(); !self || self->cancelFlag)
        return;
    const std::vector<QColor> colors = dayColors(job.dcfs);
    handOver([&](DCFAsyncParser& self) { self.finish(job, colors); });
}

std::optional<DCFAsyncParser::Result> DCFAsyncParser::parse(const std::weak_ptr<DCFAsyncParser>& parser, const Job& job,
                                                            const Item& item)
{
    const std::shared_ptr<DCFAsyncParser> self = parser.lock();
    if (!self || self->cancelFlag)
        return std::nullopt;
    Result result;
    result.thumbnail = self->getThumbnailPathWithSourceFilePath(item.filePath);
    if (item.wantsRoute)
        result.route = polylineForDCFInfos(job.dcfs, item.index);
    if (item.wantsAnnotation)
        result.marker = annotationForDCFInfo(job.dcfs[item.index]);
    return result;
}

void DCFAsyncParser::take(const Job& job, const Item& item, const Result& result)
{
    const std::shared_ptr<DCFInfo>& dcf = job.dcfs[item.index];
    if (result.route && !result.route->coordinates().empty() && dcf->routeLine.empty())
        dcf->routeLine.push_back(result.route);
    if (result.marker && dcf->annotation.empty())
        dcf->annotation.push_back(result.marker);
    for (const std::shared_ptr<CustomMapPolyline>& line : dcf->routeLine)
        totalRect = totalRect.united(line->boundingMapRect());
    if (dcf->thumbnailPath.isEmpty())
        dcf->thumbnailPath = result.thumbnail.value_or(QString());
    if (job.progress)
        job.progress(dcf);
}

void DCFAsyncParser::finish(const Job& job, const std::vector<QColor>& colors)
{
    for (size_t i = 0; i < job.dcfs.size(); ++i) {
        for (const std::shared_ptr<CustomMapPolyline>& line : job.dcfs[i]->routeLine) {
            if (colors[i].isValid())
                line->lineColor = colors[i];
        }
    }
    if (job.didFinish)
        job.didFinish();
}

} // namespace cardreel
