#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

namespace cardreel {

class PositionSlider;

/// The bar under the video: previous, play or pause, next, the position and the sound. Only shows and announces.
/// Interface thread.
class TransportBar : public QWidget
{
    Q_OBJECT

public:
    explicit TransportBar(QWidget* parent = nullptr);

    /// Seconds. Shown as "1:40".
    void setPosition(double seconds);
    void setDuration(double seconds);
    void setPlaying(bool playing);
    void setMuted(bool muted);

Q_SIGNALS:
    void previousRequested();
    void playPauseRequested();
    void nextRequested();
    void muteRequested();
    /// The user moved the slider there.
    void seekRequested(double seconds);

private:
    void updateIcons();

    QToolButton* m_previous;
    QToolButton* m_playPause;
    QToolButton* m_next;
    QToolButton* m_mute;
    QLabel* m_elapsed;
    QLabel* m_total;
    PositionSlider* m_slider;
    bool m_isPlaying = false;
    bool m_isMuted = false;
};

/// Whole seconds as "1:05" or "1:02:05"; "0:00" for what isn't a length.
QString playTimeText(double seconds);

} // namespace cardreel
