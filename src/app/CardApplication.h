#pragma once

#include "app/SynchronizedPlay.h"
#include "app/Theme.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTranslator>

#include <vector>

class QApplication;
class QMessageBox;

namespace cardreel {

class MainWindow;

/// The running program: its windows, one a card, what they share (theme, translations, recent cards) and its orderly
/// end. Made by main() on the interface thread.
class CardApplication : public QObject
{
    Q_OBJECT

public:
    explicit CardApplication(QApplication& application);
    /// Ends the background jobs and trims the caches.
    ~CardApplication() override;

    /// One window a card; one inviting window when no card is given or none can be opened.
    void openAtStart(const QStringList& cards);
    /// From now on Ctrl+C in a terminal, a logout or a shutdown ends the program as Quit does, but without asking: what
    /// a job leaves unfinished is removed.
    void endOnSignals();

private:
    /// Takes `preferred` when that shows no card yet, else a new window; brings forward a window that shows the card.
    void openCard(const QString& givenPath, MainWindow* preferred);
    void askForCard(MainWindow* window);
    MainWindow* makeWindow();
    /// One more that invites.
    void openWindow();
    void refuse(const QString& path, MainWindow* window);
    void remember(const QString& path);
    void fillRecentMenu(MainWindow* window);
    /// Closes all windows; asks first, once, when jobs are running.
    void quit();
    void stopAndQuit();
    std::vector<MainWindow*> windowsToAsk() const;
    /// Nothing is left to ask about once the last has ended.
    void jobDidEnd();

    Theme m_theme;
    SynchronizedPlay m_synchronizedPlay;
    std::vector<QPointer<MainWindow>> m_windows;
    QPointer<QMessageBox> m_question; ///< whether running jobs are stopped
};

/// Installs the translations for the user's language and registers the default settings. For a program's start, with a
/// window or without.
void setupDefaults();

} // namespace cardreel
