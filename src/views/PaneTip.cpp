#include "views/PaneTip.h"

#include <algorithm>

namespace cardreel {

namespace {

constexpr QPoint besidePointer(14, 18);
constexpr int edge = 4;

} // namespace

PaneTip::PaneTip(QWidget* pane)
    : QLabel(pane)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setObjectName(QStringLiteral("sliderTip")); // looks like the other tips beside the pointer
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setAutoFillBackground(true);
    setMargin(edge);
    hide();
}

void PaneTip::showText(const QString& text, const QPoint& pointer)
{
    setText(text);
    adjustSize();
    const QSize pane = parentWidget()->size();
    QPoint place = pointer + besidePointer;
    if (place.y() + height() > pane.height() - edge)
        place.setY(pointer.y() - height() - edge);
    place.setX(std::clamp(place.x(), edge, std::max(edge, pane.width() - width() - edge)));
    place.setY(std::max(place.y(), edge));
    move(place);
    raise();
    show();
}

} // namespace cardreel
