#include "telemetry/DriveSupportData.h"

#include "names/ConstClass.h"

#include <QTest>

#include <string>
#include <vector>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

/// A sentence of so many fields, some of them given as "index=text".
DriveSupportData sentence(std::size_t count, const QStringList& given)
{
    std::vector<std::string> fields(count);
    fields.at(0) = "$QVDSA";
    for (const QString& field : given)
        fields.at(field.section(u'=', 0, 0).toUInt()) = field.section(u'=', 1).toStdString();
    const std::vector<std::string_view> views(fields.begin(), fields.end());
    return DriveSupportData(views);
}

/// A record of the external unit with flags by the letters of its warnings; "l" is the long drive, "dL" a departure to
/// the left. Every position is the flag's place in the list, from 1.
DriveSupportData externalRecord(const QStringList& flags)
{
    DriveSupportData data;
    data.QVDSAType = ConstClass::QVDSA_TYPE_STRIX;
    double position = 0;
    for (const QString& flag : flags) {
        position += 1;
        const auto set = [&](QString& text, double& at) {
            text = flag;
            at = position;
        };
        if (flag == u"M") {
            set(data.delayStart, data.delayStartPosition);
        } else if (flag == u"dL" || flag == u"dR") {
            data.laneDepartureDirection = flag.sliced(1);
            data.laneDeparturePosition = position;
        } else if (flag == u"F") {
            set(data.collisionDetect, data.collisionDetectPosition);
        } else if (flag == u"l") {
            set(data.longRunningStart, data.longRunningStartPosition);
            data.longRunningStart = u"L"_s;
        } else if (flag == u"W") {
            set(data.wobbleStart, data.wobbleStartPosition);
        } else if (flag == u"A") {
            set(data.rapidAccelerationStart, data.rapidAccelerationStartPosition);
        } else if (flag == u"D") {
            set(data.rapidDecelerationStart, data.rapidDecelerationStartPosition);
        } else if (flag == u"G") {
            set(data.reverseRunStart, data.reverseRunStartPosition);
        } else if (flag == u"V") {
            set(data.viorationOfSignsStart, data.viorationOfSignsStartPosition);
        } else if (flag == u"PE") {
            set(data.pedestrianCollisionWarningStart, data.pedestrianCollisionWarningStartPosition);
        } else if (flag == u"HL") {
            set(data.abruptHandleLeftStart, data.abruptHandleLeftStartPosition);
        } else if (flag == u"HR") {
            set(data.abruptHandleRightStart, data.abruptHandleRightStartPosition);
        } else {
            qFatal("no such flag");
        }
    }
    return data;
}

} // namespace

class DriveSupportDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodesTheRecordersOwnUnit();
    void leavesOtherLengthsUndecoded_data();
    void leavesOtherLengthsUndecoded();
    void showsTheRecordersOwnUnit_data();
    void showsTheRecordersOwnUnit();
    void showsTheExternalUnit_data();
    void showsTheExternalUnit();
};

void DriveSupportDataTest::decodesTheRecordersOwnUnit()
{
    const DriveSupportData data = sentence(17, {u"1=12"_s, u"2=1"_s, u"3=4.5"_s, u"4=2"_s, u"5=R"_s, u"6=abc"_s,
                                                u"7=衝"_s, u"8=30.25"_s, u"9=1e1"_s, u"10=7"_s, u"16=A*00"_s});
    QCOMPARE(data.QVDSAType, u"QVDSA_TYPE_QVCAM"_s);
    QCOMPARE(data.delayStartPosition, 12);
    QCOMPARE(data.delayStart, u"1"_s);
    QCOMPARE(data.laneDeparturePosition, 4.5);
    QCOMPARE(data.laneDepartureLebel, u"2"_s);
    QCOMPARE(data.laneDepartureDirection, u"R"_s);
    QCOMPARE(data.collisionDetectPosition, 0);
    QCOMPARE(data.collisionDetect, u"衝"_s);
    QCOMPARE(data.collisionDetectDistance, 30.25);
    QCOMPARE(data.collisionDetectPreTime, 10);
}

void DriveSupportDataTest::leavesOtherLengthsUndecoded_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("one short") << 16;
    QTest::newRow("one more") << 18;
    QTest::newRow("external unit") << 28;
}

void DriveSupportDataTest::leavesOtherLengthsUndecoded()
{
    QFETCH(int, count);
    const DriveSupportData data =
        sentence(static_cast<std::size_t>(count), {u"1=1"_s, u"2=M"_s, u"5=L"_s, u"7=F"_s, u"8=3"_s, u"15=1"_s});
    QVERIFY(data == DriveSupportData());
    QCOMPARE(data.QVDSAType, u"QVDSA_TYPE_UNKNOWN"_s);
    QCOMPARE(data.appearanceImageName(), QString());
    QCOMPARE(data.appearanceColor().alpha(), 0);
    QVERIFY(data.appearanceLineInfos().empty());
    QCOMPARE(data.appearanceEventName(), QString());
}

void DriveSupportDataTest::showsTheRecordersOwnUnit_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("image");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QList<double>>("positions");
    QTest::addColumn<QString>("text");
    const QColor none(Qt::transparent);
    QTest::newRow("silent") << QStringList{u"1=3"_s, u"3=4"_s, u"5=L"_s, u"6=5"_s} << u""_s << none << QList<double>{}
                            << u""_s;
    QTest::newRow("start delay") << QStringList{u"1=12"_s, u"2=1"_s} << u"adas_start_delay"_s << QColor(5, 248, 209)
                                 << QList<double>{12} << u"発進遅れ"_s;
    QTest::newRow("lane, left") << QStringList{u"3=4"_s, u"4=1"_s, u"5=L"_s} << u"adas_lane_departure"_s
                                << QColor(255, 198, 0) << QList<double>{4} << u"左車線注意"_s;
    QTest::newRow("lane, right") << QStringList{u"3=4"_s, u"4=2"_s, u"5=R"_s} << u"adas_lane_departure"_s
                                 << QColor(255, 198, 0) << QList<double>{4} << u"左車線注意"_s;
    QTest::newRow("lane without a side keeps the text")
        << QStringList{u"1=1"_s, u"2=1"_s, u"3=4"_s, u"4=2"_s} << u"adas_lane_departure"_s << QColor(255, 198, 0)
        << QList<double>{1, 4} << u"発進遅れ"_s;
    QTest::newRow("collision beats all") << QStringList{u"1=1"_s, u"2=1"_s, u"3=4"_s, u"4=2"_s,
                                                        u"5=L"_s, u"6=6"_s, u"7=9"_s}
                                         << u"adas_forward_collision"_s << QColor(255, 0, 0) << QList<double>{1, 4, 6}
                                         << u"前方衝突注意"_s;
}

void DriveSupportDataTest::showsTheRecordersOwnUnit()
{
    QFETCH(QStringList, fields);
    QFETCH(QList<double>, positions);
    const DriveSupportData data = sentence(17, fields);
    QTEST(data.appearanceImageName(), "image");
    QTEST(data.appearanceColor(), "color");
    QTEST(data.appearanceEventName(), "text");
    QList<double> shown;
    for (const ADASLineData& line : data.appearanceLineInfos()) {
        shown.append(line.position);
        const QColor expected = line.position == data.collisionDetectPosition ? adasForwardCollisionColor
                                : line.position == data.laneDeparturePosition ? adasLaneDepartureColor
                                                                              : adasDelayColor;
        QCOMPARE(line.color, expected);
    }
    QCOMPARE(shown, positions);
}

void DriveSupportDataTest::showsTheExternalUnit_data()
{
    QTest::addColumn<QStringList>("flags");
    QTest::addColumn<QString>("image");
    QTest::addColumn<QList<double>>("positions");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QStringList& flags, const QString& image,
                        const QList<double>& positions,
                        const QString& text) { QTest::newRow(name) << flags << image << positions << text; };
    row("silent", {}, u""_s, {}, u""_s);
    row("start delay has no marker", {u"M"_s}, u"adas_strix_start_delay"_s, {}, u"発進遅れ,"_s);
    row("lane, left", {u"dL"_s}, u"adas_strix_lane_departure"_s, {1}, u"左車線注意,"_s);
    row("lane, right", {u"dR"_s}, u"adas_strix_lane_departure"_s, {1}, u"右車線注意,"_s);
    row("collision", {u"F"_s}, u"adas_strix_forward_collision"_s, {1}, u"衝突注意,"_s);
    row("long drive", {u"l"_s}, u"adas_strix_longrunning"_s, {1}, u"長時間走行注意,"_s);
    row("weaving", {u"W"_s}, u"adas_strix_wobble"_s, {1}, u"ふらつき注意,"_s);
    row("acceleration", {u"A"_s}, u"adas_strix_speedup"_s, {1}, u"急加速注意,"_s);
    row("deceleration", {u"D"_s}, u"adas_strix_speeddown"_s, {1}, u"急減速注意,"_s);
    row("wrong way", {u"G"_s}, u"adas_strix_reverse"_s, {1}, u"逆走,"_s);
    row("stop sign", {u"V"_s}, u"adas_strix_vioration"_s, {1}, u"一時停止注意,"_s);
    row("pedestrian", {u"PE"_s}, u"adas_strix_pedcollision"_s, {1}, u"歩行者衝突注意,"_s);
    row("steering left", {u"HL"_s}, u"adas_strix_handle"_s, {1}, u"急ハンドル注意,"_s);
    row("steering both ways: two markers, one text", {u"HR"_s, u"HL"_s}, u"adas_strix_handle"_s, {2, 1},
        u"急ハンドル注意,"_s);
    // Each row adds the next in rank; the icon is always the newcomer's.
    row("weaving beats the long drive", {u"M"_s, u"l"_s, u"W"_s}, u"adas_strix_wobble"_s, {2, 3},
        u"発進遅れ,長時間走行注意,ふらつき注意,"_s);
    row("sign beats weaving", {u"W"_s, u"V"_s}, u"adas_strix_vioration"_s, {1, 2}, u"ふらつき注意,一時停止注意,"_s);
    row("pedestrian beats the sign", {u"V"_s, u"PE"_s}, u"adas_strix_pedcollision"_s, {1, 2},
        u"一時停止注意,歩行者衝突注意,"_s);
    row("steering beats the pedestrian", {u"PE"_s, u"HR"_s}, u"adas_strix_handle"_s, {1, 2},
        u"歩行者衝突注意,急ハンドル注意,"_s);
    row("acceleration beats steering", {u"HL"_s, u"A"_s}, u"adas_strix_speedup"_s, {2, 1},
        u"急加速注意,急ハンドル注意,"_s);
    row("deceleration beats acceleration", {u"A"_s, u"D"_s}, u"adas_strix_speeddown"_s, {1, 2},
        u"急加速注意,急減速注意,"_s);
    row("collision beats deceleration", {u"D"_s, u"F"_s}, u"adas_strix_forward_collision"_s, {2, 1},
        u"衝突注意,急減速注意,"_s);
    row("lane beats collision", {u"F"_s, u"dR"_s}, u"adas_strix_lane_departure"_s, {2, 1}, u"右車線注意,衝突注意,"_s);
    row("wrong way beats all",
        {u"M"_s, u"dL"_s, u"F"_s, u"l"_s, u"W"_s, u"A"_s, u"D"_s, u"G"_s, u"V"_s, u"PE"_s, u"HL"_s, u"HR"_s},
        u"adas_strix_reverse"_s, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
        u"発進遅れ,左車線注意,衝突注意,長時間走行注意,ふらつき注意,急加速注意,急減速注意,逆走,一時停止注意,歩行者衝突注意,急ハンドル注意,"_s);
}

void DriveSupportDataTest::showsTheExternalUnit()
{
    QFETCH(QStringList, flags);
    QFETCH(QList<double>, positions);
    const DriveSupportData data = externalRecord(flags);
    QTEST(data.appearanceImageName(), "image");
    QTEST(data.appearanceEventName(), "text");
    QCOMPARE(data.appearanceColor(), QColor(238, 123, 72));
    QList<double> shown;
    for (const ADASLineData& line : data.appearanceLineInfos()) {
        shown.append(line.position);
        QCOMPARE(line.color, QColor(238, 123, 72));
    }
    QCOMPARE(shown, positions);
}

QTEST_GUILESS_MAIN(DriveSupportDataTest)
#include "DriveSupportDataTest.moc"
