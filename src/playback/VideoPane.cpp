#include "playback/VideoPane.h"

#include "platform/files/Files.h"
#include "platform/video/VideoPlayer.h"

#include <QImageReader>
#include <QMouseEvent>
#include <QPainter>

namespace cardreel {

namespace {

constexpr int chipMargin = 8;
constexpr QSize mostPictureSize(2560, 1600);
constexpr QColor chipGround(20, 23, 26, 190);

void drawChip(QPainter& painter, const QFont& font, QPoint corner, Qt::Corner anchor, const QString& text)
{
    painter.setFont(font);
    const QFontMetrics metrics(font);
    QRect box(0, 0, metrics.horizontalAdvance(text) + 14, metrics.height() + 6);
    if (anchor == Qt::TopLeftCorner)
        box.moveTopLeft(corner);
    else
        box.moveBottomLeft(corner);
    painter.setPen(Qt::NoPen);
    painter.setBrush(chipGround);
    painter.drawRoundedRect(box, 4, 4);
    painter.setPen(Qt::white);
    painter.drawText(box, Qt::AlignCenter, text);
}

} // namespace

VideoPane::VideoPane(VideoPlayer& player, const QString& cameraName, QWidget* parent)
    : QWidget(parent)
    , m_player(player)
    , m_cameraName(cameraName)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(cameraName);
    connect(&player, &VideoPlayer::frameReady, this, qOverload<>(&QWidget::update));
    connect(&player, &VideoPlayer::statusChanged, this, qOverload<>(&QWidget::update));
}

void VideoPane::setMessage(const QString& message)
{
    m_message = message;
    update();
}

void VideoPane::setOverlayText(const QString& text)
{
    if (text == m_overlayText)
        return;
    m_overlayText = text;
    update();
}

void VideoPane::showPicture(const QString& path)
{
    m_picturePath = path;
    m_picture = {};
    const std::unique_ptr<QFile> file = path.isEmpty() ? nullptr : files::openForReading(path);
    if (file) {
        QImageReader reader(file.get(), "jpeg");
        reader.setAutoTransform(true);
        // The JPEG reader is much faster at a smaller size, and a pane shows no more than a screen has.
        if (const QSize natural = reader.size(); natural.boundedTo(mostPictureSize) != natural)
            reader.setScaledSize(natural.scaled(mostPictureSize, Qt::KeepAspectRatio));
        m_picture = reader.read();
    }
    update();
}

QString VideoPane::messageNow() const
{
    if (!m_picturePath.isEmpty())
        return tr("This picture can't be read: %1").arg(files::displayPath(files::nameOf(m_picturePath)));
    return m_player.status() == VideoPlayer::Status::Failed ? m_player.errorText() : m_message;
}

void VideoPane::paintImage(QPainter& painter, const QImage& image) const
{
    if (image.size() == (QSizeF(size()) * devicePixelRatio()).toSize()) {
        QImage exact = image;
        exact.setDevicePixelRatio(devicePixelRatio());
        painter.drawImage(0, 0, exact);
        return;
    }
    // A still picture, or a frame rendered before the last resize: fit it in.
    QRect target(QPoint(), image.size().scaled(size(), Qt::KeepAspectRatio));
    target.moveCenter(rect().center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !m_picture.isNull());
    painter.drawImage(target, image);
}

void VideoPane::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool hasVideo = m_picturePath.isEmpty() && m_player.status() != VideoPlayer::Status::Failed;
    const QImage image = hasVideo ? m_player.currentFrame() : m_picture;
    if (!image.isNull()) {
        paintImage(painter, image);
    } else if (const QString message = messageNow(); !message.isEmpty()) {
        painter.setPen(QColor(0x9a, 0xa2, 0xab));
        painter.drawText(rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap, message);
    }
    QFont small = font();
    small.setPixelSize(12);
    drawChip(painter, small, {chipMargin, chipMargin}, Qt::TopLeftCorner, m_cameraName);
    if (!m_overlayText.isEmpty())
        drawChip(painter, small, {chipMargin, height() - chipMargin}, Qt::BottomLeftCorner, m_overlayText);
}

void VideoPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    updateRenderSize();
}

void VideoPane::updateRenderSize()
{
    m_player.setRenderSize((QSizeF(size()) * devicePixelRatio()).toSize());
}

void VideoPane::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}

} // namespace cardreel
