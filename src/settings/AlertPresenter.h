#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace cardreel {

/// Something to tell or ask the user. Texts are translated already.
struct Alert
{
    enum class Kind {
        Question, ///< attached to the settings sheet
        Critical, ///< of the application, with the sign of an error
        Notice    ///< of the application
    };
    Kind kind = Kind::Notice;
    QString message;
    QString informativeText; ///< often empty
    QStringList buttons;     ///< one or two; the last is what Escape does
    bool isRisky = false;    ///< Return does what Escape does, else what the first button does
};

/// Shows alerts. Implemented by the application's dialogs, the command line and tests; interface thread.
class AlertPresenter
{
public:
    enum class Answer { FirstButton, SecondButton };
    using Answered = std::function<void(Answer)>;

    virtual ~AlertPresenter() = default;

    /// Calls `answered` once, now or later, never from within an event loop of its own. An alert that can't be shown or
    /// is closed is answered with its last button.
    virtual void show(const Alert& alert, Answered answered) = 0;
};

} // namespace cardreel
