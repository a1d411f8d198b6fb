#pragma once

#include "views/graph/GraphLayerDrawer.h"

#include <QImage>
#include <QStringList>
#include <QWidget>

#include <optional>

namespace cardreel {

/// The plot with its labels, titles and legend, the moving position line above it, and the mouse. The plot is drawn
/// once for a recording and a size; afterwards a moving line costs the strips that it leaves and enters. Owned by the
/// graph pane; interface thread.
class GraphLayerView : public QWidget
{
    Q_OBJECT

public:
    explicit GraphLayerView(QWidget* parent = nullptr);

    /// Whoever changes it calls redraw().
    GraphLayerDrawer& drawer() { return m_drawer; }
    void redraw();
    /// The texts at the ticks: speed from bottom to top, acceleration from top to bottom.
    void setLabels(const QStringList& speed, const QStringList& motion);
    /// A sentence on the plot; empty for none.
    void setMessage(const QString& message);
    const QString& message() const { return m_message; }
    /// Where the position line stands, 0 to 1; none takes it away.
    void setPosition(std::optional<double> fraction);
    std::optional<double> position() const { return m_position; }

    /// Where the plot's own coordinates lie in this widget.
    QRect layerRect() const;
    double xOf(double fraction) const;

Q_SIGNALS:
    /// The left button went down, moved and came up; fractions of the recording. A drag also ends when the mouse is
    /// lost.
    void seekBegan(double fraction);
    void seekMoved(double fraction);
    void seekEnded();
    /// The pointer is here, pressed or not; it left.
    void pointed(double fraction, const QPoint& place);
    void unpointed();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    double fractionAt(const QPointF& place) const;
    void endSeek();
    void setPointer(std::optional<double> fraction);
    QRectF lineAt(double fraction) const;
    QRect stripAt(std::optional<double> fraction) const;
    void moveLine(std::optional<double>& line, std::optional<double> fraction);
    // The picture: GraphLayerViewPicture.cpp
    QImage drawnPicture();
    void drawPlot(QImage& picture, const QRect& layer);
    void drawHeader(QPainter& painter) const;
    void drawLabels(QPainter& painter, const GraphGeometry& geometry) const;
    void drawMessage(QPainter& painter) const;
    int headerHeight() const;

    GraphLayerDrawer m_drawer;
    QStringList m_speedLabels;
    QStringList m_motionLabels;
    QString m_message;
    std::optional<double> m_position;
    std::optional<double> m_pointer;
    bool m_isPressed = false;
    bool m_isStale = true;
    QImage m_picture; ///< all but the lines, at the present scale
};

} // namespace cardreel
