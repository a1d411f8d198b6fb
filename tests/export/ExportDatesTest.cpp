#include "export/ExportDates.h"

#include "support/CardBuilder.h"

#include <QDateTime>
#include <QTest>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class ExportDatesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whenIsTheLocalClock_data()
    {
        QTest::addColumn<qint64>("start"); // milliseconds since 1970
        const std::pair<const char*, Instant> rows[] = {
            {"before 1970", utc(1969, 12, 31, 23, 59, 30, 500)},
            {"over midnight in Tokyo", utc(2025, 6, 14, 14, 58, 30)},
            {"summer ends in New York", utc(2025, 11, 2, 5, 58, 30)},
            {"summer begins in New York", utc(2025, 3, 9, 6, 58, 30)},
            {"thousandths", utc(2025, 6, 14, 12, 0, 58, 999)},
        };
        for (const auto& [name, start] : rows)
            QTest::newRow(name) << static_cast<qint64>(start.time_since_epoch().count());
    }
    void whenIsTheLocalClock()
    {
        QFETCH(qint64, start);
        KmlWhenText run;
        for (int second : {0, 1, 29, 30, 31, 89, 90, 150, 149, 0}) {
            const Instant date = Instant(std::chrono::milliseconds(start)) + std::chrono::seconds(second);
            const QDateTime local = QDateTime::fromMSecsSinceEpoch(date.time_since_epoch().count());
            const QString expected = local.toString(u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s);
            QCOMPARE(kmlWhenString(date), expected);
            QCOMPARE(QString::fromLatin1(run.text(date)), expected);
        }
    }

    void textsAreTheUsers()
    {
        const bool isTokyo = qgetenv("TZ") == "Asia/Tokyo";
        const Instant date = utc(2025, 6, 14, 3, 30);
        const QString day = isTokyo ? u"2025年6月14日"_s : u"June 13, 2025"_s;
        QCOMPARE(kmlFolderName(date), day);
        for (const QString& text :
             {kmlEventDescriptionString(date), backUpDirectoryName(date), captureImageFileName(date)}) {
            QVERIFY2(text.startsWith(day), qPrintable(text));
            QVERIFY2(text.contains(isTokyo ? u"12時30分00秒"_s : u"11:30:00"_s), qPrintable(text));
            QVERIFY2(text.endsWith(isTokyo ? u"日本標準時"_s : u"Eastern Daylight Time"_s), qPrintable(text));
        }
    }
};

QTEST_GUILESS_MAIN(ExportDatesTest)
#include "ExportDatesTest.moc"
