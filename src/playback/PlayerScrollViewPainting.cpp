#include "playback/PlayerScrollView.h"

#include <QPaintEvent>
#include <QPainter>

#include <cmath>
#include <utility>

namespace cardreel {

namespace {

constexpr QColor messageColor(0xb4, 0xbb, 0xc3);
constexpr QColor focusColor(0x4e, 0xa1, 0xff);
constexpr int messageMargin = 24;

/// Whether a picture has a size's shape, give or take what rounding to whole pixels does.
bool hasShapeOf(QSizeF size, QSize image)
{
    return std::abs(size.width() * image.height() - size.height() * image.width()) <=
           std::max(size.width(), size.height()) + std::max(image.width(), image.height());
}

} // namespace

void PlayerScrollView::setFrameSource(FrameSource source)
{
    m_frameSource = std::move(source);
    update();
}

void PlayerScrollView::setVideoShown(bool shown)
{
    m_videoShown = shown;
    update();
}

void PlayerScrollView::setPicture(const QImage& picture)
{
    m_picture = picture;
    update();
}

void PlayerScrollView::setPictureShown(bool shown)
{
    m_pictureShown = shown;
    update();
}

void PlayerScrollView::setMirrored(bool mirrored)
{
    m_mirrored = mirrored;
    update();
}

void PlayerScrollView::setContentOpacity(double opacity)
{
    m_contentOpacity = opacity;
    update();
}

void PlayerScrollView::setMessage(const QString& message)
{
    if (message == m_message)
        return;
    m_message = message;
    update();
}

QImage PlayerScrollView::shownImage() const
{
    if (m_pictureShown)
        return m_picture;
    return m_videoShown && m_frameSource ? m_frameSource() : QImage();
}

QImage PlayerScrollView::visibleImage() const
{
    const QImage shown = shownImage();
    if (shown.isNull())
        return {};
    const double ratio = devicePixelRatio();
    QImage image((QSizeF(size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::black);
    QPainter painter(&image);
    paintContent(painter, shown, m_pictureShown);
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

void PlayerScrollView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::black);
    const QImage image = shownImage();
    if (!image.isNull()) {
        painter.save();
        painter.setOpacity(m_contentOpacity);
        paintContent(painter, image, m_pictureShown);
        painter.restore();
    }
    const bool showsNothing = image.isNull() && !m_pictureShown;
    if (!m_message.isEmpty() && (showsNothing || m_contentOpacity < 1)) {
        painter.setPen(messageColor);
        painter.drawText(rect().adjusted(messageMargin, messageMargin, -messageMargin, -messageMargin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_message);
    }
    if (m_showsFocus) {
        painter.setPen(focusColor);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void PlayerScrollView::paintContent(QPainter& painter, const QImage& image, bool isStill) const
{
    const QRectF content = m_shown.contentInView();
    QRectF visible = rect();
    if (m_mirrored) {
        painter.translate(2 * content.center().x(), 0);
        painter.scale(-1, 1);
        visible.moveLeft(2 * content.center().x() - visible.right());
    }
    const double ratio = devicePixelRatio();
    if (!isStill && m_shown.magnification == 1 && image.size() == (QSizeF(size()) * ratio).toSize()) {
        painter.scale(1 / ratio, 1 / ratio);
        painter.drawImage(0, 0, image);
        return;
    }
    // A frame has the content's shape, the video centred in it, unless it was made before the last resize.
    QRectF target = content;
    if (isStill || !hasShapeOf(content.size(), image.size())) {
        target.setSize(QSizeF(image.size()).scaled(content.size(), Qt::KeepAspectRatio));
        target.moveCenter(content.center());
    }
    const QRectF part = target.intersected(visible);
    if (part.isEmpty())
        return;
    const double scale = image.width() / target.width();
    const double scaleDown = image.height() / target.height();
    const QRectF source((part.x() - target.x()) * scale, (part.y() - target.y()) * scaleDown, part.width() * scale,
                        part.height() * scaleDown);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(part, image, source);
}

} // namespace cardreel
