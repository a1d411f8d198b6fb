#include "platform/map/HttpDate.h"

#include <QLocale>

namespace cardreel {

QDateTime httpDate(const QByteArray& text)
{
    const QString format = QStringLiteral("ddd, dd MMM yyyy HH:mm:ss 'GMT'");
    const QDateTime local = QLocale::c().toDateTime(QString::fromLatin1(text.trimmed()), format);
    return local.isValid() ? QDateTime(local.date(), local.time(), Qt::UTC) : QDateTime();
}

} // namespace cardreel
