#include "playback/RateStringTransformer.h"

using namespace Qt::StringLiterals;

namespace cardreel {

std::optional<QString> RateStringTransformer::transformedValue(std::optional<double> rate)
{
    if (!rate)
        return std::nullopt;
    if (*rate == 0.5)
        return u"x1/2"_s;
    return u"x"_s + QString::number(*rate);
}

} // namespace cardreel
