#pragma once

#include "app/export/TimeLeft.h"
#include "playback/Panes.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

class QDialogButtonBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace cardreel {

class ProblemLabel;

/// Shows how far a job has come, lets the user cancel it, and says at the end how it went. It lies over its window and
/// leaves that usable, for a job may be long, and a window that is locked by a sheet couldn't be closed. However it is
/// closed, finished() tells, and what still runs is then cancelled by who listens. Destroys itself when closed.
/// Interface thread.
class ProgressSheet : public QDialog, public ProgressPane
{
    Q_OBJECT

public:
    /// For a job on so many items.
    ProgressSheet(const QString& title, qsizetype itemCount, QWidget* parent);

    void setProgress(double fraction) override;
    void setItem(const QString& name) override;
    void setInfoText(const QString& text) override;
    void jobDidEnd(const QString& path, const QString& problem) override;
    void dismiss() override { reject(); }

    // What is shown.
    QString infoText() const { return m_infoText; }
    QString countText() const;
    QString problemText() const;

Q_SIGNALS:
    /// The job is over, the sheet isn't.
    void didEnd();

private:
    void addParts(const QString& title);
    void showTimeLeft();

    QLabel* m_item;
    QProgressBar* m_bar;
    QLabel* m_count;
    QLabel* m_timeLeft;
    ProblemLabel* m_problem;
    QDialogButtonBox* m_buttons;
    QPushButton* m_close = nullptr;
    qsizetype m_itemCount;
    qsizetype m_itemNumber = 0; ///< from 1 on, once the first is named
    QString m_infoText;
    TimeLeft m_reckoned;
    QElapsedTimer m_sinceStart;
    QTimer m_eachSecond;
};

} // namespace cardreel
