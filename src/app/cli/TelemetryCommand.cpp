#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"
#include "app/cli/JsonOutput.h"
#include "platform/files/Files.h"
#include "telemetry/SideFileParser.h"
#include "telemetry/Telemetry.h"

#include <QCoreApplication>
#include <QDateTime>

#include <cstdio>

namespace cardreel::CommandLine {

namespace {

void writeLocations(JsonOutput& json, const Telemetry& telemetry)
{
    json.key("locations");
    json.beginArray();
    // The valid fixes are views of the total ones with the void left out, in the same order.
    auto nextValid = telemetry.varidLocations().begin();
    for (const CustomLocation& location : telemetry.totalLocations()) {
        const bool valid = nextValid != telemetry.varidLocations().end() && &*nextValid == &location;
        if (valid)
            ++nextValid;
        json.beginObject();
        json.member("valid", valid);
        json.member("latitude", location.latitude);
        json.member("longitude", location.longitude);
        json.member("speed", location.speed);
        json.member("course", location.course);
        json.member("timestamp", location.timestamp);
        json.member("correctedSpeed", location.correctedSpeed);
        json.member("correctedDirection", location.correctedDirection);
        json.endObject();
    }
    json.endArray();
}

void writeSamples(JsonOutput& json, const Telemetry& telemetry)
{
    json.key("samples");
    json.beginArray();
    for (const MotionData& motion : telemetry.motions()) {
        json.beginArray();
        json.value(motion.gx);
        json.value(motion.gy);
        json.value(motion.gz);
        json.endArray();
    }
    json.endArray();
}

void writeSupports(JsonOutput& json, const Telemetry& telemetry)
{
    json.key("supports");
    json.beginArray();
    for (const DriveSupportData& support : telemetry.driveSupports()) {
        json.beginObject();
        json.member("type", support.QVDSAType);
        json.member("image", support.appearanceImageName());
        json.member("event", support.appearanceEventName());
        json.key("lines");
        json.beginArray();
        for (const ADASLineData& line : support.appearanceLineInfos()) {
            json.beginArray();
            json.value(line.position);
            json.value(line.color.name());
            json.endArray();
        }
        json.endArray();
        json.endObject();
    }
    json.endArray();
}

void writeGroups(JsonOutput& json, const Telemetry& telemetry)
{
    json.key("gops");
    json.beginArray();
    for (const GOPData& group : telemetry.GOPs()) {
        json.beginObject();
        json.member("latitude", group.location().latitude);
        json.member("longitude", group.location().longitude);
        json.member("motions", static_cast<qint64>(group.motions().size()));
        json.member("driveSupportInfos", static_cast<qint64>(group.driveSupportInfos().size()));
        json.endObject();
    }
    json.endArray();
}

void writeJson(const Telemetry& telemetry, bool all)
{
    JsonOutput json;
    json.beginObject();
    json.member("tripID", telemetry.tripID());
    json.member("version", telemetry.version());
    json.member("GOPs", static_cast<qint64>(telemetry.GOPs().size()));
    json.member("varidLocations", static_cast<qint64>(telemetry.varidLocations().size()));
    json.member("totalLocations", static_cast<qint64>(telemetry.totalLocations().size()));
    json.member("motions", static_cast<qint64>(telemetry.motions().size()));
    json.member("driveSupports", static_cast<qint64>(telemetry.driveSupports().size()));
    json.member("maxSpeed", telemetry.maxSpeed());
    json.member("maxMotionABS", telemetry.maxMotionABS());
    if (all) {
        writeLocations(json, telemetry);
        writeSamples(json, telemetry);
        writeSupports(json, telemetry);
        writeGroups(json, telemetry);
    }
    json.endObject();
}

void printLine(const QString& name, const QString& value)
{
    std::printf("%-18s %s\n", name.toLocal8Bit().constData(), value.toLocal8Bit().constData());
}

QString text(const char* english)
{
    return QCoreApplication::translate("CommandLine", english);
}

QByteArray courseText(const CustomLocation& fix)
{
    const double course = fix.shownCourse();
    return course >= 0 ? QByteArray::number(course, 'f', 1).rightJustified(5) : QByteArray("    -");
}

void printFixes(const Telemetry& telemetry)
{
    std::puts("");
    for (const CustomLocation& fix : telemetry.totalLocations()) {
        const QByteArray time = QDateTime::fromMSecsSinceEpoch(fix.timestamp.time_since_epoch().count(), Qt::UTC)
                                    .toString(Qt::ISODateWithMs)
                                    .toLatin1();
        if (fix.isValid()) {
            std::printf("%s  %11.6f %11.6f  %6.1f %s  %s\n", time.constData(), fix.latitude, fix.longitude,
                        double(CustomLocation::speedForCurrentLocale(fix.shownSpeed())),
                        CustomLocation::unitForCurrentLocale().toLatin1().constData(), courseText(fix).constData());
        } else {
            std::printf("%s  %s\n", time.constData(),
                        text(QT_TRANSLATE_NOOP("CommandLine", "no position")).toLocal8Bit().constData());
        }
    }
    for (const DriveSupportData& support : telemetry.driveSupports()) {
        if (const QString event = support.appearanceEventName(); !event.isEmpty())
            std::printf("%s\n", event.toLocal8Bit().constData());
    }
}

void printTable(const Telemetry& telemetry, bool all)
{
    const QString speed = QStringLiteral("%1 %2")
                              .arg(double(CustomLocation::speedForCurrentLocale(telemetry.maxSpeed())), 0, 'f', 1)
                              .arg(CustomLocation::unitForCurrentLocale());
    printLine(text(QT_TRANSLATE_NOOP("CommandLine", "Trip")), telemetry.tripID());
    printLine(text(QT_TRANSLATE_NOOP("CommandLine", "Version")), telemetry.version());
    printLine(text(QT_TRANSLATE_NOOP("CommandLine", "Picture groups")), QString::number(telemetry.GOPs().size()));
    printLine(text(QT_TRANSLATE_NOOP("CommandLine", "Fixes")),
              text(QT_TRANSLATE_NOOP("CommandLine", "%1, %2 of them valid"))
                  .arg(telemetry.totalLocations().size())
                  .arg(telemetry.varidLocations().size()));
    printLine(text(QT_TRANSLATE_NOOP("CommandLine", "G samples")), QString::number(telemetry.motions().size()));
    printLine(text(QT_TRANSLATE_NOOP("CommandLine", "Warnings")), QString::number(telemetry.driveSupports().size()));
    printLine(text(QT_TRANSLATE_NOOP("CommandLine", "Highest speed")), speed);
    printLine(text(QT_TRANSLATE_NOOP("CommandLine", "Largest G")), QString::number(telemetry.maxMotionABS()));
    if (all)
        printFixes(telemetry);
}

} // namespace

int printTelemetry(const Options& options)
{
    const QString& sideFilePath = options.arguments.first();
    Telemetry telemetry;
    if (const std::optional<SideFileProblem> problem = parseSideFile(sideFilePath, telemetry)) {
        const int status = failure(sideFilePath, problem->text);
        if (problem->kind == SideFileProblem::Kind::Unreadable)
            return status;
        // As everywhere in the program, what isn't text is a side file without content.
        telemetry = Telemetry();
    }
    if (options.json)
        writeJson(telemetry, options.all);
    else
        printTable(telemetry, options.all);
    return Success;
}

} // namespace cardreel::CommandLine
