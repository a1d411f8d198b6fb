#pragma once

#include <QElapsedTimer>
#include <QPushButton>

namespace cardreel {

/// The switch that makes a window lead the others. Interface thread.
class LeadButton : public QPushButton
{
    Q_OBJECT

public:
    explicit LeadButton(QWidget* parent = nullptr);

    /// Shows it without announcing anything.
    void setLeading(bool leading);

protected:
    /// The lead goes with the keyboard from window to window, so a click into a window behind has already brought it
    /// the lead when it arrives here, and must not give it up again.
    void mousePressEvent(QMouseEvent* event) override;

private:
    void updateIcon();

    QElapsedTimer m_tookLead;
};

} // namespace cardreel
