#pragma once

/// The namespaces of KML documents.
namespace cardreel {

inline constexpr const char* kmlNamespace = "http://www.opengis.net/kml/2.2";
/// Of KML's extensions, where times and tracks come from.
inline constexpr const char* kmlExtensionNamespace = "http://www.google.com/kml/ext/2.2";

} // namespace cardreel
