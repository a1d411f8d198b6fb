#include "app/export/ProgressSheet.h"

#include "app/export/FileManager.h"
#include "app/export/SheetParts.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int steps = 1000;
constexpr int barHeight = 6;
const auto barStyle = u"QProgressBar { background: palette(mid); border: none; border-radius: 3px; }"
                      "QProgressBar::chunk { background: palette(link); border-radius: 3px; }"_s;

} // namespace

ProgressSheet::ProgressSheet(const QString& title, qsizetype itemCount, QWidget* parent)
    : QDialog(parent)
    , m_item(new QLabel)
    , m_bar(new QProgressBar)
    , m_count(makeHint())
    , m_timeLeft(makeHint())
    , m_problem(new ProblemLabel)
    , m_buttons(new QDialogButtonBox)
    , m_itemCount(itemCount)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    m_item->setTextFormat(Qt::PlainText);
    m_bar->setRange(0, steps);
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(barHeight);
    m_bar->setStyleSheet(barStyle);
    m_bar->setAccessibleName(title);
    m_problem->hide();
    addParts(title);
    m_sinceStart.start();
    connect(&m_eachSecond, &QTimer::timeout, this, &ProgressSheet::showTimeLeft);
    m_eachSecond.start(1000);
}

void ProgressSheet::addParts(const QString& title)
{
    auto* heading = new QLabel;
    QFont font = heading->font();
    font.setWeight(QFont::DemiBold);
    heading->setFont(font);
    heading->setTextFormat(Qt::PlainText);
    heading->setText(heading->fontMetrics().elidedText(title, Qt::ElideMiddle, sheetWidth));
    auto* figures = new QHBoxLayout;
    m_timeLeft->setAlignment(Qt::AlignTrailing);
    figures->addWidget(m_count);
    figures->addWidget(m_timeLeft, 1);

    m_close = m_buttons->addButton(QDialogButtonBox::Cancel);
    m_close->setAutoDefault(false); // Return must not cancel what the user just began
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    QVBoxLayout* column = makeSheetColumn(*this);
    for (QWidget* row : std::initializer_list<QWidget*>{heading, m_item, m_bar})
        column->addWidget(row);
    column->addLayout(figures);
    column->addWidget(m_problem);
    column->addSpacing(4);
    column->addWidget(m_buttons);
}

void ProgressSheet::setProgress(double fraction)
{
    m_bar->setValue(qRound(std::clamp(fraction, 0.0, 1.0) * steps));
    m_reckoned.jobDidReach(fraction, m_sinceStart.elapsed());
}

void ProgressSheet::setItem(const QString& name)
{
    setInfoText(name);
    ++m_itemNumber;
    m_count->setText(tr("%1 of %2", "items").arg(locale().toString(m_itemNumber), locale().toString(m_itemCount)));
}

void ProgressSheet::setInfoText(const QString& text)
{
    m_infoText = text;
    m_item->setText(m_item->fontMetrics().elidedText(text, Qt::ElideMiddle, sheetWidth));
}

void ProgressSheet::showTimeLeft()
{
    const std::optional<int> minutes = m_reckoned.minutes(m_sinceStart.elapsed());
    m_timeLeft->setText(!minutes        ? QString()
                        : *minutes == 0 ? tr("less than a minute left")
                                        : tr("about %n minute(s) left", nullptr, *minutes));
}

void ProgressSheet::jobDidEnd(const QString& path, const QString& problem)
{
    m_eachSecond.stop();
    m_timeLeft->clear();
    if (path.isEmpty())
        m_bar->setValue(0); // a full one would say that it went well
    m_problem->showProblem(problem);
    m_problem->setVisible(!problem.isEmpty());
    if (!path.isEmpty()) {
        QPushButton* show = m_buttons->addButton(tr("&Show in Folder"), QDialogButtonBox::ActionRole);
        show->setAutoDefault(false);
        connect(show, &QPushButton::clicked, this, [path] { showInFileManager(path); });
    }
    m_close->setText(tr("&Close"));
    m_close->setDefault(true);
    m_close->setFocus();
    Q_EMIT didEnd();
}

QString ProgressSheet::countText() const
{
    return m_count->text();
}

QString ProgressSheet::problemText() const
{
    return m_problem->problem();
}

} // namespace cardreel
