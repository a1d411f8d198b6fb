#include "media/RouteColors.h"

#include <QDateTime>

namespace cardreel {

const std::array<QColor, 7> routeColors = {
    QColor(0, 0, 255),   QColor(255, 0, 0),   QColor(0, 128, 0),   QColor(255, 255, 255),
    QColor(255, 0, 255), QColor(0, 255, 255), QColor(255, 255, 0),
};

namespace {

QDate localDay(Instant instant)
{
    return QDateTime::fromMSecsSinceEpoch(instant.time_since_epoch().count()).date();
}

} // namespace

qint64 daysBetween(Instant first, Instant second)
{
    return localDay(first).daysTo(localDay(second));
}

bool shouldChangeRouteColor(std::optional<Instant> date, std::optional<Instant> after)
{
    return date && after && daysBetween(*after, *date) > 0;
}

} // namespace cardreel
