#include "settings/SettingFields.h"
#include "settings/SettingTransformers.h"
#include "settings/TimeZoneConverter.h"
#include "settings/UnitSettingViewModel.h"
#include "support/CardBuilder.h"

#include <QTest>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class UnitSettingModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void factorySettingsAreRestored()
    {
        const UnitSettingViewModel fresh;
        QCOMPARE(fresh.version, u"----"_s);
        UnitSettingViewModel model;
        for (const SettingField& field : settingFields())
            field.setValue(model, field.value(model) == 0 ? 1 : 0);
        model.version = u"1.04"_s;
        model.defaultSettingWithVersion(UnitSettingViewModel::Version::Keep);
        QCOMPARE(model.version, u"1.04"_s);
        QCOMPARE(model.videoQuality, 2);
        QCOMPARE(model.recordingEndTime, 1);
        // What the factory's list doesn't name stays.
        QCOMPARE(changedSettingFields(fresh, model).size(), 5U);
        for (const auto* name : {"parkingRecordingTime", "playbackVolume", "childLock", "batteryConnect", "timeZone"}) {
            const SettingField* field = settingField(QString::fromLatin1(name));
            QVERIFY2(field && field->value(model) == 1, name);
        }
    }

    void timeZoneWithoutEntryIsUtc()
    {
        // An hour and a half, what UTC+06:00 is written as, a minute off, the least number.
        for (const int minutes : {90, 3600, 541, -32768})
            QCOMPARE(TimeZoneConverter::convertTimeDiffToTimeZoneSelection(static_cast<qint16>(minutes)), 23);
        QCOMPARE(TimeZoneConverter::convertTimeDiffToTimeZoneSelection(360), 13);
    }

    void everyZoneButOneComesBack()
    {
        const UnitSettingViewModel model;
        QCOMPARE(model.timeZoneChoises.size(), 38);
        for (int selection = 0; selection < 38; ++selection) {
            const qint16 minutes = TimeZoneConverter::convertTimeZoneSelectionToTimeDiff(selection);
            const bool isOdd = selection == 13;
            QCOMPARE(TimeZoneConverter::convertTimeDiffToTimeZoneSelection(minutes), isOdd ? 23 : selection);
            const QString text = model.timeZoneChoises.at(selection);
            const int shown = text.mid(4, 2).toInt() * 60 + text.mid(7, 2).toInt();
            QCOMPARE(isOdd ? minutes / 10 : minutes, text[3] == u'-' ? -shown : shown);
        }
        for (const int selection : {-1, 38, 1000})
            QCOMPARE(TimeZoneConverter::convertTimeZoneSelectionToTimeDiff(selection), 0);
    }

    void computersZoneIsFound()
    {
        // The suite runs in New York and in Tokyo.
        const bool isTokyo = qgetenv("TZ") == "Asia/Tokyo";
        if (!isTokyo && qgetenv("TZ") != "America/New_York")
            QSKIP("Needs one of the suite's zones.");
        QCOMPARE(TimeZoneConverter::getDefaultTimeZoneSelection(utc(2026, 1, 15, 3, 0, 0, 999)), isTokyo ? 8 : 29);
        QCOMPARE(TimeZoneConverter::getDefaultTimeZoneSelection(utc(2026, 7, 15, 23, 59, 59, 1)), isTokyo ? 8 : 28);
    }

    void valuesAreTransformed()
    {
        QStringList shown;
        for (const std::optional<int> value : {std::optional<int>(), {-1}, {0}, {1}, {2}, {4}, {5}}) {
            const QString quality = QString::number(VideoQualityValueTransformer::transformedValue(value).value_or(0));
            const int sensitivity = SensitivityTypeValueTransformer::transformedValue(value).value_or(0);
            shown += u"%1 %2 %3"_s.arg(quality, QString::number(sensitivity),
                                       VolumeValueTransformer::transformedValue(value).value_or(u"none"_s));
        }
        QCOMPARE(shown, (QStringList{u"0 0 none"_s, u"0 0 -1"_s, u"2 1 OFF"_s, u"3 2 1"_s, u"0 3 2"_s, u"0 5 4"_s,
                                     u"0 0 5"_s}));
    }

    void fieldTakesWhatIsInItsRange_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("given");
        QTest::addColumn<int>("value"); // -1: refused
        QTest::addColumn<QString>("shown");
        const auto taken = [](const char* what, const QString& name, const QString& given, int value,
                              const QString& shown) { QTest::newRow(what) << name << given << value << shown; };
        QTest::newRow("beyond every number") << u"sensitivityMovie"_s << u"99999999999"_s << -1 << QString();
        QTest::newRow("what can only be seen") << u"version"_s << u"0"_s << -1 << QString();
        taken("switch by word", u"overwriteSaveEvent"_s, u"False"_s, 0, u"OFF"_s);
        taken("choice by number", u"parkingRecordingTime"_s, u"3"_s, 3, u"1分間"_s);
        taken("choice by its text", u"timeZone"_s, u"utc-12:00"_s, 37, u"UTC-12:00"_s);
        taken("sensitivity", u"sensitivityParking"_s, u"4"_s, 4, u"5"_s);
        taken("volume", u"notificationVolume"_s, u"0"_s, 0, u"OFF"_s);
    }

    void fieldTakesWhatIsInItsRange()
    {
        QFETCH(QString, name);
        QFETCH(QString, given);
        QFETCH(int, value);
        QFETCH(QString, shown);
        const SettingField* field = settingField(name);
        QVERIFY(field);
        UnitSettingViewModel model;
        QCOMPARE(field->valueFromText(model, given).value_or(-1), value);
        QVERIFY(!field->setValue(model, -1));
        QVERIFY(!field->setValue(model, field->highestValue(model) + 1));
        QVERIFY(model == UnitSettingViewModel());
        QCOMPARE(field->setValue(model, value), value >= 0);
        if (value >= 0)
            QCOMPARE(field->text(model), std::optional(shown));
    }
};

QTEST_GUILESS_MAIN(UnitSettingModelTest)
#include "UnitSettingModelTest.moc"
