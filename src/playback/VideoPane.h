#pragma once

#include <QImage>
#include <QWidget>

namespace cardreel {

class VideoPlayer;

/// One camera's picture: shows what its player renders, the camera's name and the time of day over it, and one plain
/// sentence instead where there is no picture. Owns nothing but its look; interface thread.
class VideoPane : public QWidget
{
    Q_OBJECT

public:
    /// `player` outlives the pane.
    VideoPane(VideoPlayer& player, const QString& cameraName, QWidget* parent = nullptr);

    /// The sentence shown when the player has nothing to show; the player's own error comes before it.
    void setMessage(const QString& message);
    /// Shows a still picture over the video; an empty path takes it away again.
    void showPicture(const QString& path);
    /// The text at the lower left; empty for none.
    void setOverlayText(const QString& text);

    QSize sizeHint() const override { return {480, 270}; }
    QSize minimumSizeHint() const override { return {160, 90}; }

Q_SIGNALS:
    void clicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void updateRenderSize();
    void paintImage(QPainter& painter, const QImage& image) const;
    QString messageNow() const;

    VideoPlayer& m_player;
    QString m_cameraName;
    QString m_message;
    QString m_picturePath;
    QImage m_picture;
    QString m_overlayText;
};

} // namespace cardreel
