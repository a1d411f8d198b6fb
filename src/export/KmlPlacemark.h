#pragma once

#include <QString>

/// The placemark of an event recording, a part of KmlDocument. No state; any thread.
namespace cardreel {

class XmlText;
struct ExportEvent;

/// Of KML's extensions, where times and tracks come from.
inline constexpr const char* kmlExtensionNamespace = "http://www.google.com/kml/ext/2.2";

/// "EVENT RECORD" and the like, in the user's language; that of an event for any other name.
QString eventRecordName(const QString& eventName);

/// Where the folder of events is open.
void addEventPlacemark(XmlText& xml, const ExportEvent& event);

} // namespace cardreel
