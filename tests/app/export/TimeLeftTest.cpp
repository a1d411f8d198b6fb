#include "app/export/TimeLeft.h"

#include <QTest>

#include <vector>

using namespace cardreel;

namespace {

struct Step
{
    double fraction; ///< negative: none was reached
    qint64 nowMs;
    int told; ///< -1 for nothing
};

} // namespace

class TimeLeftTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsMinutes_data()
    {
        QTest::addColumn<std::vector<Step>>("steps");
        QTest::newRow("nothing is known") << std::vector<Step>{{-1, 5'000, -1}, {0, 6'000, -1}};
        QTest::newRow("too early") << std::vector<Step>{{0.5, 1'000, -1}, {-1, 2'000, 0}};
        QTest::newRow("time goes by") << std::vector<Step>{
            {0.25, 60'000, 3}, {-1, 100'000, 2}, {-1, 200'000, 0}, {-1, 900'000, -1}};
        QTest::newRow("doesn't waver") << std::vector<Step>{{0.3, 60'000, 2}, {0.26, 60'000, 2}, {0.2, 60'000, 4}};
        QTest::newRow("done") << std::vector<Step>{{1, 60'000, 0}};
        QTest::newRow("beyond") << std::vector<Step>{{1.5, 60'000, 0}};
    }
    void tellsMinutes()
    {
        QFETCH(std::vector<Step>, steps);
        TimeLeft left;
        for (const Step& step : steps) {
            if (step.fraction >= 0)
                left.jobDidReach(step.fraction, step.nowMs);
            QCOMPARE(left.minutes(step.nowMs).value_or(-1), step.told);
        }
    }
};

QTEST_GUILESS_MAIN(TimeLeftTest)
#include "TimeLeftTest.moc"
