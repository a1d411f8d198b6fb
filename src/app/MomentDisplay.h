#pragma once

#include <QObject>
#include <QTimer>

namespace cardreel {

class MediaController;
class ReadoutBar;
class TransportBar;
class ZoomPlayerViewController;

/// Shows the clock's moment in words and in the transport bar. Owned by the window; interface thread.
class MomentDisplay : public QObject
{
    Q_OBJECT

public:
    /// What is shown belongs to the window as well.
    MomentDisplay(MediaController& controller, ZoomPlayerViewController& front, ZoomPlayerViewController& rear,
                  TransportBar& transport, ReadoutBar& readout, QObject* parent);

    /// Nothing is loaded.
    void clear();

private:
    void currentDidChange();
    void tick();
    void showTransport();
    void showReadouts();
    void showPicture();
    void showFix(double date);

    MediaController& m_controller;
    ZoomPlayerViewController& m_front;
    ZoomPlayerViewController& m_rear;
    TransportBar& m_transport;
    ReadoutBar& m_readout;
    QTimer m_pause; ///< texts cost layout: not at every tick, but the last one is never left out
    bool m_isStale = false;
};

} // namespace cardreel
