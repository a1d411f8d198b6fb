#include "telemetry/CustomLocation.h"

#include <QDataStream>
#include <QTest>

#include <unicode/locid.h>

using namespace cardreel;
using namespace std::chrono_literals;

namespace {

QByteArray archived(const CustomLocation& location)
{
    QByteArray archive;
    QDataStream stream(&archive, QIODevice::WriteOnly);
    stream << location;
    return archive;
}

} // namespace

class CustomLocationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void convertsSpeeds_data();
    void convertsSpeeds();
    void followsTheLocalesUnit_data();
    void followsTheLocalesUnit();
    void knowsAPosition_data();
    void knowsAPosition();
    void setsWhatEachInitialiserGives();
    void archivesAllButTheCorrection();
    void refusesForeignArchives_data();
    void refusesForeignArchives();
};

void CustomLocationTest::convertsSpeeds_data()
{
    QTest::addColumn<double>("metersPerSecond");
    QTest::addColumn<float>("kilometers");
    QTest::addColumn<float>("miles");
    QTest::newRow("still") << 0.0 << 0.0F << 0.0F;
    QTest::newRow("36 km/h") << 10.0 << 36.0F << static_cast<float>(36.0 / 1.60934);
    QTest::newRow("not known is a number like any other")
        << -1.0 << -3.6F << static_cast<float>(double(-3.6F) / 1.60934);
    // 50.00000016 km/h is rounded to a float before it becomes miles.
    QTest::newRow("rounded twice") << 13.8888889333 << 50.0F << static_cast<float>(50.0 / 1.60934);
}

void CustomLocationTest::convertsSpeeds()
{
    QFETCH(double, metersPerSecond);
    QTEST(CustomLocation::speedAtKirometerPerHour(metersPerSecond), "kilometers");
    QTEST(CustomLocation::speedAtMilePerHour(metersPerSecond), "miles");
    CustomLocation location;
    location.speed = metersPerSecond;
    QTEST(location.speedAtKirometerPerHour(), "kilometers");
    QTEST(location.speedAtMilePerHour(), "miles");
}

void CustomLocationTest::followsTheLocalesUnit_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QString>("unit");
    QTest::newRow("United States") << QByteArray("en_US") << QStringLiteral("mph");
    QTest::newRow("United Kingdom") << QByteArray("en_GB") << QStringLiteral("mph");
    QTest::newRow("Japan") << QByteArray("ja_JP") << QStringLiteral("km/h");
    QTest::newRow("Germany") << QByteArray("de_DE") << QStringLiteral("km/h");
}

void CustomLocationTest::followsTheLocalesUnit()
{
    QFETCH(QByteArray, locale);
    QFETCH(QString, unit);
    const icu::Locale before = icu::Locale::getDefault();
    UErrorCode error = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale(locale.constData()), error);
    const bool isMiles = CustomLocation::shouldUseMilePerHour();
    const QString shown = CustomLocation::unitForCurrentLocale();
    const float speed = CustomLocation::speedForCurrentLocale(10);
    icu::Locale::setDefault(before, error);
    QVERIFY(U_SUCCESS(error));
    QCOMPARE(shown, unit);
    QCOMPARE(isMiles, unit == u"mph");
    QCOMPARE(speed, isMiles ? CustomLocation::speedAtMilePerHour(10) : CustomLocation::speedAtKirometerPerHour(10));
}

void CustomLocationTest::knowsAPosition_data()
{
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<bool>("valid");
    QTest::newRow("nothing known") << -999.0 << -999.0 << false;
    QTest::newRow("no longitude") << 35.0 << -999.0 << false;
    QTest::newRow("beyond the pole") << 90.1 << 0.0 << false;
    QTest::newRow("beyond the date line") << 0.0 << -180.1 << false;
    QTest::newRow("corner") << -90.0 << 180.0 << true;
    QTest::newRow("Tokyo") << 35.68 << 139.75 << true;
}

void CustomLocationTest::knowsAPosition()
{
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QTEST(CustomLocation(latitude, longitude).isValid(), "valid");
}

void CustomLocationTest::setsWhatEachInitialiserGives()
{
    const Instant time{1234ms};
    const CustomLocation full({1, 2}, 3, 4, 5, 6, 7, time);
    QCOMPARE(full.latitude, 1);
    QCOMPARE(full.longitude, 2);
    QCOMPARE(full.altitude, 3);
    QCOMPARE(full.horizontalAccuracy, 4);
    QCOMPARE(full.verticalAccuracy, 5);
    QCOMPARE(full.course, 6);
    QCOMPARE(full.speed, 7);
    QVERIFY(full.timestamp == time);
    QCOMPARE(full.correctedSpeed, 0);
    QCOMPARE(full.correctedDirection, 0);
    QVERIFY(CustomLocation({1, 2}, 3, 4, 5, 6, 0.5, 7, 0.5, time) == full);

    const CustomLocation still({1, 2}, 3, 4, 5, time);
    QVERIFY(!still.hasSpeed() && !still.hasCourse());
    QVERIFY(!CustomLocation().isValid());
}

void CustomLocationTest::archivesAllButTheCorrection()
{
    CustomLocation location({35.5, -139.25}, 12.5, 4, 5, 271.5, 13.75, Instant{1718352000123ms});
    location.correctedSpeed = 8;
    location.correctedDirection = 9;
    const QByteArray archive = archived(location);
    QDataStream stream(archive);
    CustomLocation restored;
    stream >> restored;
    location.correctedSpeed = 0;
    location.correctedDirection = 0;
    QVERIFY(restored == location);
}

void CustomLocationTest::refusesForeignArchives_data()
{
    const QByteArray archive = archived(CustomLocation(1, 2));
    QTest::addColumn<QByteArray>("archive");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut") << archive.chopped(1);
    QTest::newRow("other version") << QByteArray("\0\0\0\7", 4) + archive.sliced(4);
}

void CustomLocationTest::refusesForeignArchives()
{
    QFETCH(QByteArray, archive);
    QDataStream stream(archive);
    CustomLocation restored(1, 2);
    stream >> restored;
    QVERIFY(stream.status() != QDataStream::Ok);
    QVERIFY(restored == CustomLocation());
}

QTEST_GUILESS_MAIN(CustomLocationTest)
#include "CustomLocationTest.moc"
