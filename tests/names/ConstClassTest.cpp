#include "names/ConstClass.h"

#include "platform/text/Pattern.h"

#include <QTest>

using namespace cardreel;
using namespace Qt::StringLiterals;

class ConstClassTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void patternsTellNames_data();
    void patternsTellNames();
    void composedPatternsAreSpelledInFull();
};

void ConstClassTest::patternsTellNames_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");

    const QString video = ConstClass::REG_LM90_FILE_VIDEO;
    const QString picture = ConstClass::REG_LM90_FILE_PIC;
    const auto row = [](const char* what, const QString& pattern, const QString& name, bool matches) {
        QTest::newRow(what) << pattern << name << matches;
    };
    row("day 32", video, u"200132123456.MP4"_s, false);
    row("month 13", video, u"201301123456.MP4"_s, false);
    row("month 00", video, u"200001123456.MP4"_s, false);
    row("hour 24", video, u"200101243456.MP4"_s, false);
    row("second 60", video, u"200101123460.MP4"_s, false);
    row("eleven digits", video, u"20010112345.MP4"_s, false);
    row("thirteen digits", video, u"2001011234567.MP4"_s, false);
    row("mixed case extension", video, u"200101123456.Mp4"_s, false);
    row("something behind", video, u"200101123456.MP4.part"_s, false);
    row("a picture is no video", video, u"200101123456.JPG"_s, false);
    row("a video is no picture", picture, u"200101123456.MP4"_s, false);
    row("long folder name", ConstClass::REG_LM90_FOLDER, u"NORMAL2"_s, false);
    row("small letters", ConstClass::REG_LM90_FOLDER, u"normal"_s, false);
    row("rear in the recorder layout", ConstClass::REG_LM90_FOLDER, u"REAR"_s, false);
    row("system is not walked", ConstClass::REG_ALTER_FOLDER, u"SYSTEM"_s, false);
    row("file number 0", ConstClass::REG_DCF_FILE, u"ABCD0000"_s, false);
    row("folder number 99", ConstClass::REG_DCF_FOLDER, u"099ABCDE"_s, false);

    row("upper case video", video, u"200101123456.MP4"_s, true);
    row("lower case video", video, u"200101123456.mp4"_s, true);
    row("mov", video, u"991231235959.mov"_s, true);
    row("one character before the extension, whichever", video, u"200101123456_MP4"_s, true);
    row("picture", picture, u"200101123456.jpg"_s, true);
    row("normal", ConstClass::REG_LM90_FOLDER, u"NORMAL"_s, true);
    row("rear", ConstClass::REG_ALTER_FOLDER, u"REAR"_s, true);
    row("DCF folder", ConstClass::REG_DCF_FOLDER, u"100ABCDE"_s, true);
    row("DCF file 9", ConstClass::REG_DCF_FILE, u"ABCD0009"_s, true);
    row("DCF file 10", ConstClass::REG_DCF_FILE, u"ABCD0010"_s, true);
    row("DCF file 9999", ConstClass::REG_DCF_FILE, u"ABCD9999"_s, true);
}

void ConstClassTest::patternsTellNames()
{
    QFETCH(QString, pattern);
    QFETCH(QString, name);
    QTEST(Pattern(pattern).matchesWhole(name), "matches");
}

void ConstClassTest::composedPatternsAreSpelledInFull()
{
    QCOMPARE(ConstClass::REG_LM90_FILE_VIDEO,
             u"([\\d][\\d])(0[1-9]|1[0-2])(0[1-9]|[1-2][\\d]|3[0-1])([0-1][\\d]|2[0-3])([0-5][\\d])([0-5][\\d])"
             u".(mp4|MP4|mov|MOV)"_s);
    QCOMPARE(ConstClass::REG_DCF_FILE_PIC,
             u".{4}((000[1-9])|((00[1-9][\\d]))|(0[1-9][\\d][\\d])|([1-9][\\d][\\d][\\d]))/.(jpg|JPG)"_s);
}

QTEST_GUILESS_MAIN(ConstClassTest)
#include "ConstClassTest.moc"
