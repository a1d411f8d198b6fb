#pragma once

#include "export/DCFAsyncBackUp.h"
#include "media/MediaLibrary.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>

class QAction;
class QDialog;
class QMessageBox;
class QWidget;

namespace cardreel {

class MediaController;
class ProgressSheet;

/// Leads the user of a window through an export or a backup: what and where to, how far it is, how it went; and asks
/// before a running one is stopped. A member of the window, so that it is gone before what lies over that; interface
/// thread.
class CardJobs : public QObject
{
    Q_OBJECT

public:
    CardJobs(MediaController& controller, QWidget& window);
    ~CardJobs() override;

    // Enabled while the card has recordings and none of them is under way.
    QAction* exportAction() const { return m_export; }
    QAction* backUpAction() const { return m_backUp; }
    /// Those of the window whose keys work in the sheet of progress, too.
    void setKeysOfSheet(const QList<QAction*>& actions) { m_keysOfSheet = actions; }

    /// From the command to the end of the last sheet.
    bool isActive() const { return !m_sheet.isNull(); }
    bool isJobRunning() const;

    /// Has the user decide whether the running job is stopped. `stopped` is called once it is.
    void askToStop(std::function<void()> stopped);
    /// From now on, and until the next job begins, a running one may be stopped without a question: the session ends.
    void stopAsking() { m_asks = false; }
    /// Whether the user wants to be asked first.
    bool isToBeAsked() const { return m_asks && isJobRunning(); }
    /// Ends what is under way.
    void stop();

    /// Asks over a window whether this window's job, or for a count over 1 so many, are stopped. Destroys itself.
    QMessageBox* askBelow(QWidget& window, int jobs, const QString& stopText, std::function<void()> agreed) const;

Q_SIGNALS:
    /// The job is over, its sheet may still tell how it went.
    void jobDidEnd();
    /// Isn't active any more.
    void didEnd();

private:
    enum class Kind { Export, BackUp };

    void exportRoute();
    void backUp();
    bool canBegin() const;
    void begin(QDialog* sheet);
    void runExport(const MediaLibrary::DCFList& recordings, const QString& path);
    void runBackUp(const BackUpList& items, const QString& path, ReadBack readBack);
    ProgressSheet* showProgress(Kind kind, const QString& title, qsizetype items);
    void updateActions();
    void end();

    MediaController& m_controller;
    QWidget& m_window;
    QAction* m_export;
    QAction* m_backUp;
    QList<QAction*> m_keysOfSheet;
    QPointer<QDialog> m_sheet; ///< the one that asks or the one that shows progress
    QPointer<QMessageBox> m_question;
    Kind m_kind = Kind::Export;
    bool m_asks = true;
};

} // namespace cardreel
