#include "sample-card/FileOutput.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

QString cannotWrite(const QFile& file)
{
    return u"can't write %1: %2"_s.arg(file.fileName(), file.errorString());
}

} // namespace

Problem writeAll(QFile& file, const QByteArray& bytes)
{
    // A disk that fills up takes a part first; only the next try tells why.
    for (qint64 done = 0; done < bytes.size();) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0)
            return cannotWrite(file);
        done += written;
    }
    return std::nullopt;
}

Problem writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return cannotWrite(file);
    return writeAll(file, bytes);
}

Problem makeFolder(const QString& path)
{
    if (!QDir().mkpath(path))
        return u"can't make the folder %1"_s.arg(path);
    return std::nullopt;
}

Problem copyFile(const QString& from, const QString& to)
{
    QFile source(from);
    if (!source.copy(to))
        return u"can't copy %1 to %2: %3"_s.arg(from, to, source.errorString());
    return std::nullopt;
}

Problem setModificationTime(const QString& path, const QDateTime& time)
{
    timespec moment{};
    moment.tv_sec = time.toSecsSinceEpoch();
    moment.tv_nsec = static_cast<long>(time.time().msec()) * 1'000'000;
    const timespec both[2] = {moment, moment};
    if (utimensat(AT_FDCWD, QFile::encodeName(path).constData(), both, 0) != 0)
        return u"can't set the time of %1: %2"_s.arg(path, QString::fromLocal8Bit(std::strerror(errno)));
    return std::nullopt;
}

Problem protectFile(const QString& path)
{
    if (!QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther))
        return u"can't make %1 read-only"_s.arg(path);
    return std::nullopt;
}

} // namespace cardreel
