#include "settings/SettingTransformers.h"

using namespace Qt::StringLiterals;

namespace cardreel {

std::optional<int> VideoQualityValueTransformer::transformedValue(std::optional<int> value)
{
    if (!value || *value < 0 || *value > 1)
        return std::nullopt;
    return *value + 2;
}

std::optional<int> SensitivityTypeValueTransformer::transformedValue(std::optional<int> value)
{
    if (!value || *value < 0 || *value > 4)
        return std::nullopt;
    return *value + 1;
}

std::optional<QString> VolumeValueTransformer::transformedValue(std::optional<int> value)
{
    if (!value)
        return std::nullopt;
    return *value == 0 ? u"OFF"_s : QString::number(*value);
}

} // namespace cardreel
