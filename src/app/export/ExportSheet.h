#pragma once

#include "app/export/TargetPlace.h"
#include "media/MediaLibrary.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace cardreel {

class MenuBox;
class PathField;
class ProblemLabel;

/// Asks which recordings' route goes into which file, of which format. Format and extension follow each other, and the
/// user is asked before a file is replaced. Destroys itself when closed. Interface thread.
class ExportSheet : public QDialog
{
    Q_OBJECT

public:
    using DCFList = MediaLibrary::DCFList;

    /// `all` isn't empty.
    ExportSheet(DCFList selected, DCFList all, const QString& cardPath, QWidget* parent);

    /// Where the user wants the file, with the format's extension.
    QString targetPath() const;

    void accept() override;

Q_SIGNALS:
    /// The user confirmed; the sheet closes.
    void chosen(const std::vector<std::shared_ptr<cardreel::DCFInfo>>& recordings, const QString& targetPath);

private:
    void addRecordings(QVBoxLayout& column);
    void addTarget(QVBoxLayout& column);
    QString proposedPath() const;
    ExportFormat format() const;
    void setFormat(ExportFormat format);
    void pathDidChange();
    void formatDidChange();
    void refresh();
    void browse();
    void finish(const QString& path);

    DCFList m_selectedRecordings;
    DCFList m_allRecordings;
    QString m_cardPath;
    QString m_folder;      ///< in which a name without a folder lies
    QString m_replaceable; ///< what the user was asked for already
    QRadioButton* m_selected;
    QRadioButton* m_all;
    MenuBox* m_format;
    QLabel* m_formatHint;
    PathField* m_path;
    ProblemLabel* m_problem;
    QPushButton* m_export = nullptr;
};

} // namespace cardreel
