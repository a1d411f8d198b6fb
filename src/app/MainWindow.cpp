#include "app/MainWindow.h"

#include "app/CardChip.h"
#include "app/FullScreenMode.h"
#include "app/LeadButton.h"
#include "app/LibraryPanel.h"
#include "app/LowerPanes.h"
#include "app/MomentDisplay.h"
#include "app/ReadoutBar.h"
#include "app/TransportBar.h"
#include "app/VideoSplitter.h"
#include "app/WindowKeys.h"
#include "media/DCFInfo.h"
#include "platform/files/Files.h"
#include "platform/settings/UserDefaults.h"
#include "platform/text/UnitText.h"
#include "playback/OptionPopover.h"
#include "playback/ZoomPlayerSplitViewController.h"
#include "playback/ZoomPlayerViewController.h"

#include <QAction>
#include <QApplication>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>

#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int progressMs = 100;
constexpr QSize firstSize(1440, 900);
constexpr QSize frameAllowance(8, 40); // what the desktop puts around a window

/// The folder among what is dragged; empty when there is none.
QString draggedFolder(const QMimeData& data)
{
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile() && files::isFolder(url.toLocalFile()))
            return url.toLocalFile();
    }
    return {};
}

/// Keys that write belong to the field that is written in.
bool isKeyOfTextField(const QKeyEvent& event)
{
    const QWidget* field = QApplication::focusWidget();
    const bool writes = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0 &&
                        (event.key() < Qt::Key_F1 || event.key() > Qt::Key_F35) && event.key() != Qt::Key_Escape;
    return writes && field && field->testAttribute(Qt::WA_InputMethodEnabled);
}

/// Writing waits for the disk, and at the start there is nothing new to write.
template<typename Value>
void remember(const QString& key, Value value)
{
    if (UserDefaults::shared().value(key).value<Value>() != value)
        UserDefaults::shared().setValue(key, value);
}

} // namespace

MainWindow::MainWindow()
    : m_pages(new QStackedWidget)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAcceptDrops(true);
    setMinimumSize(1000, 560);
    resize(firstSize.boundedTo(screen()->availableSize() - frameAllowance));
    setWindowTitle(QApplication::applicationDisplayName());
    auto* content = new QWidget;
    auto* rows = new QVBoxLayout(content);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_toolRow = makeToolRow());
    rows->addWidget(m_pages, 1);
    m_pages->addWidget(makeStartPage());
    m_pages->addWidget(makeCardPage());
    setCentralWidget(content);
    statusBar()->setSizeGripEnabled(false);
    m_contents = new QLabel;
    m_progress = new QLabel;
    statusBar()->addWidget(m_contents);
    statusBar()->addWidget(m_progress);
    statusBar()->addPermanentWidget(m_readout);
    statusBar()->setContentsMargins(6, 0, 6, 0);
    makeMenus();
    connectPanes();
    connectTransport();

    const UserDefaults& defaults = UserDefaults::shared();
    m_volume = defaults.value(keys::volume).toDouble();
    m_transport->setVolume(m_volume);
    setMuted(defaults.value(keys::muted).toBool());
    showRearCamera(ZoomPlayerSplitViewController::Animation::None);
    restoreGeometry(defaults.value(keys::geometry).toByteArray());

    connect(&m_controller, &MediaLibrary::recordingDidParse, this, [this](const std::shared_ptr<DCFInfo>& dcf) {
        m_parsed.insert(dcf.get());
        showParseProgress();
    });
    connect(&m_controller, &MediaLibrary::parseDidFinish, m_progress, &QLabel::clear);
    connect(&m_cardWatch, &CardWatch::removed, this, &MainWindow::cardIsGone);
    connect(&m_cardWatch, &CardWatch::returned, this, &MainWindow::cardReturned);
    connect(&m_jobs, &CardJobs::didEnd, this, &MainWindow::jobsDidEnd);
}

MainWindow::~MainWindow()
{
    Q_EMIT didClose();
    m_controller.dispose();
}

bool MainWindow::openCard(const QString& rootPath)
{
    if (!m_controller.canReloadMedia())
        return false;
    emptyPanes();
    m_progress->clear();
    m_pages->setCurrentIndex(1);
    setWindowTitle(tr("%1 – Cardreel").arg(files::nameOf(files::displayPath(rootPath))));
    m_chip->setCard(rootPath);
    m_parsed.clear();
    m_controller.mediaTreeSyncAtRootPath(rootPath);

    const MediaLibrary::DCFList& recordings = m_controller.mediaTree();
    showRearCamera(ZoomPlayerSplitViewController::Animation::None);
    const quint64 bytes = std::accumulate(recordings.begin(), recordings.end(), quint64(0),
                                          [](quint64 sum, const auto& dcf) { return sum + dcf->fileSize; });
    m_contents->setText(tr("%n recording(s)", nullptr, static_cast<int>(recordings.size())) + u"  ·  "_s +
                        dataSizeText(bytes));
    m_cardWatch.setCard(rootPath);
    m_toggleFullScreen->setEnabled(true);
    if (!recordings.empty())
        m_panel->selectRecording(0);
    else
        m_frontPane->setMessage(tr("There is nothing to play on this card."));
    Q_EMIT didChange();
    return !recordings.empty() || !m_controller.pictureTree().empty();
}

void MainWindow::emptyPanes()
{
    m_controller.setCurrentDCF(nullptr);
    m_controller.updateCurrentDCF(nullptr, true, nullptr);
    for (ZoomPlayerViewController* pane : m_panes->playerVCs()) {
        pane->playWithPath({}, {}, {}, {});
        pane->setMessage({});
    }
    m_moment->clear();
}

void MainWindow::cardIsGone()
{
    m_returnedCard.clear();
    m_controller.cancelParse();
    m_progress->clear();
    emptyPanes();
    m_frontPane->setMessage(tr("The card has been removed. Put it back to go on."));
}

void MainWindow::cardReturned(const QString& rootPath)
{
    if (m_jobs.isActive())
        m_returnedCard = rootPath;
    else
        openCard(rootPath);
}

void MainWindow::jobsDidEnd()
{
    if (!m_returnedCard.isEmpty())
        openCard(std::exchange(m_returnedCard, {}));
    else if (!files::isFolder(cardPath()))
        m_controller.cancelParse(); // the card was pulled meanwhile
}

void MainWindow::showRearCamera(ZoomPlayerSplitViewController::Animation animation)
{
    const bool shown = m_rearCamera->isChecked() && m_controller.hasSecondary();
    m_panes->setSecondaryPlayerEnable(shown, animation);
    m_videoSplitter->setPictures(shown ? 2 : 1);
    // A camera that isn't shown needn't be decoded.
    if (shown == (m_controller.playerVCSecondary() != nullptr))
        return;
    m_controller.setPlayerVCSecondary(shown ? m_rearPane : nullptr);
    if (shown)
        m_controller.loadSecondary();
    else
        m_rearPane->playWithPath({}, {}, {}, {});
}

void MainWindow::showParseProgress()
{
    // Hundreds of recordings a second go by, and each new text lays the status bar out.
    if (m_progressShown.isValid() && m_progressShown.elapsed() < progressMs)
        return;
    m_progressShown.start();
    m_progress->setText(
        tr("Reading telemetry %1 of %2")
            .arg(locale().toString(m_parsed.size()), locale().toString(qsizetype(m_controller.mediaTree().size()))));
}

void MainWindow::setMuted(bool muted)
{
    m_isMuted = muted;
    m_frontPane->setVolume(muted ? 0 : m_volume);
    m_transport->setMuted(muted);
    remember(keys::muted, muted);
}

void MainWindow::setVolume(double volume)
{
    m_volume = volume;
    m_transport->setVolume(volume);
    setMuted(false);
    remember(keys::volume, volume);
}

bool MainWindow::isRearCameraOn() const
{
    return !hasCard() || m_panes->secondaryPlayerEnable();
}

void MainWindow::setSynchronized(bool synchronized)
{
    for (ZoomPlayerViewController* pane : m_panes->playerVCs())
        pane->setSynchronizedPlay(synchronized);
}

void MainWindow::setSilenced(bool silenced)
{
    m_isSilenced = silenced;
    m_frontPane->audioMuteEnable(silenced);
}

void MainWindow::setLeading(bool leading)
{
    m_leadButton->setLeading(leading);
}

void MainWindow::tellSynchronizationCanceled()
{
    OptionPopover::showPopoverWithTarget(m_leadButton, tr("Synchronization canceled."));
}

void MainWindow::tellToSelectMedia()
{
    OptionPopover::showPopoverWithTarget(m_chip, tr("Select the media to play or synchronize."));
}

bool MainWindow::isOwnDialog(const QWidget* window) const
{
    while (window && window != this)
        window = window->parentWidget();
    return window == this;
}

bool MainWindow::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && isKeyOfTextField(*static_cast<QKeyEvent*>(event)))
        event->accept();
    const bool result = QMainWindow::event(event);
    if (event->type() == QEvent::WindowActivate) {
        Q_EMIT didBecomeKey();
    } else if (event->type() == QEvent::WindowDeactivate) {
        if (!isOwnDialog(QApplication::activeWindow()))
            Q_EMIT didResignKey();
    }
    return result;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!draggedFolder(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QString folder = draggedFolder(*event->mimeData());
    if (folder.isEmpty())
        return;
    event->acceptProposedAction();
    Q_EMIT cardDropped(folder);
}

void MainWindow::saveLayout()
{
    UserDefaults& defaults = UserDefaults::shared();
    defaults.setValue(keys::geometry, saveGeometry());
    defaults.setValue(keys::split, m_split->saveState());
    defaults.setValue(keys::videos, m_panes->saveState());
    defaults.setValue(keys::rightSplit, m_videoSplitter->savedState());
    defaults.setValue(keys::lowerPanes, m_lowerPanes->savedState());
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_jobs.isToBeAsked()) {
        event->ignore();
        m_jobs.askToStop([this] { close(); });
        return;
    }
    // In full screen the layout was saved when that began.
    if (!m_fullScreen->isOn())
        saveLayout();
    QMainWindow::closeEvent(event);
    m_controller.dispose();
    m_returnedCard.clear();
    m_jobs.stop();
    Q_EMIT didClose();
}

} // namespace cardreel
