#include "platform/map/TileImage.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace cardreel {
namespace {

bool isTileFormat(const QByteArray& format)
{
    // Drawings and icons, which are read just as well, can be made to keep a reader busy.
    static constexpr std::array formats{"png", "jpeg", "gif", "webp"};
    return std::any_of(formats.begin(), formats.end(), [&](const char* known) { return format == known; });
}

bool isTileSize(QSize size)
{
    return !size.isEmpty() && size.width() <= largestTileSide && size.height() <= largestTileSide;
}

} // namespace

QImage tileImage(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    // The size stands in the file's head: a picture of gigabytes packed into a few bytes ends here.
    if (!isTileFormat(reader.format()) || !isTileSize(reader.size()))
        return {};
    QImage image = reader.read();
    if (!isTileSize(image.size()))
        return {};
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace cardreel
