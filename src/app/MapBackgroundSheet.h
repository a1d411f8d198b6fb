#pragma once

#include "platform/map/TileSource.h"

#include <QDialog>
#include <QFileDialog>

class QDialogButtonBox;
class QLineEdit;
class QRadioButton;

namespace cardreel {

/// Asks what lies under the routes: a public map, another server's, tiles on this computer, or nothing. Destroys itself
/// when closed. Interface thread.
class MapBackgroundSheet : public QDialog
{
    Q_OBJECT

public:
    MapBackgroundSheet(const TileSettings& settings, QWidget* parent);

    /// What the user's settings have; what is registered for the first start otherwise.
    static TileSettings savedSettings();
    static void saveSettings(const TileSettings& settings);

Q_SIGNALS:
    /// The user confirmed; nothing is saved yet.
    void chosen(const cardreel::TileSettings& settings);

private:
    TileSettings settings() const;
    void addChoices();
    void choose(const TileSettings& settings);
    void browse(QFileDialog::FileMode mode);
    void showFields();

    QRadioButton* m_public;
    QRadioButton* m_server;
    QRadioButton* m_local;
    QRadioButton* m_none;
    QLineEdit* m_template;
    QLineEdit* m_attribution;
    QLineEdit* m_path;
    QWidget* m_serverFields;
    QWidget* m_localFields;
    QDialogButtonBox* m_buttons;
};

} // namespace cardreel
