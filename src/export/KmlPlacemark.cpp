#include "export/KmlPlacemark.h"

#include "export/EventNames.h"
#include "export/ExportDates.h"
#include "export/ExportRoute.h"
#include "export/KmlNames.h"
#include "export/PlaceholderPicture.h"
#include "export/XmlText.h"
#include "names/ConstClass.h"
#include "platform/text/Localization.h"

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

QByteArray styleOf(const QString& eventName)
{
    if (eventName == ConstClass::DCF_EVENTNAME_MANUAL)
        return "#Events1";
    return eventName == ConstClass::DCF_EVENTNAME_PARKING ? "#Events2" : "#Events0";
}

/// The text of a label with its value in the place of "%@".
QString labelled(QString label, const QByteArray& value)
{
    return label.replace(u"%@"_s, QString::fromUtf8(value));
}

QString speedText(const CustomLocation& fix)
{
    // What is slower is a standing vehicle's receiver at play.
    constexpr float slowest = 1.0F;
    const float shown = CustomLocation::speedForCurrentLocale(fix.shownSpeed());
    const QByteArray value = fixedText(static_cast<double>(shown < slowest ? 0.0F : shown), 1);
    if (CustomLocation::shouldUseMilePerHour())
        return labelled(localizedText(QT_TRANSLATE_NOOP("Keys", "SPD: %@ mph<br>")), value);
    return labelled(localizedText(QT_TRANSLATE_NOOP("Keys", "SPD: %@ km/h<br>")), value);
}

QString positionText(const CustomLocation& fix)
{
    QString text = localizedText(QT_TRANSLATE_NOOP("Keys", "LAT.: %1$@<br>LONG.: %2$@<br>"));
    text.replace(u"%1$@"_s, QString::fromLatin1(fixedText(fix.latitude, 6)));
    return text.replace(u"%2$@"_s, QString::fromLatin1(fixedText(fix.longitude, 6)));
}

QString footer(const CustomLocation& fix, const QString& name)
{
    return labelled(localizedText(QT_TRANSLATE_NOOP("Keys", "DATE/TIME: %@<br>")),
                    kmlEventDescriptionString(fix.timestamp).toUtf8()) +
           labelled(localizedText(QT_TRANSLATE_NOOP("Keys", "EVENT: %@<br>")), name.toUtf8()) + positionText(fix) +
           speedText(fix) +
           labelled(localizedText(QT_TRANSLATE_NOOP("Keys", "DIRECTION: %@ °")), fixedText(fix.shownCourse(), 1));
}

void addLookAt(XmlText& xml, const CustomLocation& fix)
{
    const XmlElement look(xml, "LookAt");
    {
        const XmlElement stamp(xml, "TimeStamp", {{"xmlns", kmlExtensionNamespace}});
        xml.add("when", kmlWhenString(fix.timestamp), {{"xmlns", ""}});
    }
    xml.add("longitude", fixedText(fix.longitude, 6));
    xml.add("latitude", fixedText(fix.latitude, 6));
    xml.add("altitude", QByteArray("0"));
    xml.add("heading", fixedText(fix.shownCourse(), 6));
}

} // namespace

void addEventPlacemark(XmlText& xml, const ExportEvent& event)
{
    const CustomLocation& fix = event.fix;
    const QString name = eventRecordName(event.eventName);
    const XmlElement placemark(xml, "Placemark");
    xml.add("name", name);
    addLookAt(xml, fix);
    xml.add("description", placeholderPictureHtml() + footer(fix, name).toUtf8());
    xml.add("styleUrl", styleOf(event.eventName));
    const XmlElement point(xml, "Point");
    xml.add("coordinates", fixedText(fix.longitude, 6) + ',' + fixedText(fix.latitude, 6) + ",0");
}

} // namespace cardreel
