#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSize>
#include <QTimer>
#include <QWidget>

class QBoxLayout;
class QMainWindow;
class QSplitter;

namespace cardreel {

class TransportBar;

/// A window's full screen: nothing but the videos, the transport bar over them while it is wanted, and no pointer while
/// that rests. Gives everything back as it was. Owned by its window; interface thread.
class FullScreenMode : public QObject
{
    Q_OBJECT

public:
    /// The bar lies in `home` as its first item, and over `stage` in full screen.
    FullScreenMode(QMainWindow& window, QWidget& stage, TransportBar& bar, QBoxLayout& home);
    ~FullScreenMode() override;

    /// What goes away in full screen, and the borders that come back where they were.
    void setChrome(const QList<QWidget*>& chrome, const QList<QSplitter*>& splitters);

    bool isOn() const { return m_isOn; }
    void toggle();
    /// Nothing outside full screen.
    void leave();
    /// Shows the bar, until the pointer has rested for a while outside it, or hides it. Nothing outside full screen.
    void setBarShown(bool shown);

Q_SIGNALS:
    /// The window is still as it was: the moment to remember its layout.
    void aboutToEnter();
    void changed(bool isOn);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void enter();
    void layOutBar();
    void pointerMoved(QPoint position);
    void pointerRests();
    void setPointerHidden(bool hidden);
    void restoreSplitters();

    QMainWindow& m_window;
    QWidget& m_stage;
    TransportBar& m_bar;
    QBoxLayout& m_home;
    QList<QWidget*> m_chrome;
    QList<QSplitter*> m_splitters;
    QList<QWidget*> m_hidden; ///< of the chrome, what was to be seen before
    QList<QByteArray> m_splitterStates;
    QPointer<QWidget> m_focus;
    QSize m_formerSize;
    QTimer m_rest;
    bool m_isOn = false;
    bool m_isPointerInStrip = false;
    bool m_isPointerHidden = false;
};

} // namespace cardreel
