#pragma once

#include <QString>

namespace cardreel {

/// Bytes as people of the user's locale read them, in the decimal unit that fits ("15.6 MB"). Any thread.
QString dataSizeText(quint64 bytes);

/// Whole seconds as "1:05" or "1:02:05"; "0:00" for what isn't a length.
QString playTimeText(double seconds);

} // namespace cardreel
