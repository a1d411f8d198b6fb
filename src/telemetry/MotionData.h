#pragma once

namespace cardreel {

/// One acceleration sample, in G, as the recorder wrote it: neither scaled nor filtered; 0 where a number was missing.
/// Files hold ten a second and more, so it is nothing but its three numbers.
struct MotionData
{
    constexpr MotionData(double x, double y, double z)
        : gx(x)
        , gy(y)
        , gz(z)
    {
    }

    double gx;
    double gy;
    double gz;

    bool operator==(const MotionData& other) const = default;
};

static_assert(sizeof(MotionData) == 24);

} // namespace cardreel
