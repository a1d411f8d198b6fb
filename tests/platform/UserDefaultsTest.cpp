#include "platform/settings/UserDefaults.h"

#include "platform/BackgroundQueue.h"

#include <QFile>
#include <QSettings>
#include <QTest>

using namespace cardreel;
using namespace Qt::StringLiterals;

class UserDefaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsPropertyLists_data();
    void readsPropertyLists();
    void theUsersChoiceComesFirst();
};

void UserDefaultsTest::readsPropertyLists_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QVariantMap>("expected");
    QTest::newRow("empty") << QByteArray() << QVariantMap();
    QTest::newRow("no property list") << QByteArray("hello") << QVariantMap();
    QTest::newRow("cut") << QByteArray("<plist version=\"1.0\"><dict><key>a</key>") << QVariantMap();
    QTest::newRow("a list at the top") << QByteArray("<plist version=\"1.0\"><array/></plist>") << QVariantMap();
    QTest::newRow("every kind")
        << QByteArray(
               "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict><key>t</key><string>文</string>"
               "<key>r</key><real>0.5</real><key>i</key><integer>7</integer><key>b</key><true/>"
               "<key>l</key><array><integer>1</integer><string>x</string></array></dict></plist>")
        << QVariantMap{{u"t"_s, u"文"_s},
                       {u"r"_s, 0.5},
                       {u"i"_s, qint64(7)},
                       {u"b"_s, true},
                       {u"l"_s, QVariantList{qint64(1), u"x"_s}}};
}

void UserDefaultsTest::readsPropertyLists()
{
    QFETCH(QByteArray, bytes);
    QTEST(dictionaryFromPropertyList(bytes), "expected");
}

void UserDefaultsTest::theUsersChoiceComesFirst()
{
    QFile shipped(u":/UserDefaults.plist"_s);
    QVERIFY(shipped.open(QIODevice::ReadOnly));
    UserDefaults& defaults = UserDefaults::shared();
    QVERIFY(defaults.registerDefaults(shipped.readAll()));
    QCOMPARE(defaults.value(u"Appearance"_s).toString(), u"system"_s);
    QVERIFY(!defaults.value(u"no such key"_s).isValid());
    defaults.setValue(u"Appearance"_s, u"dark"_s);
    QCOMPARE(defaults.value(u"Appearance"_s).toString(), u"dark"_s);
    // The disk is told later, yet the last choice last.
    for (int i = 0; i <= 100; ++i)
        defaults.setValue(u"Volume"_s, i);
    QVERIFY(BackgroundQueue::waitForDone(60'000));
    QCOMPARE(QSettings().value(u"Appearance"_s).toString(), u"dark"_s);
    QCOMPARE(QSettings().value(u"Volume"_s).toInt(), 100);
}

int main(int argc, char** argv)
{
    // Its own settings file, so that running twice at a time doesn't meddle.
    QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"CardreelTest"_s);
    QCoreApplication::setApplicationName(u"UserDefaultsTest%1"_s.arg(QCoreApplication::applicationPid()));
    UserDefaultsTest test;
    const int result = QTest::qExec(&test, argc, argv);
    QFile::remove(QSettings().fileName());
    return result;
}

#include "UserDefaultsTest.moc"
