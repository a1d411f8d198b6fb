#include "export/StagedFile.h"

#include "platform/files/Files.h"
#include "platform/files/Places.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace cardreel {

namespace {

QString reasonOf(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

} // namespace

StagedFile::StagedFile(const QString& targetPath)
    : m_target(files::nativePath(resolvedPath(targetPath)))
{
}

StagedFile::~StagedFile()
{
    discard();
}

void StagedFile::discard()
{
    if (!m_temporary.isEmpty())
        m_steps.remove(m_temporary);
    m_temporary.clear();
}

std::optional<QString> StagedFile::write(const QByteArray& bytes)
{
    struct stat former
    {
    };
    const bool replaces = stat(m_target.constData(), &former) == 0;
    if (replaces && !S_ISREG(former.st_mode)) // a device would be replaced, too
        return reasonOf(S_ISDIR(former.st_mode) ? EISDIR : EEXIST);
    QByteArray temporary;
    const int file = createTemporary(m_steps, m_target, temporary);
    if (file < 0)
        return reasonOf(errno);
    m_temporary = temporary;
    if (replaces)
        (void)fchmod(file, former.st_mode & 0777); // the disk's file system may know no such thing
    return fill(file, bytes);
}

/// Closes the file in any case.
std::optional<QString> StagedFile::fill(int file, const QByteArray& bytes)
{
    const bool isThere =
        writeAll(m_steps, file, bytes.constData(), static_cast<size_t>(bytes.size())) && m_steps.sync(file) == 0;
    const int code = errno;
    const bool isClosed = m_steps.close(file) == 0;
    if (isThere && isClosed)
        return std::nullopt;
    return reasonOf(isThere ? errno : code);
}

std::optional<QString> StagedFile::commit()
{
    if (m_steps.rename(m_temporary, m_target) != 0)
        return reasonOf(errno);
    m_temporary.clear();
    return std::nullopt;
}

void StagedFile::syncFolder()
{
    m_steps.syncFolder(m_target.first(m_target.lastIndexOf('/') + 1));
}

} // namespace cardreel
