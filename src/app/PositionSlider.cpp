#include "app/PositionSlider.h"

#include "platform/text/RecorderTime.h"
#include "platform/text/UnitText.h"

#include <QLabel>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int tipGap = 6;

} // namespace

PositionSlider::PositionSlider(QWidget* parent)
    : BarSlider(Look::Accented, parent)
{
    setMouseTracking(true);
    setAccessibleName(tr("Position"));
    setActive(false);
}

PositionSlider::~PositionSlider()
{
    delete m_tip;
}

void PositionSlider::setRecording(double durationSeconds, std::optional<double> startSeconds)
{
    m_duration = std::isfinite(durationSeconds) ? std::max(durationSeconds, 0.0) : 0;
    m_start = startSeconds;
    setActive(m_duration > 0);
    if (!isActive())
        hideTip();
}

void PositionSlider::mousePressEvent(QMouseEvent* event)
{
    BarSlider::mousePressEvent(event);
    showTip(event->position().x());
}

void PositionSlider::mouseMoveEvent(QMouseEvent* event)
{
    BarSlider::mouseMoveEvent(event);
    showTip(event->position().x());
}

void PositionSlider::leaveEvent(QEvent* event)
{
    BarSlider::leaveEvent(event);
    if (!isDragged())
        hideTip();
}

void PositionSlider::hideEvent(QHideEvent* event)
{
    BarSlider::hideEvent(event);
    hideTip();
}

void PositionSlider::showTip(double x)
{
    if (!isActive())
        return;
    if (!m_tip || m_tip->parentWidget() != window()) {
        delete m_tip;
        m_tip = new QLabel(window());
        m_tip->setObjectName(u"sliderTip"_s);
        m_tip->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    const double fraction = fractionAt(x);
    const double seconds = fraction * m_duration;
    m_tip->setText(m_start
                       ? recorderTimeText(Instant(std::chrono::milliseconds(std::llround((*m_start + seconds) * 1000))))
                       : playTimeText(seconds));
    m_tip->adjustSize();
    QPoint corner = mapTo(window(), QPoint(static_cast<int>(xOf(fraction)), 0));
    corner -= QPoint(m_tip->width() / 2, m_tip->height() + tipGap);
    corner.setX(std::clamp(corner.x(), 4, std::max(4, window()->width() - m_tip->width() - 4)));
    m_tip->move(corner);
    m_tip->raise();
    m_tip->show();
}

void PositionSlider::hideTip()
{
    if (m_tip)
        m_tip->hide();
}

} // namespace cardreel
