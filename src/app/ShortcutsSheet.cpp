#include "app/ShortcutsSheet.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int mostHeight = 640;

/// A menu's text without its mnemonic, which some languages write behind it, and without the dots of a dialog.
QString plainText(const QString& menuText)
{
    static const QRegularExpression writtenBehind(u"\\s*\\(&.\\)"_s);
    QString text = menuText;
    text.remove(writtenBehind);
    text.replace(u"&&"_s, u"\x1"_s).remove(u'&').replace(u'\x1', u'&').remove(u'…');
    return text;
}

QString keysText(const QAction& action)
{
    QStringList keys;
    for (const QKeySequence& shortcut : action.shortcuts())
        keys.push_back(shortcut.toString(QKeySequence::NativeText));
    keys.removeDuplicates();
    return keys.join(u", "_s);
}

void addRows(QGridLayout& grid, const QMenu& menu)
{
    for (const QAction* action : menu.actions()) {
        if (action->menu()) {
            addRows(grid, *action->menu());
        } else if (const QString keys = keysText(*action); !keys.isEmpty()) {
            const int row = grid.rowCount();
            auto* name = new QLabel(plainText(action->text()));
            auto* key = new QLabel(keys);
            key->setForegroundRole(QPalette::PlaceholderText);
            grid.addWidget(name, row, 0);
            grid.addWidget(key, row, 1, Qt::AlignRight);
        }
    }
}

/// One menu's keys under its title; null when it has none.
QWidget* makeGroup(const QMenu& menu)
{
    auto* group = new QWidget;
    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(0, 0, 0, 12);
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(0, 1);
    auto* title = new QLabel(plainText(menu.title()));
    QFont font = title->font();
    font.setWeight(QFont::DemiBold);
    title->setFont(font);
    grid->addWidget(title, 0, 0, 1, 2);
    addRows(*grid, menu);
    if (grid->rowCount() > 1)
        return group;
    delete group;
    return nullptr;
}

} // namespace

ShortcutsSheet::ShortcutsSheet(const QList<QMenu*>& menus, QWidget* parent)
    : QDialog(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Keyboard Shortcuts"));

    auto* content = new QWidget;
    auto* columns = new QHBoxLayout(content);
    columns->setContentsMargins(16, 16, 16, 4);
    columns->setSpacing(32);
    QVBoxLayout* column[2] = {new QVBoxLayout, new QVBoxLayout};
    for (QVBoxLayout* layout : column)
        columns->addLayout(layout, 1);
    for (const QMenu* menu : menus) {
        // Each into the shorter column.
        if (QWidget* group = makeGroup(*menu))
            column[column[1]->sizeHint().height() < column[0]->sizeHint().height() ? 1 : 0]->addWidget(group);
    }
    for (QVBoxLayout* layout : column)
        layout->addStretch(1);

    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(content);
    scroll->setMinimumWidth(content->sizeHint().width() + scroll->verticalScrollBar()->sizeHint().width());
    scroll->setMinimumHeight(std::min(content->sizeHint().height(), parent->height() - 120));
    scroll->setMaximumHeight(std::max(mostHeight, scroll->minimumHeight()));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 12, 12);
    rows->addWidget(scroll);
    rows->addWidget(buttons);
}

} // namespace cardreel
