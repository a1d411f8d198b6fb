#include "export/DCFAsyncBackUp.h"

#include "export/BackUpCopier.h"
#include "export/JobHandOver.h"
#include "export/TargetClaim.h"
#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "platform/BackgroundQueue.h"
#include "platform/files/FileSteps.h"
#include "platform/files/Files.h"
#include "platform/files/Places.h"

#include <QSet>

#include <filesystem>
#include <system_error>
#include <utility>

namespace cardreel {

namespace {

using Code = FileError::Code;
using Result = std::optional<FileError>;

BackUpSource sourceOf(const BackUpItem& item)
{
    if (const auto* recording = std::get_if<std::shared_ptr<DCFInfo>>(&item)) {
        BackUpSource result(**recording);
        result.recording = *recording;
        return result;
    }
    if (const auto* picture = std::get_if<std::shared_ptr<PictureInfo>>(&item))
        return BackUpSource(**picture);
    return {};
}

/// Nothing may be made, nor removed afterwards, where the cards themselves are.
Result checkPlace(const QString& target, const std::vector<BackUpSource>& sources)
{
    QSet<QString> roots;
    for (const BackUpSource& source : sources) {
        if (!source.filePath.isEmpty())
            roots.insert(source.rootPath);
    }
    for (const QString& root : std::as_const(roots)) {
        if (foldersOverlap(target, root))
            return FileError{Code::Overlaps, target, FileError::tr("The backup and the card lie within each other")};
    }
    return {};
}

/// All items; stops at the first error, and between items when cancelled.
Result copyAll(const JobHandOver<DCFAsyncBackUp>& job, BackUpCopier& copier, const std::vector<BackUpSource>& sources)
{
    const auto count = static_cast<float>(sources.size());
    for (size_t i = 0; i < sources.size(); ++i) {
        const QString& path = sources[i].filePath;
        if (job.isCancelled() ||
            !job.tell([&](DCFAsyncBackUp& self) { self.willStartProgressBlock(static_cast<float>(i) / count, path); }))
            return {};
        if (Result error = copier.copy(sources[i]))
            return error;
        job.tell([&](DCFAsyncBackUp& self) { self.didFinishProgressBlock(static_cast<float>(i + 1) / count, path); });
    }
    return {};
}

} // namespace

struct DCFAsyncBackUp::Job
{
    QString target;
    std::vector<BackUpSource> sources;
    ReadBack readBack;
    FileSteps* given; ///< nothing: the system's own
};

DCFAsyncBackUp::DCFAsyncBackUp(ReadBack readBack, FileSteps* steps)
    : m_readBack(readBack)
    , m_steps(steps)
{
}

void DCFAsyncBackUp::backUpAsync(const BackUpList& infos, const QString& targetRootDirPath, ProgressBlock startProgress,
                                 ProgressBlock finishProgress, DidFinishBlock didFinish)
{
    if (infos.empty() || isRunning.exchange(true))
        return;
    const auto orNothing = [](ProgressBlock block) { return block ? std::move(block) : [](float, const QString&) {}; };
    willStartProgressBlock = orNothing(std::move(startProgress));
    didFinishProgressBlock = orNothing(std::move(finishProgress));
    didFinishBlock = didFinish ? std::move(didFinish) : [](const std::optional<FileError>&) {};
    Job job{files::absolutePath(targetRootDirPath), {}, m_readBack, m_steps};
    job.sources.reserve(infos.size());
    for (const BackUpItem& item : infos)
        job.sources.push_back(sourceOf(item));
    BackgroundQueue::start([backUp = weak_from_this(), job = std::move(job)] { run(backUp, job); });
}

void DCFAsyncBackUp::run(const std::weak_ptr<DCFAsyncBackUp>& backUp, const Job& job)
{
    const JobHandOver handOver(backUp);
    const QString target = resolvedPath(job.target); // of a link, what it leads to would be left behind
    TargetClaim claim(target);
    const auto tellFinish = [&](const Result& outcome, const QStringList& leftOut) {
        return handOver.tell([&](DCFAsyncBackUp& self) {
            claim.release(); // free for the next job before anybody hears of the end
            self.finish(outcome, leftOut);
        });
    };
    Result failure = checkPlace(target, job.sources);
    if (!failure && !claim.isHeld())
        failure = FileError{Code::Overlaps, target, FileError::tr("Another backup is still at work there")};
    if (failure) {
        tellFinish(failure, {});
        return;
    }
    FileSteps system;
    BackUpCopier copier(target, job.readBack, job.given ? *job.given : system);
    failure = copier.makeLayout();
    if (!failure)
        failure = copyAll(handOver, copier, job.sources);
    // What isn't on the disk yet can still fail, and "complete" is when people pull it out.
    if (!failure && !handOver.isCancelled())
        failure = copier.syncDisk();
    // A cancel counts until the end was told. What is incomplete goes here and not on the interface thread, which
    // would stand still while gigabytes are removed.
    if (!failure && tellFinish({}, copier.leftOut()))
        return;
    cleanDirectory(target);
    copier.removeMadeFolders();
    if (failure)
        tellFinish(failure, {});
}

void DCFAsyncBackUp::finish(const std::optional<FileError>& outcome, const QStringList& leftOut)
{
    error = outcome;
    m_leftOut = leftOut;
    didFinishBlock(outcome);
}

QString DCFAsyncBackUp::leftOutText() const
{
    if (m_leftOut.isEmpty())
        return {};
    return tr("%n file(s) weren't on the card any more and are not in the backup.", nullptr,
              static_cast<int>(m_leftOut.size()));
}

std::optional<FileError> DCFAsyncBackUp::backUpInfo(const DCFInfo& info, const QString& targetRootPath) const
{
    FileSteps system;
    BackUpCopier copier(targetRootPath, m_readBack, m_steps ? *m_steps : system);
    return copier.copyRecording(BackUpSource(info), info.infoFilePathWithRootPath(targetRootPath));
}

std::optional<FileError> DCFAsyncBackUp::backUpPictureInfo(const PictureInfo& picture,
                                                           const QString& targetRootPath) const
{
    FileSteps system;
    BackUpCopier copier(targetRootPath, m_readBack, m_steps ? *m_steps : system);
    return copier.copyPicture(BackUpSource(picture));
}

void DCFAsyncBackUp::cleanDirectory(const QString& path)
{
    if (!files::isFolder(path))
        return;
    std::error_code ignored;
    std::filesystem::remove_all(files::nativePath(files::absolutePath(path)).toStdString(), ignored);
}

} // namespace cardreel
