#pragma once

#include "views/map/MapViewport.h"

#include <QVariantAnimation>

#include <functional>

namespace cardreel {

/// Takes the map from what it shows to something else in a moment. Belongs to a MapView; interface thread.
class MapAnimation
{
public:
    using Show = std::function<void(const MapViewport&)>;

    /// `show` is called with each viewport on the way and with the target at the end.
    explicit MapAnimation(Show show);

    void start(const MapViewport& from, const MapViewport& to);
    void stop() { m_animation.stop(); }
    bool isRunning() const { return m_animation.state() == QAbstractAnimation::Running; }
    /// Where it leads.
    const MapViewport& target() const { return m_to; }

private:
    Show m_show;
    MapViewport m_from;
    MapViewport m_to;
    QVariantAnimation m_animation;
};

} // namespace cardreel
