#pragma once

#include <QString>

#include <array>

/// The kinds of documents that a drive is exported as. Their files' extensions tell them apart, in capitals or not; a
/// name like ".kml" has no extension. No state; any thread.
namespace cardreel {

enum class ExportFormat { Kml, Kmz, Gpx };

inline constexpr std::array exportFormats = {ExportFormat::Kml, ExportFormat::Kmz, ExportFormat::Gpx};

/// In lower case, without the point.
QString extensionOf(ExportFormat format);

/// Whether the file has the extension of a format.
bool isExportName(const QString& path);

/// What a file of this name holds: KML also when its extension is another or none.
ExportFormat formatOf(const QString& path);

} // namespace cardreel
