#include "app/cli/CardSelection.h"
#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"
#include "app/cli/Interrupts.h"
#include "app/cli/TerminalJob.h"
#include "export/DCFAsyncKMLBuilder.h"
#include "export/ExportFormat.h"
#include "media/DCFInfo.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace cardreel::CommandLine {

namespace {

int writeRoute(const MediaLibrary::DCFList& recordings, const QString& target)
{
    const auto builder = std::make_shared<DCFAsyncKMLBuilder>();
    TerminalJob job;
    ProgressBar::State state{0, 0, static_cast<int>(recordings.size()), {}};
    const auto progress = [&](const std::shared_ptr<DCFInfo>& recording, double fraction) {
        state.fraction = fraction;
        state.path = recording->filePath;
        ++state.number;
        job.show(state);
    };
    builder->kmlBuildAsync(recordings, target, progress, [&](const std::optional<QString>&) {
        const std::optional<QString>& why = builder->outputError();
        job.finish(why ? std::optional(FileError{FileError::Code::CannotWrite, target, *why}) : std::nullopt);
    });
    return job.run(builder->cancelFlag);
}

} // namespace

int exportRoute(const Options& options)
{
    const QString& card = options.arguments.first();
    const QString& target = options.arguments.last();
    if (!isExportName(target))
        return wrongUsage(u"export writes files named .kml, .kmz or .gpx"_s);
    Interrupts::endProgram();
    MediaLibrary library;
    if (!openCard(library, card))
        return Failure;
    const auto recordings = namedRecordings(library, options.selected);
    if (!recordings)
        return WrongUsage;
    if (recordings->empty())
        return failure(card, QCoreApplication::translate("CommandLine", "There are no recordings on this card."));
    return writeRoute(*recordings, target);
}

} // namespace cardreel::CommandLine
