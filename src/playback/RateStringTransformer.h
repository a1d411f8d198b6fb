#pragma once

#include <QString>

#include <optional>

namespace cardreel {

/// One-way: a play rate as the rate button shows it. Any thread.
class RateStringTransformer
{
public:
    /// "x1/2" for 0.5, else "x" and the number in the C locale ("x2", "x16"); nothing for nothing.
    static std::optional<QString> transformedValue(std::optional<double> rate);
};

} // namespace cardreel
