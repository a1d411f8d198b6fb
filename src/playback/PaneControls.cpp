#include "playback/PaneControls.h"

#include "platform/image/ApplicationImage.h"

#include <QAction>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr int chipHeight = 24;
constexpr int widestChip = 32;
constexpr int narrowestBesideName = 24;
constexpr int narrowestChip = 16;
constexpr int idleMs = 2000;
constexpr int chipRadius = 4;
constexpr int chipPadding = 8;

// The chips lie on video, which is dark or light as it likes: the same in the dark and in the light.
constexpr QColor chipGround(20, 23, 26, 190);
constexpr QColor chipHover(52, 58, 64, 215);
constexpr QColor chipText(255, 255, 255);
constexpr QColor currentDrawing(0x6d, 0xb3, 0xff);
constexpr double disabledOpacity = 0.4;

int spacingFor(int chipWidth)
{
    return chipWidth >= 28 ? 4 : chipWidth >= 22 ? 2 : 1;
}

QFont chipFont(const QWidget& widget)
{
    QFont font = widget.font();
    font.setPixelSize(12);
    return font;
}

void drawGround(QPainter& painter, const QWidget& widget, const QColor& color)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(widget.rect(), chipRadius, chipRadius);
}

} // namespace

ChipLayout ChipLayout::fitted(int paneWidth, int nameWidth, int chipCount, int magnificationWidth)
{
    struct Try
    {
        int narrowest;
        bool showsName;
        bool showsMagnification;
    };
    const bool isMagnified = magnificationWidth > 0;
    ChipLayout layout;
    for (const Try& one : {Try{narrowestBesideName, true, isMagnified}, Try{narrowestChip, false, isMagnified},
                           Try{narrowestChip, false, false}}) {
        const int room = paneWidth - 2 * margin - (one.showsName ? nameWidth + margin : 0);
        for (int width = widestChip; width >= one.narrowest; --width) {
            layout = {width, spacingFor(width), one.showsName, one.showsMagnification};
            if (layout.rowWidth(chipCount, magnificationWidth) <= room)
                return layout;
        }
    }
    return layout;
}

int ChipLayout::rowWidth(int chipCount, int magnificationWidth) const
{
    return chipCount * chipWidth + std::max(chipCount - 1, 0) * spacing +
           (showsMagnification ? magnificationWidth + spacing : 0);
}

ChipLabel::ChipLabel(QWidget* parent)
    : QLabel(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

QSize ChipLabel::sizeHint() const
{
    // Rounded up, or the last letter would be elided.
    const double width = QFontMetricsF(chipFont(*this)).horizontalAdvance(text());
    return {static_cast<int>(std::ceil(width)) + 2 * chipPadding, chipHeight};
}

void ChipLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    drawGround(painter, *this, chipGround);
    painter.setFont(chipFont(*this));
    painter.setPen(chipText);
    // The end says most where there isn't room for all: the time after a date.
    const int room = width() - 2 * chipPadding;
    painter.drawText(rect(), Qt::AlignCenter, painter.fontMetrics().elidedText(text(), Qt::ElideLeft, room));
}

ChipButton::ChipButton(QAction* action, QWidget* parent, Ground ground)
    : QToolButton(parent)
    , m_ground(ground)
{
    setDefaultAction(action);
    setCursor(Qt::ArrowCursor);
    setMouseTracking(true);
}

void ChipButton::setOpacity(double opacity)
{
    m_opacity = opacity;
    update();
}

void ChipButton::drawGround(QPainter& painter) const
{
    const bool isLit = isEnabled() && (isDown() || underMouse());
    const bool isPlain = m_ground == Ground::Plain;
    if (isPlain)
        cardreel::drawGround(painter, *this, palette().color(isLit ? QPalette::Highlight : QPalette::Button));
    else
        cardreel::drawGround(painter, *this, isLit ? chipHover : chipGround);
    if (!isPlain && !hasFocus())
        return;
    const QColor frame = !isPlain ? chipText : palette().color(hasFocus() ? QPalette::Link : QPalette::Mid);
    const double inset = hasFocus() ? 1 : 0.5;
    painter.setPen(QPen(frame, hasFocus() ? 1.5 : 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), chipRadius - inset,
                            chipRadius - inset);
}

QColor ChipButton::drawingColor() const
{
    const bool isCurrent = isChecked() && isEnabled();
    if (m_ground == Ground::Plain)
        return palette().color(isCurrent ? QPalette::Link : QPalette::ButtonText);
    return isCurrent ? currentDrawing : chipText;
}

void ChipButton::paintEvent(QPaintEvent* /*event*/)
{
    if (m_opacity <= 0)
        return;
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    drawGround(painter);
    const QColor color = drawingColor();
    painter.setOpacity(m_opacity * (isEnabled() ? 1 : disabledOpacity));
    if (defaultAction()->objectName().isEmpty()) {
        painter.setFont(chipFont(*this));
        painter.setPen(color);
        painter.drawText(rect(), Qt::AlignCenter, text());
        return;
    }
    const int side = std::min(width() - 2, 16);
    const double ratio = devicePixelRatio();
    const QSize pixels = (QSizeF(side, side) * ratio).toSize();
    if (m_drawing.size() != pixels || m_drawingColor != color) {
        m_drawing = applicationImage(defaultAction()->objectName(), pixels, color);
        m_drawingColor = color;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRect((width() - side) / 2, (height() - side) / 2, side, side), m_drawing);
}

PaneControls::PaneControls(const std::vector<QAction*>& actions, QWidget* pane)
    : QWidget(pane)
    , m_magnification(new ChipButton(new QAction(this), this))
    , m_fade(new QVariantAnimation(this))
{
    setCursor(Qt::ArrowCursor);
    m_magnification->setFocusPolicy(Qt::NoFocus);
    m_magnification->defaultAction()->setToolTip(tr("Zoomed freely"));
    m_magnification->hide();
    m_magnification->installEventFilter(this);
    for (QAction* action : actions) {
        m_chips.push_back(new ChipButton(action, this));
        m_chips.back()->installEventFilter(this);
    }
    m_idle.setSingleShot(true);
    m_idle.setInterval(idleMs);
    connect(&m_idle, &QTimer::timeout, this, [this] {
        if (!isInUse())
            fadeTo(0);
    });
    connect(m_fade, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { setOpacity(value.toDouble()); });
    m_idle.start();
}

void PaneControls::setMagnificationText(const QString& text)
{
    m_magnification->defaultAction()->setText(text);
}

void PaneControls::place(ChipLabel& name)
{
    const QString text = m_magnification->text();
    const int magnificationWidth =
        text.isEmpty() ? 0 : QFontMetrics(chipFont(*this)).horizontalAdvance(text) + 2 * chipPadding;
    const int count = static_cast<int>(m_chips.size());
    const QSize nameSize = name.sizeHint();
    const ChipLayout layout = ChipLayout::fitted(parentWidget()->width(), nameSize.width(), count, magnificationWidth);
    name.setGeometry(QRect(QPoint(ChipLayout::margin, ChipLayout::margin), nameSize));
    name.setVisible(layout.showsName);
    const int width = layout.rowWidth(count, magnificationWidth);
    setGeometry(parentWidget()->width() - ChipLayout::margin - width, ChipLayout::margin, width, chipHeight);
    int x = 0;
    m_magnification->setVisible(layout.showsMagnification);
    if (layout.showsMagnification) {
        m_magnification->setGeometry(0, 0, magnificationWidth, chipHeight);
        x = magnificationWidth + layout.spacing;
    }
    for (ChipButton* chip : m_chips) {
        chip->setGeometry(x, 0, layout.chipWidth, chipHeight);
        x += layout.chipWidth + layout.spacing;
    }
}

QWidget* PaneControls::chipOf(const QAction* action) const
{
    const auto chip = std::find_if(m_chips.begin(), m_chips.end(),
                                   [action](const ChipButton* one) { return one->defaultAction() == action; });
    return chip == m_chips.end() ? nullptr : *chip;
}

void PaneControls::pointerMoved()
{
    fadeTo(1);
    m_idle.start();
}

bool PaneControls::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::MouseMove:
        pointerMoved();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool PaneControls::isInUse() const
{
    return m_magnification->underMouse() || std::any_of(m_chips.begin(), m_chips.end(), [](const ChipButton* chip) {
               return chip->underMouse() || chip->hasFocus();
           });
}

void PaneControls::fadeTo(double opacity)
{
    if (opacity == m_wantedOpacity)
        return;
    m_wantedOpacity = opacity;
    m_fade->stop();
    m_fade->setStartValue(m_opacity);
    m_fade->setEndValue(opacity);
    m_fade->setDuration(style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this));
    m_fade->start();
}

void PaneControls::setOpacity(double opacity)
{
    m_opacity = opacity;
    m_magnification->setOpacity(opacity);
    for (ChipButton* chip : m_chips)
        chip->setOpacity(opacity);
}

} // namespace cardreel
