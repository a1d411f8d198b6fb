#pragma once

#include <QString>

namespace cardreel {

/// Bytes as people of the user's locale read them, in the decimal unit that fits ("15.6 MB"). Any thread.
QString dataSizeText(quint64 bytes);

} // namespace cardreel
