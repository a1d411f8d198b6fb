#include "app/LowerPanes.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr quint32 stateMark = 0x4c500001; // tells the format of the state, too
constexpr double usualGraphShare = 0.63;
constexpr int snapDistance = 12;
constexpr int leastHeight = 180; // below it neither pane tells anything

} // namespace

LowerPanes::LowerPanes(QWidget* graph, QWidget* map, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent)
    , m_graph(graph)
    , m_map(map)
    , m_graphShare(usualGraphShare)
{
    setChildrenCollapsible(false);
    setHandleWidth(1);
    setMinimumHeight(leastHeight);
    addWidget(graph);
    addWidget(map);
    connect(this, &QSplitter::splitterMoved, this, &LowerPanes::dragged);
}

void LowerPanes::setShown(QWidget* pane, bool shown)
{
    if (pane->isHidden() == !shown)
        return;
    pane->setVisible(shown);
    arrange();
    Q_EMIT shownDidChange();
}

void LowerPanes::swap()
{
    insertWidget(0, widget(1));
    arrange();
}

QByteArray LowerPanes::savedState() const
{
    QByteArray state;
    QDataStream stream(&state, QIODevice::WriteOnly);
    stream << stateMark << m_graphShare << isGraphShown() << isMapShown() << (indexOf(m_graph) == 0);
    return state;
}

bool LowerPanes::restoreSavedState(const QByteArray& state)
{
    QDataStream stream(state);
    quint32 mark = 0;
    double share = 0;
    bool graphShown = false;
    bool mapShown = false;
    bool graphFirst = false;
    stream >> mark >> share >> graphShown >> mapShown >> graphFirst;
    if (stream.status() != QDataStream::Ok || mark != stateMark || !(share > 0 && share < 1))
        return false;
    m_graphShare = share;
    if (graphFirst != (indexOf(m_graph) == 0))
        swap();
    setGraphShown(graphShown);
    setMapShown(mapShown);
    arrange();
    return true;
}

void LowerPanes::resizeEvent(QResizeEvent* event)
{
    QSplitter::resizeEvent(event);
    arrange();
}

void LowerPanes::dragged()
{
    const int all = width() - handleWidth();
    const int graph = m_graph->width();
    const bool isNearUsual = std::abs(graph - all * usualGraphShare) <= snapDistance;
    m_graphShare = isNearUsual ? usualGraphShare : std::clamp(double(graph) / std::max(all, 1), 0.05, 0.95);
    if (isNearUsual)
        arrange();
}

void LowerPanes::arrange()
{
    const int all = width() - handleWidth();
    const int graph = static_cast<int>(std::lround(all * m_graphShare));
    setSizes(indexOf(m_graph) == 0 ? QList<int>{graph, all - graph} : QList<int>{all - graph, graph});
}

} // namespace cardreel
