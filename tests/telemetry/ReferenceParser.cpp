#include "ReferenceParser.h"

#include "platform/text/DateText.h"
#include "telemetry/Telemetry.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

struct Fix
{
    double latitude = -999;
    double longitude = -999;
    double course = -1;
    double speed = -1;
    qint64 milliseconds = 0;
    double correctedSpeed = 0;
    double correctedDirection = 0;
    bool isValid = false;
};

/// In hexadecimal, which shows every bit.
template<typename... Numbers>
QByteArray exactly(Numbers... numbers)
{
    QByteArray text;
    for (const double number : {numbers...}) {
        std::array<char, 64> one{};
        std::snprintf(one.data(), one.size(), "%a ", number);
        text += one.data();
    }
    return text + '\n';
}

QByteArray line(const Fix& fix)
{
    return QByteArray::number(fix.milliseconds) + ' ' +
           exactly(fix.latitude, fix.longitude, fix.course, fix.speed, fix.correctedSpeed, fix.correctedDirection);
}

QByteArray line(const CustomLocation& location)
{
    return line(Fix{location.latitude, location.longitude, location.course, location.speed,
                    location.timestamp.time_since_epoch().count(), location.correctedSpeed,
                    location.correctedDirection});
}

QByteArray line(const QStringList& support)
{
    return support.join(u'|').toUtf8() + '\n';
}

QStringList texts(const DriveSupportData& data)
{
    if (data.QVDSAType == u"QVDSA_TYPE_UNKNOWN")
        return {};
    return {QString::number(data.delayStartPosition),
            data.delayStart,
            QString::number(data.laneDeparturePosition),
            data.laneDepartureLebel,
            data.laneDepartureDirection,
            QString::number(data.collisionDetectPosition),
            data.collisionDetect,
            QString::number(data.collisionDetectDistance),
            QString::number(data.collisionDetectPreTime)};
}

std::optional<double> number(const QString& text)
{
    static const QRegularExpression pattern(u"\\A[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?\\z"_s);
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && pattern.match(text).hasMatch() ? std::optional(value) : std::nullopt;
}

double degreesOf(const QString& text, const QString& hemisphere)
{
    const std::optional<double> value = number(text);
    const double sign = hemisphere == u"N" || hemisphere == u"E"   ? 1
                        : hemisphere == u"S" || hemisphere == u"W" ? -1
                                                                   : 0;
    if (!value || sign == 0)
        return -999;
    const double whole = std::trunc(*value / 100);
    return sign * (whole + (*value - 100 * whole) / 60);
}

class Reference
{
public:
    QByteArray run(const QString& text, qsizetype longestSentence)
    {
        static const QRegularExpression lineEnds(u"[\\n\\r\\x{85}\\x{2028}\\x{2029}]"_s);
        if (!text.isEmpty()) {
            for (const QString& piece : text.split(u"$GPRMC"_s)) {
                m_group = "group\n";
                m_groupSamples.clear();
                m_groupFix = Fix();
                const bool tagCutOff = !piece.startsWith(u'$');
                QStringList lines = piece.split(lineEnds);
                for (qsizetype i = 0; i < lines.size(); ++i) {
                    if (lines[i].toUtf8().size() <= longestSentence)
                        parse((i == 0 && tagCutOff ? u"$GPRMC"_s : QString()) + lines[i]);
                }
                m_groups += m_group + line(m_groupFix) + m_groupSamples;
            }
        }
        QByteArray total;
        QByteArray valid;
        for (const Fix& fix : m_fixes) {
            total += line(fix);
            valid += fix.isValid ? line(fix) : QByteArray();
        }
        return m_trip.toUtf8() + '\n' + m_version.toUtf8() + '\n' + exactly(m_maxSpeed, m_maxMotion) +
               line(m_lastSpeed) + line(m_lastCourse) + "total\n" + total + "valid\n" + valid + "samples\n" +
               m_samples + "supports\n" + m_supports + m_groups;
    }

private:
    void parse(const QString& sentence)
    {
        static const QRegularExpression around(u"\\A[ \\t]+|[ \\t]+\\z"_s);
        QStringList fields = sentence.split(u',');
        for (QString& field : fields)
            field.remove(around);
        if (fields[0] == u"$GTRIP" && (fields.size() == 2 || fields.size() == 3)) {
            m_trip = fields[1];
            m_version = fields.size() == 3 ? fields[2] : m_version;
        } else if (fields[0] == u"$GPRMC" && fields.size() == 13 && (fields[2] == u"A" || fields[2] == u"V")) {
            parseFix(fields);
        } else if (fields[0] == u"$GSENS") {
            const bool counts = fields.size() == 4;
            const double x = counts ? number(fields[1]).value_or(0) : 0;
            const double y = counts ? number(fields[2]).value_or(0) : 0;
            const double z = counts ? number(fields[3]).value_or(0) : 0;
            m_maxMotion = std::max({m_maxMotion, std::abs(x), std::abs(y), std::abs(z)});
            m_samples += exactly(x, y, z);
            m_groupSamples += exactly(x, y, z);
        } else if (fields[0] == u"$QVDSA" && (fields.size() == 17 || fields.size() == 28)) {
            QStringList record;
            if (fields.size() == 17) {
                record = fields.sliced(1, 9);
                for (const qsizetype i : {0, 2, 5, 7, 8})
                    record[i] = QString::number(number(record[i]).value_or(0));
            }
            m_supports += line(record);
            m_group += line(record);
        }
    }

    void parseFix(const QStringList& fields)
    {
        static const DateText dates = DateText::patterned(u"ddMMyy HHmmss.SS"_s, u"ja_JP"_s, TimeZone::Utc);
        Fix fix;
        fix.isValid = fields[2] == u"A";
        if (fix.isValid) {
            fix.latitude = degreesOf(fields[3], fields[4]);
            fix.longitude = degreesOf(fields[5], fields[6]);
            fix.course = number(fields[8]).value_or(-1);
            const std::optional<double> knots = number(fields[7]);
            fix.speed = knots ? *knots * 0.5144 : -1;
            m_maxSpeed = std::max(m_maxSpeed, fix.speed);
        }
        fix.milliseconds = dates.instant(fields[9] + u' ' + fields[1]).value_or(Instant()).time_since_epoch().count();
        if (fix.speed == -1 && fix.milliseconds - m_lastSpeed.milliseconds < 15'000)
            fix.correctedSpeed = m_lastSpeed.speed;
        if (fix.speed != -1)
            m_lastSpeed = fix;
        if (fix.course == -1)
            fix.correctedDirection = m_lastCourse.course;
        else
            m_lastCourse = fix;
        m_groupFix = fix;
        m_fixes.push_back(fix);
    }

    QString m_trip;
    QString m_version;
    double m_maxSpeed = 0;
    double m_maxMotion = 0;
    Fix m_lastSpeed;
    Fix m_lastCourse;
    std::vector<Fix> m_fixes;
    QByteArray m_samples;
    QByteArray m_supports;
    QByteArray m_groups;
    QByteArray m_group;
    QByteArray m_groupSamples;
    Fix m_groupFix;
};

} // namespace

QByteArray described(const Telemetry& telemetry)
{
    QByteArray text = telemetry.tripID().toUtf8() + '\n' + telemetry.version().toUtf8() + '\n' +
                      exactly(telemetry.maxSpeed(), telemetry.maxMotionABS()) +
                      line(telemetry.lastValidSpeedLocation()) + line(telemetry.lastValidHeadingLocation()) + "total\n";
    for (const CustomLocation& location : telemetry.totalLocations())
        text += line(location);
    text += "valid\n";
    for (const CustomLocation& location : telemetry.varidLocations())
        text += line(location);
    text += "samples\n";
    for (const MotionData& sample : telemetry.motions())
        text += exactly(sample.gx, sample.gy, sample.gz);
    text += "supports\n";
    for (const DriveSupportData& data : telemetry.driveSupports())
        text += line(texts(data));
    for (const GOPData& group : telemetry.GOPs()) {
        text += "group\n";
        for (const DriveSupportData& data : group.driveSupportInfos())
            text += line(texts(data));
        text += line(group.location());
        for (const MotionData& sample : group.motions())
            text += exactly(sample.gx, sample.gy, sample.gz);
    }
    return text;
}

QByteArray expectedDescription(const QByteArray& text, qsizetype longestSentence)
{
    if (!QUtf8StringView(text).isValidUtf8())
        return {};
    // fromUtf8 leaves out the byte order mark.
    return Reference().run(QString::fromUtf8(text), longestSentence);
}

} // namespace cardreel
