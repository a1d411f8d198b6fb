#include "app/export/SheetParts.h"

#include "platform/files/Files.h"
#include "platform/settings/UserDefaults.h"

#include <QDialog>
#include <QEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

QVBoxLayout* makeSheetColumn(QDialog& sheet)
{
    auto* column = new QVBoxLayout(&sheet);
    column->setContentsMargins(16, 16, 16, 12);
    column->setSpacing(8);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addStrut(sheetWidth);
    return column;
}

void addField(QVBoxLayout& column, const QString& name, QWidget* field)
{
    auto* label = new QLabel(name);
    label->setBuddy(field);
    auto* rows = new QVBoxLayout;
    rows->setContentsMargins(0, 4, 0, 0);
    rows->setSpacing(4);
    rows->addWidget(label);
    rows->addWidget(field);
    column.addLayout(rows);
}

QLabel* makeHint(const QString& text)
{
    auto* hint = new QLabel(text);
    hint->setTextFormat(Qt::PlainText);
    hint->setWordWrap(true);
    hint->setForegroundRole(QPalette::PlaceholderText);
    return hint;
}

ProblemLabel::ProblemLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setForegroundRole(QPalette::BrightText);
    setAlignment(Qt::AlignTop | Qt::AlignLeading);
}

void ProblemLabel::showProblem(const QString& text)
{
    constexpr qsizetype mostLetters = 240;
    constexpr qsizetype longestWord = 24; // names of files can be one long word, which would widen the sheet
    m_problem = text;
    QString shown = text;
    if (shown.size() > mostLetters)
        shown = shown.first(mostLetters / 2) + u'…' + shown.last(mostLetters / 2);
    qsizetype wordLength = 0;
    for (qsizetype i = 0; i < shown.size(); ++i) {
        wordLength = shown[i].isSpace() ? 0 : wordLength + 1;
        if (wordLength >= longestWord && !shown[i].isHighSurrogate())
            shown.insert(++i, QChar(0x200B)); // where a line may end
    }
    setText(shown);
}

bool ProblemLabel::event(QEvent* event)
{
    // Letters of a fallback font are higher than the font itself.
    if (event->type() == QEvent::Polish || event->type() == QEvent::FontChange)
        setMinimumHeight(fontMetrics().boundingRect(QRect(0, 0, sheetWidth, sheetWidth), 0, u"Åg漢\nÅg漢"_s).height());
    return QLabel::event(event);
}

PathField::PathField(QWidget* parent)
    : QWidget(parent)
    , m_path(new QLineEdit)
{
    auto* browse = new QPushButton(tr("&Browse…"));
    browse->setAutoDefault(false);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(m_path, 1);
    row->addWidget(browse);
    setFocusProxy(m_path);
    setFocusPolicy(m_path->focusPolicy()); // or its label's key would pass it by
    connect(m_path, &QLineEdit::textChanged, this, &PathField::changed);
    connect(browse, &QPushButton::clicked, this, &PathField::browseRequested);
}

QString lastFolder(const QString& key, QStandardPaths::StandardLocation usual)
{
    for (const QString& folder :
         {UserDefaults::shared().value(key).toString(), QStandardPaths::writableLocation(usual)}) {
        if (files::isFolder(folder))
            return folder;
    }
    return QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
}

void askToReplace(QWidget& parent, const ReplaceQuestion& question, std::function<void()> agreed,
                  std::function<void()> refused)
{
    auto* box = new QMessageBox(QMessageBox::Warning, question.title, question.text, QMessageBox::Cancel, &parent);
    box->setTextFormat(Qt::PlainText); // it names a file
    box->setInformativeText(question.consequence);
    box->setAttribute(Qt::WA_DeleteOnClose);
    const QPushButton* agree = box->addButton(question.agreeText, QMessageBox::AcceptRole);
    box->setDefaultButton(QMessageBox::Cancel);
    QObject::connect(box, &QDialog::finished, box,
                     [box, agree, agreed = std::move(agreed), refused = std::move(refused)] {
                         const std::function<void()>& answer = box->clickedButton() == agree ? agreed : refused;
                         if (answer)
                             answer();
                     });
    box->open();
}

} // namespace cardreel
