#pragma once

#include <QByteArray>
#include <QDateTime>

namespace cardreel {

/// The moment that a header of HTTP names ("Sun, 06 Nov 1994 08:49:37 GMT"), in UTC; invalid for anything else.
QDateTime httpDate(const QByteArray& text);

} // namespace cardreel
