#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QStandardPaths>

class QDialog;
class QFileDialog;
class QPushButton;
class QVBoxLayout;

/// What the sheets of export and backup are made of. Interface thread.
namespace cardreel {

inline constexpr int sheetWidth = 440;

/// A narrow column, as high as what is in it.
QVBoxLayout* makeSheetColumn(QDialog& sheet);
/// A field under its label.
void addField(QVBoxLayout& column, const QString& name, QWidget* field);
/// Text that explains what stands above it.
QLabel* makeHint(const QString& text = {});

/// Text that says what is in the way, with room for two lines, so that nothing moves when it comes.
class ProblemLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ProblemLabel(QWidget* parent = nullptr);
};

/// A path to type, and a button beside it that opens a panel.
class PathField : public QWidget
{
    Q_OBJECT

public:
    explicit PathField(QWidget* parent = nullptr);

    QString path() const { return m_path->text(); }
    void setPath(const QString& path) { m_path->setText(path); }
    QLineEdit* line() const { return m_path; }

Q_SIGNALS:
    void changed(const QString& path);
    void browseRequested();

private:
    QLineEdit* m_path;
};

/// The last folder of its kind that the user chose, if it is still there, else the user's own for such files or home.
QString lastFolder(const QString& key, QStandardPaths::StandardLocation usual = QStandardPaths::DocumentsLocation);

} // namespace cardreel
