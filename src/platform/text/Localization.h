#pragma once

#include <QString>

namespace cardreel {

/// The user's text for one of the system's own keys (QT_TRANSLATE_NOOP("Keys", …) marks them for the translators); the
/// key itself when there is no translation. Any thread, once the translators are installed.
QString localizedText(const char* key);

} // namespace cardreel
