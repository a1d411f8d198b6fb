#include "app/export/SheetParts.h"

#include "platform/files/Files.h"
#include "platform/settings/UserDefaults.h"

#include <QDialog>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

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
    setFixedHeight(2 * fontMetrics().lineSpacing());
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

} // namespace cardreel
