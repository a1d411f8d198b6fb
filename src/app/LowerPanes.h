#pragma once

#include <QByteArray>
#include <QSplitter>

namespace cardreel {

/// Graph and map side by side under the videos. Each can be hidden, and they can take each other's place; where the
/// user dragged the border is kept for either order. Interface thread.
class LowerPanes : public QSplitter
{
    Q_OBJECT

public:
    /// Takes both panes over; the graph is at the left, and both are shown.
    LowerPanes(QWidget* graph, QWidget* map, QWidget* parent = nullptr);

    void setGraphShown(bool shown) { setShown(m_graph, shown); }
    void setMapShown(bool shown) { setShown(m_map, shown); }
    bool isGraphShown() const { return !m_graph->isHidden(); }
    bool isMapShown() const { return !m_map->isHidden(); }
    void swap();

    /// What is shown, where, and the border, for another run.
    QByteArray savedState() const;
    /// False, with nothing changed, for what savedState() didn't write.
    bool restoreSavedState(const QByteArray& state);

Q_SIGNALS:
    /// A pane was shown or hidden.
    void shownDidChange();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void setShown(QWidget* pane, bool shown);
    void dragged();
    void arrange();

    QWidget* m_graph;
    QWidget* m_map;
    double m_graphShare = 0.63; ///< of the width
};

} // namespace cardreel
