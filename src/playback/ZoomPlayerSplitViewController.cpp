#include "playback/ZoomPlayerSplitViewController.h"

#include "playback/ZoomPlayerViewController.h"

#include <QDataStream>
#include <QIODevice>
#include <QMouseEvent>
#include <QStyle>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr quint32 stateMark = 0x43525a31; // changes when what is written does

} // namespace

/// The divider: asks where it may go while it is dragged; a double click puts it into the middle.
class SnappingHandle : public QSplitterHandle
{
public:
    explicit SnappingHandle(ZoomPlayerSplitViewController* splitter)
        : QSplitterHandle(Qt::Horizontal, splitter)
        , m_splitter(splitter)
    {
    }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        m_isDragged = event->button() == Qt::LeftButton;
        m_grip = event->position().toPoint().x();
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (m_isDragged)
            m_splitter->dividerMoved(mapToParent(event->position().toPoint()).x() - m_grip);
    }
    void mouseReleaseEvent(QMouseEvent* /*event*/) override { m_isDragged = false; }
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton)
            m_splitter->dividerMoved((m_splitter->width() - m_splitter->handleWidth()) / 2);
    }

private:
    ZoomPlayerSplitViewController* m_splitter;
    int m_grip = 0;
    bool m_isDragged = false;
};

ZoomPlayerSplitViewController::ZoomPlayerSplitViewController(ZoomPlayerViewController* primary,
                                                             ZoomPlayerViewController* secondary, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent)
    , m_playerVCs{primary, secondary}
    , m_animation(new QVariantAnimation(this))
{
    setObjectName(QLatin1StringView(autosaveName));
    setHandleWidth(1);
    setChildrenCollapsible(false);
    addWidget(primary);
    addWidget(secondary);
    primary->becomePrimaryPlayer();
    for (const ZoomPlayerViewController* pane : m_playerVCs) {
        connect(pane, &ZoomPlayerViewController::playerDidChange, this,
                [this] { m_follower.setPlayers(m_playerVCs[0]->player(), m_playerVCs[1]->player()); });
    }
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_shownFraction = value.toDouble();
        arrange();
    });
    connect(m_animation, &QVariantAnimation::finished, this, &ZoomPlayerSplitViewController::settle);
}

QSplitterHandle* ZoomPlayerSplitViewController::createHandle()
{
    return new SnappingHandle(this);
}

int ZoomPlayerSplitViewController::constrainedPosition(int proposed, int width, int dividerThickness)
{
    const int middle = (width - dividerThickness) / 2;
    return std::abs(proposed - middle) <= snapDistance ? middle : proposed;
}

void ZoomPlayerSplitViewController::dividerMoved(int position)
{
    const int room = width() - handleWidth();
    if (!m_secondaryPlayerEnable || m_animation->state() == QAbstractAnimation::Running || room <= 0)
        return;
    const int wanted = constrainedPosition(position, width(), handleWidth());
    const int leftmost = primaryPlayerItem()->minimumSizeHint().width();
    const int rightmost = room - secondaryPlayerItem()->minimumSizeHint().width();
    if (leftmost > rightmost)
        return;
    const int allowed = std::clamp(wanted, leftmost, rightmost);
    m_fraction = m_shownFraction = allowed == room / 2 ? 0.5 : double(allowed) / room;
    arrange();
    Q_EMIT splitterMoved(allowed, 1);
}

void ZoomPlayerSplitViewController::setSecondaryPlayerEnable(bool enable, Animation animation)
{
    const int durationMs = animation == Animation::Animated && isVisible()
                               ? style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this)
                               : 0;
    const bool isChange = m_secondaryPlayerEnable != enable;
    if (!isChange && (durationMs > 0 || m_animation->state() != QAbstractAnimation::Running))
        return;
    m_secondaryPlayerEnable = enable;
    m_animation->stop();
    if (durationMs > 0) {
        // Lets the pane become narrower than it is ever left.
        secondaryPlayerItem()->setMinimumWidth(1);
        secondaryPlayerItem()->show();
        m_animation->setStartValue(m_shownFraction);
        m_animation->setEndValue(enable ? m_fraction : 1.0);
        m_animation->setDuration(durationMs);
        m_animation->start();
    } else {
        settle();
    }
    if (isChange)
        Q_EMIT secondaryPlayerEnableChanged(enable);
}

void ZoomPlayerSplitViewController::settle()
{
    m_shownFraction = m_secondaryPlayerEnable ? m_fraction : 1;
    secondaryPlayerItem()->setMinimumWidth(0);
    secondaryPlayerItem()->setVisible(m_secondaryPlayerEnable);
    arrange();
}

void ZoomPlayerSplitViewController::arrange()
{
    const int room = width() - handleWidth();
    const int primary = int(std::floor(room * m_shownFraction));
    setSizes({primary, std::max(room - primary, 0)});
}

void ZoomPlayerSplitViewController::resizeEvent(QResizeEvent* event)
{
    QSplitter::resizeEvent(event);
    arrange();
}

QByteArray ZoomPlayerSplitViewController::saveState() const
{
    QByteArray state;
    QDataStream stream(&state, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << stateMark << m_fraction;
    return state;
}

bool ZoomPlayerSplitViewController::restoreState(const QByteArray& state)
{
    QDataStream stream(state);
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 mark = 0;
    double fraction = 0;
    stream >> mark >> fraction;
    if (stream.status() != QDataStream::Ok || mark != stateMark || !(fraction > 0 && fraction < 1))
        return false;
    m_fraction = fraction;
    m_animation->stop();
    settle();
    return true;
}

} // namespace cardreel
