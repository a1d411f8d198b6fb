#include "views/map/MapAnimation.h"

#include <QEasingCurve>

#include <utility>

namespace cardreel {

namespace {

constexpr int durationMs = 150;

} // namespace

MapAnimation::MapAnimation(Show show)
    : m_show(std::move(show))
{
    m_animation.setDuration(durationMs);
    m_animation.setEasingCurve(QEasingCurve::OutCubic);
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    QObject::connect(&m_animation, &QVariantAnimation::valueChanged, &m_animation, [this](const QVariant& part) {
        if (isRunning())
            m_show(m_from.toward(m_to, part.toDouble()));
    });
}

void MapAnimation::start(const MapViewport& from, const MapViewport& to)
{
    m_animation.stop();
    m_from = from;
    m_to = to;
    m_animation.start();
}

} // namespace cardreel
