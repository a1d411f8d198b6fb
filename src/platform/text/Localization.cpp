#include "platform/text/Localization.h"

#include <QCoreApplication>

namespace cardreel {

QString localizedText(const char* key)
{
    return QCoreApplication::translate("Keys", key);
}

} // namespace cardreel
