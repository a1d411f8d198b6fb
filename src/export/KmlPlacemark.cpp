#include "export/KmlPlacemark.h"

#include "export/ExportDates.h"
#include "export/ExportRoute.h"
#include "export/PlaceholderPicture.h"
#include "export/XmlText.h"
#include "names/ConstClass.h"
#include "platform/text/Localization.h"

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

struct EventKind
{
    QString name;
    const char* style;
};

EventKind kindOf(const QString& eventName)
{
    if (eventName == ConstClass::DCF_EVENTNAME_MANUAL)
        //: 手動記録 プレースマーク名称
        return {localizedText(QT_TRANSLATE_NOOP("Keys", "MANUAL RECORD")), "#Events1"};
    if (eventName == ConstClass::DCF_EVENTNAME_PARKING)
        //: 駐車記録 プレースマーク名称
        return {localizedText(QT_TRANSLATE_NOOP("Keys", "PARKING RECORD")), "#Events2"};
    //: イベント記録 プレースマーク名称
    return {localizedText(QT_TRANSLATE_NOOP("Keys", "EVENT RECORD")), "#Events0"};
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

QString footer(const CustomLocation& fix, const EventKind& kind)
{
    return labelled(localizedText(QT_TRANSLATE_NOOP("Keys", "DATE/TIME: %@<br>")),
                    kmlEventDescriptionString(fix.timestamp).toUtf8()) +
           labelled(localizedText(QT_TRANSLATE_NOOP("Keys", "EVENT: %@<br>")), kind.name.toUtf8()) + positionText(fix) +
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

QString eventRecordName(const QString& eventName)
{
    return kindOf(eventName).name;
}

void addEventPlacemark(XmlText& xml, const ExportEvent& event)
{
    const CustomLocation& fix = event.fix;
    const EventKind kind = kindOf(event.eventName);
    const XmlElement placemark(xml, "Placemark");
    xml.add("name", kind.name);
    addLookAt(xml, fix);
    xml.add("description", placeholderPictureHtml() + footer(fix, kind).toUtf8());
    xml.add("styleUrl", QByteArray(kind.style));
    const XmlElement point(xml, "Point");
    xml.add("coordinates", fixedText(fix.longitude, 6) + ',' + fixedText(fix.latitude, 6) + ",0");
}

} // namespace cardreel
