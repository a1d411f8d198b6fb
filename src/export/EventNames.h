#pragma once

#include <QString>

namespace cardreel {

/// What exported documents call an event, in the user's language: "EVENT RECORD" and the like; that of an event for any
/// other name than ConstClass::DCF_EVENTNAME_…. Any thread.
QString eventRecordName(const QString& eventName);

} // namespace cardreel
