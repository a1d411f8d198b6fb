#pragma once

#include <QWidget>

class QButtonGroup;

namespace cardreel {

/// A row of buttons of which one is down: a value from a few labelled steps. One stop of the Tab key; the arrow keys
/// choose. Interface thread.
class StepSelector : public QWidget
{
    Q_OBJECT

public:
    explicit StepSelector(QWidget* parent = nullptr);

    void addStep(int value, const QString& text);
    bool hasStep(int value) const;
    /// One of the steps. Isn't announced.
    void setValue(int value);
    /// For screen readers, which read the steps one by one: what they belong to and what is to be known of it. To be
    /// called again after addStep().
    void describe(const QString& name, const QString& description);

Q_SIGNALS:
    /// By the user.
    void chosen(int value);

private:
    void takeFocusAtChecked();

    QButtonGroup* m_group;
};

} // namespace cardreel
