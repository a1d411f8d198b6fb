#include "app/settings/SwitchBox.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace cardreel {

namespace {

constexpr QSize trackSize(34, 18);
constexpr int ring = 3;   // the mark of the focus around it
constexpr int apart = 12; // from the text
constexpr int leastHeight = trackSize.height() + 2 * ring;
constexpr qreal lineWidth = 1.5;
constexpr qreal knobInset = 4;
constexpr qreal disabledOpacity = 0.4;

} // namespace

SwitchBox::SwitchBox(const QString& text, QWidget* parent)
    : QCheckBox(text, parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize SwitchBox::sizeHint() const
{
    const QSize shown = fontMetrics().size(Qt::TextShowMnemonic, text());
    return {shown.width() + apart + trackSize.width() + ring, std::max(shown.height(), leastHeight)};
}

void SwitchBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool isLeftToRight = layoutDirection() == Qt::LeftToRight;
    const int taken = trackSize.width() + ring + apart;
    const QRect textRect = rect().adjusted(isLeftToRight ? 0 : taken, 0, isLeftToRight ? -taken : 0, 0);
    style()->drawItemText(&painter, textRect, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextShowMnemonic, palette(),
                          isEnabled(), text(), QPalette::WindowText);
    const QPointF corner(isLeftToRight ? width() - trackSize.width() - ring : ring,
                         (height() - trackSize.height()) / 2.0);
    painter.setRenderHint(QPainter::Antialiasing);
    paintTrack(painter, QRectF(corner, trackSize));
}

void SwitchBox::paintTrack(QPainter& painter, const QRectF& track) const
{
    const QColor accent = palette().color(QPalette::Link);
    const QColor quiet = palette().color(QPalette::PlaceholderText);
    painter.setOpacity(isEnabled() ? 1 : disabledOpacity);
    const auto drawRound = [&painter](const QRectF& rect) {
        painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
    };
    const qreal half = lineWidth / 2;
    painter.setPen(QPen(isChecked() ? accent : quiet, lineWidth));
    painter.setBrush(isChecked() ? QBrush(accent) : Qt::NoBrush);
    drawRound(track.adjusted(half, half, -half, -half));
    const qreal knob = track.height() - 2 * knobInset;
    const bool isAtRight = isChecked() == (layoutDirection() == Qt::LeftToRight);
    const QPointF place(isAtRight ? track.right() - knobInset - knob : track.left() + knobInset,
                        track.top() + knobInset);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? palette().color(QPalette::Window) : quiet);
    painter.drawEllipse(QRectF(place, QSizeF(knob, knob)));
    if (!hasFocus())
        return;
    painter.setPen(QPen(accent, 1));
    painter.setBrush(Qt::NoBrush);
    drawRound(track.adjusted(0.5 - ring, 0.5 - ring, ring - 0.5, ring - 0.5));
}

bool SwitchBox::hitButton(const QPoint& position) const
{
    return rect().contains(position);
}

} // namespace cardreel
