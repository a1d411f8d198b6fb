#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

namespace cardreel {

class DCFInfo;
class MediaController;

/// The user's wish to see a moment of a recording. It is carried out once the recording's length is known, which may be
/// after it was selected and loaded, and dropped when something else is chosen meanwhile. Interface thread.
class RouteJump : public QObject
{
    Q_OBJECT

public:
    /// `controller` may go before this object.
    explicit RouteJump(MediaController& controller, QObject* parent = nullptr);

    /// Seconds since 1970; a moment outside the recording leads to its beginning or end.
    void jumpTo(const std::shared_ptr<DCFInfo>& dcf, double time);
    void cancel() { m_dcf.reset(); }

private:
    bool isInView(const std::shared_ptr<DCFInfo>& dcf) const;
    void currentDidChange();
    void seekWhenLoaded();

    QPointer<MediaController> m_controller;
    std::weak_ptr<DCFInfo> m_dcf; ///< the recording that is wished for
    double m_time = 0;
};

} // namespace cardreel
