#pragma once

#include <QList>
#include <QObject>
#include <QString>

class QAction;

namespace cardreel {

/// The names under which the map's switches are kept.
namespace mapKeys {
inline const QString routes = QStringLiteral("MapRoutesVisible");
inline const QString recordings = QStringLiteral("MapRecordingsVisible");
inline const QString events = QStringLiteral("MapEventsVisible");
inline const QString tracing = QStringLiteral("MapFollowsPosition");
} // namespace mapKeys

/// What can be done with a map pane, once for its buttons, its own menu and the window's. The switches but the
/// position's are remembered for the next start; all are on at first. Owned by the pane.
class MapActions : public QObject
{
    Q_OBJECT

public:
    explicit MapActions(QObject* parent);

    // Switches.
    QAction* routes() const { return m_routes; }
    QAction* recordings() const { return m_recordings; }
    QAction* events() const { return m_events; }
    QAction* position() const { return m_position; } ///< each card begins with it on
    QAction* tracing() const { return m_tracing; }

    QAction* background() const { return m_background; }
    QAction* zoomIn() const { return m_zoomIn; }
    QAction* zoomOut() const { return m_zoomOut; }
    QAction* fit() const { return m_fit; }

    /// Those of the pane's own menu, with separators.
    QList<QAction*> paneMenu() const;
    /// All, with separators, as a menu of the window shows them.
    QList<QAction*> windowMenu() const;

private:
    QAction* add(const QString& text, const QString& drawing, const QList<QKeySequence>& keys);
    QAction* addSwitch(const QString& text, const QString& key);
    QAction* addSeparator();

    QAction* m_routes;
    QAction* m_recordings;
    QAction* m_events;
    QAction* m_position;
    QAction* m_tracing;
    QAction* m_background;
    QAction* m_zoomIn;
    QAction* m_zoomOut;
    QAction* m_fit;
    QAction* m_afterSwitches;
    QAction* m_beforeBackground;
    QAction* m_beforeView;
};

} // namespace cardreel
