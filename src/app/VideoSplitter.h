#pragma once

#include <QSplitter>

namespace cardreel {

/// The border between the video panes above and what stands under them. Gives the panes the height at which their
/// pictures fill them, until the user drags it elsewhere; dragged near that height it snaps back to it. Interface
/// thread.
class VideoSplitter : public QSplitter
{
    Q_OBJECT

public:
    explicit VideoSplitter(QWidget* parent = nullptr);

    /// How many pictures of 16:9 stand side by side.
    void setPictures(int count);

    /// The height at which `count` pictures of 16:9 side by side fill a width.
    static int filledHeight(int width, int count);

    /// Where the user dragged it, for another run; empty while it fits itself.
    QByteArray savedState() const;
    void restoreSavedState(const QByteArray& state);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();
    void dragged();

    int m_pictures = 2;
    bool m_isDragged = false;
};

} // namespace cardreel
