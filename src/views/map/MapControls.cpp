#include "views/map/MapControls.h"

#include "playback/PaneControls.h"
#include "views/map/MapActions.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int largestButton = 30;
constexpr int smallestButton = 18;
constexpr int spacing = 4;
constexpr int margin = 8; ///< to the edges of the pane

} // namespace

MapControls::MapControls(const MapActions& actions, QMenu& menu, QWidget* pane)
    : QWidget(pane)
{
    setCursor(Qt::ArrowCursor);
    auto* open = new QAction(tr("Map Menu"), this);
    open->setObjectName(u"layers"_s);
    ChipButton* button = add(open);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setMenu(&menu);
    for (QAction* action : {actions.zoomIn(), actions.zoomOut(), actions.fit(), actions.tracing()})
        add(action);
}

QToolButton* MapControls::menuButton() const
{
    return m_buttons.front();
}

ChipButton* MapControls::add(QAction* action)
{
    auto* button = new ChipButton(action, this, ChipButton::Ground::Plain);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(action->text().remove(u'&'));
    m_buttons.push_back(button);
    return button;
}

void MapControls::place()
{
    const int count = static_cast<int>(m_buttons.size());
    const int room = parentWidget()->height() - 2 * margin - (count - 1) * spacing;
    const int side = std::clamp(room / count, smallestButton, largestButton);
    setGeometry(parentWidget()->width() - margin - side, margin, side, count * (side + spacing) - spacing);
    int y = 0;
    for (ChipButton* button : m_buttons) {
        button->setGeometry(0, y, side, side);
        y += side + spacing;
    }
}

} // namespace cardreel
