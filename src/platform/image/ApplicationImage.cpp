#include "platform/image/ApplicationImage.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace cardreel {

QImage applicationImage(const QString& name, const QSize& size, const QColor& color)
{
    QFile file(u":/images/"_s + name + u".svg"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QSvgRenderer renderer(file.readAll().replace("currentColor", color.name().toLatin1()));
    if (!renderer.isValid())
        return {};
    QImage image(renderer.defaultSize().scaled(size, Qt::KeepAspectRatio), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

} // namespace cardreel
