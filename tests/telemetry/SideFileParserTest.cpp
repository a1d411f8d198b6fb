#include "telemetry/SideFileParser.h"

#include "ReferenceParser.h"
#include "telemetry/Telemetry.h"

#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <random>

using namespace cardreel;
using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t LONGEST = 90; // so that texts of a test's size reach it; longer than any sentence below

/// described() of the text parsed in pieces of so many bytes; empty when the parser refuses it.
QByteArray parsed(const QByteArray& text, std::size_t chunk)
{
    SideFileLimits limits;
    limits.chunkBytes = chunk;
    limits.sentenceBytes = LONGEST;
    Telemetry telemetry;
    SideFileParser parser(telemetry, limits);
    for (qsizetype at = 0; at < text.size();) {
        const auto size = std::min<qsizetype>(text.size() - at, static_cast<qsizetype>(parser.spaceBytes()));
        std::memcpy(parser.space(), text.constData() + at, static_cast<std::size_t>(size));
        if (!parser.take(static_cast<std::size_t>(size)))
            return {};
        at += size;
    }
    return parser.finish() ? described(telemetry) : QByteArray();
}

/// What to print of two descriptions that should be the same.
QByteArray difference(const QByteArray& text, std::size_t chunk, const QByteArray& result, const QByteArray& expected)
{
    const QByteArrayList lines = result.split('\n');
    const QByteArrayList expectedLines = expected.split('\n');
    qsizetype at = 0;
    while (at < lines.size() && at < expectedLines.size() && lines[at] == expectedLines[at])
        ++at;
    return "chunks of " + QByteArray::number(static_cast<qulonglong>(chunk)) + ", line " + QByteArray::number(at) +
           ": \"" + lines.value(at) + "\", expected \"" + expectedLines.value(at) + "\", text " + text.toHex();
}

/// Whole sentences, scraps of them and everything that separates them, thrown together.
class TextMaker
{
public:
    explicit TextMaker(unsigned seed)
        : m_random(seed)
    {
    }

    QByteArray make()
    {
        QByteArray text = pick({"", "", "\xEF\xBB\xBF", "$GTRIP,77,1.0\r\n", "\r\n", " ", "\xEF\xBB"});
        for (std::size_t n = below(14); n > 0; --n) {
            text += bit();
            text +=
                pick({"\r\n", "\r\n", "\r\n", "\n", "\r", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9", "", " ", "\n\n"});
        }
        for (std::size_t n = below(8) == 0 ? below(4) : 0; n > 0 && !text.isEmpty(); --n)
            mutate(text);
        return text;
    }

private:
    std::size_t below(std::size_t end) { return m_random() % end; }
    QByteArray pick(const QByteArrayList& choices)
    {
        return choices[static_cast<qsizetype>(below(static_cast<std::size_t>(choices.size())))];
    }
    QByteArray number()
    {
        return pick({"0.1234", "-0.5", "+1", "12", "", " 2.5\t", "abc", "1e2", "-", "0x1", "3.", ".25",
                     "1.00000000000000001", "nan", "4 5"});
    }
    QByteArray fix()
    {
        return pick({"$GPRMC", "$GPRMC", "$GPRMC", "$GPRMC ", ""}) + ',' +
               pick({"080314.00", "080329.00", "080313.99", "080328.995", "", "25"}) + ',' +
               pick({"A", "A", "V", " A ", "X", ""}) + ',' + pick({"3540.6620", "", "x"}) + ',' +
               pick({"N", "S", "", "Q"}) + ',' + pick({"13945.2880", ""}) + ',' + pick({"E", "W"}) + ',' +
               pick({"10", "", "0.00", "20.5", "-1"}) + ',' + pick({"48.2", "", "-1.0", "359"}) + ',' +
               pick({"140625", "140625", "310225", ""}) + pick({",,,A*42", ",,,N", ",,", ",,,,"});
    }
    QByteArray bit()
    {
        switch (below(8)) {
        case 0:
        case 1:
            return fix();
        case 2:
        case 3:
            return pick({"$GSENS,", "$GSENS,", " $GSENS,", "$GSENS ,", "$GPRMC$GSENS,", "$gsens,"}) + number() + ',' +
                   number() + pick({",", ",", ""}) + number() + pick({"", "", ",", " "});
        case 4:
            return "$QVDSA," + number() + ',' + pick({"1", "", "M"}) + ",2,衝,L," + number() +
                   QByteArray(static_cast<qsizetype>(pick({"10", "10", "21", "9"}).toInt()), ',');
        case 5:
            return pick({"$GTRIP", "$GTRIP,5", "$GTRIP, 6 ,v2", "$GTRIP,7,8,9", "$GTRIP,,"});
        case 6:
            return pick({"$GPRMC", "$GP", "$", "RMC,", "junk", "\xC2\xA0", "\xE2\x80\xA7", "語", QByteArray("\0", 1),
                         QByteArray(static_cast<qsizetype>(LONGEST), 'y'),
                         QByteArray(static_cast<qsizetype>(LONGEST + 1), 'z')});
        default:
            return QByteArray(static_cast<qsizetype>(below(3 * LONGEST)), ',') + pick({"$GPRMC", "$GSENS,1,2,3", ""});
        }
    }
    void mutate(QByteArray& text)
    {
        const auto at = static_cast<qsizetype>(below(static_cast<std::size_t>(text.size())));
        switch (below(4)) {
        case 0:
            text[at] = static_cast<char>(m_random() & 0xFF);
            break;
        case 1:
            text.truncate(at);
            break;
        case 2:
            text.remove(at, static_cast<qsizetype>(below(20)));
            break;
        default:
            text.insert(at, text.sliced(at / 2, std::min<qsizetype>(text.size() - at / 2, 30)));
            break;
        }
    }

    std::mt19937 m_random;
};

} // namespace

class SideFileParserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agreesWithThePlainWay();
    void passesOverLongSentences_data();
    void passesOverLongSentences();
    void keepsNoMoreRecordsThanAllowed();
    void refusesFiles_data();
    void refusesFiles();
    void reservesForUnevenFiles();
};

void SideFileParserTest::agreesWithThePlainWay()
{
    TextMaker maker(4);
    int refused = 0;
    int withFixes = 0;
    for (int i = 0; i < 4000; ++i) {
        const QByteArray text = maker.make();
        const QByteArray expected = expectedDescription(text, static_cast<qsizetype>(LONGEST));
        refused += expected.isEmpty() ? 1 : 0;
        withFixes += expected.contains("total\nvalid") ? 0 : 1;
        for (const std::size_t chunk : {1U, 2U, 3U, 7U, 64U, 1000U, 100'000U}) {
            const QByteArray result = parsed(text, chunk);
            QVERIFY2(result == expected, difference(text, chunk, result, expected).constData());
        }
    }
    QVERIFY(refused > 20 && withFixes > 1000);
}

void SideFileParserTest::passesOverLongSentences_data()
{
    const auto filler = [](qsizetype size) { return QByteArray(size, 'y'); };
    const auto longest = static_cast<qsizetype>(LONGEST);
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("trip");
    QTest::newRow("just fits") << "$GTRIP," + filler(longest - 7) << filler(longest - 7);
    QTest::newRow("one too long") << "$GTRIP," + filler(longest - 6) << QByteArray();
    QTest::newRow("one huge line") << "$GTRIP," + filler(200'000) << QByteArray();
    QTest::newRow("the next line is read") << filler(200'000) + "\n$GTRIP,5" << QByteArray("5");
    QTest::newRow("what ends a long line is seen") << filler(200'000) + "$GPRMC$GTRIP,5" << QByteArray("5");
}

void SideFileParserTest::passesOverLongSentences()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, trip);
    for (const std::size_t chunk : {13U, 4096U, 1'000'000U}) {
        const QByteArray result = parsed(text, chunk);
        QCOMPARE(result.first(result.indexOf('\n')), trip);
    }
}

void SideFileParserTest::keepsNoMoreRecordsThanAllowed()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(u"many.nmea"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("$QVDSA,1,1,,,,,,,,,,,,,,\n").repeated(5) + "$GSENS,1,2,3\n");
    file.close();
    SideFileLimits limits;
    limits.driveSupports = 3;
    Telemetry telemetry;
    QVERIFY(!parseSideFile(file.fileName(), telemetry, limits));
    QCOMPARE(telemetry.driveSupports().size(), 3U);
    QCOMPARE(telemetry.motions().size(), 1U);
}

void SideFileParserTest::refusesFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<qint64>("fileBytes");
    QTest::newRow("too large") << QByteArray("$GTRIP,12") << qint64(8);
    QTest::newRow("ends within a character") << QByteArray("$GTRIP,1\xE2\x80") << qint64(100);
    QTest::newRow("UTF-16 with its mark") << QByteArray("\xFF\xFE$\0G\0", 6) << qint64(100);
    QTest::newRow("Shift JIS") << QByteArray("$GTRIP,\x8F\xD5\x93\xCB\r\n") << qint64(100);
}

void SideFileParserTest::refusesFiles()
{
    QFETCH(QByteArray, content);
    QFETCH(qint64, fileBytes);
    QTemporaryDir folder;
    QFile file(folder.filePath(u"refused.nmea"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    SideFileLimits limits;
    limits.fileBytes = fileBytes;
    limits.chunkBytes = 4;
    Telemetry telemetry;
    QVERIFY(parseSideFile(file.fileName(), telemetry, limits));
    limits.fileBytes = content.size();
    Telemetry again;
    QCOMPARE(parseSideFile(file.fileName(), again, limits).has_value(), fileBytes == 100);
}

void SideFileParserTest::reservesForUnevenFiles()
{
    // The beginning says nothing of the rest, in either direction.
    const QByteArray samples = QByteArray("$GSENS,0.1,0.2,0.3\r\n").repeated(3000);
    const QByteArray fixes =
        QByteArray("$GPRMC,080314.00,A,3540.6620,N,13945.2880,E,1,2,140625,,,A\r\n").repeated(1000);
    for (const QByteArray& text : {samples + fixes, fixes + samples}) {
        QTemporaryDir folder;
        QFile file(folder.filePath(u"uneven.nmea"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        SideFileLimits limits;
        limits.chunkBytes = 1000;
        Telemetry telemetry;
        QVERIFY(!parseSideFile(file.fileName(), telemetry, limits));
        QCOMPARE(telemetry.motions().size(), 3000U);
        QCOMPARE(telemetry.varidLocations().size(), 1000U);
        QCOMPARE(telemetry.GOPs().size(), 1001U);
    }
}

QTEST_GUILESS_MAIN(SideFileParserTest)
#include "SideFileParserTest.moc"
