#include "app/MainWindow.h"

#include "app/CardChip.h"
#include "app/LibraryPanel.h"
#include "app/ReadoutBar.h"
#include "app/Theme.h"
#include "app/TransportBar.h"
#include "app/VideoSplitter.h"
#include "app/lists/DayAndTime.h"
#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "platform/files/Files.h"
#include "platform/settings/UserDefaults.h"
#include "platform/text/UnitText.h"
#include "playback/VideoPane.h"
#include "telemetry/FixLookup.h"
#include "telemetry/NMEAData.h"

#include <QActionGroup>
#include <QApplication>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>

#include <cmath>
#include <numeric>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const QString geometryKey = u"MainWindowFrameAutosaveName"_s;
const QString splitKey = u"TopSplitViewControllerAutosaveName"_s;
const QString rightSplitKey = u"RightSplitViewControllerAutosaveName"_s;
const QString videosKey = u"ZoomPlayerSplitViewControllerAutosaveName"_s;
const QString mutedKey = u"Muted"_s;
constexpr int cardWatchMs = 2000;
constexpr int progressMs = 100;
constexpr double availableWithinSeconds = 3.0; // a fix further away says nothing about the moment shown

/// The folder among what is dragged; empty when there is none.
QString draggedFolder(const QMimeData& data)
{
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile() && files::isFolder(url.toLocalFile()))
            return url.toLocalFile();
    }
    return {};
}

QWidget* makeHairline()
{
    auto* line = new QFrame;
    line->setFixedHeight(1);
    line->setFrameShape(QFrame::NoFrame);
    line->setAutoFillBackground(true);
    line->setBackgroundRole(QPalette::Mid);
    return line;
}

} // namespace

MainWindow::MainWindow()
    : m_pages(new QStackedWidget)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAcceptDrops(true);
    setMinimumSize(1000, 560);
    resize(1440, 900);
    setWindowTitle(QApplication::applicationDisplayName());
    m_pages->addWidget(makeStartPage());
    m_pages->addWidget(makeCardPage());
    setCentralWidget(m_pages);
    makeMenus();
    statusBar()->setSizeGripEnabled(false);
    m_contents = new QLabel;
    m_progress = new QLabel;
    statusBar()->addWidget(m_contents);
    statusBar()->addWidget(m_progress);
    statusBar()->setContentsMargins(6, 0, 6, 0);
    setMuted(UserDefaults::shared().value(mutedKey).toBool());
    restoreGeometry(UserDefaults::shared().value(geometryKey).toByteArray());

    connect(&m_library, &MediaLibrary::recordingDidParse, this, [this](const std::shared_ptr<DCFInfo>& dcf) {
        m_parsed.insert(dcf.get());
        showParseProgress(m_parsed.size());
        if (dcf == m_library.currentDCF())
            showMoment(m_players.position());
    });
    connect(&m_library, &MediaLibrary::parseDidFinish, m_progress, &QLabel::clear);
    connect(&m_cardWatch, &QTimer::timeout, this, &MainWindow::lookAfterCard);
}

MainWindow::~MainWindow() = default;

QWidget* MainWindow::makeStartPage()
{
    auto* title = new QLabel(tr("Open a recorder's memory card"));
    QFont font = title->font();
    font.setPixelSize(20);
    title->setFont(font);
    auto* hint = new QLabel(tr("Choose the card or a folder copied from one, or drop it here."));
    auto* button = new QPushButton(tr("Open card…"));
    button->setToolTip(tr("Open a card (Ctrl+O)"));
    connect(button, &QPushButton::clicked, this, &MainWindow::openRequested);

    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setSpacing(12);
    layout->addStretch(1);
    for (QWidget* widget : std::initializer_list<QWidget*>{title, hint, button})
        layout->addWidget(widget, 0, Qt::AlignHCenter);
    layout->addStretch(1);
    return page;
}

QWidget* MainWindow::makeCardPage()
{
    m_chip = new CardChip;
    auto* toolRow = new QWidget;
    auto* tools = new QHBoxLayout(toolRow);
    tools->setContentsMargins(12, 6, 12, 6);
    tools->addWidget(m_chip);
    tools->addStretch(1);

    m_panel = new LibraryPanel(m_library);
    m_frontPane = new VideoPane(m_players.front(), tr("Front"));
    m_rearPane = new VideoPane(m_players.rear(), tr("Rear"));
    m_transport = new TransportBar;
    m_readout = new ReadoutBar;

    auto* videos = new QSplitter(Qt::Horizontal);
    videos->setObjectName(videosKey);
    videos->setChildrenCollapsible(false);
    videos->setHandleWidth(1);
    videos->addWidget(m_frontPane);
    videos->addWidget(m_rearPane);
    videos->restoreState(UserDefaults::shared().value(videosKey).toByteArray());

    auto* below = new QWidget;
    auto* column = new QVBoxLayout(below);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_transport);
    column->addWidget(makeHairline());
    column->addWidget(m_readout);
    column->addStretch(1);

    m_videoSplitter = new VideoSplitter;
    m_videoSplitter->addWidget(videos);
    m_videoSplitter->addWidget(below);
    m_videoSplitter->restoreSavedState(UserDefaults::shared().value(rightSplitKey).toByteArray());

    auto* split = new QSplitter(Qt::Horizontal);
    split->setObjectName(splitKey);
    split->setChildrenCollapsible(false);
    split->setHandleWidth(1);
    split->addWidget(m_panel);
    split->addWidget(m_videoSplitter);
    split->setStretchFactor(1, 1);
    split->setSizes({300, 1140});
    split->restoreState(UserDefaults::shared().value(splitKey).toByteArray());

    auto* page = new QWidget;
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(toolRow);
    rows->addWidget(makeHairline());
    rows->addWidget(split, 1);

    connect(m_panel, &LibraryPanel::recordingChosen, this, &MainWindow::showRecording);
    connect(m_panel, &LibraryPanel::pictureChosen, this, &MainWindow::showPicture);
    connect(m_frontPane, &VideoPane::clicked, &m_players, &PlayerPair::togglePlaying);
    connect(m_rearPane, &VideoPane::clicked, &m_players, &PlayerPair::togglePlaying);
    connect(m_transport, &TransportBar::playPauseRequested, &m_players, &PlayerPair::togglePlaying);
    connect(m_transport, &TransportBar::previousRequested, m_panel, &LibraryPanel::selectPrevious);
    connect(m_transport, &TransportBar::nextRequested, m_panel, &LibraryPanel::selectNext);
    connect(m_transport, &TransportBar::muteRequested, this, [this] { setMuted(!m_isMuted); });
    connect(m_transport, &TransportBar::seekRequested, &m_players, &PlayerPair::seek);
    connect(&m_players, &PlayerPair::positionChanged, this, &MainWindow::showMoment);
    connect(&m_players, &PlayerPair::durationChanged, this, [this](double seconds) {
        m_transport->setDuration(seconds);
        showMoment(m_players.position());
    });
    connect(&m_players, &PlayerPair::playingChanged, m_transport, &TransportBar::setPlaying);
    connect(&m_players, &PlayerPair::endReached, m_panel, &LibraryPanel::selectNext);
    return page;
}

void MainWindow::makeMenus()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open…"), QKeySequence::Open, this, &MainWindow::openRequested);
    m_recentMenu = file->addMenu(tr("Open &Recent"));
    file->addSeparator();
    file->addAction(tr("&Close Window"), QKeySequence::Close, this, &QWidget::close);
    file->addAction(tr("&Quit"), QKeySequence::Quit, qApp, &QApplication::closeAllWindows);

    makeAppearanceMenu(*menuBar()->addMenu(tr("&View")));

    QMenu* playback = menuBar()->addMenu(tr("&Playback"));
    playback->addAction(tr("&Play or Pause"), Qt::Key_Space, &m_players, &PlayerPair::togglePlaying);
    playback->addAction(tr("Pre&vious Recording"), Qt::Key_PageUp, m_panel, &LibraryPanel::selectPrevious);
    playback->addAction(tr("&Next Recording"), Qt::Key_PageDown, m_panel, &LibraryPanel::selectNext);
    playback->addSeparator();
    playback->addAction(tr("&Mute"), Qt::Key_M, this, [this] { setMuted(!m_isMuted); });

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About Cardreel"), this, [this] {
        auto* box = new QMessageBox(QMessageBox::NoIcon, tr("About Cardreel"),
                                    tr("Cardreel %1\nReviews the memory cards of vehicle drive recorders.")
                                        .arg(QApplication::applicationVersion()),
                                    QMessageBox::Ok, this);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    });
}

void MainWindow::makeAppearanceMenu(QMenu& viewMenu)
{
    QMenu* menu = viewMenu.addMenu(tr("&Appearance"));
    auto* group = new QActionGroup(menu);
    const auto add = [&](const QString& text, Theme::Appearance appearance) {
        QAction* action = menu->addAction(text, this, [appearance] { Theme::current().setAppearance(appearance); });
        action->setCheckable(true);
        group->addAction(action);
        connect(menu, &QMenu::aboutToShow, action,
                [action, appearance] { action->setChecked(Theme::current().appearance() == appearance); });
    };
    add(tr("As the &Desktop"), Theme::Appearance::System);
    add(tr("&Dark"), Theme::Appearance::Dark);
    add(tr("&Light"), Theme::Appearance::Light);
}

bool MainWindow::openCard(const QString& rootPath)
{
    m_players.stop();
    m_transport->setDuration(0);
    m_transport->setPosition(0);
    m_readout->clear();
    m_frontPane->setOverlayText({});
    m_progress->clear();
    m_pages->setCurrentIndex(1);
    setWindowTitle(tr("%1 – Cardreel").arg(files::nameOf(files::displayPath(rootPath))));
    m_chip->setCard(rootPath);
    m_library.mediaTreeSyncAtRootPath(rootPath);

    const MediaLibrary::DCFList& recordings = m_library.mediaTree();
    m_rearPane->setVisible(m_library.hasSecondary());
    m_videoSplitter->setPictures(m_library.hasSecondary() ? 2 : 1);
    const quint64 bytes = std::accumulate(recordings.begin(), recordings.end(), quint64(0),
                                          [](quint64 sum, const auto& dcf) { return sum + dcf->fileSize; });
    m_contents->setText(tr("%n recording(s)", nullptr, static_cast<int>(recordings.size())) + u"  ·  "_s +
                        dataSizeText(bytes));
    m_isCardGone = false;
    m_cardWatch.start(cardWatchMs);
    m_parsed.clear();
    m_frontPane->showPicture({});
    m_rearPane->showPicture({});
    if (!recordings.empty())
        m_panel->selectRecording(0);
    else
        m_frontPane->setMessage(tr("There is nothing to play on this card."));
    return !recordings.empty() || !m_library.pictureTree().empty();
}

void MainWindow::showRecording(const std::shared_ptr<DCFInfo>& dcf)
{
    m_library.setCurrentDCF(dcf);
    m_frontPane->showPicture({});
    m_rearPane->showPicture({});
    m_frontPane->setMessage({});
    m_rearPane->setMessage(dcf->secondaryFilePath.isEmpty() ? tr("This recording has no rear video.") : QString());
    m_transport->setDuration(0);
    m_transport->setPosition(0);
    m_readout->clear();
    m_frontPane->setOverlayText({});
    m_players.open(dcf->filePath, dcf->secondaryFilePath);
    if (!m_parsed.contains(dcf.get())) {
        const int row = m_panel->rowOf(dcf);
        m_library.reparseAtIndex(static_cast<size_t>(std::max(row, 0)));
    }
}

void MainWindow::showPicture(const std::shared_ptr<PictureInfo>& picture)
{
    m_library.setCurrentDCF(nullptr);
    m_players.stop();
    m_transport->setDuration(0);
    m_transport->setPosition(0);
    m_frontPane->setOverlayText(picture->pictureDateString);
    m_frontPane->showPicture(picture->filePath);
    m_rearPane->showPicture(picture->secondaryFilePath);
    m_readout->setClock(picture->pictureDateString);
    const CustomLocation& location = picture->location;
    m_readout->setPlace(location.isValid() ? &location : nullptr, tr("This picture carries no position."));
}

void MainWindow::showMoment(double seconds)
{
    const std::shared_ptr<DCFInfo>& dcf = m_library.currentDCF();
    if (!dcf)
        return;
    m_transport->setPosition(seconds);
    const double duration = m_players.duration();
    if (duration <= 0)
        return;
    // The file was closed when the recording ended, so its date marks the end.
    const double moment = secondsSince1970(dcf->fileDate) - duration + seconds;
    const QString clock = recorderDateTimeText(Instant(std::chrono::milliseconds(std::llround(moment * 1000))));
    m_readout->setClock(clock);
    m_frontPane->setOverlayText(clock);

    if (dcf->nmea->isParsing())
        return m_readout->setFix(nullptr, tr("Reading telemetry…"));
    const std::shared_ptr<const Telemetry> telemetry = dcf->nmea->snapshot();
    const CustomLocation* fix = nearestFix(telemetry->varidLocations(), moment);
    const bool available =
        fix && fix->isValid() && std::abs(secondsSince1970(fix->timestamp) - moment) < availableWithinSeconds;
    m_readout->setFix(available ? fix : nullptr, tr("No GPS position at this moment."));
}

void MainWindow::showParseProgress(qsizetype done)
{
    // Hundreds of recordings a second go by, and each new text lays the status bar out.
    if (m_progressShown.isValid() && m_progressShown.elapsed() < progressMs)
        return;
    m_progressShown.start();
    m_progress->setText(tr("Reading telemetry %1 of %2")
                            .arg(locale().toString(done), locale().toString(qsizetype(m_library.mediaTree().size()))));
}

void MainWindow::setMuted(bool muted)
{
    m_isMuted = muted;
    m_players.front().setMuted(muted);
    m_transport->setMuted(muted);
    // Writing waits for the disk, and at the start there is nothing new to write.
    if (UserDefaults::shared().value(mutedKey).toBool() != muted)
        UserDefaults::shared().setValue(mutedKey, muted);
}

void MainWindow::lookAfterCard()
{
    const bool isThere = files::isFolder(cardPath());
    if (isThere && m_isCardGone && MediaLibrary::mediaIsAvailable(cardPath()))
        openCard(QString(cardPath()));
    if (isThere || m_isCardGone)
        return;
    m_isCardGone = true;
    m_library.cancelParse();
    m_library.setCurrentDCF(nullptr);
    m_players.stop();
    m_transport->setDuration(0);
    m_transport->setPosition(0);
    m_progress->clear();
    m_readout->clear();
    m_frontPane->showPicture({});
    m_rearPane->showPicture({});
    m_frontPane->setOverlayText({});
    m_frontPane->setMessage(tr("The card has been removed. Put it back to go on."));
    m_rearPane->setMessage({});
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

void MainWindow::closeEvent(QCloseEvent* event)
{
    UserDefaults::shared().setValue(geometryKey, saveGeometry());
    for (const QString& key : {splitKey, videosKey})
        UserDefaults::shared().setValue(key, findChild<QSplitter*>(key)->saveState());
    UserDefaults::shared().setValue(rightSplitKey, m_videoSplitter->savedState());
    QMainWindow::closeEvent(event);
}

} // namespace cardreel
