#pragma once

#include <QString>

namespace cardreel {

// How many columns of a terminal it takes, whatever the system's locale. Any thread.

/// Negative for what isn't shown as a letter.
int columnsOf(char32_t letter);
/// Without what isn't shown.
int columnsOf(const QString& text);

} // namespace cardreel
