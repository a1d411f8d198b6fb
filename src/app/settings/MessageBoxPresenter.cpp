#include "app/settings/MessageBoxPresenter.h"

#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace cardreel {

MessageBoxPresenter::MessageBoxPresenter(std::function<QWidget*()> below)
    : m_below(std::move(below))
{
}

void MessageBoxPresenter::show(const Alert& alert, Answered answered)
{
    auto* box = new QMessageBox(m_below());
    box->setAttribute(Qt::WA_DeleteOnClose);
    if (alert.kind == Alert::Kind::Critical)
        box->setIcon(QMessageBox::Critical);
    box->setTextFormat(Qt::PlainText);
    box->setText(alert.message);
    box->setInformativeText(alert.informativeText);
    QPushButton* first = nullptr;
    QPushButton* last = nullptr;
    for (const QString& text : alert.buttons) {
        last = box->addButton(text, first ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
        if (!first)
            first = last;
    }
    box->setDefaultButton(alert.isRisky ? last : first);
    box->setEscapeButton(last);
    QObject::connect(box, &QMessageBox::finished, box, [box, first, last, answered = std::move(answered)] {
        const bool isFirst = first == last || box->clickedButton() == first;
        answered(isFirst ? Answer::FirstButton : Answer::SecondButton);
    });
    box->open();
}

} // namespace cardreel
