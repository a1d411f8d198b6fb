// The recorder's settings file as a camera would have written it. Any thread.
#pragma once

#include <QByteArray>
#include <QDateTime>

namespace cardreel {

// The bytes of SYSTEM/settings.bin, made at the given moment (shown in UTC).
QByteArray recorderSettings(const QDateTime& created);

} // namespace cardreel
