#pragma once

#include <QWidget>

#include <vector>

class QMenu;
class QToolButton;

namespace cardreel {

class ChipButton;
class MapActions;

/// The column of buttons at a map pane's upper right: its menu, closer, further away, all routes, follow the position.
/// Owned by the pane.
class MapControls : public QWidget
{
    Q_OBJECT

public:
    /// `menu` outlives the buttons.
    MapControls(const MapActions& actions, QMenu& menu, QWidget* pane);

    /// Opens the menu.
    QToolButton* menuButton() const;
    /// Places itself within the pane, smaller where it is low.
    void place();

private:
    ChipButton* add(QAction* action);

    std::vector<ChipButton*> m_buttons;
};

} // namespace cardreel
