#pragma once

#include <QPointF>
#include <QSizeF>
#include <QStringList>

#include <cstddef>
#include <optional>

namespace cardreel {

// Every number of the graph and the speedometer. Plain functions, any thread.

/// Top of the speed axis in the locale's unit, for a greatest speed in metres per second: 120, 180 or 240. Faster
/// speeds leave the plot.
double speedLabelMaxValue(double maxSpeed);
/// Top of the acceleration axis: the smallest whole number that isn't below the greatest |G|, from 1 to 9.
double motionLabelMaxABSValue(double maxMotionABS);

/// Texts of the five speed labels, bottom to top.
QStringList speedLabels(double maxSpeedValue);
/// Texts of the five acceleration labels, top to bottom.
QStringList motionLabels(double maxMotionABSValue);

/// Which of so many records stands at a fraction of the recording, in single precision; none at its very end.
std::optional<std::size_t> recordIndexAt(float fraction, std::size_t count);

/// By how much the needle is turned for a speed in the locale's unit, radians against the clock, before the turn by
/// needleRestAngle. The dial spans 270 degrees from 0 to 180 units, whatever the axis.
float rotationTransformForSpeed(float speed);
/// The further turn of a needle that points up.
extern const float needleRestAngle;

/// Where things stand in the plot. The y axis points upwards: 0 is the bottom edge of the bounds. Positions are in
/// points; values that aren't finite give positions that aren't.
struct GraphGeometry
{
    static constexpr int tickCount = 5;
    static constexpr double tickLength = 5;

    QSizeF bounds;
    double offsetX = 0; ///< the plot's margin at the left and the right
    double offsetY = 0; ///< the same at the bottom and the top

    double plotWidth() const { return bounds.width() - 2 * offsetX; }
    double plotHeight() const { return bounds.height() - 2 * offsetY; }
    /// The acceleration's zero line.
    double zeroY() const { return bounds.height() / 2; }
    /// From 0, the bottom, to 4.
    double tickY(int tick) const { return offsetY + tick * plotHeight() / (tickCount - 1); }

    /// A group of pictures among at least two.
    double groupX(std::size_t group, std::size_t groupCount) const;
    /// Of a speed in the unit of the axis.
    double speedY(double speed, double maxSpeedValue) const;
    /// A marker of a group; `position` counts tenths of the interval, 5 being the group's own point.
    double markerX(std::size_t group, std::size_t groupCount, double position) const;
    /// A sample among those of the whole file.
    double motionX(std::size_t sample, std::size_t sampleCount) const;
    double motionY(double g, double maxMotionABSValue) const;

    double positionX(double fraction) const { return offsetX + fraction * plotWidth(); }
    /// The fraction of the recording at x, brought into 0 to 1.
    double fractionAt(double x) const;
};

} // namespace cardreel
