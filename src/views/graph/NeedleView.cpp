#include "views/graph/NeedleView.h"

#include "views/graph/GraphColors.h"
#include "views/graph/GraphGeometry.h"

#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

// Parts of the dial's side.
constexpr double tickRadius = 0.48;
constexpr double shortTick = 0.035;
constexpr double longTick = 0.06;
constexpr double labelRadius = 0.35;
constexpr double needleRadius = 0.37;
constexpr double needleWidth = 0.022;
constexpr double hubRadius = 0.042;
constexpr double labelSize = 0.078;
constexpr double numberSize = 0.165;
constexpr double numberY = 0.79;
constexpr double unitY = 0.92;

constexpr int lastUnit = 180;
constexpr int tickUnits = 10;
constexpr int longTickUnits = 30;
constexpr int labelUnits = 60;

/// Of the needle, clockwise from straight up.
double degreesAt(float speed)
{
    return -qRadiansToDegrees(static_cast<double>(rotationTransformForSpeed(speed) + needleRestAngle));
}

QFont fontOf(const QWidget& widget, double pixels, QFont::Weight weight = QFont::Normal)
{
    QFont font = widget.font();
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
    font.setWeight(weight);
    return font;
}

void drawCentered(QPainter& painter, const QPointF& at, const QString& text)
{
    constexpr double room = 1000;
    painter.drawText(QRectF(at.x() - room, at.y() - room, 2 * room, 2 * room), Qt::AlignCenter, text);
}

void drawTicks(QPainter& painter, double side)
{
    painter.setPen(QPen(graphReadoutColor, std::max(1.0, side / 90), Qt::SolidLine, Qt::FlatCap));
    for (int unit = 0; unit <= lastUnit; unit += tickUnits) {
        const double length = unit % longTickUnits == 0 ? longTick : shortTick;
        painter.save();
        painter.translate(side / 2, side / 2);
        painter.rotate(degreesAt(static_cast<float>(unit)));
        painter.drawLine(QPointF(0, -tickRadius * side), QPointF(0, -(tickRadius - length) * side));
        painter.restore();
    }
}

void drawLabels(QPainter& painter, double side)
{
    painter.setPen(graphReadoutColor);
    for (int unit = 0; unit <= lastUnit; unit += labelUnits) {
        const double angle = qDegreesToRadians(degreesAt(static_cast<float>(unit)));
        const QPointF place(std::sin(angle), -std::cos(angle));
        drawCentered(painter, QPointF(side / 2, side / 2) + place * labelRadius * side, QString::number(unit));
    }
}

} // namespace

NeedleView::NeedleView(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Speedometer"));
}

void NeedleView::updateLayerWithSpeed(float speed)
{
    if (speed == m_speed)
        return;
    m_speed = speed;
    update();
}

QString NeedleView::numberText() const
{
    return QString::number(std::trunc(static_cast<double>(m_speed)), 'f', 0);
}

void NeedleView::setUnit(const QString& unit)
{
    if (unit == m_unit)
        return;
    m_unit = unit;
    m_face = QImage();
    update();
}

void NeedleView::paintEvent(QPaintEvent* /*event*/)
{
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (m_face.size() != pixels)
        m_face = drawnFace();
    QPainter painter(this);
    painter.drawImage(0, 0, m_face);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate((width() - side()) / 2, (height() - side()) / 2);
    drawNeedle(painter);
    drawNumber(painter);
}

QImage NeedleView::drawnFace() const
{
    QImage face((QSizeF(size()) * devicePixelRatioF()).toSize(), QImage::Format_RGB32);
    face.setDevicePixelRatio(devicePixelRatioF());
    face.fill(graphBackGroundColor);
    QPainter painter(&face);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate((width() - side()) / 2, (height() - side()) / 2);
    drawTicks(painter, side());
    painter.setFont(fontOf(*this, labelSize * side()));
    drawLabels(painter, side());
    painter.setPen(graphTextColor);
    drawCentered(painter, QPointF(side() / 2, unitY * side()), m_unit);
    return face;
}

void NeedleView::drawNeedle(QPainter& painter) const
{
    painter.save();
    painter.translate(side() / 2, side() / 2);
    painter.rotate(degreesAt(m_speed));
    painter.setPen(QPen(graphNeedleColor, needleWidth * side(), Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, 0), QPointF(0, -needleRadius * side()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(graphNeedleColor);
    painter.drawEllipse(QPointF(0, 0), hubRadius * side(), hubRadius * side());
    painter.restore();
}

void NeedleView::drawNumber(QPainter& painter) const
{
    painter.setFont(fontOf(*this, numberSize * side(), QFont::Bold));
    painter.setPen(graphPositionColor);
    drawCentered(painter, QPointF(side() / 2, numberY * side()), numberText());
}

} // namespace cardreel
