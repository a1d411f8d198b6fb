#pragma once

#include <QFrame>
#include <QPainterPath>
#include <QPointer>

namespace cardreel {

/// A short message in a small window that points at a widget. Goes when the user clicks elsewhere, presses Escape or
/// leaves the window, and with the widget; the keyboard focus stays where it is. Interface thread.
class OptionPopover : public QFrame
{
    Q_OBJECT

public:
    static constexpr int delayMs = 500;

    /// Shows it half a second later, if the target is still there and visible. One that the target has already makes
    /// way.
    static void showPopoverWithTarget(QWidget* target, const QString& message);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    OptionPopover(QWidget* target, const QString& message);
    void attach();
    QPainterPath outline() const;
    void dismiss();

    QWidget* m_target; ///< its parent
    int m_arrowX = 0;
    bool m_isBelow = true;
};

} // namespace cardreel
