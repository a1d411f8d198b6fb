#include "platform/text/Pattern.h"

#include <QTest>

using namespace cardreel;
using namespace Qt::StringLiterals;

class PatternTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneMatchCoversTheWhole_data();
    void oneMatchCoversTheWhole();
    void canBeUsedAgain();
};

void PatternTest::oneMatchCoversTheWhole_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("matches");

    QTest::newRow("doesn't compile") << u"(a"_s << u"a"_s << false;
    QTest::newRow("no match") << u"a"_s << u"b"_s << false;
    QTest::newRow("part only") << u"a"_s << u"ab"_s << false;
    QTest::newRow("two matches") << u"a"_s << u"aa"_s << false;
    QTest::newRow("an empty match behind the whole one") << u"a*"_s << u"aaa"_s << false;
    QTest::newRow("a line feed is no character of a dot") << u"a.b"_s << u"a\nb"_s << false;
    QTest::newRow("the shorter alternative comes first") << u"(a|ab)"_s << u"ab"_s << false;
    QTest::newRow("whole") << u"a+"_s << u"aaa"_s << true;
    QTest::newRow("empty in empty") << u""_s << u""_s << true;
    QTest::newRow("outside the basic plane") << u"."_s << u"\U0001F697"_s << true;
}

void PatternTest::oneMatchCoversTheWhole()
{
    QFETCH(QString, pattern);
    QFETCH(QString, target);
    QTEST(Pattern(pattern).matchesWhole(target), "matches");
}

void PatternTest::canBeUsedAgain()
{
    Pattern pattern(u"x\\d"_s);
    QVERIFY(pattern.matchesWhole(u"x1"_s));
    QVERIFY(!pattern.matchesWhole(u"x"_s));
    QVERIFY(pattern.matchesWhole(u"x2"_s));
}

QTEST_GUILESS_MAIN(PatternTest)
#include "PatternTest.moc"
