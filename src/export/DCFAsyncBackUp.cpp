#include "export/DCFAsyncBackUp.h"

#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "names/ConstClass.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/files/FileSteps.h"
#include "platform/files/Files.h"
#include "platform/files/Places.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

using Code = FileError::Code;
using Result = std::optional<FileError>;

/// One item as it was when the job started: its record goes on living on the interface thread.
struct Source
{
    QString rootPath;
    QString deltaPath;
    QString filePath;
    QString secondaryFilePath;
    QString infoFilePath;
    std::shared_ptr<const DCFInfo> recording; ///< for infoFilePathWithRootPath() only, which reads what never changes
};

struct Copier
{
    QString target;
    ReadBack readBack;
    FileSteps& steps;
};

Source sourceOf(const DCFInfo& info)
{
    return {info.rootPath, info.deltaPath, info.filePath, info.secondaryFilePath, info.infoFilePath, nullptr};
}

Source sourceOf(const PictureInfo& picture)
{
    return {picture.rootPath, picture.deltaPath, picture.filePath, picture.secondaryFilePath, {}, nullptr};
}

Source sourceOf(const BackUpItem& item)
{
    if (const auto* recording = std::get_if<std::shared_ptr<DCFInfo>>(&item)) {
        Source result = sourceOf(**recording);
        result.recording = *recording;
        return result;
    }
    if (const auto* picture = std::get_if<std::shared_ptr<PictureInfo>>(&item))
        return sourceOf(**picture);
    return {};
}

bool isNoSuchFile(const Result& error)
{
    return error && error->code == Code::NoSuchFile;
}

/// `relative` in the target folder; some layouts have folders that were not made beforehand.
Result copyTo(const Copier& copier, const QString& source, const QString& relative)
{
    if (Result error = makeFolders(copier.target, files::folderOf(relative)))
        return error;
    return copyFile(source, files::join(copier.target, relative), copier.steps, copier.readBack);
}

Result copyRear(const Copier& copier, const Source& source)
{
    const QString folder = files::join(ConstClass::REG_ALTER_FOLDER_REAR, files::folderOf(source.deltaPath));
    return copyTo(copier, source.secondaryFilePath, files::join(folder, files::nameOf(source.secondaryFilePath)));
}

/// Whatever of a recording isn't there is left out, the front video too. So a step follows a missing file, but none
/// follows another error.
Result copyRecording(const Copier& copier, const Source& source, const QString& infoTarget)
{
    Result error = copyTo(copier, source.filePath, source.deltaPath);
    if (error && !isNoSuchFile(error))
        return error;
    error = copyFile(source.infoFilePath, infoTarget, copier.steps, copier.readBack);
    if (error && !isNoSuchFile(error))
        return error;
    if (source.secondaryFilePath.isEmpty())
        return {};
    error = copyRear(copier, source);
    return isNoSuchFile(error) ? Result() : error;
}

Result copyPicture(const Copier& copier, const Source& source)
{
    Result error = copyTo(copier, source.filePath, source.deltaPath);
    if (source.secondaryFilePath.isEmpty() || (error && !isNoSuchFile(error)))
        return error;
    error = copyRear(copier, source);
    return isNoSuchFile(error) ? Result() : error;
}

/// A card that was pulled looks like one whose files are all missing, which is no error of any single file.
Result checkCard(const Source& source)
{
    if (!files::names(source.rootPath).empty())
        return {};
    return FileError{Code::CannotRead, source.rootPath, FileError::tr("The card is gone")};
}

Result copyItem(const Copier& copier, const Source& source)
{
    if (source.filePath.isEmpty())
        return {};
    Result error = source.recording
                       ? copyRecording(copier, source, source.recording->infoFilePathWithRootPath(copier.target))
                       : copyPicture(copier, source);
    return error ? error : checkCard(source);
}

Result makeLayout(const QString& target)
{
    using C = ConstClass;
    const QStringList kinds = {C::REG_LM90_FOLDER_NORMAL, C::REG_LM90_FOLDER_MANUAL, C::REG_LM90_FOLDER_EVENT,
                               C::REG_LM90_FOLDER_PARKING};
    QStringList folders = kinds;
    folders << C::REG_LM90_FOLDER_PICTURE << C::REG_ALTER_FOLDER_REAR << C::REG_LM90_FOLDER_SYSTEM;
    for (const QString& kind : kinds)
        folders << files::join(C::REG_LM90_FOLDER_SYSTEM + u"/NMEA"_s, kind);
    for (const QString& kind : kinds)
        folders << files::join(C::REG_ALTER_FOLDER_REAR, kind);
    folders << files::join(C::REG_ALTER_FOLDER_REAR, C::REG_LM90_FOLDER_PICTURE);

    Result error = makeFolders(u"/"_s, target);
    for (const QString& folder : folders) {
        Result made = makeFolders(target, folder);
        if (!error)
            error = std::move(made);
    }
    return error;
}

} // namespace

struct DCFAsyncBackUp::Job
{
    QString target;
    std::vector<Source> sources;
    ReadBack readBack;
    FileSteps* given; ///< nothing: the system's own
};

namespace {

/// Nothing may be made, nor removed afterwards, where the cards themselves are.
Result checkPlace(const QString& target, const std::vector<Source>& sources)
{
    QSet<QString> roots;
    for (const Source& source : sources) {
        if (!source.filePath.isEmpty())
            roots.insert(source.rootPath);
    }
    for (const QString& root : std::as_const(roots)) {
        if (foldersOverlap(target, root))
            return FileError{Code::Overlaps, target, FileError::tr("The backup and the card lie within each other")};
    }
    return {};
}

/// A folder that a job of this process fills or removes, for as long as it does: what one job removes must not be what
/// another one writes.
class TargetClaim
{
public:
    explicit TargetClaim(const QString& target)
        : m_target(target)
    {
        Claims& claims = all();
        const std::scoped_lock lock(claims.mutex);
        m_isHeld = std::none_of(claims.targets.begin(), claims.targets.end(),
                                [&](const QString& other) { return foldersOverlap(target, other); });
        if (m_isHeld)
            claims.targets.insert(target);
    }
    ~TargetClaim() { release(); }
    TargetClaim(const TargetClaim&) = delete;
    TargetClaim& operator=(const TargetClaim&) = delete;

    bool isHeld() const { return m_isHeld; }
    void release()
    {
        if (!std::exchange(m_isHeld, false))
            return;
        Claims& claims = all();
        const std::scoped_lock lock(claims.mutex);
        claims.targets.remove(m_target);
    }

private:
    struct Claims
    {
        std::mutex mutex;
        QSet<QString> targets;
    };
    static Claims& all()
    {
        static Claims claims;
        return claims;
    }

    QString m_target;
    bool m_isHeld = false;
};

Result syncDisk(const Copier& copier)
{
    if (copier.steps.syncDisk(files::nativePath(copier.target)) == 0)
        return {};
    return FileError{Code::CannotWrite, copier.target, QString::fromLocal8Bit(std::strerror(errno))};
}

} // namespace

DCFAsyncBackUp::DCFAsyncBackUp(ReadBack readBack, FileSteps* steps)
    : m_readBack(readBack)
    , m_steps(steps)
    , m_ownSteps(steps ? nullptr : std::make_unique<FileSteps>())
{
}

DCFAsyncBackUp::~DCFAsyncBackUp() = default;

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

namespace {

/// The job on its thread. While it copies or waits it doesn't hold the object, which may be dropped at any time.
class Worker
{
public:
    using Call = std::function<void(DCFAsyncBackUp&)>;

    explicit Worker(std::weak_ptr<DCFAsyncBackUp> backUp)
        : m_backUp(std::move(backUp))
    {
    }

    bool isCancelled() const
    {
        const std::shared_ptr<DCFAsyncBackUp> self = m_backUp.lock();
        return !self || self->cancelFlag;
    }

    /// False when the job was cancelled before `call`, or nobody listens any more.
    bool tell(const Call& call) const
    {
        bool told = false;
        InterfaceThread::callAndWait([&] {
            const std::shared_ptr<DCFAsyncBackUp> self = m_backUp.lock();
            told = self && !self->cancelFlag;
            if (told)
                call(*self);
        });
        return told;
    }

    /// All items; stops at the first error, and between items when cancelled.
    Result copyAll(const Copier& copier, const std::vector<Source>& sources) const
    {
        const auto count = static_cast<float>(sources.size());
        for (size_t i = 0; i < sources.size(); ++i) {
            const QString& path = sources[i].filePath;
            if (isCancelled() ||
                !tell([&](DCFAsyncBackUp& self) { self.willStartProgressBlock(static_cast<float>(i) / count, path); }))
                return {};
            if (Result error = copyItem(copier, sources[i]))
                return error;
            tell([&](DCFAsyncBackUp& self) { self.didFinishProgressBlock(static_cast<float>(i + 1) / count, path); });
        }
        return {};
    }

    /// The folder is free for the next job before anybody hears of the end.
    bool tellFinish(const Result& error, TargetClaim& claim) const
    {
        return tell([&](DCFAsyncBackUp& self) {
            claim.release();
            self.error = error;
            self.didFinishBlock(error);
        });
    }

private:
    std::weak_ptr<DCFAsyncBackUp> m_backUp;
};

} // namespace

void DCFAsyncBackUp::run(const std::weak_ptr<DCFAsyncBackUp>& backUp, const Job& job)
{
    const Worker worker(backUp);
    const QString target = resolvedPath(job.target); // of a link, what it leads to would be left behind
    TargetClaim claim(target);
    Result failure = checkPlace(target, job.sources);
    if (!failure && !claim.isHeld())
        failure = FileError{Code::Overlaps, target, FileError::tr("Another backup is still at work there")};
    if (failure) {
        worker.tellFinish(failure, claim);
        return;
    }
    FileSteps system;
    const Copier copier{target, job.readBack, job.given ? *job.given : system};
    failure = makeLayout(target);
    if (!failure)
        failure = worker.copyAll(copier, job.sources);
    // What isn't on the disk yet can still fail, and "complete" is when people pull it out.
    if (!failure && !worker.isCancelled())
        failure = syncDisk(copier);
    // A cancel counts until the end was told. What is incomplete goes here and not on the interface thread, which
    // would stand still while gigabytes are removed.
    if (!failure && worker.tellFinish({}, claim))
        return;
    cleanDirectory(target);
    if (failure)
        worker.tellFinish(failure, claim);
}

std::optional<FileError> DCFAsyncBackUp::backUpInfo(const DCFInfo& info, const QString& targetRootPath) const
{
    const Copier copier{targetRootPath, m_readBack, m_steps ? *m_steps : *m_ownSteps};
    return copyRecording(copier, sourceOf(info), info.infoFilePathWithRootPath(targetRootPath));
}

std::optional<FileError> DCFAsyncBackUp::backUpPictureInfo(const PictureInfo& picture,
                                                           const QString& targetRootPath) const
{
    const Copier copier{targetRootPath, m_readBack, m_steps ? *m_steps : *m_ownSteps};
    return copyPicture(copier, sourceOf(picture));
}

void DCFAsyncBackUp::cleanDirectory(const QString& path)
{
    if (!files::isFolder(path))
        return;
    std::error_code ignored;
    std::filesystem::remove_all(files::nativePath(files::absolutePath(path)).toStdString(), ignored);
}

} // namespace cardreel
