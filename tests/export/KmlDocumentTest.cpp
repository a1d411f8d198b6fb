#include "export/KmlDocument.h"

#include "DriveRoute.h"
#include "export/ExportDates.h"
#include "names/ConstClass.h"

#include <QDateTime>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString textOf(const ExportRoute& route)
{
    return QString::fromUtf8(KmlDocument::text(route));
}

QStringList matches(const QString& text, const QString& pattern)
{
    QStringList result;
    for (const QRegularExpressionMatch& match : QRegularExpression(pattern).globalMatch(text))
        result.append(match.captured(1));
    return result;
}

} // namespace

class KmlDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheDocument();
    void writesStyles();
    void groupsDays_data();
    void groupsDays();
    void writesAnEvent();
    void describesEvents_data();
    void describesEvents();
};

/// Everything but the styles, to the letter.
void KmlDocumentTest::writesTheDocument()
{
    const Instant start = utc(2025, 6, 14, 12, 0);
    ExportRoute route;
    addRecording(route, {{.time = start, .latitude = "3540.6620"}, {.time = start + 1s, .latitude = "3540.6680"}});
    QString text = textOf(route);
    QVERIFY(!text.contains(QRegularExpression(u"[^\r]\n|\r[^\n]"_s)));
    text.replace(u"\r\n"_s, u"\n"_s);
    text.remove(
        QRegularExpression(u"        <StyleMap.*</StyleMap>\n"_s, QRegularExpression::DotMatchesEverythingOption));
    const QString expected = uR"(<?xml version="1.0" encoding="utf-8" ?>
<kml xmlns="http://www.opengis.net/kml/2.2" xmlns:kml="http://www.opengis.net/kml/2.2">
    <Document>
        <name>ROUTE</name>
        <Folder>
            <name>%1</name>
            <Placemark>
                <styleUrl>#tracks0</styleUrl>
                <LineString>
                    <tessellate>1</tessellate>
                    <coordinates>139.000000,35.677700,0.0 139.000000,35.677800,0.0 </coordinates>
                </LineString>
                <Track xmlns="http://www.google.com/kml/ext/2.2">
                    <when xmlns="">%2</when>
                    <coord>139.000000000000 35.677700000000 0</coord>
                    <when xmlns="">%3</when>
                    <coord>139.000000000000 35.677800000000 0</coord>
                </Track>
            </Placemark>
        </Folder>
        <Folder>
            <name>Event</name>
        </Folder>
    </Document>
</kml>
)"_s;
    QCOMPARE(text, expected.arg(kmlFolderName(start), kmlWhenString(start), kmlWhenString(start + 1s)));
}

void KmlDocumentTest::writesStyles()
{
    const QString text = textOf(ExportRoute());
    QCOMPARE(matches(text, u"StyleMap id=\"(\\w+)\""_s).join(u' '),
             u"tracks0 tracks1 tracks2 tracks3 tracks4 tracks5 tracks6 Events0 Events1 Events2 Events3"_s);
    QCOMPARE(matches(text, u"<key>normal</key>\\s*<Style>\\s*<\\w+>\\s*<color>(\\w+)</color>\\s*<width>6</width>"_s)
                 .join(u' '),
             u"FFFF0000 FF0000FF FF008000 FFFFFFFF FFFF00FF FFFFFF00 FF00FFFF FF0000FF FF00FFFF FFFFFFFF FFFFFFFF"_s);
    QCOMPARE(matches(text, u"<key>highlight</key>\\s*<Style>\\s*<(\\w+)>\\s*<color>\\w+</color>\\s*<width>8</width>"_s),
             QStringList(7, u"LineStyle"_s) + QStringList(4, u"IconStyle"_s));
}

/// Recordings by the local clock.
void KmlDocumentTest::groupsDays_data()
{
    QTest::addColumn<QStringList>("starts");
    QTest::addColumn<QString>("styles");
    QTest::newRow("over midnight") << QStringList{u"14T23:50"_s, u"15T00:10"_s} << u"0 1"_s;
    QTest::newRow("an earlier day joins") << u"14T08:00 12T08:00 14T09:00 15T08:00"_s.split(u' ') << u"0 1"_s;
    QTest::newRow("eight days") << u"10T12:00 11T12:00 12T12:00 13T12:00 14T12:00 15T12:00 16T12:00 17T12:00"_s.split(
                                       u' ')
                                << u"0 1 2 3 4 5 6 0"_s;
}

void KmlDocumentTest::groupsDays()
{
    QFETCH(QStringList, starts);
    ExportRoute route;
    for (const QString& text : starts) {
        const QDateTime date = QDateTime::fromString(u"2025-06-"_s + text, Qt::ISODate);
        const Instant start{std::chrono::milliseconds(date.toMSecsSinceEpoch())};
        addRecording(route, {{.time = start}});
        addRecording(route, {}); // without fixes it neither begins nor ends a day
        addRecording(route, {{.time = start + 48h, .status = 'V'}});
    }
    QTEST(matches(textOf(route), u"<styleUrl>#tracks(\\d)"_s).join(u' '), "styles");
    QCOMPARE(textOf(route).count(u"<when"_s), starts.size());
}

void KmlDocumentTest::writesAnEvent()
{
    const Instant start = utc(2025, 6, 14, 12, 0);
    ExportRoute route;
    addRecording(route,
                 {{.time = start - 1s, .status = 'V'},
                  {.time = start, .speed = "20.0", .course = "91.25"},
                  {.time = start + 1s}},
                 ConstClass::DCF_EVENTNAME_MANUAL);
    addRecording(route, {{.time = start, .status = 'V'}}, ConstClass::DCF_EVENTNAME_EVENT);
    QString text = textOf(route).remove(QRegularExpression(u"\r\n *"_s));
    const QString picture = matches(text, u"base64,([\\w+/=]+)"_s).value(0);
    const QByteArray jpeg = QByteArray::fromBase64(picture.toLatin1());
    QCOMPARE(jpeg.size(), 5059);
    QCOMPARE(QImage::fromData(jpeg, "JPEG").size(), QSize(192, 108));
    const QString speed = CustomLocation::shouldUseMilePerHour() ? u"23.0 mph"_s : u"37.0 km/h"_s;
    const QString expected = uR"(<Folder><name>Event</name><Placemark><name>MANUAL RECORD</name><LookAt>)"
                             R"(<TimeStamp xmlns="http://www.google.com/kml/ext/2.2"><when xmlns="">%1</when>)"
                             R"(</TimeStamp><longitude>139.000000</longitude><latitude>35.000000</latitude>)"
                             R"(<altitude>0</altitude><heading>91.250000</heading></LookAt><description>)"
                             R"(&lt;![CDATA[&lt;img src=&quot;data:image/jpeg;base64,%4&quot; /&gt;&lt;br/&gt;)"
                             R"(DATE/TIME: %2&lt;br&gt;EVENT: MANUAL RECORD&lt;br&gt;LAT.: 35.000000&lt;br&gt;)"
                             R"(LONG.: 139.000000&lt;br&gt;SPD: %3&lt;br&gt;DIRECTION: 91.2 °</description>)"
                             R"(<styleUrl>#Events1</styleUrl><Point><coordinates>139.000000,35.000000,0)"
                             R"(</coordinates></Point></Placemark></Folder></Document></kml>)"_s;
    QCOMPARE(text.sliced(text.lastIndexOf(u"<Folder>"_s)),
             expected.arg(kmlWhenString(start), kmlEventDescriptionString(start), speed, picture));
}

/// Each comes behind a recording of a second and one without any fix.
void KmlDocumentTest::describesEvents_data()
{
    QTest::addColumn<std::vector<Fix>>("before");
    QTest::addColumn<std::vector<Fix>>("own");
    QTest::addColumn<QString>("eventName");
    QTest::addColumn<QString>("expected");
    const Instant start = utc(2025, 6, 14, 12, 0);
    const auto row = [](const char* name, const std::vector<Fix>& before, const std::vector<Fix>& own,
                        const QString& expected, const QString& eventName = ConstClass::DCF_EVENTNAME_EVENT) {
        QTest::newRow(name) << before << own << eventName << expected;
    };
    const QString plain = u"EVENT RECORD #Events0 "_s;
    const QString fast = u"92.6 km/h 57.5 mph 77.000000"_s;
    const Fix blank{.time = start, .speed = "", .course = ""};
    const Fix driving{.time = start - 14s, .speed = "50.0", .course = "77.0"};
    row("event", {}, {driving}, plain + fast);
    row("parking", {}, {driving}, u"PARKING RECORD #Events2 "_s + fast, ConstClass::DCF_EVENTNAME_PARKING);
    row("unknown", {}, {driving}, plain + fast, u"EVENTNAME_OTHER"_s);
    row("slower than one", {}, {{.time = start, .speed = "0.324"}}, plain + u"0.0 km/h 0.0 mph 0.000000"_s);
    row("slower than a mile", {}, {{.time = start, .speed = "0.7"}}, plain + u"1.3 km/h 0.0 mph 0.000000"_s);
    row("nothing known", {}, {blank}, plain + u"0.0 km/h 0.0 mph -1.000000"_s);
    row("borrowed", {driving}, {blank}, plain + fast);
    row("not needed", {driving}, {{.time = start, .speed = "20.0"}}, plain + u"37.0 km/h 23.0 mph 0.000000"_s);
    row("too long ago", {{.time = start - 15s, .speed = "50.0", .course = "77.0"}}, {blank},
        plain + u"0.0 km/h 0.0 mph 77.000000"_s);
    row("the file's own", {driving}, {{.time = start - 1s, .latitude = "", .speed = "20.0", .course = "10.0"}, blank},
        plain + u"37.0 km/h 23.0 mph 10.000000"_s);
}

void KmlDocumentTest::describesEvents()
{
    QFETCH(std::vector<Fix>, before);
    QFETCH(std::vector<Fix>, own);
    QFETCH(QString, eventName);
    QFETCH(QString, expected);
    ExportRoute route;
    addRecording(route, before);
    addRecording(route, {});
    addRecording(route, own, eventName);
    expected.remove(
        QRegularExpression(CustomLocation::shouldUseMilePerHour() ? u" [\\d.]+ km/h"_s : u" [\\d.]+ mph"_s));
    const QString text = textOf(route);
    QStringList found;
    for (const QString& part :
         {u"<name>(\\w+ RECORD)<"_s, u"<styleUrl>(#Events\\d)"_s, u"SPD: (.*? [kmph/]+)&"_s, u"<heading>(.*)<"_s})
        found += matches(text, part);
    QCOMPARE(found.join(u' '), expected);
}

QTEST_GUILESS_MAIN(KmlDocumentTest)
#include "KmlDocumentTest.moc"
