#include "export/KmlDocument.h"

#include "export/ExportDates.h"
#include "export/ExportRoute.h"
#include "export/KmlNames.h"
#include "export/KmlPlacemark.h"
#include "export/XmlText.h"
#include "media/RouteColors.h"
#include "platform/text/Localization.h"

#include <array>
#include <cstddef>
#include <span>

namespace cardreel {

namespace {

const std::array<QColor, 4> iconColors = {QColor(255, 0, 0), QColor(255, 255, 0), QColor(255, 255, 255),
                                          QColor(255, 255, 255)};

struct StyleKind
{
    const char* idPrefix;
    const char* element;
    std::span<const QColor> colors;
};

/// One of a style map's two looks.
void addPair(XmlText& xml, const char* key, const StyleKind& kind, const QColor& color, const char* width)
{
    const XmlElement pair(xml, "Pair");
    xml.add("key", QByteArray(key));
    const XmlElement style(xml, "Style");
    // Icons have no width in KML; they carry it all the same, and readers pass over it.
    const XmlElement look(xml, kind.element);
    xml.add("color", KmlDocument::colorString(color));
    xml.add("width", QByteArray(width));
}

void addStyleMaps(XmlText& xml, const StyleKind& kind)
{
    for (std::size_t i = 0; i < kind.colors.size(); ++i) {
        const QByteArray id = kind.idPrefix + QByteArray::number(i);
        const XmlElement map(xml, "StyleMap", {{"id", id.constData()}});
        addPair(xml, "normal", kind, kind.colors[i], "6");
        addPair(xml, "highlight", kind, kind.colors[i], "8");
    }
}

void addLine(XmlText& xml, const std::vector<CustomLocation>& fixes)
{
    QByteArray coordinates;
    coordinates.reserve(static_cast<qsizetype>(fixes.size()) * 26);
    for (const CustomLocation& fix : fixes) {
        appendFixed(coordinates, fix.longitude, 6);
        coordinates += ',';
        appendFixed(coordinates, fix.latitude, 6);
        coordinates += ",0.0 ";
    }
    const XmlElement line(xml, "LineString");
    xml.add("tessellate", QByteArray("1"));
    xml.add("coordinates", coordinates);
}

void addTrack(XmlText& xml, const std::vector<CustomLocation>& fixes)
{
    const XmlElement track(xml, "Track", {{"xmlns", kmlExtensionNamespace}});
    KmlWhenText when;
    QByteArray coordinate;
    for (const CustomLocation& fix : fixes) {
        xml.add("when", when.text(fix.timestamp), {{"xmlns", ""}});
        coordinate.clear();
        appendFixed(coordinate, fix.longitude, 12);
        coordinate += ' ';
        appendFixed(coordinate, fix.latitude, 12);
        coordinate += " 0";
        xml.add("coord", coordinate);
    }
}

void addRouteFolder(XmlText& xml, const ExportDay& day, std::size_t index)
{
    const XmlElement folder(xml, "Folder");
    xml.add("name", kmlFolderName(day.fixes.front().timestamp));
    const XmlElement placemark(xml, "Placemark");
    xml.add("styleUrl", "#tracks" + QByteArray::number(index % routeColors.size()));
    addLine(xml, day.fixes);
    addTrack(xml, day.fixes);
}

void addEventFolder(XmlText& xml, const std::vector<ExportEvent>& events)
{
    const XmlElement folder(xml, "Folder");
    xml.add("name", localizedText(QT_TRANSLATE_NOOP("Keys", "Event")));
    for (const ExportEvent& event : events)
        addEventPlacemark(xml, event);
}

void addDocument(XmlText& xml, const ExportRoute& route)
{
    const XmlElement root(xml, "kml", {{"xmlns", kmlNamespace}, {"xmlns:kml", kmlNamespace}});
    const XmlElement document(xml, "Document");
    xml.add("name", localizedText(QT_TRANSLATE_NOOP("Keys", "ROUTE")));
    addStyleMaps(xml, {"tracks", "LineStyle", routeColors});
    addStyleMaps(xml, {"Events", "IconStyle", iconColors});
    for (std::size_t i = 0; i < route.days().size(); ++i)
        addRouteFolder(xml, route.days()[i], i);
    addEventFolder(xml, route.events());
}

} // namespace

QByteArray KmlDocument::colorString(const QColor& color)
{
    QByteArray text;
    for (const int component : {color.alpha(), color.blue(), color.green(), color.red()})
        text += QByteArray::number(component, 16).rightJustified(2, '0').toUpper();
    return text;
}

QByteArray KmlDocument::text(const ExportRoute& route)
{
    XmlText xml(R"(<?xml version="1.0" encoding="utf-8" ?>)", LineEnds::CrLf);
    addDocument(xml, route);
    return xml.take();
}

} // namespace cardreel
