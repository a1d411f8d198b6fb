#include "playback/OptionPopover.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace cardreel {

namespace {

constexpr int widestText = 280;
constexpr int arrowHeight = 7;
constexpr int arrowHalfWidth = 8;
constexpr int radius = 6;
constexpr int distance = 2; ///< from the target and from the screen's edges

} // namespace

void OptionPopover::showPopoverWithTarget(QWidget* target, const QString& message)
{
    if (!target)
        return;
    QTimer::singleShot(delayMs, target, [target, message] {
        if (!target->isVisible())
            return;
        const auto present = target->findChildren<OptionPopover*>(QString(), Qt::FindDirectChildrenOnly);
        for (OptionPopover* former : present)
            former->dismiss();
        auto* popover = new OptionPopover(target, message);
        popover->attach();
        popover->show();
    });
}

// Of a tool tip's kind: it takes neither the keyboard nor the pointer from anybody.
OptionPopover::OptionPopover(QWidget* target, const QString& message)
    : QFrame(target, Qt::ToolTip | Qt::FramelessWindowHint)
    , m_target(target)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::NoFocus);
    auto* text = new QLabel(message, this);
    text->setWordWrap(QFontMetrics(text->font()).horizontalAdvance(message) > widestText);
    if (text->wordWrap())
        text->setFixedWidth(widestText);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    setAccessibleName(message);
    qApp->installEventFilter(this);
}

void OptionPopover::attach()
{
    const QRect target(m_target->mapToGlobal(QPoint(0, 0)), m_target->size());
    const QRect screen = m_target->screen()->availableGeometry().adjusted(distance, distance, -distance, -distance);
    for (const bool isBelow : {true, false}) {
        m_isBelow = isBelow;
        layout()->setContentsMargins(12, isBelow ? 8 + arrowHeight : 8, 12, isBelow ? 8 : 8 + arrowHeight);
        adjustSize();
        const int y = isBelow ? target.bottom() + 1 + distance : target.top() - distance - height();
        // Within the window where that is wide enough.
        const QRect window = m_target->window()->geometry() & screen;
        const QRect room =
            window.width() > width() + 2 * distance ? window.adjusted(distance, 0, -distance, 0) : screen;
        const int x =
            std::clamp(target.center().x() - width() / 2, room.left(), std::max(room.right() - width(), room.left()));
        move(x, y);
        if (geometry().bottom() <= screen.bottom())
            break;
    }
    m_arrowX = std::clamp(target.center().x() - x(), radius + arrowHalfWidth, width() - radius - arrowHalfWidth);
    // Without a compositor what isn't painted would be black.
    setMask(QRegion(outline().toFillPolygon().toPolygon()));
}

QPainterPath OptionPopover::outline() const
{
    QPainterPath box;
    box.addRoundedRect(
        QRectF(rect()).adjusted(0.5, m_isBelow ? arrowHeight + 0.5 : 0.5, -0.5, m_isBelow ? -0.5 : -arrowHeight - 0.5),
        radius, radius);
    const double base = m_isBelow ? arrowHeight + 1 : height() - arrowHeight - 1;
    QPainterPath arrow;
    arrow.moveTo(m_arrowX - arrowHalfWidth, base);
    arrow.lineTo(m_arrowX, m_isBelow ? 0.5 : height() - 0.5);
    arrow.lineTo(m_arrowX + arrowHalfWidth, base);
    arrow.closeSubpath();
    return box.united(arrow);
}

void OptionPopover::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::ToolTipBase));
    painter.drawPath(outline());
}

bool OptionPopover::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
            break;
        // The key is for this alone, also where a menu has it as a shortcut.
        event->accept();
        if (event->type() == QEvent::KeyPress)
            dismiss();
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin: {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && widget->window() != this)
            dismiss();
        break;
    }
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowDeactivate:
        if (watched == m_target->window())
            dismiss();
        break;
    case QEvent::Hide:
        if (watched == m_target)
            dismiss();
        break;
    default:
        break;
    }
    return false;
}

void OptionPopover::dismiss()
{
    qApp->removeEventFilter(this);
    hide();
    deleteLater();
}

} // namespace cardreel
