#include "export/StagedFile.h"

#include "platform/files/Files.h"

#include <QRandomGenerator>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

QString systemsReason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// A name in the target's folder that nothing has. Not made of the target's name, which may be as long as names can be.
QString stagingPath(const QString& target)
{
    constexpr qsizetype longestExtension = 16;
    const QString extension = files::nameOf(target).sliced(files::stemOf(target).size()).left(longestExtension);
    QString path;
    do {
        const QString hex = QString::number(QRandomGenerator::global()->generate64(), 16);
        path = files::join(files::folderOf(target) + u'/', u".cardreel-"_s + hex + extension);
    } while (files::exists(path));
    return path;
}

/// Closes in any case; `isThere` says whether all went well so far.
bool closed(FileSteps& steps, int file, bool isThere, QString& error)
{
    if (!isThere)
        error = systemsReason();
    const bool isClosed = steps.close(file) == 0;
    if (isThere && !isClosed)
        error = systemsReason();
    return isThere && isClosed;
}

} // namespace

StagedFile::StagedFile(const QString& targetPath)
    : m_target(files::absolutePath(targetPath))
    , m_path(stagingPath(m_target))
{
}

StagedFile::~StagedFile()
{
    discard();
}

void StagedFile::discard()
{
    if (!m_committed)
        m_steps.remove(files::nativePath(m_path));
}

bool StagedFile::write(const QByteArray& bytes, QString& error)
{
    const int file = m_steps.create(files::nativePath(m_path));
    if (file < 0) {
        error = systemsReason();
        return false;
    }
    const bool isThere = writeAll(m_steps, file, bytes.constData(), static_cast<size_t>(bytes.size()));
    return closed(m_steps, file, isThere && m_steps.sync(file) == 0, error);
}

bool StagedFile::sync(QString& error)
{
    const int file = m_steps.openToRead(files::nativePath(m_path));
    if (file < 0) {
        error = systemsReason();
        return false;
    }
    return closed(m_steps, file, m_steps.sync(file) == 0, error);
}

bool StagedFile::commit(QString& error)
{
    m_committed = m_steps.rename(files::nativePath(m_path), files::nativePath(m_target)) == 0;
    if (!m_committed)
        error = systemsReason();
    return m_committed;
}

} // namespace cardreel
