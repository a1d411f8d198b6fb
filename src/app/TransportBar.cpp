#include "app/TransportBar.h"

#include "app/PositionSlider.h"
#include "app/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <cmath>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

QToolButton* makeButton(const QString& toolTip)
{
    auto* button = new QToolButton;
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip.section(u" ("_s, 0, 0));
    button->setIconSize({18, 18});
    return button;
}

QLabel* makeTimeLabel()
{
    auto* label = new QLabel(playTimeText(0));
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(u"0:00:00"_s));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

QString playTimeText(double seconds)
{
    const qint64 whole = std::isfinite(seconds) && seconds > 0 ? static_cast<qint64>(seconds) : 0;
    const QString minutesAndSeconds = u"%1:%2"_s.arg(whole / 60 % 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
    return whole < 3600 ? minutesAndSeconds
                        : u"%1:%2:%3"_s.arg(whole / 3600)
                              .arg(whole / 60 % 60, 2, 10, QLatin1Char('0'))
                              .arg(whole % 60, 2, 10, QLatin1Char('0'));
}

TransportBar::TransportBar(QWidget* parent)
    : QWidget(parent)
    , m_previous(makeButton(tr("Previous recording (Page Up)")))
    , m_playPause(makeButton(tr("Play or pause (Space)")))
    , m_next(makeButton(tr("Next recording (Page Down)")))
    , m_mute(makeButton(tr("Mute (M)")))
    , m_elapsed(makeTimeLabel())
    , m_total(makeTimeLabel())
    , m_slider(new PositionSlider)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 4, 12, 4);
    layout->setSpacing(8);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_previous, m_playPause, m_next, m_elapsed})
        layout->addWidget(widget);
    layout->addWidget(m_slider, 1);
    layout->addWidget(m_total);
    layout->addWidget(m_mute);
    m_slider->setDuration(0);

    connect(m_previous, &QToolButton::clicked, this, &TransportBar::previousRequested);
    connect(m_playPause, &QToolButton::clicked, this, &TransportBar::playPauseRequested);
    connect(m_next, &QToolButton::clicked, this, &TransportBar::nextRequested);
    connect(m_mute, &QToolButton::clicked, this, &TransportBar::muteRequested);
    connect(m_slider, &PositionSlider::moved, this, [this](double seconds) {
        m_elapsed->setText(playTimeText(seconds));
        Q_EMIT seekRequested(seconds);
    });
    connect(&Theme::current(), &Theme::changed, this, &TransportBar::updateIcons);
    updateIcons();
}

void TransportBar::setPosition(double seconds)
{
    m_elapsed->setText(playTimeText(seconds));
    m_slider->setPosition(seconds);
}

void TransportBar::setDuration(double seconds)
{
    m_total->setText(playTimeText(seconds));
    m_slider->setDuration(seconds);
}

void TransportBar::setPlaying(bool playing)
{
    m_isPlaying = playing;
    updateIcons();
}

void TransportBar::setMuted(bool muted)
{
    m_isMuted = muted;
    updateIcons();
}

void TransportBar::updateIcons()
{
    const Theme& theme = Theme::current();
    m_previous->setIcon(theme.icon(u"previous"_s));
    m_playPause->setIcon(theme.icon(m_isPlaying ? u"pause"_s : u"play"_s));
    m_next->setIcon(theme.icon(u"next"_s));
    m_mute->setIcon(theme.icon(m_isMuted ? u"mute"_s : u"sound"_s));
}

} // namespace cardreel
