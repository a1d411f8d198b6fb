#pragma once

#include <QDialog>
#include <QList>

class QMenu;

namespace cardreel {

/// All keys of a window, taken from its menus, so that the sheet and the keys can't differ. Deletes itself when closed;
/// interface thread.
class ShortcutsSheet : public QDialog
{
    Q_OBJECT

public:
    ShortcutsSheet(const QList<QMenu*>& menus, QWidget* parent);
};

} // namespace cardreel
