#include "export/ExportFormat.h"

#include "platform/files/Files.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cardreel {

QString extensionOf(ExportFormat format)
{
    switch (format) {
    case ExportFormat::Kmz:
        return u"kmz"_s;
    case ExportFormat::Gpx:
        return u"gpx"_s;
    case ExportFormat::Kml:
        break;
    }
    return u"kml"_s;
}

bool isExportName(const QString& path)
{
    return files::extensionOf(path) == extensionOf(formatOf(path));
}

ExportFormat formatOf(const QString& path)
{
    const QString extension = files::extensionOf(path);
    const auto* const format = std::find_if(exportFormats.begin(), exportFormats.end(), [&](ExportFormat candidate) {
        return extensionOf(candidate) == extension;
    });
    return format == exportFormats.end() ? ExportFormat::Kml : *format;
}

} // namespace cardreel
