#include "app/cli/CardSelection.h"
#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"
#include "app/cli/Interrupts.h"
#include "app/cli/TerminalJob.h"
#include "export/BackUpOptions.h"
#include "export/DCFAsyncBackUp.h"
#include "platform/files/Files.h"

#include <QCoreApplication>

#include <cerrno>
#include <cmath>
#include <cstring>

using namespace Qt::StringLiterals;

namespace cardreel::CommandLine {

namespace {

QString translated(const char* english)
{
    return QCoreApplication::translate("CommandLine", english);
}

/// Nothing for a word that is no choice; all pictures without one.
std::optional<BackUpOptionState> pictureChoice(const std::optional<QString>& word)
{
    BackUpOptionState state;
    state.backUpOptionAllPicture = !word || *word == u"all";
    state.backUpOptionNoPicture = word == u"none"_s;
    state.backUpOptionOnlyPicture = word == u"only"_s;
    const bool isChoice = state.backUpOptionAllPicture || state.backUpOptionNoPicture || state.backUpOptionOnlyPicture;
    return isChoice ? std::optional(state) : std::nullopt;
}

/// Why no backup can be made in the folder; empty when it can. A failure removes the folder with all that is in it, so
/// there must be nothing in it before.
QString refusal(const QString& folder, const BackUpList& items)
{
    if (folder.isEmpty())
        return QString::fromLocal8Bit(std::strerror(ENOENT));
    if (files::exists(folder) && !files::isReadableFolder(folder))
        return QString::fromLocal8Bit(std::strerror(errno));
    if (!files::names(folder).empty())
        return translated(QT_TRANSLATE_NOOP("CommandLine", "The folder isn't empty."));
    if (!volumeAtPathHasFreeForTargetSize(folder, totalSelectedFileSizeForInfos(items)))
        return translated(QT_TRANSLATE_NOOP("CommandLine", "There is not enough room: %1 to copy, %2 free."))
            .arg(selectedFileSizeDisplay(items), freeSizeDisplayAtPath(folder));
    return {};
}

int copy(const BackUpList& items, const QString& folder, ReadBack readBack)
{
    const auto backUp = std::make_shared<DCFAsyncBackUp>(readBack);
    TerminalJob job;
    ProgressBar::State state{0, 0, static_cast<int>(items.size()), {}};
    const auto show = [&](float fraction, const QString& path) {
        state.fraction = static_cast<double>(fraction);
        state.path = path;
        job.show(state);
    };
    const auto next = [&](float fraction, const QString& path) {
        ++state.number;
        show(fraction, path);
    };
    backUp->backUpAsync(items, folder, next, show, [&](const std::optional<FileError>& error) { job.finish(error); });
    const int status = job.run(backUp->cancelFlag);
    if (status == Success && !backUp->leftOut().isEmpty())
        return failure(folder, backUp->leftOutText());
    return status;
}

} // namespace

int backUpCard(const Options& options)
{
    const QString& card = options.arguments.first();
    const QString& folder = options.arguments.last();
    const std::optional<BackUpOptionState> pictures = pictureChoice(options.pictures);
    if (!pictures)
        return wrongUsage(u"--pictures takes all, none or only"_s);
    Interrupts::endProgram();
    MediaLibrary library;
    if (!openCard(library, card))
        return Failure;
    const auto recordings = namedRecordings(library, options.selected);
    if (!recordings)
        return WrongUsage;
    const BackUpList items = selectedObjectsForOptionState(*pictures, library.mediaTree(), *recordings);
    if (items.empty())
        return failure(card, translated(QT_TRANSLATE_NOOP("CommandLine", "There is nothing to copy on this card.")));
    if (const QString why = refusal(folder, items); !why.isEmpty())
        return failure(folder, why);
    return copy(items, folder, options.verify ? ReadBack::Compare : ReadBack::No);
}

} // namespace cardreel::CommandLine
