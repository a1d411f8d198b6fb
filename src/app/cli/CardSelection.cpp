#include "app/cli/CardSelection.h"

#include "app/cli/Commands.h"
#include "media/DCFInfo.h"
#include "platform/files/Files.h"

#include <QCoreApplication>
#include <QSet>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace cardreel::CommandLine {

bool openCard(MediaLibrary& library, const QString& cardPath)
{
    if (!files::isReadableFolder(cardPath)) {
        failure(cardPath, QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    const QString root = files::absolutePath(cardPath);
    if (!MediaLibrary::mediaIsAvailable(root)) {
        failure(cardPath, QCoreApplication::translate("CommandLine", "This folder is no card of a drive recorder."));
        return false;
    }
    library.mediaTreeSyncAtRootPath(root);
    return true;
}

std::optional<MediaLibrary::DCFList> namedRecordings(const MediaLibrary& library, const QStringList& names)
{
    if (names.isEmpty())
        return library.mediaTree();
    const QSet<QString> wanted(names.begin(), names.end());
    QSet<QString> missing = wanted;
    MediaLibrary::DCFList result;
    for (const std::shared_ptr<DCFInfo>& recording : library.mediaTree()) {
        const QString stem = files::stemOf(recording->filePath);
        if (!wanted.contains(stem) && !wanted.contains(recording->deltaPath))
            continue;
        missing.remove(stem);
        missing.remove(recording->deltaPath);
        result.push_back(recording);
    }
    if (missing.isEmpty())
        return result;
    wrongUsage(u"there is no recording %1 on the card"_s.arg(files::displayPath(*missing.begin())));
    return std::nullopt;
}

} // namespace cardreel::CommandLine
