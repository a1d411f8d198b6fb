#pragma once

#include "settings/SettingFields.h"

#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace cardreel {

class MenuBox;
class StepSelector;
class SwitchBox;

/// One setting in the sheet: its name, what changes it, what is to be known of it, and a dot when it was changed. A
/// value outside its range is offered beside those in it. Owned by the sheet; interface thread.
class SettingRow : public QWidget
{
    Q_OBJECT

public:
    /// For a card of some model. What saving leaves alone is only shown, what the model hasn't isn't.
    SettingRow(const SettingField& field, quint16 modelID, const UnitSettingViewModel& shown,
               QWidget* parent = nullptr);

    const SettingField& field() const { return m_field; }
    /// What takes the keys; null when the model has no such setting.
    QWidget* control() const { return m_control; }
    bool isMarkedAsChanged() const { return m_isChanged; }

    /// `before` is what changes are marked against.
    void showValue(const UnitSettingViewModel& model, const UnitSettingViewModel& before);

Q_SIGNALS:
    /// The user chose one of the values that were offered.
    void edited(int value);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addControl(QVBoxLayout& column, quint16 modelID);
    void addNote(QVBoxLayout& column);
    QWidget* makeControl();
    void offer(const UnitSettingViewModel& model, int value);
    void describe(const QString& whatChanged);

    const SettingField& m_field;
    QString m_note;
    QWidget* m_firstLine = nullptr; ///< the dot stands beside it
    QWidget* m_control = nullptr;   ///< one of the following
    SwitchBox* m_switch = nullptr;
    MenuBox* m_menu = nullptr;
    StepSelector* m_steps = nullptr;
    QLabel* m_text = nullptr;
    bool m_isChanged = false;
};

} // namespace cardreel
