#include "app/settings/MenuBox.h"

#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>

namespace cardreel {

namespace {

constexpr int boxHeight = 28;
constexpr int inset = 10;
constexpr int arrowRoom = 28;
constexpr qreal radius = 6;
constexpr QSizeF arrowSize(8, 4);
constexpr qreal arrowWidth = 1.3;

} // namespace

MenuBox::MenuBox(QWidget* parent)
    : QComboBox(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize MenuBox::sizeHint() const
{
    return {QComboBox::sizeHint().width() + inset, std::max(boxHeight, fontMetrics().height() + inset)};
}

QSize MenuBox::minimumSizeHint() const
{
    return {QComboBox::minimumSizeHint().width() + inset, sizeHint().height()};
}

void MenuBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor text = palette().color(QPalette::ButtonText); // muted while disabled
    painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Link : QPalette::Mid), 1));
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);

    const bool isLeftToRight = layoutDirection() == Qt::LeftToRight;
    const QRect words = rect().adjusted(isLeftToRight ? inset : arrowRoom, 0, isLeftToRight ? -arrowRoom : -inset, 0);
    painter.setPen(text);
    painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine,
                     fontMetrics().elidedText(currentText(), Qt::ElideRight, words.width()));

    const QPointF middle(isLeftToRight ? width() - arrowRoom / 2.0 : arrowRoom / 2.0, height() / 2.0);
    QPainterPath arrow(middle + QPointF(-arrowSize.width() / 2, -arrowSize.height() / 2));
    arrow.lineTo(middle + QPointF(0, arrowSize.height() / 2));
    arrow.lineTo(middle + QPointF(arrowSize.width() / 2, -arrowSize.height() / 2));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(text, arrowWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(arrow);
}

void MenuBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

} // namespace cardreel
