#include "sample-card/SideFile.h"

#include <QTimeZone>

#include <algorithm>
#include <cmath>

namespace cardreel {

namespace {

constexpr double METRES_PER_SECOND_PER_KNOT = 0.5144;
constexpr auto FIRMWARE = "1.04";
// The sentence of the recorder's own warning unit and of an external one, by fields with the tag.
constexpr int OWN_UNIT_FIELDS = 17;
constexpr int EXTERNAL_UNIT_FIELDS = 28;
// A warning's position counts tenths of a second; this one is the fix's own moment.
constexpr int POSITION_OF_FIX = 5;

// Degrees and minutes run together, as receivers write them: 35.6777 with two places of degrees is 3540.6620.
QByteArray degreesAndMinutes(double degrees, int degreePlaces)
{
    const auto tenThousandths = static_cast<qint64>(std::llround(std::abs(degrees) * 60 * 10'000));
    const qint64 whole = tenThousandths / 600'000;
    const qint64 minutes = tenThousandths % 600'000;
    return QByteArray::number(whole).rightJustified(degreePlaces, '0') +
           QByteArray::number(minutes / 10'000).rightJustified(2, '0') + '.' +
           QByteArray::number(minutes % 10'000).rightJustified(4, '0');
}

QByteArray twoDigits(int value)
{
    return QByteArray::number(value % 100).rightJustified(2, '0');
}

void appendChecked(QByteArray& text, const QByteArray& sentence)
{
    unsigned char sum = 0;
    for (const char character : sentence.mid(1))
        sum = static_cast<unsigned char>(sum ^ static_cast<unsigned char>(character));
    text += sentence + '*' + QByteArray::number(sum, 16).rightJustified(2, '0').toUpper() + "\r\n";
}

// What the recorder's own unit has to say about one second: nothing in most of them.
QByteArray ownUnitSentence(const std::vector<DriveWarning>& warnings, int second, int lastSecond)
{
    QList<QByteArray> fields(OWN_UNIT_FIELDS);
    fields[0] = "$QVDSA";
    for (const DriveWarning& warning : warnings) {
        if (std::min(lastSecond, static_cast<int>(std::lround(warning.time))) != second)
            continue;
        const auto tenths = std::lround((warning.time - second) * 10);
        const QByteArray position = QByteArray::number(std::clamp<qint64>(POSITION_OF_FIX + tenths, 0, 10));
        switch (warning.kind) {
        case WarningKind::StartDelay:
            fields[1] = position;
            fields[2] = "1";
            break;
        case WarningKind::LaneDepartureLeft:
        case WarningKind::LaneDepartureRight:
            fields[3] = position;
            fields[4] = "2";
            fields[5] = warning.kind == WarningKind::LaneDepartureLeft ? "L" : "R";
            break;
        case WarningKind::ForwardCollision:
            fields[6] = position;
            fields[7] = "1";
            fields[8] = QByteArray::number(warning.distance, 'f', 1);
            fields[9] = QByteArray::number(warning.preTime, 'f', 1);
            break;
        case WarningKind::External:
            break;
        }
    }
    return fields.join(',') + "\r\n";
}

// An external unit reports the braking too, in its longer sentence.
QByteArray externalUnitSentence()
{
    QList<QByteArray> fields(EXTERNAL_UNIT_FIELDS);
    fields[0] = "$QVDSA";
    fields[15] = QByteArray::number(POSITION_OF_FIX);
    fields[16] = "D";
    return fields.join(',') + "\r\n";
}

} // namespace

QByteArray tripSentence(const QByteArray& tripID)
{
    return "$GTRIP," + tripID + ',' + FIRMWARE + "\r\n";
}

void appendFix(QByteArray& text, const DriveState& state, const QDateTime& time)
{
    const QDateTime utc = time.toUTC();
    const QByteArray clock =
        twoDigits(utc.time().hour()) + twoDigits(utc.time().minute()) + twoDigits(utc.time().second()) + ".00";
    const QByteArray date = twoDigits(utc.date().day()) + twoDigits(utc.date().month()) + twoDigits(utc.date().year());
    if (state.inTunnel) {
        appendChecked(text, "$GPRMC," + clock + ",V,,,,,,," + date + ",,,N");
        return;
    }
    // Below walking pace a receiver has no course.
    const QByteArray course =
        state.speed < 0.3F ? QByteArray() : QByteArray::number(static_cast<double>(state.course), 'f', 1);
    appendChecked(text, "$GPRMC," + clock + ",A," + degreesAndMinutes(state.latitude, 2) + ',' +
                            (state.latitude < 0 ? 'S' : 'N') + ',' + degreesAndMinutes(state.longitude, 3) + ',' +
                            (state.longitude < 0 ? 'W' : 'E') + ',' +
                            QByteArray::number(static_cast<double>(state.speed) / METRES_PER_SECOND_PER_KNOT, 'f', 2) +
                            ',' + course + ',' + date + ",,,A");
}

void appendSample(QByteArray& text, const DriveState& state)
{
    text += "$GSENS,";
    text += QByteArray::number(static_cast<double>(state.gx), 'f', 4);
    text += ',';
    text += QByteArray::number(static_cast<double>(state.gy), 'f', 4);
    text += ',';
    text += QByteArray::number(static_cast<double>(state.gz), 'f', 4);
    text += "\r\n";
}

QByteArray sideFile(const DriveLog& log, const QByteArray& tripID, const QDateTime& start, int seconds)
{
    QByteArray text = tripSentence(tripID);
    text.reserve(qsizetype{seconds} * 420);
    for (int second = 0; second < seconds; ++second) {
        const auto first = static_cast<std::size_t>(second) * SAMPLES_PER_SECOND;
        appendFix(text, log.states.at(first), start.addSecs(second));
        for (std::size_t sample = first; sample < first + SAMPLES_PER_SECOND; ++sample)
            appendSample(text, log.states.at(sample));
        text += ownUnitSentence(log.warnings, second, seconds - 1);
        for (const DriveWarning& warning : log.warnings)
            if (warning.kind == WarningKind::External && static_cast<int>(warning.time) == second)
                text += externalUnitSentence();
    }
    return text;
}

} // namespace cardreel
