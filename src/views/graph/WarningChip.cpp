#include "views/graph/WarningChip.h"

#include "platform/image/ApplicationImage.h"
#include "views/graph/GraphColors.h"
#include "views/graph/TelemetryMoment.h"

#include <QPainter>

#include <algorithm>

namespace cardreel {

namespace {

constexpr int drawingSide = 24;
constexpr int padding = 6;
constexpr int textGap = 8;
constexpr int textEnd = 12;
constexpr int textPixels = 13;
constexpr int narrowestWithWord = 96;
constexpr double cornerRadius = 6;

} // namespace

WarningChip::WarningChip(QWidget* parent)
    : QWidget(parent)
{
    hide();
}

void WarningChip::showWarning(const QString& imageName, const QString& eventName, const QColor& color)
{
    if (m_imageName != imageName)
        m_drawing = QImage();
    m_imageName = imageName;
    m_text = warningText(eventName);
    m_color = color;
    setToolTip(eventName);
    setAccessibleName(m_text);
    place();
    show();
    update();
}

void WarningChip::setRoom(const QRect& room)
{
    m_room = room;
    place();
}

QFont WarningChip::textFont() const
{
    QFont chipFont = font();
    chipFont.setPixelSize(textPixels);
    return chipFont;
}

void WarningChip::place()
{
    const int wanted = padding + drawingSide + textGap + QFontMetrics(textFont()).horizontalAdvance(m_text) + textEnd;
    const int width = m_room.width() < std::min(wanted, narrowestWithWord) ? 2 * padding + drawingSide
                                                                           : std::min(wanted, m_room.width());
    setGeometry(m_room.right() + 1 - width, m_room.center().y() - chipHeight / 2 + 1, width, chipHeight);
}

void WarningChip::paintEvent(QPaintEvent* /*event*/)
{
    const double scale = devicePixelRatioF();
    if (m_drawing.isNull() || m_drawing.devicePixelRatio() != scale) {
        m_drawing = applicationImage(m_imageName, QSizeF(drawingSide * scale, drawingSide * scale).toSize());
        m_drawing.setDevicePixelRatio(scale);
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_color, 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    painter.drawImage(QPointF(padding, (height() - drawingSide) / 2.0), m_drawing);
    const int room = width() - padding - drawingSide - textGap - textEnd;
    if (room <= 0)
        return;
    painter.setFont(textFont());
    painter.setPen(graphReadoutColor);
    painter.drawText(QRect(padding + drawingSide + textGap, 0, room, height()), Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(m_text, Qt::ElideRight, room + 1));
}

} // namespace cardreel
