#include "export/GpxDocument.h"

#include "DriveRoute.h"
#include "names/ConstClass.h"

#include <QRegularExpression>
#include <QTest>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The document in short: brackets around tracks and segments, a point for each point.
QString outline(const ExportRoute& route)
{
    QString result;
    const QString text = QString::fromUtf8(GpxDocument::text(route));
    for (const auto& match : QRegularExpression(u"<(/?)trk(pt|seg)?\\b"_s).globalMatch(text)) {
        const QString bracket = match.captured(1).isEmpty() ? u"["_s : u"]"_s;
        if (match.captured(2) != u"pt")
            result += bracket;
        else if (bracket == u"[")
            result += u'.';
    }
    return result;
}

const Instant start = utc(2025, 6, 14, 12, 0);

} // namespace

class GpxDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Fixes are seconds from the start, void ones in brackets; recordings are parted by strokes.
    void breaksRuns_data()
    {
        QTest::addColumn<QString>("fixes");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << u""_s << u""_s;
        QTest::newRow("over ten seconds") << u"0 1 12 13"_s << u"[[..][..]]"_s;
        QTest::newRow("void ones between") << u"(0) 1 (2) (3) 4 5 (6)"_s << u"[[.][..]]"_s;
        QTest::newRow("a clock that was set back") << u"20 21 5 6"_s << u"[[..][..]]"_s;
        QTest::newRow("in the next recording") << u"0 1 | 2 3 | | 13"_s << u"[[.....]]"_s;
        QTest::newRow("with a void recording between") << u"0 1 | (2) | 3 4"_s << u"[[..][..]]"_s;
        QTest::newRow("after a void end") << u"0 1 (2) | 3 | (4) 5"_s << u"[[..][.][.]]"_s;
        QTest::newRow("the day after") << u"0 1 | 86402 86403"_s << u"[[..]][[..]]"_s;
        QTest::newRow("the same moment twice") << u"0 0 1"_s << u"[[...]]"_s;
    }
    void breaksRuns()
    {
        QFETCH(QString, fixes);
        ExportRoute route;
        for (const QString& recording : fixes.split(u'|')) {
            std::vector<Fix> list;
            for (QString second : recording.split(u' ', Qt::SkipEmptyParts)) {
                const char status = second.startsWith(u'(') ? 'V' : 'A';
                second.remove(u'(').remove(u')');
                list.push_back({.time = start + std::chrono::seconds(second.toInt()), .status = status});
            }
            addRecording(route, list);
        }
        QTEST(outline(route), "expected");
    }

    void writesPoints_data()
    {
        QTest::addColumn<QString>("fields"); // of the sentence, from the position to the course
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const QString& fields, const QString& position, const QString& motion) {
            QTest::newRow(name) << (fields.startsWith(u',') ? u"3500.0000,N,13900.0000,E"_s + fields : fields)
                                << position + u'|' + motion;
        };
        const QString here = u"35.00000000 139.00000000"_s;
        row("both", u",20.0,91.25"_s, here, u"<speed>10.288</speed><course>91.25</course>"_s);
        row("standing", u",0.0,0.0"_s, here, u"<speed>0.000</speed><course>0.00</course>"_s);
        row("full circle", u",1.0,359.999"_s, here, u"<speed>0.514</speed><course>0.00</course>"_s);
        row("no speed", u",,10.0"_s, here, u"<course>10.00</course>"_s);
        row("no course", u",1.0,"_s, here, u"<speed>0.514</speed>"_s);
        row("neither that can be", u",-5.0,400.0"_s, here, u""_s);
        row("end of the west", u"9000.0000,S,18000.0000,W,,"_s, u"-90.00000000 -180.00000000"_s, u""_s);
        row("rounded to the end", u"3500.0000,N,17959.9999999999,E,,"_s, u"35.00000000 -180.00000000"_s, u""_s);
    }
    void writesPoints()
    {
        QFETCH(QString, fields);
        NMEAData nmea{QString()};
        nmea.parseNMEALinesWithLines(u"$GPRMC,120000.000,A,"_s + fields + u",140625,,,A*00"_s);
        ExportRoute route;
        route.add(*nmea.snapshot(), {});
        QString text = QString::fromUtf8(GpxDocument::text(route));
        text.remove(QRegularExpression(u"\\n *|</?(gpxtpx:TrackPointE|e)xtensions?>|gpxtpx:"_s));
        const auto match =
            QRegularExpression(u"<trkpt lat=\"(.*)\" lon=\"(.*)\"><time>.*</time>(.*)</trkpt>"_s).match(text);
        QTEST(match.captured(1) + u' ' + match.captured(2) + u'|' + match.captured(3), "expected");
    }

    /// To the letter, for the schema prescribes the order.
    void writesTheDocument()
    {
        ExportRoute route;
        addRecording(route, {{.time = start + 500ms, .speed = ""}, {.time = start + 20s, .speed = "", .course = ""}},
                     ConstClass::DCF_EVENTNAME_PARKING);
        NMEAData undated{QString()};
        undated.parseNMEALinesWithLines(u"$GPRMC,,A,3500.0000,N,13900.0000,E,1.0,2.0,,,,A*00"_s);
        route.add(*undated.snapshot(), ConstClass::DCF_EVENTNAME_EVENT);
        QString text = QString::fromUtf8(GpxDocument::text(route));
        text.remove(
            QRegularExpression(u" xsi:schemaLocation=\"[^\"]*\"|\n *| l..=\"[\\d.]*\"|<name>[^<]*\\d[^<]*</name>"_s));
        QCOMPARE(text,
                 u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><gpx version=\"1.1\" creator=\"Cardreel\" "
                 "xmlns=\"http://www.topografix.com/GPX/1/1\" "
                 "xmlns:gpxtpx=\"http://www.garmin.com/xmlschemas/TrackPointExtension/v2\" "
                 "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">"
                 "<wpt><time>2025-06-14T12:00:00.500Z</time><name>PARKING RECORD</name></wpt>"
                 "<wpt><name>EVENT RECORD</name></wpt>"
                 "<trk><trkseg><trkpt><time>2025-06-14T12:00:00.500Z</time><extensions><gpxtpx:TrackPointExtension>"
                 "<gpxtpx:course>0.00</gpxtpx:course></gpxtpx:TrackPointExtension></extensions></trkpt></trkseg>"
                 "<trkseg><trkpt><time>2025-06-14T12:00:20Z</time></trkpt><trkpt><extensions>"
                 "<gpxtpx:TrackPointExtension><gpxtpx:speed>0.514</gpxtpx:speed><gpxtpx:course>2.00</gpxtpx:course>"
                 "</gpxtpx:TrackPointExtension></extensions></trkpt></trkseg></trk></gpx>"_s);
    }
};

QTEST_GUILESS_MAIN(GpxDocumentTest)
#include "GpxDocumentTest.moc"
