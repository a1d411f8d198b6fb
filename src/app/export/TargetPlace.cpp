#include "app/export/TargetPlace.h"

#include "platform/files/Files.h"
#include "platform/files/Places.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

struct PlaceTexts
{
    Q_DECLARE_TR_FUNCTIONS(cardreel::PlaceTexts)
};

QString shownName(const QString& path)
{
    return files::displayPath(path == u"/" ? path : files::nameOf(path));
}

QString parentOf(const QString& path)
{
    const QString folder = files::folderOf(path);
    return folder.isEmpty() ? u"/"_s : folder;
}

/// As whoever runs the program now may.
bool isWritable(const QString& folder)
{
    return faccessat(AT_FDCWD, files::nativePath(folder).constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

} // namespace

QString withExtension(const QString& path, ExportFormat format)
{
    const bool isNamed = isExportName(path);
    if (path.isEmpty() || (isNamed && formatOf(path) == format))
        return path;
    const QString extension = extensionOf(format); // all are equally long
    return isNamed ? path.chopped(extension.size()) + extension : path + u'.' + extension;
}

QString fullPath(const QString& typed, const QString& folder)
{
    if (typed.isEmpty() || typed.startsWith(u'/'))
        return typed;
    if (typed == u"~" || typed.startsWith(u"~/"))
        return files::fromNativePath(QFile::encodeName(QDir::homePath())) + typed.sliced(1);
    return files::join(folder, typed);
}

QString freePath(const QString& folder, const QString& name, const QString& extension)
{
    QString path = files::join(folder, name + extension);
    for (int number = 2; files::exists(path); ++number)
        path = files::join(folder, name + u' ' + QString::number(number) + extension);
    return path;
}

QString asFileName(const QString& name)
{
    static const QRegularExpression refused(u"[\\x00-\\x1f\\x7f\"*/:<>?\\\\|]"_s);
    QString result = name;
    result.replace(refused, u"-"_s);
    return result;
}

QString whyNoFolderIn(const QString& folder)
{
    if (!files::exists(folder))
        return PlaceTexts::tr("There is no folder “%1”.").arg(shownName(folder));
    if (!files::isFolder(folder))
        return PlaceTexts::tr("“%1” is no folder.").arg(shownName(folder));
    if (!isWritable(folder))
        return PlaceTexts::tr("You may not write to the folder “%1”.").arg(shownName(folder));
    return {};
}

QString whyNoFileAt(const QString& path, const QString& cardPath)
{
    const QString folder = parentOf(path);
    if (QString why = whyNoFolderIn(folder); !why.isEmpty())
        return why;
    if (wouldLieWithin(path, cardPath))
        return PlaceTexts::tr("That is on the card, which is never changed. Choose another folder.");
    if (files::isFolder(path))
        return PlaceTexts::tr("“%1” is a folder.").arg(shownName(path));
    return {};
}

QString whyNoBackUpAt(const QString& path, const QString& cardPath)
{
    const QString name = files::nameOf(path);
    if (name == u"." || name == u"..")
        return PlaceTexts::tr("A folder can't have this name.");
    if (QString why = whyNoFolderIn(parentOf(path)); !why.isEmpty())
        return why;
    if (foldersOverlap(path, cardPath))
        return PlaceTexts::tr("The backup and the card would lie within each other. Choose another folder.");
    if (files::exists(path) && !files::isFolder(path))
        return PlaceTexts::tr("There is a file of the name “%1”.").arg(shownName(path));
    if (files::isFolder(path) && !isWritable(path))
        return PlaceTexts::tr("You may not write to the folder “%1”.").arg(shownName(path));
    return {};
}

bool isFilledFolder(const QString& path)
{
    return files::isFolder(path) && (!files::isReadableFolder(path) || !files::names(path).empty());
}

} // namespace cardreel
