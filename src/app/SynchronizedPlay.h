#pragma once

#include <QObject>

#include <vector>

namespace cardreel {

class MediaController;

/// What SynchronizedPlay knows of a window.
class SynchronizedWindow
{
public:
    virtual ~SynchronizedWindow() = default;

    virtual MediaController& mediaController() = 0;
    virtual bool hasCard() const = 0;
    /// Whether the rear camera's pane is switched on; a window without a card counts as if it were.
    virtual bool isRearCameraOn() const = 0;

    /// In synchronised play rates end at 8 instead of 16.
    virtual void setSynchronized(bool synchronized) = 0;
    /// Because another window is in front; the user's own choice of volume stays what it is.
    virtual void setSilenced(bool silenced) = 0;
    /// What the window's button says.
    virtual void setLeading(bool leading) = 0;
    virtual void tellSynchronizationCanceled() = 0;
    virtual void tellToSelectMedia() = 0;
};

/// What several windows have to agree on: which one the others follow, and whose sound is heard. Owned by
/// CardApplication; interface thread.
class SynchronizedPlay : public QObject
{
    Q_OBJECT

public:
    explicit SynchronizedPlay(QObject* parent = nullptr);

    /// The window unregisters before it goes.
    void addWindow(SynchronizedWindow* window);
    /// A window that closes ends the lead, whichever window has it.
    void removeWindow(SynchronizedWindow* window);

    /// The window has the keyboard now. With others in synchronised play it takes over the lead, if there is one, and
    /// the sound.
    void windowDidBecomeKey(SynchronizedWindow* window);
    void windowDidResignKey(SynchronizedWindow* window);
    /// It opened a card, or its rear camera was switched.
    void windowDidChange();
    /// The user pressed the window's button.
    void setLeading(SynchronizedWindow* window, bool leading);

    /// Several windows are open, and either this one shows its rear camera or all of them have cards.
    bool isSynchronized(const SynchronizedWindow* window) const;

Q_SIGNALS:
    /// A window that leads nobody wants company.
    void newWindowRequested();

private:
    void update();
    void updateLead();

    std::vector<SynchronizedWindow*> m_windows;
    SynchronizedWindow* m_keyWindow = nullptr;
};

} // namespace cardreel
