// What a window is made of and which part tells which.

#include "app/CardChip.h"
#include "app/FullScreenMode.h"
#include "app/LeadButton.h"
#include "app/LibraryPanel.h"
#include "app/LowerPanes.h"
#include "app/MainWindow.h"
#include "app/MapBackgroundSheet.h"
#include "app/MomentDisplay.h"
#include "app/PlaybackActions.h"
#include "app/ReadoutBar.h"
#include "app/ShortcutsSheet.h"
#include "app/Theme.h"
#include "app/TransportBar.h"
#include "app/VideoSplitter.h"
#include "app/WindowKeys.h"
#include "app/export/CapturePanel.h"
#include "media/PictureInfo.h"
#include "platform/settings/UserDefaults.h"
#include "playback/ZoomPlayerSplitViewController.h"
#include "playback/ZoomPlayerViewController.h"
#include "views/graph/GraphViewController.h"
#include "views/map/MapVewController.h"
#include "views/map/MapView.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

constexpr int hairline = 1;

QWidget* makeHairline()
{
    auto* line = new QFrame;
    line->setFixedHeight(hairline);
    line->setFrameShape(QFrame::NoFrame);
    line->setAutoFillBackground(true);
    line->setBackgroundRole(QPalette::Mid);
    return line;
}

/// A column without gaps.
QVBoxLayout* makeColumn(QWidget* widget)
{
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    return column;
}

/// Does what the action does, when that can be done.
QPushButton* makeToolButton(const QString& text, QAction* action)
{
    auto* button = new QPushButton(text);
    button->setToolTip(action->toolTip());
    button->setFocusPolicy(Qt::TabFocus);
    button->setEnabled(action->isEnabled());
    QObject::connect(button, &QPushButton::clicked, action, &QAction::trigger);
    QObject::connect(action, &QAction::enabledChanged, button, &QPushButton::setEnabled);
    return button;
}

} // namespace

QWidget* MainWindow::makeToolRow()
{
    m_chip = new CardChip;
    m_leadButton = new LeadButton;
    connect(m_leadButton, &LeadButton::clicked, this, &MainWindow::leadRequested);

    auto* tools = new QWidget;
    auto* layout = new QHBoxLayout(tools);
    layout->setContentsMargins(12, 6, 12, 6);
    layout->setSpacing(8);
    layout->addWidget(m_chip);
    layout->addWidget(m_leadButton);
    layout->addStretch(1);
    layout->addWidget(makeToolButton(tr("Export route…"), m_jobs.exportAction()));
    layout->addWidget(makeToolButton(tr("Back up…"), m_jobs.backUpAction()));
    auto* settings = new QPushButton(tr("Recorder settings…"));
    settings->setFocusPolicy(Qt::TabFocus);
    connect(settings, &QPushButton::clicked, this, &MainWindow::editRecorderSettings);
    layout->addWidget(settings);
    auto* row = new QWidget;
    QVBoxLayout* column = makeColumn(row);
    column->addWidget(tools);
    column->addWidget(makeHairline());
    return row;
}

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
    m_panel = new LibraryPanel(m_controller);
    m_frontPane = new ZoomPlayerViewController(tr("Front"));
    m_rearPane = new ZoomPlayerViewController(tr("Rear"), VideoPlayer::AudioOutput::None);
    m_panes = new ZoomPlayerSplitViewController(m_frontPane, m_rearPane);
    m_transport = new TransportBar;
    m_transport->setRateAction(m_frontPane->rateChangeButton());
    m_readout = new ReadoutBar;
    makeLowerPanes();
    const UserDefaults& defaults = UserDefaults::shared();
    m_panes->restoreState(defaults.value(keys::videos).toByteArray());

    m_below = new QWidget;
    QVBoxLayout* column = makeColumn(m_below);
    column->addWidget(m_transport);
    column->addWidget(makeHairline());
    column->addWidget(m_lowerPanes, 1);

    m_videoSplitter = new VideoSplitter;
    m_videoSplitter->addWidget(m_panes);
    m_videoSplitter->addWidget(m_below);
    lowerPanesDidChange();
    m_videoSplitter->restoreSavedState(defaults.value(keys::rightSplit).toByteArray());

    m_split = new QSplitter(Qt::Horizontal);
    m_split->setObjectName(keys::split);
    m_split->setChildrenCollapsible(false);
    m_split->setHandleWidth(1);
    m_split->addWidget(m_panel);
    m_split->addWidget(m_videoSplitter);
    m_split->setStretchFactor(1, 1);
    m_split->setSizes({300, 1140});
    m_split->restoreState(defaults.value(keys::split).toByteArray());

    m_fullScreen = new FullScreenMode(*this, *m_pages, *m_transport, *column);
    m_fullScreen->setChrome({menuBar(), m_toolRow, m_panel, m_below, statusBar()}, {m_split, m_videoSplitter});
    m_actions = new PlaybackActions(m_controller, *m_panes, *m_panel, *this);
    m_moment = new MomentDisplay(m_controller, *m_frontPane, *m_rearPane, *m_transport, *m_readout, this);
    return m_split;
}

void MainWindow::makeLowerPanes()
{
    m_graph = new GraphViewController(m_controller);
    m_map = new MapVewController(m_controller);
    m_map->mapView()->setTileSettings(MapBackgroundSheet::savedSettings());
    m_lowerPanes = new LowerPanes(m_graph, m_map);
    m_lowerPanes->restoreSavedState(UserDefaults::shared().value(keys::lowerPanes).toByteArray());
    connect(m_lowerPanes, &LowerPanes::shownDidChange, this, &MainWindow::lowerPanesDidChange);
    connect(m_map, &MapVewController::mapBackgroundRequested, this, &MainWindow::showMapBackgroundSheet);
}

/// Without graph and map the videos take their room.
void MainWindow::lowerPanesDidChange()
{
    const bool shown = m_lowerPanes->isGraphShown() || m_lowerPanes->isMapShown();
    m_lowerPanes->setVisible(shown);
    // In full screen the bar is elsewhere, but it comes back.
    m_below->setMaximumHeight(shown ? QWIDGETSIZE_MAX : m_transport->sizeHint().height() + hairline);
}

void MainWindow::showMapBackgroundSheet()
{
    auto* sheet = new MapBackgroundSheet(MapBackgroundSheet::savedSettings(), this);
    connect(sheet, &MapBackgroundSheet::chosen, this, [](const TileSettings& settings) {
        MapBackgroundSheet::saveSettings(settings);
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (const auto* card = qobject_cast<MainWindow*>(window))
                card->m_map->mapView()->setTileSettings(settings);
        }
    });
    sheet->open();
}

void MainWindow::connectPanes()
{
    m_controller.setGraphVC(m_graph);
    m_controller.setMapVC(m_map);
    connect(&m_controller, &MediaLibrary::recordingDidParse, m_graph,
            [this](const std::shared_ptr<DCFInfo>& dcf) { m_graph->recordingDidParse(dcf); });
    m_controller.setDcfListVC(m_panel);
    m_controller.setPlayerVC(m_frontPane);
    m_controller.setPlayerVCSecondary(m_rearPane);
    connect(m_panel, &LibraryPanel::recordingsSelected, &m_controller, &MediaController::updateSelectedDCFs);
    connect(m_panel, &LibraryPanel::recordingChosen, &m_controller,
            [this](const std::shared_ptr<DCFInfo>& dcf) { m_controller.updateCurrentDCF(dcf, true, nullptr); });
    connect(m_panel, &LibraryPanel::pictureChosen, &m_controller, [this](const std::shared_ptr<PictureInfo>& picture) {
        m_controller.updateCurrentDCF(picture->parentDCFInfo.lock(), true, picture);
    });
    new CapturePanel(m_controller, *m_map, {m_frontPane, m_rearPane}, *this);
    connect(m_frontPane, &ZoomPlayerViewController::muteDidChange, this, &MainWindow::paneDidMute);
    for (ZoomPlayerViewController* pane : m_panes->playerVCs()) {
        connect(pane, &ZoomPlayerViewController::tripleTapDetected, m_fullScreen, &FullScreenMode::toggle);
        connect(pane, &ZoomPlayerViewController::bottomBarRequested, m_fullScreen, &FullScreenMode::setBarShown);
    }
}

/// The pane has a switch of its own for what other windows decide; on the video the user means this window's.
void MainWindow::paneDidMute(bool muted)
{
    if (muted == m_isSilenced)
        return;
    m_frontPane->audioMuteEnable(m_isSilenced);
    setMuted(!m_isMuted);
}

void MainWindow::connectTransport()
{
    connect(m_transport, &TransportBar::playPauseRequested, m_actions, &PlaybackActions::playPause);
    connect(m_transport, &TransportBar::previousRequested, m_panel, &LibraryPanel::selectPrevious);
    connect(m_transport, &TransportBar::nextRequested, m_panel, &LibraryPanel::selectNext);
    connect(m_transport, &TransportBar::seekRequested, m_actions, &PlaybackActions::seekTo);
    connect(m_transport, &TransportBar::muteRequested, this, [this] { setMuted(!m_isMuted); });
    connect(m_transport, &TransportBar::volumeRequested, this, &MainWindow::setVolume);
    connect(m_transport, &TransportBar::fullScreenRequested, m_fullScreen, &FullScreenMode::toggle);
    connect(m_actions, &PlaybackActions::muteRequested, this, [this] { setMuted(!m_isMuted); });
    connect(m_actions, &PlaybackActions::volumeStepRequested, this,
            [this](double step) { setVolume(std::clamp(m_volume + step, 0.0, 1.0)); });
    connect(m_fullScreen, &FullScreenMode::aboutToEnter, this, &MainWindow::saveLayout);
    connect(m_fullScreen, &FullScreenMode::changed, m_transport, &TransportBar::setFullScreen);
    connect(m_fullScreen, &FullScreenMode::changed, m_leaveFullScreen, &QAction::setEnabled);
}

void MainWindow::makeMenus()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&New Window"), QKeySequence::New, this, &MainWindow::newWindowRequested);
    file->addAction(tr("&Open…"), QKeySequence::Open, this, &MainWindow::openRequested);
    m_recentMenu = file->addMenu(tr("Open &Recent"));
    file->addSeparator();
    file->addActions({m_jobs.exportAction(), m_jobs.backUpAction()});
    file->addSeparator();
    QAction* close = file->addAction(tr("&Close Window"), QKeySequence::Close, this, &QWidget::close);
    QAction* quit = file->addAction(tr("&Quit"), QKeySequence::Quit, this, &MainWindow::quitRequested);
    m_jobs.setKeysOfSheet({close, quit});

    QMenu* view = menuBar()->addMenu(tr("&View"));
    using Tab = LibraryPanel::Tab;
    view->addAction(tr("Re&cordings"), Qt::CTRL | Qt::Key_1, this, [this] { m_panel->showTab(Tab::Recordings); });
    view->addAction(tr("&Events"), Qt::CTRL | Qt::Key_2, this, [this] { m_panel->showTab(Tab::Events); });
    view->addAction(tr("&Pictures"), Qt::CTRL | Qt::Key_3, this, [this] { m_panel->showTab(Tab::Pictures); });
    view->addSeparator();
    m_rearCamera = view->addAction(tr("Rear Ca&mera"));
    m_rearCamera->setCheckable(true);
    m_rearCamera->setChecked(UserDefaults::shared().value(keys::rearCamera).toBool());
    connect(m_rearCamera, &QAction::toggled, this, [this](bool shown) {
        UserDefaults::shared().setValue(keys::rearCamera, shown);
        showRearCamera(ZoomPlayerSplitViewController::Animation::Animated);
        Q_EMIT didChange();
    });
    m_actions->fillZoomMenu(*view->addMenu(tr("&Zoom")));
    view->addSeparator();
    addLowerPanesTo(*view);
    view->addSeparator();
    m_toggleFullScreen = view->addAction(tr("&Full Screen"), m_fullScreen, &FullScreenMode::toggle);
    m_toggleFullScreen->setShortcuts({Qt::Key_F, Qt::Key_F11});
    m_toggleFullScreen->setAutoRepeat(false);
    m_toggleFullScreen->setEnabled(false); // there is nothing to see yet
    m_leaveFullScreen = view->addAction(tr("&Leave Full Screen"), Qt::Key_Escape, m_fullScreen, &FullScreenMode::leave);
    m_leaveFullScreen->setEnabled(false); // so that the key is the panes' until then
    view->addSeparator();
    makeAppearanceMenu(*view);

    m_actions->fillPlaybackMenu(*menuBar()->addMenu(tr("&Playback")));

    QMenu* map = menuBar()->addMenu(tr("&Map"));
    map->addActions(m_map->menuActions());

    QMenu* tools = menuBar()->addMenu(tr("&Tools"));
    tools->addAction(tr("Recorder &settings…"), this, &MainWindow::editRecorderSettings);
    tools->addAction(tr("Settings of another &card…"), this, [this] { m_recorderSettings.chooseCard(cardPath()); });

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    QAction* shortcuts = help->addAction(tr("&Keyboard Shortcuts"), this, &MainWindow::showShortcuts);
    shortcuts->setShortcuts({Qt::Key_Question, Qt::Key_F1});
    help->addAction(tr("&About Cardreel"), this, [this] {
        auto* box = new QMessageBox(QMessageBox::NoIcon, tr("About Cardreel"),
                                    tr("Cardreel %1\nReviews the memory cards of vehicle drive recorders.")
                                        .arg(QApplication::applicationVersion()),
                                    QMessageBox::Ok, this);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    });
    // Keys of menus alone rest while the menu bar is hidden.
    for (const QMenu* menu : {file, view, map, tools, help})
        addActions(menu->actions());
}

void MainWindow::addLowerPanesTo(QMenu& viewMenu)
{
    QAction* graph = viewMenu.addAction(tr("&Graph"), m_lowerPanes, &LowerPanes::setGraphShown);
    QAction* map = viewMenu.addAction(tr("M&ap"), m_lowerPanes, &LowerPanes::setMapShown);
    graph->setShortcut(Qt::CTRL | Qt::Key_4);
    map->setShortcut(Qt::CTRL | Qt::Key_5);
    QAction* swap = viewMenu.addAction(tr("S&wap Graph and Map"), m_lowerPanes, &LowerPanes::swap);
    const auto update = [this, graph, map, swap] {
        graph->setChecked(m_lowerPanes->isGraphShown());
        map->setChecked(m_lowerPanes->isMapShown());
        swap->setEnabled(graph->isChecked() && map->isChecked());
    };
    graph->setCheckable(true);
    map->setCheckable(true);
    connect(m_lowerPanes, &LowerPanes::shownDidChange, this, update);
    update();
}

void MainWindow::editRecorderSettings()
{
    if (hasCard())
        m_recorderSettings.edit(cardPath());
    else
        m_recorderSettings.chooseCard({});
}

void MainWindow::showShortcuts()
{
    QList<QMenu*> menus;
    for (const QAction* action : menuBar()->actions())
        menus.push_back(action->menu());
    (new ShortcutsSheet(menus, this))->open();
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

} // namespace cardreel
