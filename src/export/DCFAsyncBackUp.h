#pragma once

#include "platform/files/FileCopy.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace cardreel {

class DCFInfo;
class PictureInfo;

/// A recording or a picture that is to be copied; what is neither is passed over.
using BackUpItem = std::variant<std::monostate, std::shared_ptr<DCFInfo>, std::shared_ptr<PictureInfo>>;
using BackUpList = std::vector<BackUpItem>;

/// The background job that copies recordings and pictures into a folder laid out as a card, so that it opens like one.
/// Runs once, on the BackgroundQueue; each callback is made on the interface thread, which is waited for. Held by a
/// shared pointer: dropping it cancels the job. After an error or a cancel the whole target folder is removed, with
/// whatever was in it before, and so are the folders above it that were made for it.
class DCFAsyncBackUp : public std::enable_shared_from_this<DCFAsyncBackUp>
{
public:
    using ProgressBlock = std::function<void(float fraction, const QString& sourcePath)>;
    using DidFinishBlock = std::function<void(const std::optional<FileError>& error)>;

    /// `steps` outlives the job; nothing: the system's own.
    explicit DCFAsyncBackUp(ReadBack readBack = ReadBack::No, FileSteps* steps = nullptr);
    ~DCFAsyncBackUp() = default;
    DCFAsyncBackUp(const DCFAsyncBackUp&) = delete;
    DCFAsyncBackUp& operator=(const DCFAsyncBackUp&) = delete;

    /// Set by anyone, from any thread: the job stops at the next item, removes the target and reports no more.
    std::atomic<bool> cancelFlag = false;
    /// Set when the job starts and never cleared.
    std::atomic<bool> isRunning = false;
    /// Interface thread. Why the job failed.
    std::optional<FileError> error;

    ProgressBlock willStartProgressBlock; ///< fraction 0..1 of the items before this one
    ProgressBlock didFinishProgressBlock; ///< fraction 0..1 of the items up to this one
    DidFinishBlock didFinishBlock;        ///< once, unless cancelled; what failed is removed by then

    /// Interface thread. Starts the job, unless it was started before or there is nothing to copy. A target that lies
    /// in a card that is copied from, or has one in it, and one that another job still fills or removes, is an error
    /// that removes nothing. The end is told once everything has reached the disk.
    void backUpAsync(const BackUpList& infos, const QString& targetRootDirPath, ProgressBlock startProgress,
                     ProgressBlock finishProgress, DidFinishBlock didFinish);

    /// Interface thread, once it was told that all is well: the front files that weren't on the card any more, which is
    /// no error, and for the user a sentence about them, empty when there are none.
    const QStringList& leftOut() const { return m_leftOut; }
    QString leftOutText() const;

    /// Copies a recording's videos and side file; those of them that aren't there are no error. The thread that owns
    /// the record.
    std::optional<FileError> backUpInfo(const DCFInfo& info, const QString& targetRootPath) const;
    /// Copies a picture and the rear camera's. The thread that owns the record.
    std::optional<FileError> backUpPictureInfo(const PictureInfo& picture, const QString& targetRootPath) const;
    /// Removes the folder with all that is in it, links not followed; does nothing when it is none. Any thread.
    static void cleanDirectory(const QString& path);

private:
    struct Job;
    static void run(const std::weak_ptr<DCFAsyncBackUp>& backUp, const Job& job);
    void finish(const std::optional<FileError>& outcome, const QStringList& leftOut);

    ReadBack m_readBack;
    FileSteps* m_steps;
    QStringList m_leftOut;

    Q_DECLARE_TR_FUNCTIONS(cardreel::DCFAsyncBackUp)
};

} // namespace cardreel
