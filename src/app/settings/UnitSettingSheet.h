#pragma once

#include "settings/SettingFields.h"
#include "settings/SettingStore.h"
#include "settings/UnitSettingViewController.h"

#include <QDialog>

#include <vector>

class QDialogButtonBox;
class QLabel;
class QScrollArea;

namespace cardreel {

class SettingRow;

/// Shows and edits one card's settings: all in one column, in groups, each with why it isn't saved on a card of the
/// recorder's model, if it isn't. Saving, cancelling and resetting are the controller's, which also has it closed.
/// Destroys itself when closed; interface thread.
class UnitSettingSheet : public QDialog
{
    Q_OBJECT

public:
    /// `controller` is there until leave() at least.
    UnitSettingSheet(UnitSettingViewController& controller, const SettingLoad& loaded, QWidget* parent);

    /// While the card is being written nothing can be changed.
    void setBusy(bool isBusy);
    /// Closes it without asking. From then on the controller isn't used.
    void leave();

    /// What it shows of a setting.
    SettingRow* row(QStringView fieldName) const;

    void accept() override;
    void reject() override;

private:
    QWidget* makeRows();
    void makeButtons();
    void fitToScreen(const QWidget& rows);
    void setValue(const SettingField& field, int value);
    void refresh();
    /// With the card's own values where the model's are neither read nor saved.
    UnitSettingViewModel shown(UnitSettingViewModel model) const;

    UnitSettingViewController* m_controller; ///< nothing once it is left
    std::vector<SettingRow*> m_rows;
    QLabel* m_source;
    QScrollArea* m_scroll;
    QLabel* m_writing;
    QDialogButtonBox* m_buttons;
};

} // namespace cardreel
