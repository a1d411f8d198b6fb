#include "app/CardApplication.h"

#include "app/MainWindow.h"
#include "app/cli/Interrupts.h"
#include "media/MediaLibrary.h"
#include "names/ConstClass.h"
#include "platform/BackgroundQueue.h"
#include "platform/InterfaceThread.h"
#include "platform/files/Files.h"
#include "platform/settings/UserDefaults.h"
#include "platform/video/VideoPlayer.h"

#include <QApplication>
#include <QFileDialog>
#include <QLibraryInfo>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QSocketNotifier>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const QString recentKey = u"RecentCards"_s;
constexpr qsizetype keptRecentCards = 10;
constexpr int cascade = 32;

// Settings are texts: paths are kept there as their bytes, percent-encoded, for not every path is a text.
QStringList recentCards()
{
    QStringList paths;
    for (const QString& stored : UserDefaults::shared().value(recentKey).toStringList())
        paths.push_back(files::fromNativePath(QByteArray::fromPercentEncoding(stored.toLatin1())));
    return paths;
}

void setRecentCards(const QStringList& paths)
{
    QStringList stored;
    for (const QString& path : paths)
        stored.push_back(QString::fromLatin1(files::nativePath(path).toPercentEncoding("/")));
    UserDefaults::shared().setValue(recentKey, stored);
}

} // namespace

CardApplication::CardApplication(QApplication& application)
    : m_theme(application)
{
    QApplication::setWindowIcon(QIcon(u":/images/cardreel.svg"_s));
    InterfaceThread::open();
    connect(&m_synchronizedPlay, &SynchronizedPlay::newWindowRequested, this, [this] { openWindow(); });
    // The desktop, which is about to close everything, must not wait for an answer that nobody gives.
    connect(&application, &QGuiApplication::commitDataRequest, this, [this] {
        for (const QPointer<MainWindow>& window : m_windows) {
            if (window)
                window->jobs().stopAsking();
        }
    });
}

CardApplication::~CardApplication()
{
    for (const QPointer<MainWindow>& window : m_windows)
        delete window;
    InterfaceThread::close();
    BackgroundQueue::waitForDone();
    MediaLibrary::cacheCleaning();
    VideoPlayer::waitForShutdown();
}

void CardApplication::openAtStart(const QStringList& cards)
{
    MainWindow* first = makeWindow();
    first->show();
    for (const QString& card : cards)
        openCard(card, first);
}

MainWindow* CardApplication::makeWindow()
{
    auto* window = new MainWindow;
    std::erase_if(m_windows, [](const QPointer<MainWindow>& other) { return other.isNull(); });
    m_windows.emplace_back(window);
    connect(window, &MainWindow::openRequested, this, [this, window] { askForCard(window); });
    connect(window, &MainWindow::cardDropped, this, [this, window](const QString& path) { openCard(path, window); });
    connect(window, &MainWindow::newWindowRequested, this, [this] { openWindow(); });
    connect(window, &MainWindow::quitRequested, this, &CardApplication::quit);
    connect(&window->jobs(), &CardJobs::jobDidEnd, this, &CardApplication::jobDidEnd);
    connect(&window->jobs(), &CardJobs::didEnd, this, &CardApplication::jobDidEnd);
    SynchronizedPlay* play = &m_synchronizedPlay;
    connect(window, &MainWindow::leadRequested, play, [=](bool leading) { play->setLeading(window, leading); });
    connect(window, &MainWindow::didBecomeKey, play, [=] { play->windowDidBecomeKey(window); });
    connect(window, &MainWindow::didResignKey, play, [=] { play->windowDidResignKey(window); });
    connect(window, &MainWindow::didChange, play, &SynchronizedPlay::windowDidChange);
    connect(window, &MainWindow::didClose, play, [=] { play->removeWindow(window); });
    play->addWindow(window);
    connect(window->recentMenu(), &QMenu::aboutToShow, this, [this, window] { fillRecentMenu(window); });
    fillRecentMenu(window);
    return window;
}

void CardApplication::openWindow()
{
    MainWindow* window = makeWindow();
    // Beside the others, where the screen has room, not hiding one of them.
    if (const QWidget* other = QApplication::activeWindow(); other && !other->isMaximized() && !other->isFullScreen()) {
        const QRect place(other->pos() + QPoint(cascade, cascade), other->frameGeometry().size());
        if (other->screen()->availableGeometry().contains(place))
            window->move(place.topLeft());
    }
    window->show();
    window->activateWindow();
}

void CardApplication::openCard(const QString& givenPath, MainWindow* preferred)
{
    const QString path = files::absolutePath(givenPath);
    if (!MediaLibrary::mediaIsAvailable(path))
        return refuse(path, preferred);
    for (const QPointer<MainWindow>& window : m_windows) {
        if (window && files::isSameFile(window->cardPath(), path)) {
            window->raise();
            window->activateWindow();
            return;
        }
    }
    MainWindow* window = preferred->cardPath().isEmpty() ? preferred : makeWindow();
    window->show();
    if (window->openCard(path))
        remember(path);
}

std::vector<MainWindow*> CardApplication::windowsToAsk() const
{
    std::vector<MainWindow*> result;
    for (const QPointer<MainWindow>& window : m_windows) {
        if (window && window->jobs().isToBeAsked())
            result.push_back(window);
    }
    return result;
}

void CardApplication::jobDidEnd()
{
    if (m_question && windowsToAsk().empty())
        m_question->reject();
}

void CardApplication::quit()
{
    const std::vector<MainWindow*> busy = windowsToAsk();
    if (busy.empty())
        return QApplication::closeAllWindows();
    if (m_question && m_question->isVisible())
        return m_question->activateWindow();
    MainWindow* front = busy.front();
    front->raise();
    m_question = front->jobs().askBelow(*front, static_cast<int>(busy.size()), tr("&Stop and Quit"), [this] {
        m_question.clear(); // it is closing itself
        stopAndQuit();
    });
}

void CardApplication::stopAndQuit()
{
    for (const QPointer<MainWindow>& window : m_windows) {
        if (window)
            window->jobs().stop();
    }
    QApplication::closeAllWindows();
}

void CardApplication::endOnSignals()
{
    namespace Interrupts = CommandLine::Interrupts;
    Interrupts::endProgram();
    auto* notifier = new QSocketNotifier(Interrupts::hold(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        delete m_question;
        stopAndQuit();
    });
}

void CardApplication::askForCard(MainWindow* window)
{
    auto* dialog = new QFileDialog(window, tr("Open Card"), files::folderOf(window->cardPath()));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::fileSelected, this, [this, window](const QString& path) { openCard(path, window); });
    dialog->open();
}

void CardApplication::refuse(const QString& path, MainWindow* window)
{
    const QString shown = files::displayPath(path);
    const QString why =
        !files::exists(path)             ? tr("There is no such folder.")
        : !files::isFolder(path)         ? tr("It is a file. Choose the folder that holds the recordings' folders.")
        : !files::isReadableFolder(path) ? tr("It can\'t be read: you may lack the permission.")
                                         : tr("It holds none of the folders that a recorder makes: NORMAL, EVENT, "
                                              "MANUAL, PARKING, PICTURE or REAR. Choose the folder that they are in.");
    auto* box =
        new QMessageBox(QMessageBox::Warning, tr("No card"),
                        tr("“%1” can't be opened as a card.").arg(files::nameOf(shown)), QMessageBox::Ok, window);
    box->setInformativeText(why);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void CardApplication::remember(const QString& path)
{
    QStringList recent = recentCards();
    recent.removeAll(path);
    recent.prepend(path);
    setRecentCards(recent.mid(0, keptRecentCards));
}

void CardApplication::fillRecentMenu(MainWindow* window)
{
    QMenu* menu = window->recentMenu();
    menu->clear();
    for (const QString& path : recentCards()) {
        // An ampersand in a folder's name is no mnemonic.
        menu->addAction(files::displayPath(path).replace(u'&', u"&&"_s), this,
                        [this, path, window] { openCard(path, window); });
    }
    menu->setEnabled(!menu->isEmpty());
    if (menu->isEmpty())
        return;
    menu->addSeparator();
    menu->addAction(tr("&Clear List"), this, [] { setRecentCards({}); });
}

void setupDefaults()
{
    static QTranslator toolkit; // the texts of Qt's own dialogs
    if (toolkit.load(QLocale::system(), u"qtbase"_s, u"_"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&toolkit);
    static QTranslator translator;
    // English is a translation too: some of the system's own keys are Japanese.
    if (!translator.load(QLocale::system(), u"cardreel"_s, u"_"_s, u":/i18n"_s))
        (void)translator.load(u":/i18n/cardreel_en.qm"_s);
    QCoreApplication::installTranslator(&translator);

    QFile defaults(u":/UserDefaults.plist"_s);
    if (!defaults.open(QIODevice::ReadOnly) || !UserDefaults::shared().registerDefaults(defaults.readAll()))
        qFatal("the default settings are missing from the program");
}

} // namespace cardreel
