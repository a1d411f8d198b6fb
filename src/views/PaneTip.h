#pragma once

#include <QLabel>

namespace cardreel {

/// A few words beside the pointer, over a pane. The pointer passes through. Owned by the pane.
class PaneTip : public QLabel
{
    Q_OBJECT

public:
    explicit PaneTip(QWidget* pane);

    /// Beside this point of the pane, within its edges.
    void showText(const QString& text, const QPoint& pointer);
};

} // namespace cardreel
