#pragma once

#include <QWidget>

#include <optional>

class QAction;
class QLabel;
class QToolButton;

namespace cardreel {

class PositionSlider;
class VolumeSlider;

/// The bar under the videos: previous, play or pause, next, the position, the rate, the sound and full screen. Only
/// shows and announces. Interface thread.
class TransportBar : public QWidget
{
    Q_OBJECT

public:
    explicit TransportBar(QWidget* parent = nullptr);

    /// Nothing is loaded.
    void clear();
    /// The recording's length in seconds, 0 for none, and the recorder's clock at its start in seconds since 1970, if
    /// it is known.
    void setRecording(double durationSeconds, std::optional<double> startSeconds);
    /// A fraction of the recording. Cheap when nothing changes to the eye.
    void setPosition(double fraction);
    void setPlaying(bool playing);
    void setMuted(bool muted);
    /// From 0 to 1.
    void setVolume(double volume);
    void setFullScreen(bool fullScreen);
    /// The button that shows and steps the rate shows this action.
    void setRateAction(QAction* action);
    /// Whether the user holds the position's handle.
    bool isScrubbing() const;

Q_SIGNALS:
    void previousRequested();
    void playPauseRequested();
    void nextRequested();
    void muteRequested();
    void volumeRequested(double volume);
    void fullScreenRequested();
    /// The user moved the position's handle there.
    void seekRequested(double fraction);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void updateIcons();
    void showElapsed(double fraction);

    QToolButton* m_previous;
    QToolButton* m_playPause;
    QToolButton* m_next;
    QLabel* m_elapsed;
    PositionSlider* m_slider;
    QLabel* m_total;
    QToolButton* m_rate;
    QToolButton* m_mute;
    VolumeSlider* m_volume;
    QToolButton* m_fullScreen;
    double m_duration = 0;
    std::optional<double> m_start;
    bool m_isPlaying = false;
    bool m_isMuted = false;
    bool m_isFullScreen = false;
};

} // namespace cardreel
