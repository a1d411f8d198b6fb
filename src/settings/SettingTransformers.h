#pragma once

#include <QString>

#include <optional>

namespace cardreel {

// How stored values are shown: no value gives none. Any thread.

/// 0 and 1 become 2 and 3, others nothing.
struct VideoQualityValueTransformer
{
    static std::optional<int> transformedValue(std::optional<int> value);
};

/// 0 to 4 become the steps 1 to 5, others nothing.
struct SensitivityTypeValueTransformer
{
    static std::optional<int> transformedValue(std::optional<int> value);
};

/// 0 becomes "OFF", others their figures.
struct VolumeValueTransformer
{
    static std::optional<QString> transformedValue(std::optional<int> value);
};

} // namespace cardreel
