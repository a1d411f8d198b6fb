#pragma once

#include "export/BackUpOptions.h"
#include "media/MediaLibrary.h"

#include <QDialog>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace cardreel {

class PathField;
class ProblemLabel;
class SwitchBox;

/// Asks what of a card is copied, and into which new folder. What doesn't fit isn't begun, and the user is asked before
/// a folder is used that holds something. Destroys itself when closed. Interface thread.
class BackUpSheet : public QDialog
{
    Q_OBJECT

public:
    using DCFList = MediaLibrary::DCFList;

    /// `arranged`: what the list shows; `selected`: what of it is selected.
    BackUpSheet(DCFList selected, DCFList arranged, const QString& cardPath, QWidget* parent);

    BackUpOptionState optionState() const;
    /// The folder to make; empty while the user has named none.
    QString targetPath() const;

    void accept() override;

Q_SIGNALS:
    /// The user confirmed; the sheet closes.
    void chosen(const cardreel::BackUpList& items, const QString& targetPath, cardreel::ReadBack readBack);

protected:
    bool event(QEvent* event) override;

private:
    void addOptions(QVBoxLayout& column);
    void addTarget(QVBoxLayout& column);
    void addSizes(QVBoxLayout& column);
    void addButtons(QVBoxLayout& column);
    BackUpList items() const;
    QString folder() const;
    /// One that is free in the folder, unless the user has written another.
    void proposeName();
    QString whyNot() const;
    void backUpOptionChanged();
    void panelDidChangeToDirectoryURL();
    /// Whether it fits. What else is in the way keeps the button from being pressed.
    bool panelValidateURL() const;
    void refresh();
    void updateDiskRequireValueLabel();
    void browse();
    void askToUse(const QString& path);
    void finish(const QString& path);

    DCFList m_selected;
    DCFList m_arranged;
    QString m_cardPath;
    QString m_lastFolder; ///< in which a folder that is no path from the root on lies
    QString m_plainName;  ///< what is proposed where no folder has this name
    QString m_proposedName;
    QRadioButton* m_backUpOptionAllPicture;
    QRadioButton* m_backUpOptionNoPicture;
    QRadioButton* m_backUpOptionOnlyPicture;
    QLabel* m_backUpOptionLabel;
    PathField* m_folder;
    QLineEdit* m_name;
    SwitchBox* m_readBack;
    QLabel* m_free;
    QLabel* m_required;
    ProblemLabel* m_problem;
    QPushButton* m_execute = nullptr;
    quint64 m_requiredBytes = 0;
    quint64 m_freeBytes = 0;
};

} // namespace cardreel
