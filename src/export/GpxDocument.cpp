#include "export/GpxDocument.h"

#include "export/EventNames.h"
#include "export/ExportDates.h"
#include "export/ExportRoute.h"
#include "export/XmlText.h"

#include <cmath>
#include <cstddef>

namespace cardreel {

namespace {

constexpr const char* gpxNamespace = "http://www.topografix.com/GPX/1/1";
constexpr const char* extensionNamespace = "http://www.garmin.com/xmlschemas/TrackPointExtension/v2";
constexpr const char* schemaLocations = "http://www.topografix.com/GPX/1/1 http://www.topografix.com/GPX/1/1/gpx.xsd "
                                        "http://www.garmin.com/xmlschemas/TrackPointExtension/v2 "
                                        "http://www8.garmin.com/xmlschemas/TrackPointExtensionv2.xsd";

void appendNumber(QByteArray& text, int number, int digits)
{
    text += QByteArray::number(number).rightJustified(digits, '0');
}

/// As the schema has it: a UTC date and time, with thousandths where there are any.
QByteArray utcText(Instant date)
{
    using namespace std::chrono;
    const auto day = floor<days>(date);
    const year_month_day calendar(day);
    const hh_mm_ss<milliseconds> clock(date - day);
    QByteArray text;
    text.reserve(24);
    appendNumber(text, static_cast<int>(calendar.year()), 4);
    text += '-';
    appendNumber(text, static_cast<int>(static_cast<unsigned>(calendar.month())), 2);
    text += '-';
    appendNumber(text, static_cast<int>(static_cast<unsigned>(calendar.day())), 2);
    text += 'T';
    appendNumber(text, static_cast<int>(clock.hours().count()), 2);
    text += ':';
    appendNumber(text, static_cast<int>(clock.minutes().count()), 2);
    text += ':';
    appendNumber(text, static_cast<int>(clock.seconds().count()), 2);
    if (clock.subseconds().count() != 0) {
        text += '.';
        appendNumber(text, static_cast<int>(clock.subseconds().count()), 3);
    }
    return text + 'Z';
}

/// A point's attributes; its element is open while this lives.
class PointElement
{
public:
    PointElement(XmlText& xml, const char* name, const CustomLocation& fix)
        : m_latitude(fixedText(fix.latitude, 8))
        , m_longitude(longitudeText(fix.longitude))
        , m_element(xml, name, {{"lat", m_latitude.constData()}, {"lon", m_longitude.constData()}})
    {
        if (fix.timestamp != Instant{})
            xml.add("time", utcText(fix.timestamp));
    }

private:
    static QByteArray longitudeText(double degrees)
    {
        // 180 degrees is east of what the schema allows, and the same meridian as -180.
        const QByteArray text = fixedText(degrees, 8);
        return text == "180.00000000" ? QByteArray("-180.00000000") : text;
    }

    QByteArray m_latitude;
    QByteArray m_longitude;
    XmlElement m_element;
};

void addMotion(XmlText& xml, const CustomLocation& fix)
{
    const bool hasSpeed = std::isfinite(fix.speed) && fix.speed >= 0;
    const bool hasCourse = fix.course >= 0 && fix.course <= 360;
    if (!hasSpeed && !hasCourse)
        return;
    const XmlElement extensions(xml, "extensions");
    const XmlElement motion(xml, "gpxtpx:TrackPointExtension");
    if (hasSpeed)
        xml.add("gpxtpx:speed", fixedText(fix.speed, 3));
    if (hasCourse) {
        const QByteArray course = fixedText(fix.course, 2);
        // North is 0; the schema ends short of 360.
        xml.add("gpxtpx:course", course == "360.00" ? QByteArray("0.00") : course);
    }
}

void addTrack(XmlText& xml, const ExportDay& day)
{
    const XmlElement track(xml, "trk");
    xml.add("name", kmlFolderName(day.fixes.front().timestamp));
    for (std::size_t i = 0; i < day.runCount(); ++i) {
        const XmlElement segment(xml, "trkseg");
        for (const CustomLocation& fix : day.run(i)) {
            const PointElement point(xml, "trkpt", fix);
            addMotion(xml, fix);
        }
    }
}

void addDocument(XmlText& xml, const ExportRoute& route)
{
    const XmlElement root(xml, "gpx",
                          {{"version", "1.1"},
                           {"creator", "Cardreel"},
                           {"xmlns", gpxNamespace},
                           {"xmlns:gpxtpx", extensionNamespace},
                           {"xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance"},
                           {"xsi:schemaLocation", schemaLocations}});
    for (const ExportEvent& event : route.events()) {
        const PointElement point(xml, "wpt", event.fix);
        xml.add("name", eventRecordName(event.eventName));
    }
    for (const ExportDay& day : route.days())
        addTrack(xml, day);
}

} // namespace

QByteArray GpxDocument::text(const ExportRoute& route)
{
    XmlText xml(R"(<?xml version="1.0" encoding="UTF-8"?>)", LineEnds::Lf);
    addDocument(xml, route);
    return xml.take();
}

} // namespace cardreel
