#include "app/export/FileManager.h"

#include "platform/files/Files.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

/// Made of the path's bytes: not every path is a text.
QByteArray encodedUrl(const QString& path)
{
    return "file://" + files::nativePath(path).toPercentEncoding("/");
}

void openFolder(const QString& path)
{
    QDesktopServices::openUrl(QUrl::fromEncoded(encodedUrl(path)));
}

} // namespace

void showInFileManager(const QString& path)
{
    const QString folder = files::isFolder(path) ? path : files::folderOf(path);
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (folder == path || !bus.isConnected())
        return openFolder(folder);
    QDBusMessage show =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                       u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    show << QStringList{QString::fromLatin1(encodedUrl(path))} << QString();
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(show), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, folder] {
        if (watcher->isError())
            openFolder(folder);
        watcher->deleteLater();
    });
}

} // namespace cardreel
