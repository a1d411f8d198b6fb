#include "views/graph/GraphGeometry.h"

#include "telemetry/CustomLocation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cardreel {

namespace {

constexpr float dialUnits = 180.0F;
constexpr float dialSpan = std::numbers::pi_v<float> * 1.5F;
constexpr int greatestWholeG = 8;

} // namespace

const float needleRestAngle = std::numbers::pi_v<float> * 0.75F;

double speedLabelMaxValue(double maxSpeed)
{
    const float speed = CustomLocation::speedForCurrentLocale(maxSpeed);
    return speed > 180 ? 240 : speed > 120 ? 180 : 120;
}

double motionLabelMaxABSValue(double maxMotionABS)
{
    double top = 1;
    for (int n = 1; n <= greatestWholeG; ++n)
        top = maxMotionABS > n ? n + 1 : top;
    return top;
}

QStringList speedLabels(double maxSpeedValue)
{
    const int top = static_cast<int>(maxSpeedValue);
    QStringList texts;
    for (const int value : {0, top / 4, top / 2, top * 3 / 4, top})
        texts.push_back(QString::number(value));
    return texts;
}

QStringList motionLabels(double maxMotionABSValue)
{
    QStringList texts;
    for (const double part : {1.0, 0.5, 0.0, -0.5, -1.0})
        texts.push_back(QString::asprintf("%2.1f", part * maxMotionABSValue));
    return texts;
}

std::optional<std::size_t> recordIndexAt(float fraction, std::size_t count)
{
    const float place = fraction * static_cast<float>(count);
    // Compared before it is cut: a float beyond the range of the index has no whole number.
    if (!(place > -1.0F && place < static_cast<float>(count)))
        return {};
    return static_cast<std::size_t>(std::max(place, 0.0F));
}

float rotationTransformForSpeed(float speed)
{
    return speed / -dialUnits * dialSpan + 2 * std::numbers::pi_v<float>;
}

double GraphGeometry::groupX(std::size_t group, std::size_t groupCount) const
{
    return offsetX + static_cast<double>(group) * plotWidth() / static_cast<double>(groupCount - 1);
}

double GraphGeometry::speedY(double speed, double maxSpeedValue) const
{
    return offsetY + speed * plotHeight() / maxSpeedValue;
}

double GraphGeometry::markerX(std::size_t group, std::size_t groupCount, double position) const
{
    return groupX(group, groupCount) + (position - 5) * (plotWidth() / static_cast<double>(groupCount - 1)) / 10;
}

double GraphGeometry::motionX(std::size_t sample, std::size_t sampleCount) const
{
    return offsetX + static_cast<double>(sample) * plotWidth() / static_cast<double>(sampleCount);
}

double GraphGeometry::motionY(double g, double maxMotionABSValue) const
{
    return zeroY() + g * plotHeight() / (2 * maxMotionABSValue);
}

double GraphGeometry::fractionAt(double x) const
{
    return plotWidth() <= 0 ? 0 : std::clamp((x - offsetX) / plotWidth(), 0.0, 1.0);
}

} // namespace cardreel
