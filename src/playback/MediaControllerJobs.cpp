// Export and backup of the card: one job at a time, and what its sheet shows.

#include "export/DCFAsyncBackUp.h"
#include "export/DCFAsyncKMLBuilder.h"
#include "media/DCFInfo.h"
#include "platform/files/Files.h"
#include "platform/text/Localization.h"
#include "playback/MediaController.h"
#include "playback/MediaControllerParts.h"

#include <algorithm>
#include <utility>

namespace cardreel {

/// False when it may not begin.
bool MediaController::beginJob(ProgressPane* sheet)
{
    if (m_isDisposed || m_currentProgressVC || m_currentBackUp || m_currentKmlBuilder)
        return false;
    cancelParse();
    setCanReloadMedia(false);
    m_currentProgressVC = sheet;
    const Survival survival(this);
    tell(sheet, &ProgressPane::setInfoText, QString());
    return survival.isAtWork() && m_currentProgressVC == sheet;
}

// The jobs' callbacks name this object: they come on its thread, and not after the job was cancelled, as every way in
// which this object ends does.

void MediaController::exportInfos(const DCFList& infos, const QString& targetFilePath, ProgressPane* sheet)
{
    if (!beginJob(sheet))
        return;
    const auto builder = std::make_shared<DCFAsyncKMLBuilder>();
    m_currentKmlBuilder = builder;
    m_isJobRunning = !infos.empty();
    builder->kmlBuildAsync(
        infos, targetFilePath,
        [this](const std::shared_ptr<DCFInfo>& dcf, double fraction) { showJobsItem(fraction, dcf->filePath); },
        [this, targetFilePath](const std::optional<QString>& error) {
            // The first text is always the same; whether it is true is for the second to say.
            const std::optional<QString>& reason = error ? error : m_currentKmlBuilder->outputError();
            const QString problem = reason ? tr("The file wasn't written: %1").arg(*reason) : QString();
            const char* const text = error ? QT_TRANSLATE_NOOP("Keys", "An error occurred when writing data")
                                           : QT_TRANSLATE_NOOP("Keys", "KML/KMZ export is complete");
            jobDidEnd(localizedText(text), reason ? QString() : targetFilePath, problem);
        });
}

void MediaController::backUpSelectedInfos(const BackUpList& items, const QString& targetRootDirPath, ReadBack readBack,
                                          ProgressPane* sheet)
{
    if (!beginJob(sheet))
        return;
    const auto backUp = std::make_shared<DCFAsyncBackUp>(readBack);
    m_currentBackUp = backUp;
    m_isJobRunning = !items.empty();
    backUp->backUpAsync(
        items, targetRootDirPath,
        [this](float fraction, const QString& path) { showJobsItem(static_cast<double>(fraction), path); },
        [this](float fraction, const QString&) {
            tell(m_currentProgressVC, &ProgressPane::setProgress, static_cast<double>(fraction));
        },
        [this, targetRootDirPath](const std::optional<FileError>& error) {
            const char* const text = error ? QT_TRANSLATE_NOOP("Keys", "An error occurred during backup")
                                           : QT_TRANSLATE_NOOP("Keys", "Backup is complete");
            jobDidEnd(localizedText(text), error ? QString() : targetRootDirPath,
                      error ? error->text() : m_currentBackUp->leftOutText());
        });
}

void MediaController::showJobsItem(double fraction, const QString& path)
{
    const Survival survival(this);
    tell(m_currentProgressVC, &ProgressPane::setProgress, fraction);
    if (survival.exists())
        tell(m_currentProgressVC, &ProgressPane::setItem, files::displayPath(files::nameOf(path)));
}

void MediaController::jobDidEnd(const QString& text, const QString& path, const QString& problem)
{
    const Survival survival(this);
    m_isJobRunning = false;
    tell(m_currentProgressVC, &ProgressPane::setProgress, 1.0);
    if (survival.exists())
        tell(m_currentProgressVC, &ProgressPane::setInfoText, text);
    if (survival.exists())
        tell(m_currentProgressVC, &ProgressPane::jobDidEnd, path, problem);
}

void MediaController::closeProgress()
{
    if (!m_currentProgressVC && !m_currentBackUp && !m_currentKmlBuilder)
        return;
    cancelJobs();
    m_currentProgressVC = nullptr;
    setCanReloadMedia(true);
    const auto inView = std::find(mediaTree().begin(), mediaTree().end(), currentDCF());
    reparseAtIndex(inView == mediaTree().end() ? 0 : static_cast<size_t>(inView - mediaTree().begin()));
}

void MediaController::cancelJobs()
{
    if (m_currentBackUp)
        m_currentBackUp->cancelFlag = true;
    if (m_currentKmlBuilder)
        m_currentKmlBuilder->cancelFlag = true;
    m_currentBackUp.reset();
    m_currentKmlBuilder.reset();
    m_isJobRunning = false;
}

/// The paths that they were given aren't the card's any more. The parse is started anew by whoever knows the new ones.
void MediaController::jobsHaveToEnd()
{
    if (!m_currentProgressVC && !m_currentBackUp && !m_currentKmlBuilder)
        return;
    cancelJobs();
    setCanReloadMedia(true);
    tell(std::exchange(m_currentProgressVC, nullptr), &ProgressPane::dismiss);
}

} // namespace cardreel
