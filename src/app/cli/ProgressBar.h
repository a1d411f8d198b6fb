#pragma once

#include <QString>

namespace cardreel::CommandLine {

/// How far a command is, on one line of standard error that is written over again and again. Nothing at all unless that
/// is a terminal. The line is gone with this object. One thread at a time.
class ProgressBar
{
public:
    struct State
    {
        double fraction = 0; ///< from 0 to 1
        int number = 0;      ///< of the item at work, from 1 on
        int count = 0;
        QString path; ///< of the item; its name is shown
    };

    ProgressBar();
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void show(const State& state);
    void show(const QString& text);
    void clear();

    /// The line for that state, not yet cut to the terminal's width.
    static QString line(const State& state);
    /// As much of the text as fits into so many of a terminal's columns, of which some letters take two. What would
    /// move the cursor is replaced.
    static QString cut(const QString& text, int columns);

private:
    bool m_isTerminal;
    int m_shownColumns = 0;
};

} // namespace cardreel::CommandLine
