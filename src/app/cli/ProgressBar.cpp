#include "app/cli/ProgressBar.h"

#include "platform/files/Files.h"
#include "platform/text/TextColumns.h"

#include <sys/ioctl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace cardreel::CommandLine {

namespace {

constexpr int barColumns = 20;
constexpr int usualColumns = 80;

/// One less than there are: behind the last one some terminals begin another line.
int usableColumns()
{
    winsize size = {};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return (isKnown ? size.ws_col : usualColumns) - 1;
}

} // namespace

ProgressBar::ProgressBar()
    : m_isTerminal(isatty(STDERR_FILENO) != 0)
{
}

ProgressBar::~ProgressBar()
{
    clear();
}

void ProgressBar::show(const State& state)
{
    if (m_isTerminal)
        show(line(state));
}

void ProgressBar::show(const QString& text)
{
    if (!m_isTerminal)
        return;
    const QString shown = cut(text, usableColumns());
    const int columns = columnsOf(shown);
    const int rest = std::max(0, m_shownColumns - columns); // of the longer line before
    std::fprintf(stderr, "\r%s%*s", shown.toLocal8Bit().constData(), rest, "");
    m_shownColumns = columns;
}

void ProgressBar::clear()
{
    if (m_shownColumns > 0)
        std::fprintf(stderr, "\r%*s\r", m_shownColumns, "");
    m_shownColumns = 0;
}

QString ProgressBar::line(const State& state)
{
    // Full only at the end; seven tenths in single precision are a hair less than that.
    const double fraction = std::clamp(state.fraction + 1e-6, 0.0, 1.0);
    const auto filled = static_cast<int>(std::floor(fraction * barColumns));
    const QString bar = QString(filled, u'#') + QString(barColumns - filled, u'-');
    return u"%1 % [%2] %3/%4 %5"_s.arg(static_cast<int>(std::floor(fraction * 100)), 3)
        .arg(bar)
        .arg(state.number)
        .arg(state.count)
        .arg(files::displayPath(files::nameOf(state.path)));
}

QString ProgressBar::cut(const QString& text, int columns)
{
    QString result;
    for (char32_t letter : text.toStdU32String()) {
        if (columnsOf(letter) < 0)
            letter = U'?';
        columns -= columnsOf(letter);
        if (columns < 0)
            break;
        result += QString::fromUcs4(&letter, 1);
    }
    return result;
}

} // namespace cardreel::CommandLine
