#include "app/TransportBar.h"

#include "app/PositionSlider.h"
#include "app/Theme.h"
#include "app/VolumeSlider.h"
#include "platform/text/UnitText.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

QToolButton* makeButton(const QString& toolTip)
{
    auto* button = new QToolButton;
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip.section(u" ("_s, 0, 0));
    button->setIconSize({18, 18});
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QLabel* makeTimeLabel(const QString& name)
{
    auto* label = new QLabel(playTimeText(0));
    label->setAccessibleName(name);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(u"0:00:00"_s));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

TransportBar::TransportBar(QWidget* parent)
    : QWidget(parent)
    , m_previous(makeButton(tr("Previous recording (Page Up)")))
    , m_playPause(makeButton(tr("Play or pause (Space)")))
    , m_next(makeButton(tr("Next recording (Page Down)")))
    , m_elapsed(makeTimeLabel(tr("Elapsed")))
    , m_slider(new PositionSlider)
    , m_total(makeTimeLabel(tr("Length")))
    , m_rate(makeButton(tr("Playback rate (J slower, L faster)")))
    , m_mute(makeButton(tr("Mute (M)")))
    , m_volume(new VolumeSlider)
    , m_fullScreen(makeButton(tr("Full screen (F)")))
{
    setAutoFillBackground(true);
    m_rate->setObjectName(u"rateButton"_s);
    m_rate->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_rate->setFixedWidth(m_rate->fontMetrics().horizontalAdvance(u"x1/2"_s) + 22);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 4, 12, 4);
    layout->setSpacing(8);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_previous, m_playPause, m_next, m_elapsed})
        layout->addWidget(widget);
    layout->addWidget(m_slider, 1);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_total, m_rate, m_mute, m_volume, m_fullScreen})
        layout->addWidget(widget);
    m_mute->installEventFilter(this);

    connect(m_previous, &QToolButton::clicked, this, &TransportBar::previousRequested);
    connect(m_playPause, &QToolButton::clicked, this, &TransportBar::playPauseRequested);
    connect(m_next, &QToolButton::clicked, this, &TransportBar::nextRequested);
    connect(m_mute, &QToolButton::clicked, this, &TransportBar::muteRequested);
    connect(m_volume, &VolumeSlider::moved, this, &TransportBar::volumeRequested);
    connect(m_fullScreen, &QToolButton::clicked, this, &TransportBar::fullScreenRequested);
    connect(m_slider, &PositionSlider::moved, this, [this](double fraction) {
        showElapsed(fraction);
        Q_EMIT seekRequested(fraction);
    });
    connect(&Theme::current(), &Theme::changed, this, &TransportBar::updateIcons);
    updateIcons();
}

void TransportBar::clear()
{
    setRecording(0, {});
    setPosition(0);
    setPlaying(false);
}

void TransportBar::setRecording(double durationSeconds, std::optional<double> startSeconds)
{
    if (durationSeconds == m_duration && startSeconds == m_start)
        return;
    m_duration = durationSeconds;
    m_start = startSeconds;
    m_total->setText(playTimeText(durationSeconds));
    m_slider->setRecording(durationSeconds, startSeconds);
}

void TransportBar::setPosition(double fraction)
{
    if (m_slider->isDragged())
        return;
    m_slider->setFraction(fraction);
    showElapsed(fraction);
}

void TransportBar::showElapsed(double fraction)
{
    m_elapsed->setText(playTimeText(fraction * m_duration));
}

bool TransportBar::isScrubbing() const
{
    return m_slider->isDragged();
}

void TransportBar::setPlaying(bool playing)
{
    if (playing == m_isPlaying)
        return;
    m_isPlaying = playing;
    updateIcons();
}

void TransportBar::setMuted(bool muted)
{
    m_isMuted = muted;
    updateIcons();
}

void TransportBar::setVolume(double volume)
{
    m_volume->setFraction(volume);
}

void TransportBar::setFullScreen(bool fullScreen)
{
    m_isFullScreen = fullScreen;
    m_fullScreen->setToolTip(fullScreen ? tr("Leave full screen (F)") : tr("Full screen (F)"));
    m_fullScreen->setAccessibleName(m_fullScreen->toolTip().section(u" ("_s, 0, 0));
    updateIcons();
}

void TransportBar::setRateAction(QAction* action)
{
    // As the button's default action it would bring its tool tip along, and it is told with its keys here.
    const auto show = [this, action] {
        m_rate->setText(action->text());
        m_rate->setEnabled(action->isEnabled());
    };
    connect(action, &QAction::changed, this, show);
    connect(m_rate, &QToolButton::clicked, action, &QAction::trigger);
    show();
}

bool TransportBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_mute && event->type() == QEvent::Wheel) {
        m_volume->turn(static_cast<QWheelEvent*>(event));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void TransportBar::updateIcons()
{
    const Theme& theme = Theme::current();
    m_previous->setIcon(theme.icon(u"previous"_s));
    m_playPause->setIcon(theme.icon(m_isPlaying ? u"pause"_s : u"play"_s));
    m_next->setIcon(theme.icon(u"next"_s));
    m_mute->setIcon(theme.icon(m_isMuted ? u"mute"_s : u"sound"_s));
    m_fullScreen->setIcon(theme.icon(m_isFullScreen ? u"leave-full-screen"_s : u"full-screen"_s));
}

} // namespace cardreel
