#pragma once

#include <QColor>
#include <QImage>
#include <QLabel>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

#include <vector>

class QAction;
class QVariantAnimation;

namespace cardreel {

/// How a row of chips and a name share the top of a pane. A value.
struct ChipLayout
{
    static constexpr int margin = 8; ///< to the edges of the pane

    int chipWidth = 0;
    int spacing = 0;
    bool showsName = true;
    bool showsMagnification = false;

    /// For a pane so many pixels wide; `magnificationWidth` 0 when nothing is magnified freely. Chips shrink first,
    /// then the name goes, then the magnification.
    static ChipLayout fitted(int paneWidth, int nameWidth, int chipCount, int magnificationWidth);
    int rowWidth(int chipCount, int magnificationWidth) const;
};

/// A few words on a small dark ground over the video, white in the dark and in the light. The mouse passes through.
class ChipLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ChipLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// One action of a pane as a small button over what it shows: dark over a video, in the window's own colours elsewhere.
/// Its drawing is named by the action's objectName().
class ChipButton : public QToolButton
{
    Q_OBJECT

public:
    enum class Ground { Video, Plain };

    ChipButton(QAction* action, QWidget* parent, Ground ground = Ground::Video);

    void setOpacity(double opacity);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawGround(QPainter& painter) const;
    QColor drawingColor() const;

    Ground m_ground;
    double m_opacity = 1;
    QImage m_drawing; ///< at the present size and in the present colour
    QColor m_drawingColor;
};

/// The row of chips at a pane's upper right. Fades after two seconds without the pointer and comes back when it moves
/// or when one of the chips gets the keyboard focus. Owned by its pane; interface thread.
class PaneControls : public QWidget
{
    Q_OBJECT

public:
    PaneControls(const std::vector<QAction*>& actions, QWidget* pane);

    /// Text of the chip that says how much is magnified; empty for none.
    void setMagnificationText(const QString& text);
    /// Places itself and the name within the pane.
    void place(ChipLabel& name);
    /// The pointer moved over the pane.
    void pointerMoved();

    /// The chip of an action; null when it has none.
    QWidget* chipOf(const QAction* action) const;

    /// From 0, faded, to 1.
    double opacity() const { return m_opacity; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fadeTo(double opacity);
    void setOpacity(double opacity);
    bool isInUse() const;

    std::vector<ChipButton*> m_chips;
    ChipButton* m_magnification;
    QTimer m_idle;
    QVariantAnimation* m_fade;
    double m_opacity = 1;
    double m_wantedOpacity = 1;
};

} // namespace cardreel
