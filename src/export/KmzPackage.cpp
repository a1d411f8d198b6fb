#include "export/KmzPackage.h"

#include "export/DCFAsyncKMLBuilder.h"
#include "media/ThumbnailCache.h"
#include "platform/files/Files.h"
#include "platform/text/Localization.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const QString documentName = u"route.kml"_s;

/// Why the zip program made no archive, from what it printed.
QString zipProblem(const std::optional<QByteArray>& output)
{
    if (!output)
        return localizedText(QT_TRANSLATE_NOOP("Keys", "The program csh, which starts zip, can't be started"));
    if (QStandardPaths::findExecutable(u"zip"_s).isEmpty())
        return localizedText(QT_TRANSLATE_NOOP("Keys", "The program zip is not installed"));
    // Its first line about it has the system's reason, the second the name of a file that the user never sees.
    const QString said = QString::fromLocal8Bit(*output);
    const qsizetype begin = said.indexOf(u"error: "_s);
    const QString reason = begin < 0 ? u"zip"_s : said.sliced(begin + 7).section(u'\n', 0, 0);
    return localizedText(QT_TRANSLATE_NOOP("Keys", "The archive can't be made: %@")).replace(u"%@"_s, reason);
}

std::optional<QString> writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush())
        return std::nullopt;
    return file.errorString();
}

} // namespace

KmzPackage::KmzPackage() = default;

KmzPackage::~KmzPackage() = default;

std::optional<QString> KmzPackage::pack(const QByteArray& document, QByteArray& archive)
{
    const QString caches = ThumbnailCache::cachesDirectoryPath();
    if (caches.isEmpty())
        return localizedText(QT_TRANSLATE_NOOP("Keys", "There is no folder for caches"));
    m_folder = std::make_unique<QTemporaryDir>(files::join(caches, u"export-XXXXXX"_s));
    if (!m_folder->isValid())
        return m_folder->errorString();
    const QString documentPath = m_folder->filePath(documentName);
    if (std::optional<QString> error = writeFile(documentPath, document))
        return error;
    const QString archivePath = m_folder->filePath(u"route.kmz"_s);
    const auto output = DCFAsyncKMLBuilder::compressUsingZipWithSourcePath(documentPath, archivePath);
    if (!files::exists(archivePath))
        return zipProblem(output);
    QFile file(archivePath);
    if (file.open(QIODevice::ReadOnly))
        archive = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return file.errorString();
    file.remove(); // large ones take their time, which the interface thread hasn't
    return std::nullopt;
}

void KmzPackage::close(Document document)
{
    if (m_folder && document == Document::Keep)
        keepDocument();
    m_folder.reset();
}

void KmzPackage::keepDocument()
{
    const QString kept = files::join(ThumbnailCache::cachesDirectoryPath(), documentName);
    (void)std::rename(files::nativePath(m_folder->filePath(documentName)).constData(),
                      files::nativePath(kept).constData());
}

} // namespace cardreel
