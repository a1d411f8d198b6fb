#include "views/map/MapActions.h"

#include "platform/settings/UserDefaults.h"

#include <QAction>
#include <QKeySequence>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

QString withoutMnemonic(QString text)
{
    return text.remove(u'&').remove(u'…');
}

} // namespace

MapActions::MapActions(QObject* parent)
    : QObject(parent)
    , m_routes(addSwitch(tr("&Routes"), mapKeys::routes))
    , m_recordings(addSwitch(tr("Re&cordings"), mapKeys::recordings))
    , m_events(addSwitch(tr("&Events"), mapKeys::events))
    , m_position(addSwitch(tr("&Position"), {}))
    , m_tracing(addSwitch(tr("&Follow Position"), mapKeys::tracing))
    , m_background(add(tr("Map &Background…"), {}, {}))
    , m_zoomIn(add(tr("Zoom Map &In"), u"plus"_s, {Qt::ALT | Qt::Key_Plus, Qt::ALT | Qt::Key_Equal}))
    , m_zoomOut(add(tr("Zoom Map &Out"), u"minus"_s, {Qt::ALT | Qt::Key_Minus}))
    , m_fit(add(tr("Show &All Routes"), u"fit"_s, {Qt::ALT | Qt::Key_0}))
    , m_afterSwitches(addSeparator())
    , m_beforeBackground(addSeparator())
    , m_beforeView(addSeparator())
{
    m_tracing->setObjectName(u"locate"_s);
}

QList<QAction*> MapActions::paneMenu() const
{
    return {m_routes, m_recordings, m_events, m_position, m_afterSwitches, m_tracing, m_beforeBackground, m_background};
}

QList<QAction*> MapActions::windowMenu() const
{
    return QList<QAction*>{m_zoomIn, m_zoomOut, m_fit, m_beforeView} + paneMenu();
}

/// `drawing` names the action's drawing where it is a button.
QAction* MapActions::add(const QString& text, const QString& drawing, const QList<QKeySequence>& keys)
{
    auto* action = new QAction(text, this);
    action->setObjectName(drawing);
    action->setShortcuts(keys);
    const QString plain = withoutMnemonic(text);
    action->setToolTip(keys.empty() ? plain
                                    : tr("%1 (%2)", "what a button does, and its key")
                                          .arg(plain, keys.front().toString(QKeySequence::NativeText)));
    return action;
}

/// An empty key is not remembered.
QAction* MapActions::addSwitch(const QString& text, const QString& key)
{
    QAction* action = add(text, {}, {});
    action->setCheckable(true);
    const QVariant former = key.isEmpty() ? QVariant() : UserDefaults::shared().value(key);
    action->setChecked(!former.isValid() || former.toBool());
    if (!key.isEmpty())
        connect(action, &QAction::toggled, this, [key](bool on) { UserDefaults::shared().setValue(key, on); });
    return action;
}

QAction* MapActions::addSeparator()
{
    auto* action = new QAction(this);
    action->setSeparator(true);
    return action;
}

} // namespace cardreel
