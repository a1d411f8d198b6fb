#include "export/BackUpOptions.h"

#include "media/DCFInfo.h"
#include "media/PictureInfo.h"
#include "support/CardBuilder.h"

#include <QTest>

#include <limits>

using namespace cardreel;
using namespace cardreel::test;
using namespace Qt::StringLiterals;

class BackUpOptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itemsOfAState_data()
    {
        QTest::addColumn<QList<bool>>("state"); // all, no, only pictures
        QTest::addColumn<QString>("items");
        QTest::newRow("none on") << QList<bool>{false, false, false} << u""_s;
        QTest::newRow("all pictures") << QList<bool>{true, false, false} << u"p0 p1 p2 r1"_s;
        QTest::newRow("no picture") << QList<bool>{false, true, false} << u"r1"_s;
        QTest::newRow("only pictures") << QList<bool>{false, false, true} << u"p0 p1 p2"_s;
        QTest::newRow("all on") << QList<bool>{true, true, true} << u"p0 p1 p2 r1"_s;
    }
    void itemsOfAState()
    {
        QFETCH(QList<bool>, state);
        CardBuilder card;
        DCFInfoList listed;
        for (const QString& name : {u"r0"_s, u"r1"_s}) {
            card.file(name, QByteArray(1000, 'v'));
            listed.push_back(std::make_shared<DCFInfo>(card.root(), name));
        }
        for (const QString& name : {u"p0"_s, u"p1"_s, u"p2"_s}) {
            card.file(name, QByteArray(10, 'p'));
            listed[name == u"p0" ? 0 : 1]->pictures.push_back(std::make_shared<PictureInfo>(card.root(), name));
        }
        const BackUpList items = selectedObjectsForOptionState({state[0], state[1], state[2]}, listed, {listed[1]});
        QStringList found;
        quint64 size = 0;
        for (const BackUpItem& item : items) {
            const auto* picture = std::get_if<std::shared_ptr<PictureInfo>>(&item);
            const QString path = picture ? (*picture)->filePath : std::get<std::shared_ptr<DCFInfo>>(item)->filePath;
            found += files::nameOf(path);
            size += picture ? 10 : 1000;
        }
        QTEST(found.join(u' '), "items");
        QCOMPARE(totalSelectedFileSizeForInfos(items), size);
    }

    void sizesThatFit_data()
    {
        constexpr quint64 largest = std::numeric_limits<quint64>::max();
        QTest::addColumn<quint64>("free");
        QTest::addColumn<quint64>("required");
        QTest::addColumn<bool>("fits");
        QTest::newRow("exactly the margin more") << quint64{5'048'576} << quint64{4'000'000} << false;
        QTest::newRow("a byte more than that") << quint64{5'048'577} << quint64{4'000'000} << true;
        QTest::newRow("less than the margin free") << quint64{1} << quint64{0} << false;
        QTest::newRow("larger than any sum") << largest << largest << false;
    }
    void sizesThatFit()
    {
        QFETCH(quint64, free);
        QFETCH(quint64, required);
        QTEST(hasFreeForTargetSize(free, required), "fits");
    }
};

QTEST_GUILESS_MAIN(BackUpOptionsTest)
#include "BackUpOptionsTest.moc"
