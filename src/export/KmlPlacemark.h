#pragma once

namespace cardreel {

class XmlText;
struct ExportEvent;

/// The placemark of an event recording, a part of KmlDocument, where its folder of events is open. No state; any
/// thread.
void addEventPlacemark(XmlText& xml, const ExportEvent& event);

} // namespace cardreel
