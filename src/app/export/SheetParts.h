#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QStandardPaths>

#include <functional>

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

/// Text that says what is in the way, with room for two lines, so that nothing moves when it comes. Long ones, with a
/// path in them, lose their middle.
class ProblemLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ProblemLabel(QWidget* parent = nullptr);

    void showProblem(const QString& text);
    const QString& problem() const { return m_problem; }

protected:
    bool event(QEvent* event) override;

private:
    QString m_problem;
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

/// What is asked before something of the user's is lost.
struct ReplaceQuestion
{
    QString title;
    QString text;
    QString consequence; ///< may be empty
    QString agreeText;   ///< on the button
};

/// Asks over a sheet or a window without waiting; Return and Escape mean no. One of the two is called, unless `parent`
/// goes first.
void askToReplace(QWidget& parent, const ReplaceQuestion& question, std::function<void()> agreed,
                  std::function<void()> refused = {});

} // namespace cardreel
