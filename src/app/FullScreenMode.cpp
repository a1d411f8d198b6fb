#include "app/FullScreenMode.h"

#include "app/TransportBar.h"

#include <QApplication>
#include <QBoxLayout>
#include <QMainWindow>
#include <QMouseEvent>
#include <QSplitter>
#include <QWindow>

namespace cardreel {

namespace {

constexpr int restMs = 3000;
constexpr int stripMargin = 24; // the bar comes a little before the pointer reaches it

} // namespace

FullScreenMode::FullScreenMode(QMainWindow& window, QWidget& stage, TransportBar& bar, QBoxLayout& home)
    : QObject(&window)
    , m_window(window)
    , m_stage(stage)
    , m_bar(bar)
    , m_home(home)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(restMs);
    connect(&m_rest, &QTimer::timeout, this, &FullScreenMode::pointerRests);
    m_window.installEventFilter(this);
    m_stage.installEventFilter(this);
}

FullScreenMode::~FullScreenMode()
{
    setPointerHidden(false);
}

void FullScreenMode::setChrome(const QList<QWidget*>& chrome, const QList<QSplitter*>& splitters)
{
    m_chrome = chrome;
    m_splitters = splitters;
}

void FullScreenMode::toggle()
{
    if (m_isOn)
        leave();
    else
        enter();
}

void FullScreenMode::enter()
{
    Q_EMIT aboutToEnter();
    m_isOn = true;
    m_formerSize = m_window.size();
    m_focus = m_window.focusWidget();
    m_splitterStates.clear();
    for (const QSplitter* splitter : m_splitters)
        m_splitterStates.push_back(splitter->saveState());
    m_hidden.clear();
    for (QWidget* widget : m_chrome) {
        if (!widget->isHidden()) {
            m_hidden.push_back(widget);
            widget->hide();
        }
    }
    // Else it goes on to one of the videos, which would be framed.
    if (QWidget* focus = m_window.focusWidget(); focus && focus != m_focus)
        focus->clearFocus();
    m_bar.hide();
    m_bar.setParent(&m_stage);
    layOutBar();
    m_window.setWindowState(m_window.windowState() | Qt::WindowFullScreen);
    // Every motion over the window passes here, whichever widget is below and whether it tracks the pointer or not.
    if (QWindow* handle = m_window.windowHandle())
        handle->installEventFilter(this);
    m_rest.start();
    Q_EMIT changed(true);
}

void FullScreenMode::leave()
{
    if (!m_isOn)
        return;
    m_isOn = false;
    m_rest.stop();
    setPointerHidden(false);
    if (QWindow* handle = m_window.windowHandle())
        handle->removeEventFilter(this);
    m_home.insertWidget(0, &m_bar);
    m_bar.show();
    for (QWidget* widget : std::as_const(m_hidden))
        widget->show();
    if (m_focus)
        m_focus->setFocus();
    m_window.setWindowState(m_window.windowState() & ~Qt::WindowFullScreen);
    restoreSplitters();
    Q_EMIT changed(false);
}

void FullScreenMode::restoreSplitters()
{
    for (qsizetype i = 0; i < m_splitterStates.size(); ++i)
        m_splitters[i]->restoreState(m_splitterStates[i]);
    // The window's manager may give the former size back later, and until then the borders are only about right.
    if (m_window.size() == m_formerSize)
        m_splitterStates.clear();
}

void FullScreenMode::setBarShown(bool shown)
{
    if (!m_isOn)
        return;
    m_bar.setVisible(shown);
    if (shown) {
        m_bar.raise();
        m_rest.start();
    }
}

bool FullScreenMode::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_window) {
        if (event->type() == QEvent::Resize && !m_isOn && !m_splitterStates.isEmpty())
            QMetaObject::invokeMethod(this, &FullScreenMode::restoreSplitters, Qt::QueuedConnection);
        // The window's manager can end it too.
        if (event->type() == QEvent::WindowStateChange && m_isOn && !m_window.isFullScreen())
            QMetaObject::invokeMethod(this, &FullScreenMode::leave, Qt::QueuedConnection);
        if (event->type() == QEvent::WindowDeactivate)
            setPointerHidden(false);
    } else if (watched == &m_stage) {
        if (event->type() == QEvent::Resize && m_isOn)
            layOutBar();
    } else if (event->type() == QEvent::MouseMove) {
        pointerMoved(static_cast<QMouseEvent*>(event)->position().toPoint());
    } else if (event->type() == QEvent::Leave) {
        setPointerHidden(false);
    }
    return false;
}

void FullScreenMode::layOutBar()
{
    const int height = m_bar.sizeHint().height();
    m_bar.setGeometry(0, m_stage.height() - height, m_stage.width(), height);
}

void FullScreenMode::pointerMoved(QPoint position)
{
    setPointerHidden(false);
    const bool isInStrip = position.y() >= m_window.height() - m_bar.height() - stripMargin;
    if (isInStrip || (m_isPointerInStrip && !m_bar.isScrubbing()))
        setBarShown(isInStrip);
    m_isPointerInStrip = isInStrip || m_bar.isScrubbing();
    m_rest.start();
}

void FullScreenMode::pointerRests()
{
    if (QApplication::activePopupWidget() || m_bar.isScrubbing())
        return m_rest.start();
    if (!m_isPointerInStrip)
        m_bar.hide();
    if (m_window.isActiveWindow())
        setPointerHidden(true);
}

void FullScreenMode::setPointerHidden(bool hidden)
{
    if (hidden == m_isPointerHidden)
        return;
    m_isPointerHidden = hidden;
    // The panes set pointers of their own, which only an override beats.
    if (hidden)
        QApplication::setOverrideCursor(Qt::BlankCursor);
    else
        QApplication::restoreOverrideCursor();
}

} // namespace cardreel
