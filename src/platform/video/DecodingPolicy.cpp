#include "platform/video/DecodingPolicy.h"

#include <QThread>

#include <algorithm>
#include <limits>

namespace cardreel {

namespace {

// Pixels a second that one of two players decodes for each processor: 1920x1080 with 30 frames a second is 62 million,
// and two processors hold two of them at twice their speed, or at four times coarsely.
constexpr double fullPixelsPerProcessor = 70e6;
constexpr double coarsePixelsPerProcessor = 130e6;
// Who fell behind at some load would do so a little below it, too.
constexpr double prudence = 0.9;

} // namespace

DecodingPolicy::DecodingPolicy(int processors)
{
    const int count = std::max(processors, 1);
    m_mostPixels = {fullPixelsPerProcessor * count, coarsePixelsPerProcessor * count};
    m_mostHardwarePixels.fill(std::numeric_limits<double>::infinity());
}

DecodingPolicy& DecodingPolicy::shared()
{
    static DecodingPolicy instance(QThread::idealThreadCount());
    return instance;
}

Decoding DecodingPolicy::decoding(double pixelsPerSecond, double speed) const
{
    // At its own speed a file is always shown whole, however slow that is.
    if (speed <= 1)
        return Decoding::Full;
    const auto& most = m_isHardware ? m_mostHardwarePixels : m_mostPixels;
    const double load = pixelsPerSecond * speed;
    return load <= most[0] ? Decoding::Full : load <= most[1] ? Decoding::Coarse : Decoding::KeyFrames;
}

void DecodingPolicy::fellBehind(Decoding decoding, double pixelsPerSecond, double speed)
{
    if (decoding == Decoding::KeyFrames)
        return;
    auto& most = m_isHardware ? m_mostHardwarePixels : m_mostPixels;
    double& limit = most[static_cast<std::size_t>(decoding)];
    limit = std::min(limit, pixelsPerSecond * speed * prudence);
}

} // namespace cardreel
