#pragma once

#include "../WindowParts.h"
#include "app/export/BackUpSheet.h"
#include "app/export/SheetParts.h"

#include <QAbstractButton>
#include <QAction>
#include <QMessageBox>
#include <QPushButton>

namespace cardreel::test {

/// A window's or sheet's dialog of a kind that is in view; null when there is none.
template<typename Dialog>
Dialog* shownBy(const QWidget* window)
{
    for (Dialog* dialog : window->findChildren<Dialog*>()) {
        if (dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

inline void answer(const QWidget* window, QMessageBox::ButtonRole role)
{
    auto* box = shownBy<QMessageBox>(window);
    QVERIFY(box);
    for (QAbstractButton* button : box->buttons()) {
        if (box->buttonRole(button) == role)
            return button->click();
    }
}

/// What Return presses.
inline QPushButton* defaultButton(const QDialog* sheet)
{
    for (QPushButton* button : sheet->findChildren<QPushButton*>()) {
        if (button->isDefault())
            return button;
    }
    qFatal("the sheet has no default button");
}

inline QString problemOf(const QDialog* sheet)
{
    return sheet->findChild<ProblemLabel*>()->text();
}

/// Until events are handled the job waits for its first call, so it is in its middle for as long as a test likes.
inline void beginBackUp(MainWindow* window, const QString& folder)
{
    window->jobs().backUpAction()->trigger();
    auto* sheet = shownBy<BackUpSheet>(window);
    QVERIFY(sheet);
    sheet->findChild<PathField*>()->setPath(folder);
    sheet->accept();
    QVERIFY(window->jobs().isJobRunning());
}

} // namespace cardreel::test
