#pragma once

#include "platform/volumes/MountedVolume.h"

#include <QDialog>

#include <vector>

class QDialogButtonBox;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace cardreel {

/// Asks which card: one of the removable volumes that are mounted, the open card, or any folder. Stays until it is
/// closed by whoever heard chosen(). Destroys itself when closed; interface thread.
class VolumeChooser : public QDialog
{
    Q_OBJECT

public:
    /// `proposed` is selected, also when it is a folder and no volume; it may be empty.
    VolumeChooser(const QString& proposed, QWidget* parent);

    /// What is mounted now. What is selected stays so as long as it is there.
    void setVolumes(const std::vector<MountedVolume>& volumes);
    /// Offers a folder beside the volumes and selects it.
    void addFolder(const QString& path);

    /// While the card is being read only leaving is possible.
    void setBusy(bool isBusy);

    /// Empty when nothing is selected.
    QString selectedPath() const;
    /// As the list shows them.
    std::vector<MountedVolume> entries() const;

    void accept() override;

Q_SIGNALS:
    /// The user confirmed.
    void chosen(const QString& rootPath);

private:
    void addList();
    void addButtons();
    void fill(const QString& selected);
    void select(const QString& path);
    void selectionDidChange();
    void browse();

    std::vector<MountedVolume> m_volumes;
    std::vector<QString> m_folders; ///< the newest first
    bool m_isBusy = false;
    QTreeWidget* m_list;
    QLabel* m_place;
    QDialogButtonBox* m_buttons;
};

} // namespace cardreel
