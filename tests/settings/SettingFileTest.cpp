#include "settings/BinaryReader.h"
#include "settings/SettingFileBuilder.h"
#include "settings/SettingFileParser.h"
#include "settings/SettingRecords.h"
#include "support/CardBuilder.h"

#include <QDate>
#include <QTest>

#include <array>
#include <ctime>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

namespace {

QByteArray hex(const char* digits)
{
    return QByteArray::fromHex(digits);
}

QByteArray zeros(qsizetype count)
{
    return QByteArray(count, '\0');
}

// The head of numberedRecord() as written, without its model and with the given checksum.
QByteArray writtenHead(const char* model, const char* checksum)
{
    return hex("A1B2C3D4") + hex(model) + hex("03 1A0719 10053B 3C 07") + hex(checksum) +
           hex("01 02 03 04 05 06 07 08 09 0A 0B");
}

qsizetype readLength(quint16 modelID)
{
    if (!SettingModel::isKnown(modelID))
        return 27;
    return modelID == SettingModel::model0D00 ? 256 : 2304;
}

} // namespace

class SettingFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readerStopsAtTheEnd()
    {
        BinaryReader reader("abc");
        std::array<quint8, 4> buffer{9, 9, 9, 9};
        QCOMPARE(reader.readWithBuffer(nullptr, 4, 1), -1);
        QCOMPARE(reader.readWithBuffer(buffer.data(), 2, 3), -1);
        QCOMPARE(reader.readWithBuffer(buffer.data(), 4, -1), -1);
        QCOMPARE(buffer[3], 9);
        QVERIFY(!reader.seek(3));
        QVERIFY(!reader.seek(-1));
        QVERIFY(reader.seek(1));
        QVERIFY(reader.canReadBytes(2));
        QVERIFY(!reader.canReadBytes(3));
        QCOMPARE(reader.readWithBuffer(buffer.data(), 4, 3), 2);
        QCOMPARE(buffer, (std::array<quint8, 4>{'b', 'c', 0, 0}));
        quint8 byte = 9;
        QVERIFY(!reader.readByte(byte));
        QCOMPARE(byte, 0);
        QCOMPARE(reader.position(), 3);
    }

    void recordIsWritten_data()
    {
        QTest::addColumn<SettingFileInfo>("info");
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray blocks = QByteArray(124, 'r') + QByteArray(2048, 'd');

        // The checksums are reckoned by hand: the settings of the head cancel each other out, and of 0D00 the last byte
        // isn't counted.
        QTest::newRow("unknown model: the head with the checksum held")
            << numberedRecord(0x0E01) << writtenHead("0E01", "99");
        QTest::newRow("0D00") << numberedRecord(0x0D00)
                              << writtenHead("0D00", "70") + hex("0C 0D 0E") + zeros(98) + "1.04" +
                                     QByteArray(28, 'r') + QByteArray(96, 'd');
        QTest::newRow("0E00: neither playback volume nor time zone")
            << numberedRecord(0x0E00)
            << writtenHead("0E00", "96") + zeros(16) + hex("FF") + zeros(84) + "1.04" + blocks;
        SettingFileInfo other = numberedRecord(0x0F00);
        other.passwordReset = 0;
        other.reserve.clear();
        other.diagnostic.reset();
        QTest::newRow("0F00: no blocks, no reset")
            << other << writtenHead("0F00", "1B") + zeros(16) + hex("00") + zeros(84) + "1.04" + zeros(124 + 2048);

        const QByteArray rest = hex("10 11 000000 FF") + zeros(84) + "1.04" + zeros(124) + QByteArray(2048, 'd');
        SettingFileInfo info = numberedRecord(0x1000);
        QTest::newRow("1000, horizontal correction on")
            << info << writtenHead("1000", "8F") + hex("000000 0F 01") + rest;
        info.horizontalCorrection = 0;
        QTest::newRow("1000, horizontal correction off") << info << writtenHead("1000", "EA") + hex("000000 0F") + rest;
        info.horizontalCorrection = 200;
        QTest::newRow("1000, a value that isn't one") << info << writtenHead("1000", "8F") + hex("000000 0F 01") + rest;
    }

    void recordIsWritten()
    {
        QFETCH(SettingFileInfo, info);
        QFETCH(QByteArray, bytes);
        QCOMPARE(fileOf(info).toHex(' '), bytes.toHex(' '));
    }

    void fileIsRead_data()
    {
        QTest::addColumn<QByteArray>("tail");
        QTest::addColumn<SettingFileInfo>("expected");

        // What the file of each model doesn't have stays at nothing.
        using Info = SettingFileInfo;
        const auto row = [](quint16 modelID, const QByteArray& tail, std::initializer_list<quint8 Info::*> absent) {
            Info info = numberedRecord(modelID);
            for (const auto field : absent)
                info.*field = 0;
            if (readLength(modelID) != 2304 || modelID == SettingModel::model1000)
                info.timeZone = 0;
            info.creationDate = utc(2019, 12, 31, 23, 59, 58);
            QTest::addRow("%04X", modelID) << tail << info;
        };
        const QByteArray blocks = "1.04" + QByteArray(124, 'r') + QByteArray(2048, 'd');
        row(0x0D00, hex("0C 0D 0E") + QByteArray(98, 'x') + "1.04" + QByteArray(28, 'r') + QByteArray(96, 'd'),
            {&Info::voiceGuidance, &Info::horizontalCorrection, &Info::parkingRecording, &Info::overwriteSaveJunction,
             &Info::passwordReset});
        for (const quint16 modelID : std::initializer_list<quint16>{0x0E00, 0x0F00})
            row(modelID, hex("0C") + "xxxxxxxxx" + hex("FDC6") + "xxxx" + hex("01") + QByteArray(84, 'x') + blocks,
                {&Info::childLock, &Info::batteryConnect, &Info::voiceGuidance, &Info::horizontalCorrection,
                 &Info::parkingRecording, &Info::overwriteSaveJunction});
        row(0x1000, "xxx" + hex("0F 01 10 11") + "xxxxxxxxx" + hex("01") + QByteArray(84, 'x') + blocks,
            {&Info::playbackVolume, &Info::childLock, &Info::batteryConnect});
    }

    void fileIsRead()
    {
        QFETCH(QByteArray, tail);
        QFETCH(SettingFileInfo, expected);
        const QByteArray model = QByteArray::number(expected.modelID, 16).rightJustified(4, '0');
        SettingFileParser parser(hex("A1B2C3D4") + hex(model) + hex("03 191231 235958 3C 07 99") +
                                 hex("01 02 03 04 05 06 07 08 09 0A 0B") + tail);
        QVERIFY(parser.parse());
        QVERIFY(parser.info() == expected);
        if (expected.modelID == SettingModel::model1000)
            return; // is written otherwise

        const QByteArray written = fileOf(expected);
        SettingFileParser again(written);
        QVERIFY(again.parse());
        expected.creationDate = utc(2020, 7, 19, 10, 5, 41); // 26-7-25 16:5:59 in binary, read as decimal digits
        expected.checksum = static_cast<quint8>(written.at(15));
        expected.passwordReset = expected.passwordReset == 0 ? 0 : 0xFF;
        expected.playbackVolume = expected.modelID == SettingModel::model0D00 ? 12 : 0;
        expected.timeZone = 0;
        QVERIFY(again.info() == expected);
    }

    void everyLengthIsReadOrRefused_data()
    {
        QTest::addColumn<quint16>("modelID");
        for (const quint16 modelID :
             std::initializer_list<quint16>{0x0000, 0x0D00, 0x0E00, 0x0F00, 0x1000, 0x0E01, 0xFFFF})
            QTest::addRow("%04X", modelID) << modelID;
    }

    void everyLengthIsReadOrRefused()
    {
        QFETCH(quint16, modelID);
        QByteArray bytes(2400, '\x01');
        bytes[4] = static_cast<char>(modelID >> 8);
        bytes[5] = static_cast<char>(modelID & 0xFF);
        for (qsizetype length = 0; length <= bytes.size(); ++length) {
            SettingFileParser parser(bytes.first(length));
            QCOMPARE(parser.parse(), length >= readLength(modelID));
            QCOMPARE(parser.info().headerID, length >= 4 ? 0x01010101U : 0U);
            QCOMPARE(parser.info().creationDate.has_value(), length >= 13);
            QCOMPARE(parser.info().notificationVolume, length >= 27 ? 1 : 0);
        }
    }

    void defaultsAreFilledIn()
    {
        SettingFileBuilder builder({}, stillClock);
        QCOMPARE(builder.build().toHex(), (hex("53455444 0000 00 1A0719 10053B 2B 0000") + zeros(11)).toHex());
        QCOMPARE(builder.info().dataEndAddress, 43);
    }

    void versionIsWrittenAsItIs_data()
    {
        QTest::addColumn<std::optional<QString>>("version");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("none") << std::optional<QString>() << QByteArray();
        QTest::newRow("empty") << std::optional(u""_s) << zeros(4);
        QTest::newRow("short: not filled up") << std::optional(u"1.0"_s) << "1.0"_ba;
        QTest::newRow("long: not cut") << std::optional(u"1.04é"_s) << "1.04\xC3\xA9"_ba;
        SettingFileParser parser("\x80z\xFF\xC3");
        QTest::newRow("no text: as read") << parser.getStringValue(4) << "\x80z\xFF\xC3"_ba;
        SettingFileParser ended("1\0x."_ba);
        QTest::newRow("a zero ends it") << ended.getStringValue(4) << "1"_ba;
    }

    void versionIsWrittenAsItIs()
    {
        QFETCH(std::optional<QString>, version);
        QFETCH(QByteArray, bytes);
        SettingFileInfo info = numberedRecord(0x0E00);
        info.version = version;
        QCOMPARE(fileOf(info).sliced(128), bytes + info.reserve + *info.diagnostic);
    }

    void dateIsReadAsDecimalDigits_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Instant>("date");
        QTest::newRow("digits above nine") << hex("1A 07 19 10 05 3B") << utc(2020, 7, 19, 10, 5, 41);
        QTest::newRow("month 13, day 32") << hex("19 13 32 00 00 00") << utc(2020, 2, 1, 0, 0);
        QTest::newRow("all zero") << zeros(6) << utc(1999, 11, 30, 0, 0);
        QTest::newRow("all FF: 165 of each") << hex("FFFFFFFFFFFF") << utc(2179, 2, 18, 23, 47, 45);
        QTest::newRow("29 February") << hex("24 02 29 23 59 60") << utc(2024, 3, 1, 0, 0);
        QTest::newRow("0 to 15 are the same in both") << hex("0F 0C 0F 0F 0F 0F") << utc(2015, 12, 15, 15, 15, 15);
    }

    void dateIsReadAsDecimalDigits()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(Instant, date);
        QCOMPARE(SettingFileParser(bytes).getDateValue(), std::optional(date));
        QVERIFY(!SettingFileParser(bytes.first(5)).getDateValue());
    }

    void clockIsTheUsersOwn()
    {
        for (const Instant instant :
             {utc(2026, 1, 1, 3, 4, 5), utc(2026, 7, 31, 23, 59, 59), utc(2255, 12, 31, 12, 0)}) {
            const std::time_t seconds = instant.time_since_epoch().count() / 1000;
            std::tm local{};
            localtime_r(&seconds, &local);
            const auto [year, month, day, hour, minute, second] = localClockReading(instant);
            QCOMPARE(QDate(year, month, day), QDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday));
            QCOMPARE(QTime(hour, minute, second), QTime(local.tm_hour, local.tm_min, local.tm_sec));
        }
    }
};

QTEST_GUILESS_MAIN(SettingFileTest)
#include "SettingFileTest.moc"
