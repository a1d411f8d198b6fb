// The tool's only source of chance: the same seed gives the same card with every compiler, which the distributions of
// the standard library do not promise.
#pragma once

#include <cstdint>
#include <random>

namespace cardreel {

class Random
{
public:
    explicit Random(std::uint64_t seed)
        : engine(seed)
    {
    }

    // Even in [low, high).
    double between(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(engine() >> 11U) * 0x1.0p-53);
    }

    // Around 0 and never beyond +-amplitude; small values are likelier.
    double noise(double amplitude) { return (between(-0.5, 0.5) + between(-0.5, 0.5)) * amplitude; }

    bool chance(double probability) { return between(0, 1) < probability; }

private:
    std::mt19937_64 engine;
};

} // namespace cardreel
